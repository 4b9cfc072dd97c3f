#include "mel/command.h"
#include "plugins/pluginRegistry.h"
#include "support/hostFixture.h"
#include "tools/sceneCallbacks.h"
#include "tools/tools.h"
#include "types/error.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace {

std::string file(const std::string& name)
{
    return std::string(MODULE_DIR) + "/" + name + ".so";
}

class PluginLoadTest : public testing_support::HostTest {
protected:
    std::string loadError(const std::string& path)
    {
        try {
            session.plugins().load(path);
        } catch (const host::Error& error) {
            return error.what();
        }
        return "no error";
    }
};

TEST_F(PluginLoadTest, aLoadedPlugInTellsAboutItself)
{
    EXPECT_EQ(std::vector<std::string>{"counter"}, melStrings("loadPlugin \"" + file("counter") + "\""));
    EXPECT_EQ(std::vector<std::string>{"counter"}, melStrings("pluginInfo -q -listPlugins"));
    EXPECT_EQ("the house 2.1 20220300", melString("pluginInfo -q -vendor counter") + " " +
                                            melString("pluginInfo -q -version counter") + " " +
                                            melString("pluginInfo -q -apiVersion \"counter.so\""));
    EXPECT_EQ(file("counter"), melString("pluginInfo -q -path counter"));
    EXPECT_EQ((std::vector<std::string>{"click", "counter", "lister"}),
              melStrings("pluginInfo -q -command counter"));
    EXPECT_EQ(0, melInt("pluginInfo -q -loaded failing"));

    expectWarning("Plug-in, \"counter\", is already loaded.");
    mel("loadPlugin \"" + file("counter") + "\"");
    mel("loadPlugin -quiet counter");
}

TEST_F(PluginLoadTest, aPlugInIsFreshWhenItIsLoadedAgain)
{
    for (int round = 0; round < 3; ++round) {
        mel("loadPlugin \"" + file("counter") + "\"");
        EXPECT_EQ(1, melInt("counter"));
        EXPECT_EQ(2, melInt("counter"));
        mel("unloadPlugin counter");
        EXPECT_FALSE(session.commands().exists("counter") || session.commands().exists("click"));
        EXPECT_FALSE(session.commands().exists("clickContext"));
    }
}

TEST_F(PluginLoadTest, whatCannotBeLoadedIsNamedWithTheReason)
{
    allowMessages();
    const struct {
        const char* name;
        const char* reason;
    } cases[] = {
        {"missing", "no such file"},
        {"text", "file too short"},
        {"library", "no entry point initializePlugin(MObject)"},
        {"outdated", "built for version 20190000"},
        {"failing", "initializePlugin failed: (kInsufficientMemory)"},
        {"throwing", "initializePlugin failed: the moon is full"},
    };
    for (const auto& example : cases) {
        const std::string error = loadError(file(example.name));
        EXPECT_NE(std::string::npos, error.find(example.reason)) << error;
        EXPECT_NE(std::string::npos, error.find(file(example.name))) << error;
        EXPECT_NE("no error", melError("loadPlugin \"" + file(example.name) + "\""));
    }
    EXPECT_TRUE(session.plugins().all().empty());
    EXPECT_FALSE(session.commands().exists("neverThere"));
}

TEST_F(PluginLoadTest, aLibraryThatWasCutOffOrDamagedIsRefused)
{
    std::ifstream stream(file("counter"), std::ios::binary);
    const std::string whole((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    const std::string copy = ::testing::TempDir() + "damaged.so";
    const auto refusal = [&](const std::string& bytes) {
        std::ofstream(copy, std::ios::binary | std::ios::trunc) << bytes;
        return loadError(copy);
    };
    for (std::size_t size = 0; size < whole.size(); size += whole.size() / 40 + 1)
        EXPECT_NE("no error", refusal(whole.substr(0, size))) << size;
    EXPECT_NE("no error", refusal(whole.substr(0, whole.size() - 1)));

    const struct {
        std::size_t offset; ///< in the header, where all ones are put
        std::size_t size;
    } fields[] = {{4, 1}, {5, 1}, {16, 2}, {18, 2}, {32, 8}, {40, 8}, {54, 2}, {56, 2}, {58, 2}, {60, 2}};
    for (const auto& field : fields) {
        std::string damaged = whole;
        damaged.replace(field.offset, field.size, field.size, '\xFF');
        EXPECT_NE("no error", refusal(damaged)) << field.offset;
    }
    std::remove(copy.c_str());
    EXPECT_EQ("no error", loadError(file("counter")));
}

TEST_F(PluginLoadTest, namesAreLookedUpInTheSearchFolders)
{
    EXPECT_NE("no error", loadError("counter"));
    ::setenv("MAYA_PLUG_IN_PATH", "/nowhere::" MODULE_DIR, 1);
    mel("loadPlugin counter");
    mel("unloadPlugin \"counter.so\"");
    ::unsetenv("MAYA_PLUG_IN_PATH");
    session.plugins().addFolder(MODULE_DIR);
    EXPECT_EQ("no error", loadError("counter.so"));
}

TEST_F(PluginLoadTest, aPlugInThatLeavesThingsBehindIsKeptUnlessForced)
{
    mel("loadPlugin \"" + file("negligent") + "\"");
    EXPECT_EQ("line 1: Plug-in \"negligent\" cannot be unloaded: it left registered: forgotten.",
              melError("unloadPlugin negligent"));
    EXPECT_EQ(1, melInt("pluginInfo -q -loaded negligent"));

    allowMessages();
    mel("unloadPlugin -force negligent");
    EXPECT_EQ(0U, session.tools().callbacks().count());
    EXPECT_FALSE(session.commands().exists("forgotten"));
    ASSERT_EQ(2U, messages().size());
    EXPECT_NE(std::string::npos, messages()[1].find("left 1 callback(s) registered")) << messages()[1];
}

TEST_F(PluginLoadTest, aProgramThatEndsAsksNoPlugInToUninitialize)
{
    std::vector<std::string> said;
    {
        host::Session inner;
        inner.messages().setSink(
            [&](host::Messages::Kind, const std::string& text) { said.push_back(text); });
        inner.plugins().load(file("tidy"));
        inner.plugins().load(file("negligent"));
        inner.quit();
    }
    ASSERT_EQ(1U, said.size()) << "the one that leaves its callback to uninitializePlugin is seen to do so";
    EXPECT_NE(std::string::npos, said[0].find("\"negligent\" left 1 callback(s) registered")) << said[0];
}

TEST_F(PluginLoadTest, aSessionThatEndsClosesItsLibraries)
{
    {
        host::Session inner;
        inner.plugins().load(file("counter"));
    }
    // Only a library that was closed starts counting at 0 again.
    mel("loadPlugin \"" + file("counter") + "\"");
    EXPECT_EQ(1, melInt("counter"));
}

} // namespace
