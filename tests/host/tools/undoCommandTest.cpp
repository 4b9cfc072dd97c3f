#include "support/hostFixture.h"

namespace {

using UndoCommandTest = testing_support::HostTest;
using Texts = std::vector<std::string>;

TEST_F(UndoCommandTest, AChunkIsOneStepUnderItsName)
{
    mel("undoInfo -openChunk -chunkName \"build\"; createNode transform -n \"a\"; createNode transform -n "
        "\"b\"; "
        "undoInfo -closeChunk");
    EXPECT_EQ(melString("undoInfo -q -undoName"), "build");
    mel("undo");
    EXPECT_EQ(melStrings("ls a b"), Texts());
    EXPECT_EQ(melString("undoInfo -q -redoName"), "build");
    mel("redo");
    EXPECT_EQ(melStrings("ls a b"), Texts({"a", "b"}));
    EXPECT_NE(melError("undoInfo -closeChunk"), "");
}

TEST_F(UndoCommandTest, TurningUndoOffEmptiesTheQueueUnlessAskedNotTo)
{
    mel("createNode transform -n \"a\"; undoInfo -stateWithoutFlush off; createNode transform -n \"b\"; "
        "undoInfo "
        "-stateWithoutFlush on");
    mel("undo");
    EXPECT_EQ(melStrings("ls a b"), Texts({"b"}));
    mel("redo; undoInfo -state off; undoInfo -state on");
    EXPECT_EQ(melInt("undoInfo -q -undoQueueEmpty"), 1);
    EXPECT_NE(melError("undo"), "");
}

TEST_F(UndoCommandTest, ABoundDropsTheOldestSteps)
{
    mel("undoInfo -infinity off -length 2");
    mel("createNode transform -n \"a\"; createNode transform -n \"b\"; createNode transform -n \"c\"");
    EXPECT_EQ(melStrings("undoInfo -q -printQueue").size(), 2U);
    mel("undo; undo");
    EXPECT_NE(melError("undo"), "");
    EXPECT_EQ(melStrings("ls a b c"), Texts({"a"}));
    EXPECT_NE(melError("undoInfo -length -3").find("-length"), std::string::npos);
}

} // namespace
