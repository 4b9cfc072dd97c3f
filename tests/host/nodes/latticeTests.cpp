// Lattices: closed forms of the deformation, lattice points that are deformed themselves, refusals.
#include "graph/graph.h"
#include "nodes/geometry.h"
#include "support/hostFixture.h"
#include "support/weights.h"

namespace {

using Imath::V3d;
using Texts = std::vector<std::string>;

class Lattice : public testing_support::HostTest {
public:
    host::Points points(const std::string& shape)
    {
        return host::shapeGeometry(session.graph().get(shape))->points();
    }
    static void expectNear(const V3d& actual, const V3d& expected)
    {
        EXPECT_LE((actual - expected).length(), 1e-9 * (1.0 + expected.length())) << actual << expected;
    }
};

TEST_F(Lattice, ThreeDivisionsBendAsBernsteinPolynomialsOfDegreeTwo)
{
    mel("polyPlane -n sheet -w 4 -h 2 -sx 8 -sy 2; setAttr sheet.translateX 10");
    const host::Points before = points("sheetShape");
    const std::string start = testing_support::sceneText(session);
    EXPECT_EQ(melStrings("lattice -divisions 3 2 2 -objectCentered 1 sheet"),
              (Texts{"ffd1", "ffd1Lattice", "ffd1Base"}));
    for (std::size_t i = 0; i < before.size(); ++i)
        expectNear(points("sheetShape")[i], before[i]);
    mel("move -r 0 3 0 ffd1Lattice.pt[1][0:1][0:1]; percent -v 0.5 ffd1 sheet.vtx[4]");
    const host::Points after = points("sheetShape");
    for (std::size_t i = 0; i < before.size(); ++i) {
        const double s = before[i].x / 4 + 0.5;
        expectNear(after[i], before[i] + V3d(0, 3 * 2 * s * (1 - s) * (i == 4 ? 0.5 : 1.0), 0));
    }
    // The lattice moves what lies in its base; the shape may leave the base.
    mel("setAttr ffd1Lattice.translateZ 5; setAttr sheet.translateX 12");
    const host::Points moved = points("sheetShape");
    expectNear(moved[18], before[18] + V3d(0, 1.5, 5)); // at the left edge: now in the middle
    expectNear(moved[26], before[26]);
    mel("undo; undo; undo; undo; undo");
    EXPECT_EQ(testing_support::sceneText(session), start);
}

TEST_F(Lattice, LatticePointsAreDeformedByAClusterAndTheMeshFollows)
{
    mel("polyCube -n box -w 2 -h 2 -d 2; lattice -dv 2 2 2 -oc 1 -n cage box;"
        "select cageLattice.pt[0:1][1][0:1]; cluster -n lift");
    const host::Points before = points("boxShape");
    mel("setAttr liftHandle.translateY 4");
    const host::Points after = points("boxShape");
    for (std::size_t i = 0; i < before.size(); ++i)
        expectNear(after[i], before[i] + V3d(0, before[i].y > 0 ? 4 : 0, 0));
    EXPECT_EQ(melStrings("sets -q liftSet"), Texts{"cageLattice.pt[0:1][1][0:1]"});
    mel("percent -v 0.25 lift cageLattice.pt[0][1][0:1]");
    const host::Points weighted = points("boxShape");
    for (std::size_t i = 0; i < before.size(); ++i)
        expectNear(weighted[i], before[i] + V3d(0, before[i].y < 0 ? 0 : before[i].x < 0 ? 1 : 4, 0));
}

TEST_F(Lattice, WhatIsNotComputedIsRefused)
{
    mel("polyCube -n box");
    EXPECT_NE(melError("lattice -ldv 2 2 2 box").find("-ldivisions"), std::string::npos);
    EXPECT_NE(melError("lattice -ol 1 box").find("-outsideLattice"), std::string::npos);
    EXPECT_NE(melError("lattice -dv 1 2 2 box").find("-divisions"), std::string::npos);
    mel("lattice -dv 3 2 2 -oc 1 box; lattice -e -dv 4 2 2 ffd1");
    EXPECT_EQ(mel("lattice -q -dv ffd1").toIntArray(), (std::vector<int>{4, 2, 2}));
    EXPECT_EQ(points("ffd1LatticeShape").size(), 16u);
    mel("move -r 0 1 0 ffd1Lattice.pt[0][0][0]");
    EXPECT_NE(melError("lattice -e -dv 2 2 2 ffd1").find("changed"), std::string::npos);
    allowMessages();
    mel("setAttr ffd1.local 1");
    EXPECT_NE(melError("pointPosition box.vtx[0]").find("ffd1.local"), std::string::npos);
}

} // namespace
