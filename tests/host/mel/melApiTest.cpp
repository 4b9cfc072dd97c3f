#include "mel/interpreter.h"
#include "support/hostFixture.h"
#include "tools/idleQueue.h"
#include "tools/tools.h"

#include <maya/MCommandResult.h>
#include <maya/MDoubleArray.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MStringArray.h>

namespace {

using MelApi = testing_support::HostTest;

TEST_F(MelApi, everyResultFormReadsItsTypeAndLeavesItsTargetAloneForOthers)
{
    int number = -1;
    double real = -1.0;
    MString text = "untouched";
    MIntArray numbers(1, -1);
    MDoubleArray reals(1, -1.0);
    MStringArray texts;
    EXPECT_TRUE(MGlobal::executeCommand("size \"abc\"", number));
    EXPECT_TRUE(MGlobal::executeCommand("1.5 * 3", real));
    EXPECT_TRUE(MGlobal::executeCommand("toupper \"a\"", text));
    EXPECT_TRUE(MGlobal::executeCommand("$i = {4, 5}", numbers));
    EXPECT_TRUE(MGlobal::executeCommand("$f = {4.5, 5}", reals));
    EXPECT_TRUE(MGlobal::executeCommand("$s = {\"x\", \"y\"}", texts));
    EXPECT_EQ(number, 3);
    EXPECT_EQ(real, 4.5);
    EXPECT_STREQ(text.asChar(), "A");
    ASSERT_EQ(numbers.length(), 2u);
    EXPECT_EQ(numbers[1], 5);
    ASSERT_EQ(reals.length(), 2u);
    EXPECT_EQ(reals[0], 4.5);
    ASSERT_EQ(texts.length(), 2u);
    EXPECT_STREQ(texts[1].asChar(), "y");

    EXPECT_EQ(MGlobal::executeCommand("1.5", number), MS::kFailure);
    EXPECT_EQ(MGlobal::executeCommand("1", real), MS::kFailure);
    EXPECT_EQ(MGlobal::executeCommand("1", text), MS::kFailure);
    EXPECT_EQ(MGlobal::executeCommand("\"a\"", texts), MS::kFailure);
    EXPECT_EQ(number, 3);
    EXPECT_EQ(real, 4.5);
    EXPECT_STREQ(text.asChar(), "A");
    EXPECT_EQ(texts.length(), 2u);
}

TEST_F(MelApi, aFailingCommandShowsItsErrorAndTheNextOneRuns)
{
    int number = 7;
    MCommandResult result;
    expectError("line 1: Cannot find procedure \"noSuchThing\".");
    expectError("line 1: Syntax error: unexpected end of the text.");
    EXPECT_EQ(MGlobal::executeCommand("noSuchThing", number), MS::kFailure);
    EXPECT_EQ(MGlobal::executeCommand("print (", result), MS::kFailure);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(result.getResult(number), MS::kFailure);
    EXPECT_EQ(number, 7);
    EXPECT_TRUE(MGlobal::executeCommand("exists size", result));
    EXPECT_EQ(result.resultType(), MCommandResult::kInt);
    EXPECT_TRUE(result.getResult(number));
    EXPECT_EQ(number, 1);
}

TEST_F(MelApi, commandsAreTracedInOrderAndIdleOnesWaitForIdle)
{
    trace.clear();
    EXPECT_TRUE(MGlobal::executeCommandOnIdle("global string $order; $order += \"idle\";"));
    EXPECT_TRUE(MGlobal::executeCommand("string $order = \"now \";\n", false, true));
    ASSERT_NE(session.mel().global("$order"), nullptr);
    EXPECT_EQ(*session.mel().global("$order"), host::mel::Value("now ")) << "the idle command came too early";
    session.tools().idle().run();
    EXPECT_EQ(melString("$order"), "now idle");
    const std::vector<std::string> expected = {"idle\tdisplay=0\tglobal string $order; $order += \"idle\";",
                                               "mel\tdisplay=0 undo=1\tstring $order = \"now \";\\n"};
    EXPECT_EQ(trace, expected);
}

TEST_F(MelApi, onlyCommandsAskedForUndoReachTheUndoQueue)
{
    EXPECT_TRUE(MGlobal::executeCommand("createNode transform -name unrecorded"));
    EXPECT_TRUE(MGlobal::executeCommand("createNode transform -name recorded", false, true));
    mel("undo");
    EXPECT_EQ(melInt("objExists recorded"), 0);
    EXPECT_EQ(melInt("objExists unrecorded"), 1);
    melError("undo");
    EXPECT_EQ(melInt("objExists unrecorded"), 1);
}

} // namespace
