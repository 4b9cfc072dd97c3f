// The plug-in's boundary in every mode: memory that runs out at any allocation, and any call of the interface
// that fails, of a press, a drag, a release, an undo, a redo, a copy and a paste. Whatever fails, the scene
// holds weights that a complete event left, the undo queue goes with them, and the tool goes on working.
#include "mel/interpreter.h"
#include "plugin/boundary/faults.h"
#include "plugin/history/historyScene.h"
#include "tools/idleQueue.h"
#include "tools/tools.h"
#include "types/error.h"
#include "undo/undoQueue.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iostream>
#include <sstream>

using namespace testing_support;

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr std::size_t kStride = 11;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr std::size_t kStride = 11; ///< everything is slower there: every eleventh fault is tried
#else
constexpr std::size_t kStride = 1;
#endif
#else
constexpr std::size_t kStride = 1;
#endif

const char kEdited[] = "twin.vtx[8] twin.vtx[12] sheet.vtx[1]";
const char kCopied[] = "sheet.vtx[6:8] twin.vtx[7:9]";
const char kPasted[] = "twin.vtx[10:13] sheet.vtx[11:13]";

/// Catches what goes to the error stream.
class Quiet {
public:
    Quiet() : before(std::cerr.rdbuf(text.rdbuf())) {}
    ~Quiet() { std::cerr.rdbuf(before); }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

private:
    std::ostringstream text;
    std::streambuf* before;
};

/// What the scene may hold after an event, and how many undo entries go with it.
struct Outcome {
    State state;
    std::size_t undoCount;
};

/// The last digits of a skin's rows depend on the drag events before, until the release settles them.
bool near(double a, double b)
{
    return std::fabs(a - b) <= 1e-12;
}

bool same(const State& a, const State& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), [](const auto& one, const auto& two) {
        return one.first == two.first &&
               std::equal(one.second.begin(), one.second.end(), two.second.begin(), two.second.end(), near);
    });
}

using Outcomes = std::vector<Outcome>;

class Boundary : public HistoryScene, public ::testing::WithParamInterface<std::tuple<ModeRow, FaultKind>> {
public:
    const ModeRow& row() const { return std::get<0>(GetParam()); }
    FaultKind kind() const { return std::get<1>(GetParam()); }
    bool memoryFails() const { return kind() == FaultKind::kAllocation; }

    void SetUp() override
    {
        HistoryScene::SetUp();
        allowMessages();
        build(row());
        pose();
        startTool();
        setClamps({true, true, 0, 1}); // a redo then gives what the mouse left
        start = clickableState(2);
        setState(start);
        select(kCopied);
        edit("-copy true");
        select(kEdited);
        motion = dragFor(0.3);
        learn();
    }
    /// Every step without faults.
    void learn()
    {
        begin();
        press(from);
        drag(at(0.5));
        half = state();
        drag(at(1));
        full = state();
        release(at(1));
        EXPECT_EQ(session.undo().undoCount(), 1u);
        EXPECT_FALSE(half == start || full == half);
        mel("undo");
        undone = state();
        mel("redo");
        EXPECT_TRUE(same(state(), full));
        begin();
        unrecorded(std::string("select ") + kPasted);
        edit("-paste true");
        EXPECT_EQ(session.undo().undoCount(), 1u);
        pasted = state();
        EXPECT_FALSE(pasted == start);
        begin();
        unrecorded("select twin.vtx[10:13]");
        edit("-paste true");
        pastedOnOne = state();
    }
    void begin()
    {
        setState(start);
        unrecorded(std::string("select ") + kEdited);
        session.undo().flush();
        from = pixelOf(vertexName(0, kClicked));
        trace.clear();
    }
    Pixel at(double part) const
    {
        return {from.x + static_cast<int>(motion.x * part), from.y + static_cast<int>(motion.y * part)};
    }
    void tryMel(const std::string& text)
    {
        try {
            session.mel().execute(text);
            session.tools().idle().run();
        } catch (const host::Error&) {
        }
    }
    std::size_t errorsShown() const
    {
        std::size_t count = 0;
        for (const std::string& line : trace)
            count += line.compare(0, 15, "error\tmorvane: ") == 0;
        return count;
    }

    /// Prepares, runs the step with fault after fault, and checks what each one leaves.
    void withEveryFault(const std::function<void()>& prepare, const std::function<void()>& step,
                        const std::function<void()>& check)
    {
        std::size_t faults = 0;
        for (bool more = true; more; faults += kStride) {
            const std::size_t fails = faults + 1;
            SCOPED_TRACE("fault " + std::to_string(fails));
            begin();
            prepare();
            trace.clear();
            {
                const FaultWatch watched("morvane.so", kind(), fails);
                step();
                more = watched.hasFailed();
            }
            EXPECT_EQ(session.undo().openChunks(), 0);
            if (memoryFails() && more) { // none where a second try has made it good
                EXPECT_LE(errorsShown(), 1u);
            }
            check();
            if (HasFailure())
                return;
        }
        RecordProperty("faults", static_cast<int>(faults));
        EXPECT_TRUE(memoryFails() || faults > kStride) << "nothing was ever asked";
    }
    /// The scene is as one of the outcomes says. A call that fails may leave a part of the objects as one
    /// says and the rest as another.
    void expectOneOf(const Outcomes& outcomes)
    {
        const State now = state();
        for (const Outcome& outcome : outcomes)
            if (same(now, outcome.state) && session.undo().undoCount() == outcome.undoCount)
                return;
        for (const auto& [array, numbers] : now)
            for (std::size_t index = 0; index < numbers.size(); ++index) {
                bool known = false;
                for (const Outcome& outcome : outcomes)
                    known = known || near(outcome.state.at(array)[index], numbers[index]);
                ASSERT_TRUE(std::isfinite(numbers[index])) << array << " at " << index;
                ASSERT_TRUE(known) << array << " at " << index << " is " << numbers[index];
            }
        EXPECT_FALSE(memoryFails()) << "half of it, with " << session.undo().undoCount() << " undo entries";
    }
    /// A stroke, its undo and its redo do what they always do.
    void expectToolWorks()
    {
        begin();
        press(from);
        drag(at(0.5));
        drag(at(1));
        EXPECT_TRUE(same(state(), full)) << "stroke";
        release(at(1));
        EXPECT_EQ(session.undo().undoCount(), 1u) << "stroke";
        mel("undo");
        EXPECT_TRUE(same(state(), undone)) << "undo";
        mel("redo");
        EXPECT_TRUE(same(state(), full)) << "redo";
    }

