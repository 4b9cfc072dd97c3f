// What redo and undo of a stroke write, mode by mode: one table of modes, one of clamps.
#include "plugin/history/historyScene.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

#include <cmath>
#include <functional>

using namespace testing_support;

namespace {

// The clicked mesh comes last, so that where all meshes share the first one's weights it writes last.
const char kEdited[] = "twin.vtx[8] twin.vtx[12] coarse.vtx[4] sheet.vtx[1]";

class StrokeHistory : public HistoryScene, public ::testing::WithParamInterface<ModeRow> {
public:
    void SetUp() override
    {
        HistoryScene::SetUp();
        build(GetParam());
        pose();
        mel("softSelect -sse 1 -ssd 6 -ssf 0");
        startTool();
        select(kEdited);
        start = clickableState(2);
        setState(start);
    }
    const ModeRow& row() const { return GetParam(); }
    double clickedWeight()
    {
        return edited(0)[row().kind == ModeRow::kSkin ? kClicked * 3 + knee(0) : kClicked];
    }
    /// The offset that a drag gives, seen where nothing clamps it; the scene is as before afterwards.
    double offsetOf(Pixel motion)
    {
        setClamps({});
        strokeBy(motion);
        const double offset = clickedWeight() - 0.5;
        mel("undo");
        setState(start);
        return offset;
    }
    /// Makes a motion longer or shorter until its offset is as wanted, more or less. Small motions of a point
    /// are measured in whole pixels, so that the way to go is not known beforehand.
    double tuneOffset(Pixel& motion, double wanted)
    {
        double offset = offsetOf(motion);
        for (int round = 0; round < 6 && std::abs(offset - wanted) > 0.1; ++round) {
            motion.x = static_cast<int>(std::lround(motion.x * wanted / offset));
            motion.y = static_cast<int>(std::lround(motion.y * wanted / offset));
            offset = offsetOf(motion);
        }
        EXPECT_NEAR(offset, wanted, 0.1);
        return offset;
    }

