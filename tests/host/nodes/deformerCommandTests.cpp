#include "graph/graph.h"
#include "graph/weightRows.h"
#include "nodes/geometry.h"
#include "selection/component.h"
#include "support/hostFixture.h"
#include "types/api.h"

#include <maya/MFnGeometryFilter.h>
#include <maya/MFnSet.h>
#include <maya/MObjectArray.h>
#include <maya/MStringArray.h>

namespace {

using host::Api;
using Texts = std::vector<std::string>;

class DeformerCommands : public testing_support::HostTest {
public:
    host::Node& node(const std::string& name) { return session.graph().get(name); }
    MDagPath path(const std::string& name) { return Api::path(node(name).asDag()); }
    host::Points points(const std::string& shape) { return host::shapeGeometry(node(shape))->points(); }

    /// body (3 x 2 points in the xz plane), joints a (x -1), b (0), c (1) and a skinCluster.
    std::string bind(const std::string& flags)
    {
        mel("polyPlane -n body -w 2 -h 1 -sx 2 -sy 1;"
            "select -cl; joint -n a -p -1 0 0; joint -n b -p 0 0 0; joint -n c -p 1 0 0;");
        return melStrings("skinCluster -toSelectedBones " + flags + " a b c body")[0];
    }
    double sum(const std::string& skin, const std::string& point)
    {
        double total = 0.0;
        for (const double weight : melFloats("skinPercent -q -value " + skin + " " + point))
            total += weight;
        return total;
    }
};

TEST_F(DeformerCommands, SkinClusterBindsByDistanceWithFullRowsAndDeforms)
{
    const std::string skin = bind("-maximumInfluences 2");
    EXPECT_EQ(melStrings("skinCluster -q -influence " + skin), (Texts{"a", "b", "c"}));
    EXPECT_EQ(melStrings("skinCluster -q -geometry " + skin), (Texts{"bodyShape"}));
    const host::Points before = points("bodyShape");
    for (int i = 0; i < 6; ++i) {
        const std::string point = "body.vtx[" + std::to_string(i) + "]";
        EXPECT_NEAR(sum(skin, point), 1.0, 1e-12);
        int used = 0;
        for (const double weight : melFloats("skinPercent -q -value " + skin + " " + point))
            used += weight > 0.0 ? 1 : 0;
        EXPECT_LE(used, 2);
    }
    EXPECT_GT(melFloat("skinPercent -q -t a " + skin + " body.vtx[0]"), 0.5);
    EXPECT_EQ(melFloat("skinPercent -q -t c " + skin + " body.vtx[0]"), 0.0);
    mel("setAttr c.translateY 3");
    EXPECT_GT((points("bodyShape")[2] - before[2]).length(), 0.5);
    mel("undo; undo");
    EXPECT_FALSE(session.graph().find(skin));
    EXPECT_EQ(points("bodyShape")[2], before[2]);
    mel("redo; redo");
    EXPECT_GT((points("bodyShape")[2] - before[2]).length(), 0.5);
}

TEST_F(DeformerCommands, SkinPercentSetsWithAndWithoutNormalizingAndUndoes)
{
    const std::string skin = bind("");
    const std::vector<double> before = melFloats("skinPercent -q -value " + skin + " body.vtx[1]");
    mel("setAttr b.lockInfluenceWeights 1; skinPercent -tv b 0.3 " + skin + " body.vtx[1]");
    mel("skinPercent -tv a 0.5 " + skin + " body.vtx[1]");
    const std::vector<double> after = melFloats("skinPercent -q -value " + skin + " body.vtx[1]");
    EXPECT_NEAR(after[0], 0.5, 1e-12);
    EXPECT_NEAR(after[1], 0.3, 1e-12);
    EXPECT_NEAR(after[2], 0.2, 1e-12);
    mel("skinPercent -normalize false -tv a 0.9 " + skin + " body.vtx[1]");
    EXPECT_NEAR(sum(skin, "body.vtx[1]"), 1.4, 1e-12);
    mel("skinPercent -normalize true " + skin + " body.vtx[1]");
    EXPECT_NEAR(sum(skin, "body.vtx[1]"), 1.0, 1e-12);
    mel("undo; undo; undo; undo");
    EXPECT_EQ(melFloats("skinPercent -q -value " + skin + " body.vtx[1]"), before);
    EXPECT_NE(melError("skinPercent -resetToDefault " + skin).find("resetToDefault"), std::string::npos);
}

TEST_F(DeformerCommands, RemovedInfluencesLeaveAGapThatUndoFills)
{
    const std::string skin = bind("-mi 3");
    const host::WeightRows* rows = node(skin).plug("weightList").rows();
    const double weight = rows->get(1, 1);
    ASSERT_GT(weight, 0.0);
    mel("skinCluster -e -removeInfluence b " + skin);
    EXPECT_EQ(melStrings("skinCluster -q -influence " + skin), (Texts{"a", "c"}));
    EXPECT_EQ(node(skin).plug("matrix").existingIndices(), (std::vector<std::uint32_t>{0, 2}));
    EXPECT_NEAR(sum(skin, "body.vtx[1]"), 1.0, 1e-12);
    mel("undo");
    EXPECT_EQ(node(skin).plug("weightList").rows()->get(1, 1), weight);
    mel("skinCluster -e -ri a " + skin + "; select -cl; joint -n d; skinCluster -e -addInfluence d -wt 0 " +
        skin);
    EXPECT_EQ(melStrings("skinCluster -q -inf " + skin), (Texts{"b", "c", "d"}));
    EXPECT_EQ(node(skin).plug("matrix").existingIndices(), (std::vector<std::uint32_t>{1, 2, 3}));
}

TEST_F(DeformerCommands, ClusterMovesOnlyItsMembersAndItsSetKnowsThem)
{
    mel("polyPlane -n body -sx 2 -sy 1; select body.vtx[1:2]");
    const Texts made = melStrings("cluster");
    EXPECT_EQ(made, (Texts{"cluster1", "cluster1Handle"}));
    const host::Points before = points("bodyShape");
    mel("setAttr cluster1Handle.translateY 2; percent -v 0.25 cluster1 body.vtx[2]");
    const host::Points after = points("bodyShape");
    EXPECT_EQ(after[0], before[0]);
    EXPECT_NEAR(after[1].y, 2.0, 1e-12);
    EXPECT_NEAR(after[2].y, 0.5, 1e-12);
    EXPECT_EQ(melFloats("percent -q -v cluster1 body.vtx[1:2]"), (std::vector<double>{1.0, 0.25}));

    MStatus status;
    MFnGeometryFilter filter(Api::wrap(&node("cluster1")));
    MObject setObject = filter.deformerSet(&status);
    ASSERT_TRUE(status);
    MFnSet set(setObject);
    MSelectionList members;
    ASSERT_TRUE(set.getMembers(members, false));
    MStringArray texts;
    members.getSelectionStrings(texts);
    ASSERT_EQ(texts.length(), 1u);
    EXPECT_STREQ(texts[0].asChar(), "bodyShape.vtx[1:2]");
    EXPECT_EQ(Api::node(filter.inputShapeAtIndex(0))->isIntermediate(), true);
}

TEST_F(DeformerCommands, APointOfADeformedShapeCanStillBeMovedAndTheMoveUndone)
{
    mel("polyPlane -n sheet; cluster -n lift sheet; setAttr liftHandle.translateY 1");
    const double before = melFloats("pointPosition sheet.vtx[5]")[1];
    mel("move -r 0 2 0 sheet.vtx[5]");
    EXPECT_NEAR(melFloats("pointPosition sheet.vtx[5]")[1], before + 2, 1e-6);
    EXPECT_NEAR(melFloats("pointPosition sheet.vtx[6]")[1], before, 1e-9);
    mel("undo");
    EXPECT_EQ(melFloats("pointPosition sheet.vtx[5]")[1], before);
}

TEST_F(DeformerCommands, SetFunctionsAddAskAndClearBothSetMembersAndDeformedPoints)
{
    mel("polyPlane -n body -sx 2 -sy 1; select body.vtx[1]; cluster; setAttr cluster1Handle.ty 1;"
        "sets -n extra -empty");
    const auto component = [&](const std::string& text) {
        return Api::wrap(host::parseComponent(*node("bodyShape").asDag(), text).get());
    };
    MFnGeometryFilter filter(Api::wrap(&node("cluster1")));
    MFnSet deformed(filter.deformerSet());
    ASSERT_TRUE(deformed.addMember(path("bodyShape"), component("vtx[4:5]")));
    EXPECT_TRUE(deformed.isMember(path("bodyShape"), component("vtx[5]")));
    EXPECT_FALSE(deformed.isMember(path("bodyShape"), component("vtx[3:4]")));
    EXPECT_NEAR(points("bodyShape")[5].y, 1.0, 1e-12);
    ASSERT_TRUE(deformed.clear());
    EXPECT_FALSE(deformed.isMember(path("bodyShape"), component("vtx[1]")));
    EXPECT_EQ(points("bodyShape")[5].y, 0.0);

    MFnSet extra(Api::wrap(&node("extra")));
    ASSERT_TRUE(extra.addMember(path("body")));
    ASSERT_TRUE(extra.addMember(path("bodyShape"), component("vtx[2]")));
    EXPECT_TRUE(extra.isMember(path("body")));
    MSelectionList members;
    ASSERT_TRUE(extra.getMembers(members, true));
    EXPECT_EQ(members.length(), 2u);
    ASSERT_TRUE(extra.clear());
    ASSERT_TRUE(extra.getMembers(members, true));
    EXPECT_TRUE(members.isEmpty());
    EXPECT_EQ(melInt("sets -isMember extra body"), 0);
    session.graph().remove(node("extra"));
    EXPECT_EQ(extra.getMembers(members, true), MStatus::kFailure);
}

TEST_F(DeformerCommands, ComponentTagDeformersHaveNoSet)
{
    mel("polyPlane -n body -sx 2 -sy 1");
    mel("cluster -useComponentTags 1 body");
    MStatus status;
    MFnGeometryFilter filter(Api::wrap(&node("cluster1")));
    EXPECT_TRUE(filter.deformerSet(&status).isNull());
    EXPECT_EQ(status, MStatus::kFailure);
    MFnSet none(filter.deformerSet(), &status);
    EXPECT_EQ(status, MStatus::kFailure);
    MSelectionList members;
    EXPECT_EQ(none.getMembers(members, false), MStatus::kFailure);
    mel("setAttr cluster1Handle.ty 1");
    EXPECT_NEAR(points("bodyShape")[3].y, 1.0, 1e-12);
}

} // namespace