    State start, half, full, undone, pasted, pastedOnOne;
    Pixel from, motion;
    const Quiet quiet;
};

INSTANTIATE_TEST_SUITE_P(Modes, Boundary,
                         ::testing::Combine(::testing::ValuesIn(modeRows()),
                                            ::testing::Values(FaultKind::kAllocation, FaultKind::kInterface)),
                         [](const auto& row) {
                             return std::string(std::get<0>(row.param).mode) +
                                    (std::get<1>(row.param) == FaultKind::kAllocation ? "Memory" : "Calls");
                         });

TEST_P(Boundary, APressThatFailsLeavesTheWeightsAsTheyWere)
{
    withEveryFault([] {}, [this] { press(from); },
                   [this] {
                       expectOneOf({{start, 0}});
                       // What could be measured may have been less: the stroke goes another way then.
                       drag(at(1));
                       release(at(1));
                       if (session.undo().undoCount() > 0)
                           mel("undo");
                       if (!row().isLayer()) {
                           expectOneOf({{start, 0}});
                       }
                       expectToolWorks();
                   });
}

TEST_P(Boundary, ADragThatFailsLeavesWhatTheDragBeforeLeft)
{
    withEveryFault(
        [this] {
            press(from);
            drag(at(0.5));
        },
        [this] { drag(at(1)); },
        [this] {
            // A skin that takes back what the event before wrote may fail to take the new weights.
            expectOneOf(memoryFails() ? Outcomes{{half, 0}, {full, 0}}
                                      : Outcomes{{half, 0}, {full, 0}, {start, 0}});
            drag(at(0.5));
            EXPECT_TRUE(same(state(), half)) << "the next event";
            drag(at(1));
            release(at(1));
            expectOneOf({{full, 1}});
            mel("undo");
            EXPECT_TRUE(same(state(), undone));
        });
    expectToolWorks();
}

TEST_P(Boundary, AFirstDragThatFailsLeavesWhatWasThereAtThePress)
{
    withEveryFault([this] { press(from); }, [this] { drag(at(1)); },
                   [this] {
                       expectOneOf({{start, 0}, {full, 0}});
                       drag(from);
                       release(from);
                       expectOneOf({{start, 0}});
                   });
    expectToolWorks();
}

TEST_P(Boundary, AReleaseThatFailsKeepsTheStrokeWithItsUndoOrTakesItBack)
{
    withEveryFault(
        [this] {
            press(from);
            drag(at(1));
        },
        [this] { release(at(1)); },
        [this] {
            expectOneOf({{start, 0}, {full, 1}});
            if (session.undo().undoCount() == 1) {
                mel("undo");
                EXPECT_TRUE(same(state(), undone));
                mel("redo");
                EXPECT_TRUE(same(state(), full));
            }
            expectToolWorks();
        });
}

TEST_P(Boundary, AnUndoThatFailsLeavesTheStrokeOrTakesItBack)
{
    withEveryFault(
        [this] {
            press(from);
            drag(at(1));
            release(at(1));
        },
        [this] { tryMel("undo"); },
        [this] {
            expectOneOf({{full, 1}, {full, 0}, {undone, 0}});
            expectToolWorks();
        });
}

TEST_P(Boundary, ARedoThatFailsLeavesWhatTheUndoLeftOrBringsTheStrokeBack)
{
    withEveryFault(
        [this] {
            press(from);
            drag(at(1));
            release(at(1));
            mel("undo");
        },
        [this] { tryMel("redo"); },
        [this] {
            expectOneOf({{undone, 0}, {undone, 1}, {full, 1}});
            expectToolWorks();
        });
}

TEST_P(Boundary, ACopyThatFailsChangesNothingAndTheNextOneIsWhole)
{
    const auto copy = [this] { tryMel("morvaneContext -e -copy true morvaneContext1"); };
    const auto selectCopied = [this] { unrecorded(std::string("select ") + kCopied); };
    withEveryFault(selectCopied, copy, [&] {
        expectOneOf({{start, 0}});
        copy();
        unrecorded(std::string("select ") + kPasted);
        edit("-paste true");
        expectOneOf({{pasted, 1}});
    });
    expectToolWorks();
}

TEST_P(Boundary, APasteThatFailsWritesAllOfItOrNothing)
{
    const auto paste = [this] { tryMel("morvaneContext -e -paste true morvaneContext1"); };
    withEveryFault([this] { unrecorded(std::string("select ") + kPasted); }, paste,
                   [&] {
                       // An object that does not tell what it is leaves the paste to the other.
                       expectOneOf(memoryFails() ? Outcomes{{start, 0}, {pasted, 1}}
                                                 : Outcomes{{start, 0}, {pasted, 1}, {pastedOnOne, 1}});
                       setState(start);
                       session.undo().flush();
                       paste();
                       expectOneOf({{pasted, 1}});
                       mel("undo");
                       EXPECT_TRUE(same(state(), start));
                   });
    expectToolWorks();
}

} // namespace
