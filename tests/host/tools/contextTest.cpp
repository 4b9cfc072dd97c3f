#include "support/hostFixture.h"
#include "testContext.h"

#include "mel/interpreter.h"
#include "tools/contextCommands.h"
#include "tools/tools.h"
#include "undo/undoQueue.h"

#include <stdexcept>

namespace {

using testing_support::HostTest;
using testing_support::NotingCommand;
using testing_support::NotingContext;
using Texts = std::vector<std::string>;

class ContextTest : public HostTest {
public:
    void SetUp() override
    {
        session.tools().contextCommands().add("notingTool", [] { return new NotingCommand; }, {});
        mel("notingTool");
        NotingContext::notes.clear();
        NotingContext::onPress = {};
    }
    void TearDown() override
    {
        NotingContext::onPress = {};
        HostTest::TearDown();
    }
    /// What the tool noted since the last call.
    static Texts notes() { return std::exchange(NotingContext::notes, {}); }
    std::string current() { return melString("currentCtx"); }
};

TEST_F(ContextTest, CommandMakesNumberedAndNamedTools)
{
    EXPECT_EQ(melString("notingTool"), "notingTool2");
    EXPECT_EQ(melString("notingTool -strength 3 mine"), "mine");
    EXPECT_EQ(melFloat("notingTool -q -strength mine"), 3.0);
    mel("notingTool -e -st 0.5 notingTool1");
    EXPECT_EQ(melFloat("notingTool -q -strength notingTool1"), 0.5);
    EXPECT_EQ(melFloat("notingTool -q -strength mine"), 3.0) << "each tool keeps its own settings";
    EXPECT_EQ(melInt("notingTool -exists mine"), 1);
    EXPECT_EQ(melInt("notingTool -exists yours"), 0);
    EXPECT_EQ(melString("contextInfo -c mine"), "noting");
    EXPECT_EQ(melString("contextInfo -title mine"), "Noting Tool");
}

TEST_F(ContextTest, BadUseOfTheCommandNamesWhatIsWrong)
{
    const struct {
        const char* command;
        const char* names;
    } cases[] = {
        {"notingTool notingTool1", "notingTool1"},
        {"notingTool -e -weakness 1 notingTool1", "weakness"},
        {"notingTool -e -strength 1 nobody", "nobody"},
        {"notingTool -e -strength -1 notingTool1", "notingTool"},
        {"notingTool -e -strength 1", "name"},
        {"setToolTo nobody", "nobody"},
        {"contextInfo -c nobody", "nobody"},
    };
    for (const auto& refused : cases)
        EXPECT_NE(melError(refused.command).find(refused.names), std::string::npos) << refused.command;
    EXPECT_EQ(melFloat("notingTool -q -strength notingTool1"), 1.0);
}

TEST_F(ContextTest, EventsReachTheCurrentToolWithPositionButtonAndKeys)
{
    mel("viewportEvent -press 5 6; viewportEvent -release 5 6");
    EXPECT_EQ(notes(), Texts());
    mel("setToolTo notingTool1");
    EXPECT_EQ(current(), "notingTool1");
    EXPECT_EQ(session.tools().helpText, "Press to note.");
    EXPECT_EQ(notes(), Texts({"on"}));

    mel("viewportEvent -press 5 6 -shift; viewportEvent -drag 7 8; viewportEvent -release 9 10");
    EXPECT_EQ(notes(), Texts({"press 5 6 left shift", "drag 7 8 left shift", "release 9 10 left shift"}));
    mel("viewportEvent -press 1 2 -button 2 -control; viewportEvent -release 1 2; viewportEvent -move 3 4");
    EXPECT_EQ(notes(), Texts({"press 1 2 middle control", "release 1 2 middle control", "move 3 4"}));

    // The right button belongs to the menus; drags and releases without a press belong to nobody.
    mel("viewportEvent -press 1 2 -button 3; viewportEvent -drag 3 4; viewportEvent -release 3 4");
    EXPECT_EQ(notes(), Texts());
    mel("viewportEvent -key \"Return\"; viewportEvent -key \"Delete\"; viewportEvent -key \"Escape\"");
    EXPECT_EQ(notes(), Texts({"complete", "delete", "abort"}));

    mel("setToolTo selectSuperContext");
    EXPECT_EQ(notes(), Texts({"off"}));
    EXPECT_NE(melError("viewportEvent -press 1 2 -button 4").find("4"), std::string::npos);
}

TEST_F(ContextTest, ChangingTheToolWithinAPressDropsTheRestOfIt)
{
    mel("notingTool; setToolTo notingTool1; viewportEvent -press 1 2");
    mel("setToolTo notingTool2");
    notes();
    mel("viewportEvent -drag 3 4; viewportEvent -release 3 4");
    EXPECT_EQ(notes(), Texts());
}

TEST_F(ContextTest, ExceptionsOfAToolAreReportedAndGoNoFurther)
{
    mel("setToolTo notingTool1");
    NotingContext::onPress = [] { throw std::runtime_error("out of ink"); };
    expectError("Tool notingTool1 failed with an exception: out of ink");
    mel("viewportEvent -press 1 2; viewportEvent -release 1 2");
    EXPECT_EQ(notes().back(), "release 1 2 left");
}

TEST_F(ContextTest, WhatAToolRecordsIsAStepOfItsOwn)
{
    mel("setToolTo notingTool1; createNode transform -name \"before\"");
    NotingContext::onPress = [this] { session.mel().execute("createNode transform -name \"drawn\""); };
    mel("global proc play() { createNode transform -name \"outer\"; viewportEvent -press 1 2; "
        "viewportEvent -release 1 2; } play");
    mel("undo");
    EXPECT_EQ(melInt("objExists drawn"), 0);
    EXPECT_EQ(melInt("objExists outer"), 1) << "the stroke was undone together with what played it";
}

TEST_F(ContextTest, RemovingTheCommandLeavesTheToolAndEndsIt)
{
    mel("setToolTo notingTool1");
    notes();
    session.tools().contextCommands().remove("notingTool");
    EXPECT_EQ(notes(), Texts({"off"}));
    EXPECT_EQ(current(), "selectSuperContext");
    EXPECT_EQ(melInt("contextInfo -ex notingTool1"), 0);
    EXPECT_NE(melError("notingTool").find("notingTool"), std::string::npos);
}

TEST_F(ContextTest, RemovingTheCommandIsRefusedWhileItsToolWorks)
{
    mel("setToolTo notingTool1");
    NotingContext::onPress = [this] { session.tools().contextCommands().remove("notingTool"); };
    expectError(
        "Tool notingTool1 failed with an exception: The tools of 'notingTool' cannot be removed while "
        "a tool is at work.");
    mel("viewportEvent -press 1 2; viewportEvent -release 1 2");
    EXPECT_EQ(current(), "notingTool1");
}

TEST_F(ContextTest, AnEventComesAfterWhatWaitsForIdle)
{
    mel("evalDeferred \"notingTool late\"; viewportEvent -key \"a\"; setToolTo late;"
        "evalDeferred \"setToolTo notingTool1\"; viewportEvent -press 3 4;");
    EXPECT_EQ(notes(), (Texts{"on", "off", "on", "press 3 4 left"}));
    EXPECT_EQ(current(), "notingTool1");
    mel("viewportEvent -release 3 4");
}

} // namespace
