// Which way on screen means more weight: how each mode nudges the clicked vertex, and what it leaves behind.
#include "plugin/modes/modeScene.h"

#include "graph/graph.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

#include <cmath>

using namespace testing_support;

namespace {

/// Camera distances: near, where a probe moves the vertex by many pixels, in strong perspective; and far,
/// where it stays within a pixel.
constexpr double kNear = 0.2, kFar = 20;

class Probe : public ModeScene, public ::testing::WithParamInterface<WeightPlace> {
public:
    void SetUp() override
    {
        ModeScene::SetUp();
        build(GetParam());
    }
    double edited() { return weights()[kMiddle]; }
    /// What a probe leaves of a weight.
    double probed(double weight) const
    {
        if (place.probe == WeightPlace::kAround)
            return weight;
        return stored(stored(stored(weight - kStep) + 0.01) - kStep);
    }
};

class ProbeOf : public ModeScene {};

INSTANTIATE_TEST_SUITE_P(Modes, Probe, ::testing::ValuesIn(kWeightPlaces),
                         [](const auto& row) { return row.param.name(); });

// The offset tells the direction bit for bit. Positions of the object's own space are projected as they
// stand, although the object is turned and scaled.
TEST_P(Probe, TheDirectionIsThatOfTheModesNudges)
{
    for (const double distance : {kNear, kFar}) {
        SCOPED_TRACE(distance);
        lookAt(kMiddle, distance);
        const Imath::V2d way = direction(kMiddle);
        if (distance == kNear) {
            ASSERT_GT(way.length() * 2 * kStep, 3) << "too coarse to tell the samples";
        } else {
            ASSERT_LT(way.length() * 2 * kStep, 1);
        }
        const double before = edited();
        const Pixel start = at(kMiddle), by = dragFor(way, 0.05);
        for (const char* flags : {"", "-control"}) {
            const double offset = offsetOf(way, by.x, by.y) / (*flags ? 10 : 1);
            press(start, flags);
            drag({start.x + by.x, start.y + by.y});
            EXPECT_EQ(edited(), stored(before + offset)) << flags;
            drag(start);
            release(start);
            EXPECT_EQ(edited(), before) << "the stroke is over";
        }
    }
}

TEST_P(Probe, APressLeavesTheSceneAsItWas)
{
    lookAt(kMiddle, kNear);
    const std::string start = sceneText(session);
    const std::vector<double> before = weights();
    const State all = state();
    std::vector<Imath::V3d> points;
    for (int vertex = 0; vertex < kVertices; ++vertex)
        points.push_back(point(vertex));
    std::vector<double> expected = before;
    expected[kMiddle] = probed(before[kMiddle]);
    const Pixel here = at(kMiddle);
    press(here);
    EXPECT_EQ(weights(), expected);
    release(here);
    EXPECT_EQ(weights(), expected);
    for (int vertex = 0; vertex < kVertices; ++vertex) {
        const bool mayDiffer = place.probe == WeightPlace::kSteps && vertex == kMiddle;
        EXPECT_LE((point(vertex) - points[static_cast<std::size_t>(vertex)]).length(),
                  mayDiffer ? 1e-6 : 0.0);
    }
    EXPECT_EQ(session.undo().undoCount(), 0u);
    restore(all); // the clicked vertex differs at most; everything else is compared here
    EXPECT_EQ(sceneText(session), start);
}

// Whatever the last digits are: none is lost where the mode puts back what it read.
TEST_P(Probe, WeightsOfAnyDigitsComeBack)
{
    for (const double weight : {0.0, 1.0, 1.0 / 3.0, 0.1, 0.7071067811865476, 0.998, 1e-7}) {
        setWeight(kMiddle, stored(weight));
        lookAt(kMiddle, kNear);
        const std::vector<std::vector<double>> allBefore = rows();
        const double before = edited();
        const Pixel here = at(kMiddle);
        press(here);
        release(here);
        EXPECT_EQ(edited(), probed(before));
        if (place.isSkin()) {
            EXPECT_EQ(rows(), allBefore) << "all influences";
        }
    }
}

// A row that sums to something else than one, as other tools may have left it, is not mended by a press.
TEST_F(ProbeOf, ARowOfASkinThatIsNotNormalisedStaysSo)
{
    build(weightPlace("skinCluster"));
    std::vector<std::vector<double>> all = rows();
    all[kMiddle] = {0, 0.7, 0.4, 0.3};
    setRows(all);
    lookAt(kMiddle, kNear);
    const Pixel here = at(kMiddle);
    press(here);
    EXPECT_EQ(rows(), all);
    release(here);
    EXPECT_EQ(rows(), all);
}

TEST_P(Probe, ADragAcrossTheDirectionOrWithoutMotionAddsNothing)
{
    lookAt(kMiddle, kNear);
    const std::vector<double> before = weights();
    const Imath::V2d pixels = direction(kMiddle) * (2 * kStep);
    const Pixel here = at(kMiddle);
    const Pixel across = {here.x - static_cast<int>(std::lround(pixels.y)),
                          here.y + static_cast<int>(std::lround(pixels.x))};
    press(here);
    drag(across);
    EXPECT_EQ(weights(), before) << "an offset of zero writes the weights of the press";
    release(across);
    EXPECT_EQ(weights(), before);
    EXPECT_EQ(session.undo().undoCount(), 0u);
}

// The pixels of a probe are sixteen-bit numbers: beyond their range they stay at its end.
TEST_F(ProbeOf, FarPixelsEndWhereSixteenBitsEnd)
{
    build(weightPlace("plug"));
    mel("setAttr knee.rotateX 0; setAttr toe.rotateZ 0"); // the skin does not turn the motion
    const Imath::V3d right = screenRight() * 2e6;
    for (unsigned axis = 0; axis < 3; ++axis)
        session.graph().plug("lift.offset").child(axis).setNumber(right[axis]);
    setWeight(kMiddle, 0);
    lookAt(kMiddle, 10);
    const Imath::V2d way = direction(kMiddle);
    EXPECT_EQ(std::fabs(way.x), 65535 / (2 * kStep));
    // What the drag gives follows from that, not from where the vertex really goes.
    const Pixel here = at(kMiddle);
    press(here);
    drag({here.x + 300, here.y});
    EXPECT_EQ(weights()[kMiddle], stored(offsetOf(way, 300, 0)));
    drag(here);
    release(here);
}

// A blend shape is probed through its first geometry, so clicks on its second mesh find no direction.
TEST_F(ProbeOf, ABlendShapesSecondMeshCannotBeDragged)
{
    for (const char* mode : {"blendShapeTarget", "blendShapeBase"}) {
        SCOPED_TRACE(mode);
        if (mel("objExists pair").toInt())
            mel("file -f -new");
        build(weightPlace(mode));
        mel("select twin.vtx[7]; viewFit twin");
        session.undo().flush();
        const std::string start = sceneText(session);
        const Pixel here = at(kMiddle, "twin");
        expectWarning(
            "twin.vtx[7] does not move: the weights of a blend shape are those of its first object.");
        testing::internal::CaptureStderr();
        press(here);
        drag({here.x + 40, here.y + 40});
        release({here.x + 40, here.y + 40});
        EXPECT_NE(
            testing::internal::GetCapturedStderr().find("\nAPI error detected in src/morvaneContext at "),
            std::string::npos);
        EXPECT_EQ(sceneText(session), start);
        EXPECT_EQ(session.undo().undoCount(), 0u);
    }
}

} // namespace
