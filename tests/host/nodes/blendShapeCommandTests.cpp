// The blendShape command: live targets, targets that are gone, several bases, weights, words of refusal.
#include "graph/graph.h"
#include "nodes/geometry.h"
#include "nodes/pointTexts.h"
#include "support/hostFixture.h"
#include "support/weights.h"

#include <memory>

namespace {

using Imath::V3d;
using Texts = std::vector<std::string>;

class BlendShapeCommand : public testing_support::HostTest {
public:
    host::Node& node(const std::string& name) { return session.graph().get(name); }
    V3d point(const std::string& shape, std::size_t i)
    {
        return host::shapeGeometry(node(shape))->points().at(i);
    }
    void expectPoint(const std::string& shape, std::size_t i, const V3d& expected)
    {
        EXPECT_LE((point(shape, i) - expected).length(), 1e-9 * (1.0 + expected.length()))
            << shape << " " << i << point(shape, i) << expected;
    }
    /// Three sheets of 3 x 2 points; up and wide are the base with some points moved.
    void makeSheets()
    {
        for (const char* name : {"base", "up", "wide"})
            mel(std::string("polyPlane -n ") + name + " -w 2 -h 1 -sx 2 -sy 1");
        mel("move -r 0 2 0 up.vtx[1:2]; move -r 0 0.5 0 up.vtx[4]; move -r 4 0 0 wide.vtx[2]");
    }
};

TEST_F(BlendShapeCommand, TargetsBlendByWeightUnderTheirNamesAndOutliveTheirDeletion)
{
    makeSheets();
    const V3d one = point("baseShape", 1), two = point("baseShape", 2);
    const std::string start = testing_support::sceneText(session);
    EXPECT_EQ(melStrings("blendShape -n face up wide base"), Texts{"face"});
    EXPECT_EQ(melStrings("aliasAttr -q face"), (Texts{"up", "weight[0]", "wide", "weight[1]"}));
    mel("setAttr face.up 0.25; blendShape -e -w 1 0.5 face");
    EXPECT_EQ(melFloats("blendShape -q -w face"), (std::vector<double>{0.25, 0.5}));
    EXPECT_EQ(melInt("blendShape -q -wc face"), 2);
    EXPECT_EQ(melStrings("blendShape -q -t face"), (Texts{"up", "wide"}));
    EXPECT_EQ(melStrings("blendShape -q -g face"), Texts{"baseShape"});
    expectPoint("baseShape", 1, one + V3d(0, 0.5, 0));
    expectPoint("baseShape", 2, two + V3d(2, 0.5, 0));

    mel("move -r 0 0 8 wide.vtx[1]"); // followed, and kept
    expectPoint("baseShape", 1, one + V3d(0, 0.5, 4));
    mel("delete up wide");
    expectPoint("baseShape", 1, one + V3d(0, 0.5, 4));
    expectPoint("baseShape", 2, two + V3d(2, 0.5, 0));
    EXPECT_EQ(melStrings("blendShape -q -t face"), (Texts{"up", "wide"}));
    mel("undo; undo; undo; undo; undo");
    EXPECT_EQ(testing_support::sceneText(session), start);
    mel("redo; redo; redo; redo; redo");
    expectPoint("baseShape", 2, two + V3d(2, 0.5, 0));
}

TEST_F(BlendShapeCommand, TargetsDeletedInTheNextLineAreKept)
{
    makeSheets();
    const V3d two = point("baseShape", 2);
    mel("blendShape -n face -w 0 1 up base; delete up;"
        "setAttr face.inputTarget[0].inputTargetGroup[0].targetWeights[2] 0.25;"
        "setAttr face.inputTarget[0].baseWeights[2] 0.5; setAttr face.envelope 0.5");
    expectPoint("baseShape", 2, two + V3d(0, 2 * 0.25 * 0.5 * 0.5, 0));
}

TEST_F(BlendShapeCommand, TargetsAreAddedWithInBetweensAndUndone)
{
    makeSheets();
    mel("blendShape -n face base");
    const V3d two = point("baseShape", 2);
    const std::string start = testing_support::sceneText(session);
    mel("blendShape -e -t base 4 up 1.0 -t base 4 wide 0.5 face");
    EXPECT_EQ(melStrings("aliasAttr -q face"), (Texts{"up", "weight[4]"}));
    mel("setAttr face.up 0.5");
    expectPoint("baseShape", 2, two + V3d(4, 0, 0));
    mel("setAttr face.up 0.75");
    expectPoint("baseShape", 2, two + V3d(2, 1, 0));
    mel("setAttr face.up 2");
    expectPoint("baseShape", 2, two + V3d(4, 0, 0) * -2.0 + V3d(0, 2, 0) * 3.0);
    mel("undo; undo; undo; undo");
    EXPECT_EQ(testing_support::sceneText(session), start);
}

TEST_F(BlendShapeCommand, EveryShapeBelowTheBaseHasItsOwnDeltas)
{
    mel("polyPlane -n a -sx 1 -sy 1; polyPlane -n b -sx 2 -sy 1; createNode transform -n pair; parent a "
        "pair; parent b pair;"
        "duplicate -n posed pair; move -r 0 1 0 \"posed|a.vtx[0]\"; move -r 0 3 0 \"posed|b.vtx[5]\";"
        "blendShape -n both -w 0 0.5 posed pair");
    EXPECT_EQ(melStrings("blendShape -q -g both").size(), 2u);
    const auto heightOf = [&](const std::string& component) {
        return melFloats("pointPosition -l \"" + component + "\"").at(1);
    };
    EXPECT_NEAR(heightOf("pair|a.vtx[0]"), 0.5, 1e-12);
    EXPECT_NEAR(heightOf("pair|b.vtx[5]"), 1.5, 1e-12);
    EXPECT_EQ(heightOf("pair|b.vtx[0]"), 0.0);
}

TEST_F(BlendShapeCommand, TopologyIsCheckedUnlessAskedNotTo)
{
    makeSheets();
    mel("polyPlane -n small -w 2 -h 1 -sx 1 -sy 1; move -r 0 1 0 small.vtx[0]; curve -d 1 -p 0 0 0 -p 1 0 0");
    const std::string start = testing_support::sceneText(session);
    EXPECT_NE(melError("blendShape small base").find("smallShape does not have the topology of baseShape"),
              std::string::npos);
    EXPECT_NE(melError("blendShape -tc 0 curve1 base").find("curveShape1"), std::string::npos);
    EXPECT_NE(melError("blendShape -w 1 1 up base").find("has no target 1"), std::string::npos);
    EXPECT_EQ(testing_support::sceneText(session), start);
    const V3d zero = point("baseShape", 0), five = point("baseShape", 5);
    mel("blendShape -tc 0 -w 0 1 small base");
    expectPoint("baseShape", 0, zero + V3d(0, 1, 0));
    expectPoint("baseShape", 5, five);
}

TEST_F(BlendShapeCommand, CurvesSurfacesAndLatticesKeepTheirDeltasToo)
{
    mel("curve -n c -d 1 -p 0 0 0 -p 1 0 0 -p 2 0 0; duplicate -n cUp c; move -r 0 1 0 cUp.cv[1:2];"
        "nurbsPlane -n s; duplicate -n sUp s; move -r 0 1 0 sUp.cv[0][3] sUp.cv[1][0:1];"
        "blendShape -w 0 0.5 cUp c; blendShape -w 0 0.5 sUp s; delete cUp sUp");
    const host::Points curve = host::shapeGeometry(node("cShape"))->points();
    EXPECT_EQ(V3d(curve[0].y, curve[1].y, curve[2].y), V3d(0, 0.5, 0.5));
    const host::Points surface = host::shapeGeometry(node("sShape"))->points();
    for (std::size_t i = 0; i < surface.size(); ++i)
        EXPECT_NEAR(surface[i].y, i >= 3 && i <= 5 ? 0.5 : 0.0, 1e-12) << i;

    host::LatticeData lattice;
    lattice.s = 3, lattice.t = 2, lattice.u = 2;
    lattice.pointsRef = std::make_shared<host::Points>(12);
    const std::vector<int> points{1, 2, 3, 10, 11};
    const Texts texts = host::pointTexts(lattice, points);
    EXPECT_EQ(texts, (Texts{"pt[1:2][0][0]", "pt[0][1][0]", "pt[1:2][1][1]"}));
    EXPECT_EQ(host::pointGroup(lattice, texts).points, points);
}

TEST_F(BlendShapeCommand, WhatWasPaintedOnATargetOutlivesItsDeletion)
{
    mel("polyPlane -n base; polyPlane -n smile; blendShape -n face smile base;"
        "setAttr \"face.it[0].itg[0].tw[0]\" .25; setAttr \"face.it[0].bw[1]\" .5");
    const std::string start = testing_support::sceneText(session);
    for (const char* cut :
         {"delete smile", "disconnectAttr smileShape.worldMesh[0] face.it[0].itg[0].iti[6000].igt"}) {
        mel(std::string(cut) + "; undo");
        EXPECT_EQ(melFloat("getAttr \"face.it[0].itg[0].tw[0]\""), 0.25f) << cut;
        EXPECT_EQ(melFloat("getAttr \"face.it[0].bw[1]\""), 0.5f) << cut;
        EXPECT_EQ(testing_support::sceneText(session), start) << cut;
    }
}

TEST_F(BlendShapeCommand, AnEditOfATargetReachesItsShapeThoughNobodyLookedBeforeItWent)
{
    for (const bool looked : {false, true}) {
        mel("file -f -new; polyPlane -n base -sx 1 -sy 1; polyPlane -n targ -sx 1 -sy 1;"
            "blendShape -w 0 1 -n face targ base; pointPosition base.vtx[0]; move -r 0 3 0 targ.vtx[*]");
        if (looked)
            mel("pointPosition base.vtx[0]");
        mel("delete targ");
        EXPECT_EQ(melFloats("pointPosition base.vtx[0]").at(1), 3.0) << looked;
    }
}

TEST_F(BlendShapeCommand, ADisconnectionAmidOthersIsRedoneAlike)
{
    mel("polyPlane -n base -sx 1 -sy 1; polyPlane -n targ -sx 1 -sy 1; blendShape -w 0 1 -n face targ base;"
        "move -r 0 3 0 targ.vtx[*]; disconnectAttr targShape.worldMesh[0] face.it[0].itg[0].iti[6000].igt;"
        "move -r 0 1 0 targ.vtx[*]");
    const double height = melFloats("pointPosition base.vtx[0]").at(1);
    EXPECT_EQ(height, 3.0);
    mel("undo; undo; undo; pointPosition base.vtx[0]; redo; redo; redo");
    EXPECT_EQ(melFloats("pointPosition base.vtx[0]").at(1), height);
}

} // namespace
