#include "support/hostFixture.h"

#include "mel/interpreter.h"

namespace {

using testing_support::HostTest;

/// A key press reaches what a person bound it to: key, name command, runtime command, MEL.
class HotkeyTest : public HostTest {
public:
    void SetUp() override
    {
        mel("global string $pressed; $pressed = \"\"");
        mel("hotkeySet -source \"Maya_Default\" \"mine\"; hotkeySet -e -current \"mine\"");
        define("plain");
    }
    /// A runtime command and a name command that note their name when they run.
    void define(const std::string& name)
    {
        mel("runTimeCommand -annotation \"notes\" -command \"global string $pressed; $pressed += \\\"" +
            name + " \\\";\" " + name + "Run");
        mel("nameCommand -annotation \"notes\" -sourceType \"mel\" -command (\"" + name + "Run\") " + name +
            "Name");
    }
    std::string pressed(const std::string& keys)
    {
        mel("$pressed = \"\"");
        mel(keys);
        return session.mel().global("$pressed") ? session.mel().global("$pressed")->toString()
                                                : melString("string $copy = $pressed");
    }
};

TEST_F(HotkeyTest, PressRunsTheRuntimeCommandBehindTheName)
{
    mel("hotkey -keyShortcut \"c\" -name \"plainName\"");
    EXPECT_EQ(pressed("viewportEvent -key \"c\""), "plain ");
    EXPECT_EQ(pressed("viewportEvent -key \"x\""), "");
    EXPECT_EQ(melString("hotkey -q -name -keyShortcut \"c\""), "plainName");
}

TEST_F(HotkeyTest, LettersTellCaseApartAndModifiersCount)
{
    define("capital");
    define("control");
    mel("hotkey -k \"c\" -n \"plainName\"; hotkey -k \"C\" -n \"capitalName\"; hotkey -k \"c\" -ctl -n "
        "\"controlName\"");
    EXPECT_EQ(pressed("viewportEvent -key \"C\""), "capital ");
    EXPECT_EQ(pressed("viewportEvent -key \"c\" -shift"), "capital ");
    EXPECT_EQ(pressed("viewportEvent -key \"c\" -control"), "control ");
    EXPECT_EQ(pressed("viewportEvent -key \"c\""), "plain ");
}

TEST_F(HotkeyTest, CurrentClientComesBeforeTheGlobalKey)
{
    define("client");
    mel("hotkeyCtx -type \"Tool\" -addClient \"mineClient\"");
    mel("hotkey -k \"v\" -n \"plainName\"; hotkey -k \"v\" -ctxClient \"mineClient\" -n \"clientName\"");
    EXPECT_EQ(pressed("viewportEvent -key \"v\""), "plain ");
    mel("hotkeyCtx -type \"Tool\" -currentClient \"mineClient\"");
    EXPECT_EQ(pressed("viewportEvent -key \"v\""), "client ");
    EXPECT_EQ(melStrings("hotkeyCtx -q -type \"Tool\" -clientArray"),
              std::vector<std::string>({"mineClient"}));
    EXPECT_NE(melError("hotkeyCtx -type \"Tool\" -currentClient \"stranger\"").find("stranger"),
              std::string::npos);
    EXPECT_NE(melError("hotkey -k \"v\" -ctxClient \"stranger\" -n \"plainName\"").find("stranger"),
              std::string::npos);
}

TEST_F(HotkeyTest, SetsAreIndependentCopiesAndTheShippedOneIsLocked)
{
    mel("hotkey -k \"c\" -n \"plainName\"");
    mel("hotkeySet -source \"mine\" \"copy\"");
    mel("hotkey -k \"c\" -n \"\" -rn \"\"");
    EXPECT_EQ(pressed("viewportEvent -key \"c\""), "");
    mel("hotkeySet -e -current \"copy\"");
    EXPECT_EQ(pressed("viewportEvent -key \"c\""), "plain ");
    EXPECT_EQ(melStrings("hotkeySet -q -hotkeySetArray"),
              std::vector<std::string>({"Maya_Default", "mine", "copy"}));

    mel("hotkeySet -e -delete \"copy\"");
    EXPECT_EQ(melString("hotkeySet -q -current"), "Maya_Default");
    EXPECT_EQ(melInt("hotkeySet -q -exists \"copy\""), 0);
    EXPECT_NE(melError("hotkey -k \"c\" -n \"plainName\"").find("locked"), std::string::npos);
    EXPECT_NE(melError("hotkeySet -e -delete \"Maya_Default\"").find("locked"), std::string::npos);
    EXPECT_NE(melError("hotkeySet -source \"nowhere\" \"other\"").find("nowhere"), std::string::npos);
}

TEST_F(HotkeyTest, UndoBringsTheFormerKeysBack)
{
    mel("hotkey -k \"c\" -n \"plainName\"");
    mel("undo");
    EXPECT_EQ(pressed("viewportEvent -key \"c\""), "");
    mel("redo");
    EXPECT_EQ(pressed("viewportEvent -key \"c\""), "plain ");
}

TEST_F(HotkeyTest, RuntimeCommandsRunByNameAndGoAway)
{
    EXPECT_EQ(melInt("runTimeCommand -q -exists \"plainRun\""), 1);
    EXPECT_EQ(pressed("plainRun"), "plain ");
    EXPECT_NE(melError("runTimeCommand -command \"print 1\" plainRun").find("plainRun"), std::string::npos);
    EXPECT_NE(melError("runTimeCommand -command \"print 1\" \"not a name\"").find("not a name"),
              std::string::npos);
    EXPECT_NE(melError("runTimeCommand -commandLanguage \"python\" -command \"pass\" other").find("python"),
              std::string::npos);
    mel("runTimeCommand -delete plainRun");
    EXPECT_EQ(melInt("runTimeCommand -exists plainRun"), 0);
    expectError("line 1: Cannot find procedure \"plainRun\".");
    mel("hotkey -k \"c\" -n \"plainName\"");
    EXPECT_EQ(pressed("viewportEvent -key \"c\""), "");
}

} // namespace
