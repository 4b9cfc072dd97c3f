// softMod: falloff around a centre in world space, weights, both frames of motion.
#include "graph/graph.h"
#include "nodes/falloffRamp.h"
#include "nodes/geometry.h"
#include "support/hostFixture.h"
#include "support/weights.h"

#include <cmath>

namespace {

using Imath::V3d;

class SoftMod : public testing_support::HostTest {
public:
    host::Points points(const std::string& shape)
    {
        return host::shapeGeometry(session.graph().get(shape))->points();
    }
    static double smooth(double share) { return 0.5 * (1.0 + std::cos(std::acos(-1.0) * share)); }
};

TEST_F(SoftMod, MovesPointsByWeightAndFalloffFromTheCentre)
{
    mel("polyPlane -n sheet -w 10 -h 5 -sx 10 -sy 5; setAttr sheet.translate -type double3 3 1 0;"
        "setAttr sheet.scale -type double3 2 1 1");
    const host::Points before = points("sheetShape");
    const std::string start = testing_support::sceneText(session);
    mel("softMod -falloffRadius 4 -falloffCenter 5 1 0.5 sheet");
    EXPECT_EQ(points("sheetShape"), before);
    mel("setAttr softMod1Handle.translate -type double3 1 2 -1; setAttr softMod1.envelope 0.5;"
        "percent -v 0.25 softMod1 sheet.vtx[27]");
    host::Points after = points("sheetShape");
    int moved = 0;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const V3d world = before[i] * V3d(2, 1, 1) + V3d(3, 1, 0);
        const double distance = (world - V3d(5, 1, 0.5)).length();
        const double share = (distance < 4 ? smooth(distance / 4) : 0.0) * 0.5 * (i == 27 ? 0.25 : 1.0);
        moved += share > 0 ? 1 : 0;
        const V3d expected = before[i] + V3d(0.5, 2, -1) * share;
        EXPECT_LE((after[i] - expected).length(), 1e-9 * expected.length()) << i;
    }
    EXPECT_GT(moved, 5);
    EXPECT_LT(moved, static_cast<int>(before.size()));

    // A straight curve, and one axis that does not count.
    mel("setAttr softMod1.falloffCurve[0].falloffCurve_Interp 1; setAttr softMod1.falloffInX 0");
    after = points("sheetShape");
    const double z = std::fabs(before[30].z - 0.5);
    EXPECT_NEAR(after[30].y - before[30].y, 2 * 0.5 * (1 - z / 4), 1e-12);
    mel("undo; undo; undo; undo; undo; undo");
    EXPECT_EQ(testing_support::sceneText(session), start);
}

TEST_F(SoftMod, WhatIsNotComputedIsAnErrorThatNamesIt)
{
    using Way = host::FalloffRamp::Way;
    EXPECT_EQ(host::FalloffRamp({{0.25, 1, Way::kNone}, {0.75, 3, Way::kLinear}}).at(0.5), 1.0);
    EXPECT_EQ(host::FalloffRamp({{0.75, 3, Way::kLinear}, {0.25, 1, Way::kLinear}}).at(0.5), 2.0);
    mel("polyPlane -n sheet");
    EXPECT_NE(melError("softMod -falloffRadius 0 sheet").find("-falloffRadius"), std::string::npos);
    mel("softMod -rel sheet");
    EXPECT_EQ(melInt("softMod -q -rel softMod1"), 1);
    EXPECT_EQ(melFloat("softMod -q -frd softMod1"), 5.0);
    allowMessages();
    mel("setAttr softMod1.falloffMode 1");
    EXPECT_NE(melError("pointPosition sheet.vtx[0]").find("falloffMode"), std::string::npos);
}

} // namespace
