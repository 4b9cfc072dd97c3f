// The commands that select and that set the options of selecting, with undo.
#include "selectionFixture.h"

#include "undo/undoQueue.h"

using namespace testing_support;

namespace {

class SelectCommands : public SelectionTest {
public:
    SelectCommands()
    {
        mel("polyPlane -n sheet -sx 4 -sy 4; polyPlane -n other -sx 2 -sy 2; createNode transform -n group1;"
            "parent other group1; select -cl");
    }
};

TEST_F(SelectCommands, EveryWayOfCombiningAndItsUndo)
{
    const struct {
        const char* command;
        Names expected;
    } steps[] = {
        {"select sheet.vtx[3:5]", {"sheet.vtx[3:5]"}},
        {"select -add sheet.vtx[6] sheet.vtx[9]", {"sheet.vtx[3:6]", "sheet.vtx[9]"}},
        {"select -tgl sheet.vtx[4] sheet.vtx[10]", {"sheet.vtx[3]", "sheet.vtx[5:6]", "sheet.vtx[9:10]"}},
        {"select -d sheet.vtx[0:5]", {"sheet.vtx[6]", "sheet.vtx[9:10]"}},
        {"select -add other", {"sheet.vtx[6]", "sheet.vtx[9:10]", "other"}},
        {"select -addFirst group1", {"group1", "sheet.vtx[6]", "sheet.vtx[9:10]", "other"}},
        {"select -tgl other", {"group1", "sheet.vtx[6]", "sheet.vtx[9:10]"}},
        {"select -r sheet sheet", {"sheet"}},
        {"select -hi group1", {"group1", "other"}},
        {"select -all", {"sheet", "group1"}},
        {"select \"oth*r\"", {"other"}},
        {"select -cl", {}},
    };
    std::vector<Names> states = {{}};
    for (const auto& step : steps) {
        mel(step.command);
        EXPECT_EQ(selected(), step.expected) << step.command;
        states.push_back(step.expected);
    }
    for (std::size_t left = states.size() - 1; left-- > 0;) {
        mel("undo");
        EXPECT_EQ(selected(), states[left]) << "undone to " << left;
    }
    mel("redo; redo");
    EXPECT_EQ(selected(), states[2]);
}

TEST_F(SelectCommands, AFailingSelectChangesNothing)
{
    mel("select sheet.vtx[3]");
    const std::size_t entries = session.undo().undoCount();
    EXPECT_NE(melError("select other nobody").find("No object matches name: nobody"), std::string::npos);
    EXPECT_NE(melError("select -add -tgl other").find("only one of"), std::string::npos);
    EXPECT_EQ(selected(), Names{"sheet.vtx[3]"});
    EXPECT_EQ(session.undo().undoCount(), entries);
}

TEST_F(SelectCommands, ASetStandsForItsMembersUnlessAskedNot)
{
    mel("sets -n band sheet.vtx[2:4] other; select -cl");
    mel("select band");
    EXPECT_EQ(selected(), (Names{"sheet.vtx[2:4]", "other"}));
    mel("select -ne band");
    EXPECT_EQ(selected(), Names{"band"});
}

TEST_F(SelectCommands, DeletedThingsLeaveTheSelectionAndUndoOfSelectBringsARichSelectionBack)
{
    mel("select sheet other");
    host::RichSelection rich;
    rich.selection = named({"sheet.vtx[7]"});
    state().setRich(rich);
    mel("select other");
    EXPECT_EQ(texts(state().rich().selection), Names{"other"});
    mel("undo");
    EXPECT_EQ(texts(state().rich().selection), Names{"sheet.vtx[7]"});
    mel("delete sheet");
    EXPECT_EQ(selected(), Names{"other"});
    EXPECT_TRUE(texts(state().rich().selection).empty());
    mel("undo");
    EXPECT_EQ(selected(), (Names{"sheet", "other"})) << "what comes back is selected again";
}

TEST_F(SelectCommands, OptionsAreQueriedAndUndone)
{
    const struct {
        const char *set, *query, *before, *after;
    } rows[] = {
        {"softSelect -sse 1", "softSelect -q -sse", "0", "1"},
        {"softSelect -e -softSelectFalloff 1", "softSelect -q -ssf", "0", "1"},
        {"softSelect -ssd 2.5", "softSelect -q -softSelectDistance", "5", "2.5"},
        {"softSelect -ssc \"1,0,1,0,0.5,1\"", "softSelect -q -ssc", "1,0,2,0,1,2", "1,0,1,0,0.5,1"},
        {"symmetricModelling -symmetry 1", "symmetricModelling -q -symmetry", "0", "1"},
        {"symmetricModelling -e -about world", "symmetricModelling -q -about", "object", "world"},
        {"symmetricModelling -axis z", "symmetricModelling -q -ax", "x", "z"},
        {"symmetricModelling -t 0.25", "symmetricModelling -q -tolerance", "0.001", "0.25"},
        {"symmetricModelling -preserveSeam on", "symmetricModelling -q -ps", "0", "1"},
        {"selectMode -component", "selectMode -q -component", "0", "1"},
        {"selectPref -clickDrag true", "selectPref -q -clickDrag", "0", "1"},
        {"selectPref -preSelectHilite 1", "selectPref -q -psh", "0", "1"},
        {"selectPref -clickBoxSize 4", "selectPref -q -cbs", "10", "4"},
        {"selectPref -tso on", "selectPref -q -trackSelectionOrder", "0", "1"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(melString(row.query), row.before) << row.query;
        mel(row.set);
        EXPECT_EQ(melString(row.query), row.after) << row.set;
        mel("undo");
        EXPECT_EQ(melString(row.query), row.before) << "undone: " << row.set;
        mel("redo");
        EXPECT_EQ(melString(row.query), row.after) << "redone: " << row.set;
    }
    mel("softSelect -ssr");
    EXPECT_EQ(melString("softSelect -q -ssd"), "5");
    EXPECT_EQ(melInt("selectMode -q -object"), 0);
}

TEST_F(SelectCommands, ImpossibleOptionsAreRefusedAndNothingIsSet)
{
    for (const char* command :
         {"softSelect -sse 1 -ssf 4", "softSelect -sse 1 -ssd -2", "softSelect -sse 1 -ssc \"1,0\"",
          "symmetricModelling -s 1 -axis w", "symmetricModelling -s 1 -topoSymmetry 1", "selectMode",
          "selectMode -object -component", "selectPref -clickDrag 1 -clickBoxSize 0", "softSelect -q"})
        EXPECT_FALSE(melError(command).empty()) << command;
    EXPECT_EQ(melInt("softSelect -q -sse"), 0);
    EXPECT_EQ(melInt("symmetricModelling -q -symmetry"), 0);
    EXPECT_EQ(melInt("selectPref -q -clickDrag"), 0);
}

TEST_F(SelectCommands, FilterExpandKeepsOneKindOfThing)
{
    mel("select sheet.vtx[3:4] sheet.f[1] other");
    EXPECT_EQ(melStrings("filterExpand -sm 31"), (Names{"sheet.vtx[3]", "sheet.vtx[4]"}));
    EXPECT_EQ(melStrings("filterExpand -ex 0 -sm 31 -sm 34"), (Names{"sheet.vtx[3:4]", "sheet.f[1]"}));
    EXPECT_EQ(melStrings("filterExpand -sm 12"), Names{"other"});
    EXPECT_NE(melError("filterExpand -sm 77").find("77"), std::string::npos);
}

} // namespace
