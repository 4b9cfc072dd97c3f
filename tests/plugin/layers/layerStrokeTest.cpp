// Strokes and pastes on layers, by what they leave in the layers and in the mesh.
#include "plugin/layers/layerFixture.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

#include <algorithm>
#include <random>

using namespace testing_support;

namespace {

using Weights = std::vector<double>;

struct LayerMode {
    const char* mode;
    const char* target;
};

void PrintTo(const LayerMode& mode, std::ostream* out)
{
    *out << mode.mode;
}

class LayerStroke : public LayerTest, public ::testing::WithParamInterface<LayerMode> {
public:
    void SetUp() override
    {
        LayerTest::SetUp();
        paint(1, "0", Weights(kVertices, 0.5));
        paint(1, "1", Weights(kVertices, 0.25));
        paint(1, "2", Weights(kVertices, 0.125));
        paint(1, GetParam().target, {0.5, 0.25, 0.125, 0.5, 0.875, 0});
        edit(std::string("-weightMode ") + GetParam().mode);
    }
    Weights edited() { return painted(1, GetParam().target); }
};

INSTANTIATE_TEST_SUITE_P(Modes, LayerStroke,
                         ::testing::Values(LayerMode{"ngSkinToolsMask", "mask"},
                                           LayerMode{"ngSkinToolsDualQuaternion", "dq"},
                                           LayerMode{"ngSkinToolsInfluence", "1"}));

TEST_P(LayerStroke, OffsetsByFalloffWithinZeroAndOneAndMovesTheMesh)
{
    // The clamp settings play no part on layers.
    edit("-clampMin true -weightMin 1 -clampMax true -weightMax 0.3");
    mel("softSelect -sse 1 -ssd 6 -ssf 0; select sheet.vtx[1]");
    const std::map<int, double> falloff = selectedFalloff(session, "sheetShape");
    ASSERT_GT(falloff.size(), 2u);
    ASSERT_LT(falloff.size(), static_cast<std::size_t>(kVertices));
    const Weights before = edited();
    const Pixel far = farAway(GetParam().target, 1), start = at(1);
    const std::vector<double> rest = melFloats("pointPosition -l sheet.vtx[1]");
    press(start);
    drag({start.x + (far.x - start.x) / 200, start.y + (far.y - start.y) / 200});
    release({start.x + (far.x - start.x) / 200, start.y + (far.y - start.y) / 200});
    const Weights after = edited();
    const double offset = after[1] - before[1];
    EXPECT_GT(offset, 0.05);
    for (int v = 0; v < kVertices; ++v) {
        const auto k = static_cast<std::size_t>(v);
        const auto soft = falloff.find(v);
        const double wanted = before[k] + (soft == falloff.end() ? 0.0 : offset * soft->second);
        EXPECT_NEAR(after[k], std::min(std::max(wanted, 0.0), 1.0), 1e-12) << "vertex " << v;
    }
    EXPECT_NE(melFloats("pointPosition -l sheet.vtx[1]"), rest);
}

TEST_P(LayerStroke, ThatEndsWhereItBeganLeavesTheLayerAndTheQueueAsTheyWere)
{
    std::vector<Weights> before;
    for (const char* target : {"mask", "dq", "0", "1", "2"})
        before.push_back(painted(1, target));
    const std::size_t entries = session.undo().undoCount();
    const Pixel far = farAway(GetParam().target, 1), start = at(1);
    press(start);
    drag(far);
    EXPECT_EQ(edited()[1], 1.0);
    drag(start);
    release(start);
    std::size_t next = 0;
    for (const char* target : {"mask", "dq", "0", "1", "2"})
        EXPECT_EQ(painted(1, target), before[next++]) << target;
    EXPECT_EQ(session.undo().undoCount(), entries);
}

TEST_P(LayerStroke, UndoTakesBackOnlyWhatTheModeTakesBack)
{
    const bool restores = std::string(GetParam().target) == "1";
    const Weights before = edited();
    const Weights others = painted(1, "0");
    strokeToClamp(GetParam().target, 1);
    const Weights stroked = edited();
    const Weights sharedOut = painted(1, "0");
    ASSERT_NE(stroked, before);
    for (int round = 0; round < 3; ++round) {
        mel("undo");
        EXPECT_EQ(edited(), restores ? before : stroked);
        EXPECT_EQ(painted(1, "0"), sharedOut) << "the others are left as the stroke left them";
        mel("redo");
        EXPECT_EQ(edited(), stroked);
    }
    EXPECT_EQ(sharedOut != others, restores);
}

TEST_P(LayerStroke, APasteIsTakenBackWhole)
{
    press(at(1));
    release(at(1));
    edit("-copy true");
    mel("select sheet.vtx[4] sheet.vtx[5]");
    std::vector<Weights> before;
    for (const char* target : {"mask", "dq", "0", "1", "2"})
        before.push_back(painted(1, target));
    edit("-paste true");
    const Weights pasted = edited();
    EXPECT_EQ(pasted[4], 0.25);
    EXPECT_EQ(pasted[5], 0.25);
    for (int round = 0; round < 2; ++round) {
        mel("undo");
        std::size_t next = 0;
        for (const char* target : {"mask", "dq", "0", "1", "2"})
            EXPECT_EQ(painted(1, target), before[next++]) << target;
        mel("redo");
        EXPECT_EQ(edited(), pasted);
    }
}

class LayerModes : public LayerTest {
public:
    void SetUp() override
    {
        LayerTest::SetUp();
        for (const char* target : {"0", "1", "2"})
            paint(1, target, Weights(kVertices, 0.25));
        paint(1, "mask", {0.5, 0.25, 0.125, 0.5, 0.875, 0});
        paint(1, "dq", {0.1, 0.2, 0.3, 0.4, 0.5, 0.6});
        edit("-weightMode ngSkinToolsMask");
        press(at(1));
        release(at(1));
    }
};

TEST_F(LayerModes, MaskAndDualQuaternionTakeOneAnothersCopiesAndNoOthers)
{
    edit("-copy true -weightMode ngSkinToolsDualQuaternion");
    mel("select sheet.vtx[2]");
    edit("-paste true");
    EXPECT_EQ(painted(1, "dq")[2], static_cast<double>(0.2f)) << "within one call the mode comes first";
    edit("-weightMode ngSkinToolsMask");
    edit("-paste true");
    EXPECT_EQ(painted(1, "mask")[2], static_cast<double>(0.2f)) << "pastes of these modes go through floats";

    const Weights mask = painted(1, "mask");
    mel("select sheet.vtx[1]");
    edit("-weightMode skinCluster");
    edit("-copy true");
    edit("-weightMode ngSkinToolsMask");
    expectWarning("Weights were copied in an incompatible weight mode");
    edit("-paste true");
    EXPECT_EQ(painted(1, "mask"), mask);
    // An influence paste of another mode's copy is left alone, without a word.
    edit("-weightMode ngSkinToolsInfluence");
    const Weights knee = painted(1, "1");
    edit("-paste true");
    EXPECT_EQ(painted(1, "1"), knee);
}

TEST_F(LayerModes, AMaskThatWasNeverPaintedStartsFromZeros)
{
    const int fresh = addLayer("fresh");
    paint(fresh, "1", Weights(kVertices, 1.0));
    edit("-ngLayer fresh");
    const Pixel start = at(1);
    press(start);
    EXPECT_EQ(painted(fresh, "mask"), Weights(kVertices, 0.0)) << "the probe puts back what was read";
    release(start);
    editLayers("-id " + std::to_string(fresh) + " -removeLayer");
    EXPECT_FALSE(painted(1, "mask").empty());
}

/// One vertex, worked out on its own: the others after the edited influence went from `old` to `now`.
Weights redistributed(const Weights& others, double old, double now, bool distribute)
{
    double sum = 0;
    for (const double other : others)
        sum += other;
    double taken = 0;
    if (sum == 0)
        return others;
    if (now > old && sum + now > 1)
        taken = 1 - (sum + now);
    else if (now < old && distribute)
        taken = now - old;
    Weights result;
    for (const double other : others)
        result.push_back(taken == 0 ? other : other - taken * (other / sum));
    return result;
}

TEST_F(LayerModes, StrokesShareOutInfluenceWeightsByTheRule)
{
    edit("-weightMode ngSkinToolsInfluence");
    mel("softSelect -sse 1 -ssd 20 -ssf 0; select sheet.vtx[1]");
    std::mt19937 random(7);
    std::uniform_real_distribution<double> weight(0.0, 0.6);
    for (int round = 0; round < 12; ++round) {
        SCOPED_TRACE(round);
        std::vector<Weights> before(3);
        for (std::size_t influence = 0; influence < 3; ++influence) {
            for (int v = 0; v < kVertices; ++v)
                before[influence].push_back(weight(random));
            paint(1, std::to_string(influence), before[influence]);
        }
        before[0][3] = before[2][3] = 0; // no other weight to share by
        paint(1, "0", before[0]);
        paint(1, "2", before[2]);
        const bool distribute = round % 3 != 0;
        edit(distribute ? "-ngDistributeWeights true" : "-ngDistributeWeights false");
        const Pixel start = at(1), far = farAway("1", 1, round % 2 == 0);
        const Pixel to = {start.x + (far.x - start.x) / 120, start.y + (far.y - start.y) / 120};
        press(start);
        drag(to);
        release(to);
        const Weights knee = painted(1, "1"), hip = painted(1, "0"), toe = painted(1, "2");
        for (std::size_t v = 0; v < static_cast<std::size_t>(kVertices); ++v) {
            const Weights expected =
                redistributed({before[0][v], before[2][v]}, before[1][v], knee[v], distribute);
            EXPECT_NEAR(hip[v], expected[0], 1e-12) << "vertex " << v;
            EXPECT_NEAR(toe[v], expected[1], 1e-12) << "vertex " << v;
        }
        EXPECT_NE(knee[1], before[1][1]);
    }
}

TEST_F(LayerModes, WhetherToShareOutMayChangeWhileTheMouseIsDown)
{
    edit("-weightMode ngSkinToolsInfluence -ngDistributeWeights true");
    const Weights hip = painted(1, "0");
    const Pixel start = at(1), far = farAway("1", 1, true);
    press(start);
    drag(far);
    EXPECT_NE(painted(1, "0"), hip);
    edit("-ngDistributeWeights false");
    drag({(start.x + far.x) / 2, (start.y + far.y) / 2});
    EXPECT_EQ(painted(1, "0"), hip) << "it counts from the next event";
    edit("-ngDistributeWeights true");
    drag(far);
    release(far);
    const Weights knee = painted(1, "1"), shared = painted(1, "0");
    EXPECT_NE(shared, hip);
    mel("undo");
    paint(1, "0", hip);
    mel("redo");
    EXPECT_EQ(painted(1, "1"), knee);
    EXPECT_EQ(painted(1, "0"), shared);
}

} // namespace
