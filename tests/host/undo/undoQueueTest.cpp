#include "support/hostFixture.h"

#include "types/error.h"
#include "undo/edits.h"
#include "undo/undoQueue.h"

#include <stdexcept>

using namespace host;

namespace {

/// Edits that append a letter to a text; undoing takes it away again.
class UndoQueueTest : public testing_support::HostTest {
public:
    UndoQueueTest() : undo(session.undo()) { undo.flush(); }

    void type(const std::string& letter)
    {
        session.edits().perform([this, letter](Session&) { text += letter; },
                                [this](Session&) { text.pop_back(); });
    }
    void command(const std::string& letters)
    {
        const UndoQueue::CommandScope scope(undo, "type " + letters);
        for (const char letter : letters)
            type(std::string(1, letter));
    }

    UndoQueue& undo;
    std::string text;
};

using Names = std::vector<std::string>;

} // namespace

TEST_F(UndoQueueTest, ACommandIsOneStepAndANewOneEndsRedo)
{
    command("ab");
    command("c");
    command("");
    EXPECT_EQ(undo.names(), (Names{"type ab", "type c"}));
    undo.undo();
    EXPECT_EQ(undo.redoName(), "type c");
    undo.undo();
    EXPECT_EQ(text, "");
    undo.redo();
    EXPECT_EQ(text, "ab");
    command("d");
    EXPECT_EQ(undo.redoCount(), 0u);
    EXPECT_THROW(undo.redo(), Error);
    undo.undo();
    undo.undo();
    EXPECT_THROW(undo.undo(), Error);
}

TEST_F(UndoQueueTest, ChunksAndScopesNestAndTheOutermostCounts)
{
    undo.openChunk("stroke");
    command("a");
    undo.openChunk("inner");
    command("b");
    undo.closeChunk();
    type("c");
    EXPECT_EQ(undo.undoCount(), 0u);
    undo.closeChunk();
    EXPECT_EQ(undo.names(), Names{"stroke"});
    {
        const UndoQueue::CommandScope outer(undo, "outer");
        command("d");
        command("e");
    }
    EXPECT_EQ(undo.names(), (Names{"stroke", "outer"}));
    undo.openChunk("empty");
    undo.closeChunk();
    EXPECT_EQ(undo.undoCount(), 2u);
    EXPECT_THROW(undo.closeChunk(), Error);
    undo.undo();
    undo.undo();
    EXPECT_EQ(text, "");
    undo.redo();
    EXPECT_EQ(text, "abc");
}

TEST_F(UndoQueueTest, UndoInsideAnOpenChunkTakesBackWhatTheChunkHasSoFar)
{
    command("a");
    undo.openChunk("open");
    command("b");
    undo.undo();
    EXPECT_EQ(text, "a");
    command("c");
    undo.closeChunk();
    EXPECT_EQ(undo.names(), (Names{"type a", "open"}));
}

TEST_F(UndoQueueTest, AFailingCommandLeavesNothingHalfDone)
{
    EXPECT_THROW(
        {
            const UndoQueue::CommandScope scope(undo, "fails");
            type("a");
            type("b");
            throw Error("no");
        },
        Error);
    EXPECT_EQ(text, "");
    {
        const UndoQueue::CommandScope outer(undo, "outer");
        type("a");
        {
            UndoQueue::CommandScope inner(undo, "inner");
            type("b");
            inner.fail();
        }
        type("c");
    }
    EXPECT_EQ(text, "ac") << "only the inner command failed";
    EXPECT_EQ(undo.names(), Names{"outer"});
    undo.undo();
    EXPECT_EQ(text, "");
}

TEST_F(UndoQueueTest, SuspendedWorkIsNotRecordedAndIsolatedWorkIsItsOwnStep)
{
    {
        const UndoQueue::CommandScope scope(undo, "outer");
        type("a");
        const UndoQueue::Suspend suspend(undo);
        type("-");
        {
            const UndoQueue::Isolate isolate(undo);
            EXPECT_TRUE(undo.recording());
            command("b");
            undo.openChunk("left open");
            command("c");
        }
        EXPECT_FALSE(undo.recording());
        EXPECT_EQ(undo.openChunks(), 0);
    }
    EXPECT_EQ(undo.names(), (Names{"type b", "left open", "outer"}));
}

TEST_F(UndoQueueTest, AnEntryThatFailsKeepsItsPlaceAndLeavesNothingHalfDone)
{
    bool fails = true;
    const auto stubborn = [&](Session&) {
        if (fails)
            throw Error("cannot go");
    };
    command("z");
    {
        const UndoQueue::CommandScope scope(undo, "mixed");
        type("a");
        session.edits().perform([](Session&) {}, stubborn);
        type("b");
    }
    for (int attempt = 0; attempt < 2; ++attempt)
        EXPECT_THROW(undo.undo(), Error);
    EXPECT_EQ(text, "zab");
    EXPECT_EQ(undo.names(), (Names{"type z", "mixed"}));
    EXPECT_TRUE(undo.recording());
    fails = false;
    undo.undo();
    EXPECT_EQ(text, "z");
    undo.redo();
    EXPECT_EQ(text, "zab");

    session.edits().perform([](Session&) {}, [](Session&) { throw 7; });
    EXPECT_THROW(undo.undo(), Error);
    EXPECT_EQ(undo.undoCount(), 3u);
}

TEST_F(UndoQueueTest, ARedoThatFailsKeepsItsPlaceToo)
{
    int times = 0;
    {
        const UndoQueue::CommandScope scope(undo, "once");
        type("a");
        session.edits().perform(
            [&](Session&) {
                if (++times > 1)
                    throw Error("not twice");
            },
            [](Session&) {});
    }
    undo.undo();
    EXPECT_THROW(undo.redo(), Error);
    EXPECT_EQ(text, "");
    EXPECT_EQ(undo.redoName(), "once");
    EXPECT_EQ(undo.undoCount(), 0u);
}

TEST_F(UndoQueueTest, UndoingIsVisibleToTheStepsAndCannotBeNested)
{
    std::string during;
    session.edits().perform([](Session&) {},
                            [&](Session& inner) {
                                during = inner.undo().isUndoing() ? "undoing" : "";
                                type("never recorded");
                                EXPECT_THROW(inner.undo().undo(), Error);
                            });
    undo.undo();
    EXPECT_EQ(during, "undoing");
    EXPECT_FALSE(undo.isUndoing());
    EXPECT_EQ(undo.undoCount(), 0u);
    EXPECT_EQ(undo.redoCount(), 1u);
}

TEST_F(UndoQueueTest, LengthAndStateBoundTheQueue)
{
    EXPECT_TRUE(undo.infinite());
    for (int step = 0; step < 100; ++step)
        command("x");
    EXPECT_EQ(undo.undoCount(), 100u);
    undo.setInfinite(false);
    EXPECT_EQ(undo.undoCount(), undo.length());
    undo.setLength(2);
    command("y");
    EXPECT_EQ(undo.names(), (Names{"type x", "type y"}));
    undo.setWithoutFlush(false);
    command("z");
    EXPECT_EQ(undo.undoCount(), 2u);
    undo.setWithoutFlush(true);
    undo.setEnabled(false);
    EXPECT_EQ(undo.undoCount(), 0u);
    EXPECT_FALSE(undo.recording());
    undo.setEnabled(true);
    command("w");
    EXPECT_EQ(undo.undoCount(), 1u);
}
