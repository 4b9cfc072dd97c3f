// Loading and unloading: what the plug-in asks of the host, character for character and in order.
#include "support/toolFixture.h"

using namespace testing_support;

namespace {

const std::string kAtOnce = "mel\tdisplay=0 undo=0\t";
const std::string kIdle = "idle\tdisplay=0\t";

std::string query(const std::string& name)
{
    return kAtOnce + "runTimeCommand -q -exists \"" + name + "\"";
}

// The texts as the trace writes them: tabs and backslashes of the command are escaped.
std::vector<std::string> definition(const std::string& name, const std::string& verb, const std::string& flag,
                                    const std::string& nameCommand)
{
    return {
        query(name),
        kAtOnce + "runTimeCommand -annotation \"" + verb +
            " the weights in the morvane context\" -commandLanguage \"mel\" -command(\"string $x = "
            "`getPanel - withFocus`;if (`substring $x 1 10` == \\\\\"modelPanel\\\\\"){morvaneContext -e -" +
            flag +
            " true morvaneContext1;}\") -hotkeyCtx \"morvaneClient\" -category \"Morvane\" "
            "-default true " +
            name + ";",
        kAtOnce + "\\t\\tnameCommand\\t\\t- annotation \"" + nameCommand +
            "\"\\t\\t- sourceType \"mel\"\\t\\t- command(\"" + name + "\")\\t\\t" + nameCommand + ";"};
}

const std::string kCreateDisplay =
    kIdle + "$lastOccupiedBlock = `headsUpDisplay -lastOccupiedBlock 7`;$lastOccupiedBlock = "
            "$lastOccupiedBlock + 1;headsUpDisplay -vis 0 -s 7 -b $lastOccupiedBlock \"morvaneHUD\";";

// The display of the first load is still there, which the host says when the second load makes it again.
const std::string kDisplayExists = "line 1: Heads-up display 'morvaneHUD' already exists.";

std::vector<std::string> joined(std::vector<std::vector<std::string>> parts)
{
    std::vector<std::string> all;
    for (const std::vector<std::string>& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

class Shell : public HostTest {
public:
    void load() { mel("loadPlugin \"" + testing_support::libraryPath("morvane") + "\""); }
    void unload() { mel("unloadPlugin morvane"); }
};

TEST_F(Shell, LoadDefinesToolCommandsAndDisplayInOrder)
{
    EXPECT_EQ(traced(*this, [&] { load(); }),
              joined({{kAtOnce + "morvaneContext"},
                      definition("morvaneCopy", "Copies", "copy", "MorvaneCopyNameCommand"),
                      definition("morvanePaste", "Pastes", "paste", "MorvanePasteNameCommand"),
                      {kCreateDisplay}}));
    EXPECT_EQ(melInt("contextInfo -exists morvaneContext1"), 1);
    EXPECT_EQ(melString("contextInfo -c morvaneContext1"), "morvane");
    EXPECT_EQ(melInt("headsUpDisplay -exists morvaneHUD"), 1);
    EXPECT_EQ(melInt("headsUpDisplay -q -vis morvaneHUD"), 0);
    EXPECT_EQ(melInt("headsUpDisplay -q -s morvaneHUD"), 7);
}

TEST_F(Shell, LoadingAgainKeepsRunTimeCommandsAndUnloadOnlyAsksForTheHotkeySet)
{
    load();
    EXPECT_EQ(traced(*this, [&] { unload(); }),
              (std::vector<std::string>{kAtOnce + "hotkeySet -q -exists \"morvaneTemp\""}));
    EXPECT_EQ(melInt("exists morvaneContext"), 0);
    EXPECT_EQ(melInt("exists morvaneToolCmd"), 0);
    EXPECT_EQ(melInt("runTimeCommand -q -exists morvaneCopy"), 1);
    expectError(kDisplayExists);
    EXPECT_EQ(traced(*this, [&] { load(); }),
              (std::vector<std::string>{kAtOnce + "morvaneContext", query("morvaneCopy"),
                                        query("morvanePaste"), kCreateDisplay, "error\t" + kDisplayExists}));
    EXPECT_EQ(melInt("contextInfo -exists morvaneContext1"), 1);
}

TEST_F(Shell, ADeletedRunTimeCommandComesBackWithItsNameCommand)
{
    load();
    unload();
    mel("runTimeCommand -e -delete morvaneCopy");
    expectError(kDisplayExists);
    EXPECT_EQ(traced(*this, [&] { load(); }),
              joined({{kAtOnce + "morvaneContext"},
                      definition("morvaneCopy", "Copies", "copy", "MorvaneCopyNameCommand"),
                      {query("morvanePaste"), kCreateDisplay, "error\t" + kDisplayExists}}));
}

TEST_F(Shell, UnloadDeletesALeftOverHotkeySet)
{
    load();
    mel("hotkeySet -source \"Maya_Default\" \"morvaneTemp\"");
    EXPECT_EQ(traced(*this, [&] { unload(); }),
              (std::vector<std::string>{kAtOnce + "hotkeySet -q -exists \"morvaneTemp\"",
                                        kAtOnce + "hotkeySet -e -delete \"morvaneTemp\""}));
    EXPECT_EQ(melInt("hotkeySet -exists morvaneTemp"), 0);
}

TEST_F(Shell, ToolCommandFromAScriptWritesNothingAndTakesNoArguments)
{
    load();
    mel("polyCube");
    mel("morvaneToolCmd");
    EXPECT_NE(melError("morvaneToolCmd -x 1"), "");
    EXPECT_NE(melError("morvaneToolCmd 1"), "");
    mel("undo");
    EXPECT_EQ(melInt("objExists pCube1"), 1) << "the first undo takes back the tool command only";
    mel("undo");
    EXPECT_EQ(melInt("objExists pCube1"), 0);
}

} // namespace
