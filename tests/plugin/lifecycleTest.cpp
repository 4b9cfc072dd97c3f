// Switching the tool on and off: preferences, the temporary hotkey set, the heads-up display and its label.
#include "support/toolFixture.h"
#include "undo/undoQueue.h"

using namespace testing_support;

namespace {

const std::string kAtOnce = "mel\tdisplay=0 undo=0\t";
const std::string kIdle = "idle\tdisplay=0\t";

std::vector<std::string> switchedOn(const std::string& label, const std::string& previousSet)
{
    return {
        kAtOnce + "selectPref -q -clickDrag",
        kAtOnce + "selectPref -clickDrag true",
        kAtOnce + "selectMode -component",
        kAtOnce + "hotkeySet -q -hotkeySetArray",
        kAtOnce + "hotkeySet -q -current",
        kAtOnce + "hotkeySet -source \"" + previousSet + "\" \"morvaneTemp\"",
        kAtOnce + "hotkeySet -e -current \"morvaneTemp\"",
        kAtOnce + "hotkeyCtx - type \"Tool\" -addClient \"morvaneClient\";",
        kAtOnce + "hotkey -keyShortcut \"c\" -ctxClient \"morvaneClient\" -name \"MorvaneCopyNameCommand\";",
        kAtOnce + "hotkey -keyShortcut \"v\" -ctxClient \"morvaneClient\" -name \"MorvanePasteNameCommand\";",
        kIdle + "hotkeyCtx -type \"Tool\" -currentClient \"morvaneClient\";",
        kIdle + "if (`headsUpDisplay -ex \"morvaneHUD\"`){string $hudLabel = (\"Sculpting On:" + label +
            "\");headsUpDisplay -e -vis 1 -label $hudLabel \"morvaneHUD\";}",
        "status\tClick and drag vertices to adjust the weightmap. Hold control for more precision."};
}

std::vector<std::string> switchedOff(bool clickDrag, const std::string& previousSet)
{
    return {kIdle + "selectPref -clickDrag " + (clickDrag ? "true" : "false"),
            kAtOnce + "hotkeySet -e -current \"" + previousSet + "\"",
            kAtOnce + "hotkeySet -e -delete \"morvaneTemp\"",
            kIdle + "if (`headsUpDisplay - ex \"morvaneHUD\"`){headsUpDisplay -e -vis 0 \"morvaneHUD\";}"};
}

using Lifecycle = ToolTest;

TEST_F(Lifecycle, OnAndOffAskTheHostInOrderAndLeaveThingsAsTheyWere)
{
    mel("selectPref -clickDrag false");
    EXPECT_EQ(traced(*this, [&] { toolOn(); }), switchedOn("", "Maya_Default"));
    EXPECT_EQ(melString("hotkeySet -q -current"), "morvaneTemp");
    EXPECT_EQ(melInt("selectPref -q -clickDrag"), 1);
    EXPECT_EQ(melInt("selectMode -q -component"), 1);
    EXPECT_EQ(melInt("headsUpDisplay -q -vis morvaneHUD"), 1);
    EXPECT_EQ(melString("headsUpDisplay -q -label morvaneHUD"), "Sculpting On:");

    EXPECT_EQ(traced(*this, [&] { toolOff(); }), switchedOff(false, "Maya_Default"));
    EXPECT_EQ(melString("hotkeySet -q -current"), "Maya_Default");
    EXPECT_EQ(melInt("hotkeySet -exists morvaneTemp"), 0);
    EXPECT_EQ(melInt("selectPref -q -clickDrag"), 0);
    EXPECT_EQ(melInt("headsUpDisplay -q -vis morvaneHUD"), 0);
}

TEST_F(Lifecycle, TheUsersOwnHotkeySetAndClickDragPreferenceComeBack)
{
    mel("hotkeySet -source \"Maya_Default\" \"Mine\"; hotkeySet -e -current \"Mine\"; selectPref -clickDrag "
        "true");
    toolOn();
    EXPECT_EQ(traced(*this, [&] { toolOff(); }), switchedOff(true, "Mine"));
    EXPECT_EQ(melString("hotkeySet -q -current"), "Mine");
    EXPECT_EQ(melInt("selectPref -q -clickDrag"), 1);
}

TEST_F(Lifecycle, ATemporarySetLeftBehindIsDeletedFirst)
{
    mel("hotkeySet -source \"Maya_Default\" \"Mine\"; hotkeySet -e -current \"Mine\";"
        "hotkeySet -source \"Mine\" \"morvaneTemp\"");
    std::vector<std::string> expected = switchedOn("", "Maya_Default");
    expected.insert(expected.begin() + 4, {kAtOnce + "hotkeySet -e -current \"Maya_Default\"",
                                           kAtOnce + "hotkeySet -e -delete \"morvaneTemp\""});
    EXPECT_EQ(traced(*this, [&] { toolOn(); }), expected);
    toolOff();
    EXPECT_EQ(melString("hotkeySet -q -current"), "Maya_Default");
}

TEST_F(Lifecycle, QuittingWithTheToolOnDeletesTheTemporarySet)
{
    mel("morvaneContext"); // a second context: still one exit callback
    toolOn();
    EXPECT_EQ(traced(*this, [&] { session.quit(); }),
              (std::vector<std::string>{kAtOnce + "hotkeySet -q -exists \"morvaneTemp\"",
                                        kAtOnce + "hotkeySet -e -delete \"morvaneTemp\""}));
    EXPECT_EQ(melInt("hotkeySet -exists morvaneTemp"), 0);
}

TEST_F(Lifecycle, UnloadingWithTheToolOnLeavesItFirst)
{
    toolOn();
    mel("unloadPlugin morvane");
    EXPECT_EQ(melString("currentCtx"), "selectSuperContext");
    EXPECT_EQ(melString("hotkeySet -q -current"), "Maya_Default");
}

TEST_F(Lifecycle, UnloadingDuringAStrokeLeavesNothingOfItBehind)
{
    mel("polyPlane -n sheet; maskedOffset -n shift -o 0 3 0 sheet; viewFit sheet; select sheet.vtx[0:20]");
    edit("-deformer shift");
    toolOn();
    const Pixel at = pixelOf("sheet.vtx[5]");
    press(at);
    drag({at.x, at.y - 40});
    ASSERT_NE(mel("getAttr shift.weightList[0].weights[5]").toFloat(), 1.0) << "a stroke is under way";
    mel("unloadPlugin morvane");
    EXPECT_EQ(session.undo().undoCount(), 0u) << "a recorded stroke would be code that is gone";
    release(at);
}

// The label of every mode; the ngSkinTools2 modes can be entered only where their command exists.
TEST_F(Lifecycle, TheLabelNamesWhatIsEditedAndChangesOnlyWhileShown)
{
    mel("polyPlane -n sheet; select -cl; joint -n bone; cluster -n clu sheet");
    const std::string update = kIdle + "if (`headsUpDisplay -q -vis \"morvaneHUD\"`){string $hudLabel = "
                                       "(\"Sculpting On:";
    edit("-deformer clu");
    edit("-influence bone");
    const struct {
        const char* mode;
        const char* label;
    } rows[] = {
        {"default", "clu.weights"},          {"plug", "clu."},
        {"skinCluster", "skinCluster.bone"}, {"dualQuaternion", "skinCluster.dualQuaternion"},
        {"blendShapeTarget", "NULL : "},     {"blendShapeBase", "NULL.baseWeights"},
    };
    for (const auto& row : rows) {
        const std::vector<std::string> lines =
            traced(*this, [&] { edit(std::string("-weightMode ") + row.mode); });
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ(lines.back(),
                  update + row.label + "\");headsUpDisplay -e -label $hudLabel \"morvaneHUD\";}");
    }
    EXPECT_NE(melString("headsUpDisplay -q -label morvaneHUD"), "Sculpting On:NULL.baseWeights") << "hidden";
    toolOn();
    EXPECT_EQ(melString("headsUpDisplay -q -label morvaneHUD"), "Sculpting On:NULL.baseWeights");
    edit("-weightMode default");
    EXPECT_EQ(melString("headsUpDisplay -q -label morvaneHUD"), "Sculpting On:clu.weights");
}

} // namespace
