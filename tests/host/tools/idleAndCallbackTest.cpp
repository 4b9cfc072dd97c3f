#include "support/hostFixture.h"

#include "mel/interpreter.h"
#include "tools/idleQueue.h"
#include "tools/sceneCallbacks.h"
#include "tools/tools.h"
#include "undo/undoQueue.h"

#include <maya/MSceneMessage.h>

namespace {

using testing_support::HostTest;

class IdleTest : public HostTest {
public:
    void SetUp() override
    {
        mel("global string $order; $order = \"\"");
        mel("global proc note(string $text) { global string $order; $order += $text; }");
    }
    std::string order() { return melString("global string $order; string $copy = $order;"); }
};

TEST_F(IdleTest, CommandsRunInOrderAndWhatTheyQueueRunsAfterThem)
{
    host::IdleQueue& idle = session.tools().idle();
    idle.add("note \"a\"");
    idle.add("note \"b\"; evalDeferred \"note \\\"d\\\"\"");
    idle.add("note \"c\"");
    EXPECT_EQ(order(), "");
    idle.run();
    EXPECT_EQ(order(), "abcd");
    EXPECT_TRUE(idle.empty());
}

TEST_F(IdleTest, AFailingCommandIsReportedAndTheRestRuns)
{
    expectError("line 1: Cannot find procedure \"nonsense\".");
    session.tools().idle().add("nonsense");
    session.tools().idle().add("note \"after\"");
    session.tools().idle().run();
    EXPECT_EQ(order(), "after");
}

TEST_F(IdleTest, EventsRunTheQueue)
{
    mel("evalDeferred \"note \\\"x\\\"\"; viewportEvent -move 1 1");
    EXPECT_EQ(order(), "x");
}

TEST_F(IdleTest, OnlyWhatAPersonDefersIsUndoable)
{
    const std::size_t before = session.undo().undoCount();
    session.tools().idle().add("createNode transform");
    session.tools().idle().run();
    EXPECT_EQ(session.undo().undoCount(), before);
    mel("evalDeferred \"createNode transform\"");
    session.tools().idle().run();
    EXPECT_EQ(session.undo().undoCount(), before + 1);
}

class CallbackTest : public HostTest {
public:
    static std::string calls;
    static MCallbackId own;
    void SetUp() override { calls.clear(); }
    static void first(void*) { calls += "first "; }
    static void second(void* data) { calls += static_cast<const char*>(data); }
    static void once(void*)
    {
        calls += "once ";
        EXPECT_EQ(MMessage::removeCallback(own), MStatus::kSuccess);
    }
};
std::string CallbackTest::calls;
MCallbackId CallbackTest::own = 0;

TEST_F(CallbackTest, QuittingCallsWhatWaitsForItOnceAndInOrder)
{
    char text[] = "second ";
    own = MSceneMessage::addCallback(MSceneMessage::kMayaExiting, once);
    MSceneMessage::addCallback(MSceneMessage::kMayaExiting, first);
    MSceneMessage::addCallback(MSceneMessage::kMayaExiting, second, text);
    MSceneMessage::addCallback(MSceneMessage::kAfterNew, first);
    mel("quit -f");
    EXPECT_EQ(calls, "once first second ");
    EXPECT_TRUE(session.quitting());
    mel("quit -f");
    EXPECT_EQ(calls, "once first second ");
    session.tools().callbacks().exiting();
    EXPECT_EQ(calls, "once first second first second ") << "a removed callback was called";
}

TEST_F(CallbackTest, IdsAreDifferentAndRemovedOnce)
{
    const MCallbackId a = MSceneMessage::addCallback(MSceneMessage::kMayaExiting, first);
    const MCallbackId b = MSceneMessage::addCallback(MSceneMessage::kMayaExiting, first);
    EXPECT_NE(a, 0U);
    EXPECT_NE(a, b);
    EXPECT_EQ(MMessage::removeCallback(a), MStatus::kSuccess);
    EXPECT_EQ(MMessage::removeCallback(a), MStatus::kFailure);
    EXPECT_TRUE(session.tools().callbacks().has(b));
    MStatus status;
    EXPECT_EQ(MSceneMessage::addCallback(MSceneMessage::kMayaExiting, nullptr, nullptr, &status), 0U);
    EXPECT_EQ(status, MStatus::kFailure);
}

} // namespace
