// The keys C and V: from the key over its name command and runtime command to the tool, in one place only.
#include "plugin/history/historyScene.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

using namespace testing_support;

namespace {

struct KeyRow {
    const char* name;
    const char* context; ///< MEL that chooses the tool
    const char* panel;   ///< with the focus
    const char* modifiers;
    bool works;
};

std::ostream& operator<<(std::ostream& out, const KeyRow& row)
{
    return out << row.name;
}

const char kTool[] = "setToolTo morvaneContext1";
const char kAnother[] = "if (!`contextInfo -exists another`) {morvaneContext -weightMode plug another;}"
                        "setToolTo another";
const char kOwnSet[] = "setToolTo selectSuperContext; if (!`hotkeySet -exists \"Mine\"`) {hotkeySet -source "
                       "\"Maya_Default\" \"Mine\";} hotkeySet -e -current \"Mine\"; setToolTo "
                       "morvaneContext1";
const char kModelPanel[] = "modelPanel4";

const KeyRow kRows[] = {
    {"InTheToolOverAModelPanel", kTool, kModelPanel, "", true},
    {"OverTheOutliner", kTool, "outlinerPanel1", "", false},
    {"OverTheScriptEditor", kTool, "scriptEditorPanel1", "", false},
    {"InTheSelectTool", "setToolTo selectSuperContext", kModelPanel, "", false},
    {"AfterTheToolWasOffAndOn", "setToolTo selectSuperContext; setToolTo morvaneContext1", kModelPanel, "",
     true},
    // The keys belong to the first tool, whichever of them is on.
    {"InAnotherToolOfItsKind", kAnother, kModelPanel, "", true},
    {"OverTheOutlinerInAnotherToolOfItsKind", kAnother, "outlinerPanel1", "", false},
    {"OverASetOfTheUsersOwn", kOwnSet, kModelPanel, "", true},
    {"WithShift", kTool, kModelPanel, "-shift", false},
    {"WithControl", kTool, kModelPanel, "-control", false},
};

class Keys : public HistoryScene, public ::testing::WithParamInterface<KeyRow> {
public:
    void SetUp() override
    {
        HistoryScene::SetUp();
        build(rowOf("default"));
        toolOn();
        session.undo().flush();
    }
    void properly() { mel(std::string(kTool) + "; setFocus " + kModelPanel); }
    void asTheRowSays() { mel(std::string(GetParam().context) + "; setFocus " + GetParam().panel); }
    void key(const std::string& key, const std::string& modifiers = {})
    {
        mel("viewportEvent -key \"" + key + "\" " + modifiers);
    }
};

INSTANTIATE_TEST_SUITE_P(Places, Keys, ::testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(Keys, CopyAndPasteWhereTheyBelongAndDoNothingElsewhere)
{
    const State start = state();
    select("sheet.vtx[*]");
    asTheRowSays();
    key("c", GetParam().modifiers);
    properly();
    select("twin.vtx[*]");
    key("v");
    EXPECT_EQ(state().at("weights 1") == start.at("weights 0"), GetParam().works) << "C";
    EXPECT_EQ(state() == start, !GetParam().works);

    setState(start);
    select("sheet.vtx[*]");
    key("c");
    select("twin.vtx[*]");
    asTheRowSays();
    session.undo().flush();
    const std::string scene = sceneText(session);
    key("v", GetParam().modifiers);
    EXPECT_EQ(state().at("weights 1") == start.at("weights 0"), GetParam().works) << "V";
    EXPECT_EQ(sceneText(session) != scene, GetParam().works);
    EXPECT_EQ(session.undo().undoCount(), GetParam().works ? 1u : 0u);
}

TEST_F(HistoryScene, EveryStationOfAKeyIsPassed)
{
    build(rowOf("default"));
    toolOn();
    for (const auto& [key, name] : {std::pair<std::string, std::string>{"c", "Copy"}, {"v", "Paste"}}) {
        SCOPED_TRACE(key);
        const std::string event = "viewportEvent -key \"" + key + "\"";
        EXPECT_EQ(melString("hotkey -q -keyShortcut \"" + key + "\" -ctxClient \"morvaneClient\" -name"),
                  "Morvane" + name + "NameCommand");
        mel("global int $passed; $passed = 0; runTimeCommand -e -command \"global int $passed; $passed += "
            "1\" "
            "morvane" +
            name);
        mel(event);
        EXPECT_EQ(melInt("global int $passed; int $now = $passed"), 1) << "the runtime command";
        mel("nameCommand -annotation \"x\" -sourceType \"mel\" -command \"global int $passed; $passed += "
            "10\" "
            "Morvane" +
            name + "NameCommand");
        mel(event);
        EXPECT_EQ(melInt("global int $passed; int $now = $passed"), 11) << "the name command, and no other";
    }
}

} // namespace