    State start;
};

INSTANTIATE_TEST_SUITE_P(Modes, StrokeHistory, ::testing::ValuesIn(modeRows()),
                         [](const auto& row) { return std::string(row.param.mode); });

const Clamps kClamps[] = {{false, false, 0, 1},    {true, false, 0, 1},  {true, false, 1, 1},
                          {false, true, 0, 0.3},   {true, true, 0, 0.6}, {true, true, 0, 1},
                          {true, true, 1, 0.25}, // they cross: all end at the lower one
                          {false, true, 0, -0.125}};

// Both write from what was recorded at the press, whatever the scene holds by then, and nothing else.
TEST_P(StrokeHistory, RedoAndUndoWriteWhatTheModeSaysFromTheRecordAlone)
{
    const State other = randomState(3);
    const Pieces selected = pieces();
    ASSERT_EQ(selected.size(), 3u);
    ASSERT_GT(selected[0].vertices.size(), 2u);
    for (const double more : {0.35, -0.35}) {
        setState(start);
        Pixel motion = dragFor(more);
        const double offset = tuneOffset(motion, more);
        for (const bool distribute : {true, false})
            for (const Clamps& clamps : kClamps) {
                SCOPED_TRACE(testing::Message()
                             << "offset " << offset << ", clamps " << clamps.min << clamps.max << " "
                             << clamps.low << " " << clamps.high << (distribute ? "" : ", kept to itself"));
                if (!distribute && row().kind != ModeRow::kLayerInfluence)
                    continue;
                edit(std::string("-ngDistributeWeights ") + (distribute ? "true" : "false"));
                setClamps(clamps);
                const StrokeRecord stroke{&row(), selected, offset, clamps, distribute};
                setState(start);
                session.undo().flush();
                strokeBy(motion);
                ASSERT_EQ(session.undo().undoCount(), 1u);
                setClamps({false, false, 1, 7}); // the record keeps its own
                edit(std::string("-ngDistributeWeights ") + (distribute ? "false" : "true"));
                unrecorded("select -cl");
                setState(other);
                mel("undo");
                expectState(state(), changed(other, undoneStroke(stroke, start)), "undo");
                setState(other);
                mel("redo");
                expectState(state(), changed(other, redoneStroke(stroke, start, other)), "redo");
                select(kEdited);
            }
    }
}

TEST_P(StrokeHistory, RedoBringsBackTheLiveStrokeBitForBitWhereBothClampsAreThoseOfTheStroke)
{
    setClamps({true, true, 0, 1});
    const Pixel motion = dragFor(0.35);
    setState(start);
    session.undo().flush();
    strokeBy(motion);
    EXPECT_EQ(session.undo().undoCount(), 1u);
    EXPECT_EQ(melString("undoInfo -q -undoName"), std::string("morvaneToolCmd sculpt ") + row().edited);
    const State stroked = state();
    ASSERT_NE(stroked, start);
    for (int round = 0; round < 2; ++round) {
        mel("undo");
        if (row().isLayer())
            setState(start);
        EXPECT_EQ(state(), start);
        mel("redo");
        EXPECT_EQ(state(), stroked);
    }
}

// Whatever was stored: beyond the clamps, beyond 0 and 1, rows of a skin that do not sum to one.
TEST_P(StrokeHistory, DraggedBackToThePressPointLeavesJustWhatWasStored)
{
    setClamps({true, true, 0, 0.7});
    const Pixel motion = dragFor(0.35);
    State odd = start;
    for (auto& [array, numbers] : odd)
        for (std::size_t index = 0; index < numbers.size(); ++index)
            if (index / (array.compare(0, 4, "skin") == 0 ? 3 : 1) != kClicked && array != "layer mask 0")
                numbers[index] = static_cast<double>(static_cast<float>(numbers[index] * 1.25 - 0.125));
    for (const char* ending : {"", "setToolTo selectSuperContext"}) {
        SCOPED_TRACE(ending);
        toolOn();
        setState(odd);
        session.undo().flush();
        const Pixel from = pixelOf(vertexName(0, kClicked));
        press(from);
        drag({from.x + motion.x, from.y + motion.y});
        EXPECT_FALSE(state() == odd);
        drag(from);
        mel(ending);
        release(from);
        EXPECT_TRUE(state() == odd);
        EXPECT_EQ(session.undo().undoCount(), 0u);
    }
}

// C works while the mouse is down, and on other objects than those of the stroke.
TEST_P(StrokeHistory, ACopyInTheMiddleLeavesTheStrokeAndItsRecordAlone)
{
    setClamps({true, true, 0, 1});
    const Pixel motion = dragFor(0.35), from = pixelOf(vertexName(0, kClicked));
    const Pixel to = {from.x + motion.x, from.y + motion.y};
    strokeBy(motion);
    const State stroked = state();
    mel("undo");
    setState(start);
    session.undo().flush();
    press(from);
    drag({from.x + motion.x / 2, from.y + motion.y / 2});
    const State half = state();
    unrecorded("select coarse.vtx[*]");
    edit("-copy true");
    unrecorded(std::string("select ") + kEdited);
    drag(to);
    release(to);
    EXPECT_EQ(state(), stroked);
    EXPECT_EQ(session.undo().undoCount(), 1u);
    mel("undo");
    const StrokeRecord record{&row(), pieces(), 0, {}};
    EXPECT_EQ(state(), changed(stroked, undoneStroke(record, start)));
    mel("redo");
    EXPECT_EQ(state(), stroked);
    // What was copied is what the stroke had made of it by then.
    mel("softSelect -sse 0; select coarse.vtx[*]");
    edit("-paste true");
    for (std::size_t v = 0; v < 9 && row().kind == ModeRow::kPlain; ++v)
        EXPECT_EQ(edited(2)[v], static_cast<double>(static_cast<float>(half.at(row().arrayOf(2))[v])));
}

// In the modes that go element by element the first element is written as well, as it is, which makes the
// deformer evaluate again: it exists afterwards.
TEST_P(StrokeHistory, ElementWritesEndWithTheFirstElementAsItIs)
{
    if (row().kind != ModeRow::kPlain)
        return; // their numbers are no elements of a plug
    const bool refreshes = row().storesFloats && row().mode != std::string("default");
    const std::string first = row().plugOf(1) + "[0]";
    const auto expectRefreshed = [&](const std::string& what, const std::function<void()>& run) {
        SCOPED_TRACE(what);
        unrecorded("removeMultiInstance " + first);
        const double unset = melFloat("getAttr " + first);
        ASSERT_FALSE(session.graph().plug(row().plugOf(1)).element(0).exists());
        run();
        EXPECT_EQ(session.graph().plug(row().plugOf(1)).element(0).exists(), refreshes);
        EXPECT_EQ(melFloat("getAttr " + first), unset);
    };
    mel("softSelect -sse 0; select twin.vtx[8] sheet.vtx[1]");
    strokeBy(dragFor(0.35));
    expectRefreshed("undo", [&] { mel("undo"); });
    expectRefreshed("redo", [&] { mel("redo"); });
    edit("-copy true");
    expectRefreshed("paste", [&] { edit("-paste true"); });
    expectRefreshed("undo of the paste", [&] { mel("undo"); });
    expectRefreshed("redo of the paste", [&] { mel("redo"); });
}

} // namespace
