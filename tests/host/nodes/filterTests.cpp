#include "reference.h"
#include "sceneParts.h"
#include "session.h"

#include <gtest/gtest.h>

namespace {

using namespace testing_support;
using Imath::M44d;
using Imath::V3d;

class Filters : public ::testing::Test {
public:
    Filters() : parts(session.graph()) {}

    V3d point(host::DagNode& shape, std::size_t i) { return host::shapeGeometry(shape)->points()[i]; }
    static void expectNear(const V3d& a, const V3d& b) { EXPECT_NEAR((a - b).length(), 0.0, 1e-9) << a << b; }

    /// A cluster on the shape with a handle below `parent`, bound as it stands.
    struct Handle {
        host::Node& cluster;
        host::DagNode& transform;
    };
    Handle makeCluster(host::DagNode& shape, host::DagNode* parent, bool relative)
    {
        host::Node& cluster = parts.node("cluster");
        host::DagNode& transform = parts.dag("transform", "handle", parent);
        host::DagNode& handle = parts.dag("clusterHandle", "handleShape", &transform);
        parts.deform(shape, cluster);
        cluster.plug("relative").setNumber(relative ? 1.0 : 0.0);
        cluster.plug("geomMatrix").element(0).setMatrix(host::worldMatrix(shape));
        cluster.plug("bindPreMatrix")
            .setMatrix(
                (relative ? transform.plug("matrix").matrix() : host::worldMatrix(transform)).inverse());
        session.graph().connect(transform.plug("worldMatrix").element(0), cluster.plug("matrix"));
        session.graph().connect(handle.plug("clusterTransforms"), cluster.plug("clusterXforms"));
        return {cluster, transform};
    }

    host::Session session;
    SceneParts parts;
};

TEST_F(Filters, AbsoluteClusterMovesPointsByWeightFromBindPoseToHandle)
{
    const host::Points points{{1, 0, 0}, {0, 2, 0}, {0, 0, 3}};
    host::DagNode& shape = parts.mesh(points);
    parts.set(*shape.parent(), "t", {5, 0, 0});
    parts.set(*shape.parent(), "r", {0, 30, 0});
    parts.set(*shape.parent(), "s", {2, 2, 2});
    host::DagNode& parent = parts.dag("transform", "rig");
    parts.set(parent, "r", {0, 0, 45});
    const auto [cluster, handle] = makeCluster(shape, &parent, false);
    for (std::size_t i = 0; i < 3; ++i)
        expectNear(point(shape, i), points[i]);

    const M44d bound = host::worldMatrix(handle);
    const M44d geometry = host::worldMatrix(shape);
    cluster.plug("weightList").element(0).child(0).element(1).setNumber(0.25); // others stay at the default
    parts.set(handle, "t", {1, 2, 3});
    parts.set(handle, "r", {10, 20, 30});
    parts.set(parent, "t", {-4, 0, 1}); // moves an absolute cluster, too
    const M44d motion = geometry * bound.inverse() * host::worldMatrix(handle) * geometry.inverse();
    const double weights[] = {1.0, 0.25, 1.0};
    for (std::size_t i = 0; i < 3; ++i) {
        V3d moved;
        motion.multVecMatrix(points[i], moved);
        expectNear(point(shape, i), points[i] + weights[i] * (moved - points[i]));
    }
}

TEST_F(Filters, RelativeClusterIgnoresItsParentsButMovesInTheirSpace)
{
    host::DagNode& shape = parts.mesh({{1, 0, 0}});
    host::DagNode& parent = parts.dag("transform", "rig");
    parts.set(parent, "r", {0, 0, 90});
    const auto [cluster, handle] = makeCluster(shape, &parent, true);
    parts.set(parent, "t", {7, 8, 9});
    expectNear(point(shape, 0), {1, 0, 0});
    parts.set(handle, "t", {2, 0, 0}); // the parent's x is the world's y
    expectNear(point(shape, 0), {1, 2, 0});
    cluster.plug("envelope").setNumber(0.5);
    expectNear(point(shape, 0), {1, 1, 0});
}

TEST_F(Filters, TweaksComeBeforeTheDeformerAndGroupsKeepOthersOut)
{
    host::DagNode& shape = parts.mesh({{1, 0, 0}, {2, 0, 0}, {3, 0, 0}});
    const auto [cluster, handle] = makeCluster(shape, nullptr, false);
    host::Node& tweak = parts.node("tweak", "tweak1");
    host::Node& groupParts = parts.node("groupParts", "parts1");
    host::Node& groupId = parts.node("groupId", "id1");
    EXPECT_NE(groupId.plug("groupId").number(), parts.node("groupId").plug("groupId").number());
    host::Graph& graph = session.graph();
    const host::Plug clusterInput = cluster.plugByPath("input[0].inputGeometry");
    const host::Plug original = clusterInput.source();
    graph.connect(original, tweak.plugByPath("input[0].inputGeometry"));
    graph.connect(tweak.plug("outputGeometry").element(0), groupParts.plug("inputGeometry"));
    graph.connect(groupParts.plug("outputGeometry"), clusterInput, true);
    graph.connect(groupId.plug("groupId"), groupParts.plug("groupId"));
    graph.connect(groupId.plug("groupId"), cluster.plugByPath("input[0].groupId"));
    graph.connect(tweak.plugByPath("vlist[0].vertex[0]"), shape.plug("tweakLocation"));
    auto members = std::make_shared<host::ComponentListData>();
    members->components = {"vtx[1:7]"};
    groupParts.plug("inputComponents").setData(members);

    parts.set(handle, "s", {2, 2, 2});
    parts.set(tweak, "vlist[0].vertex[2]", {0, 5, 0});
    parts.set(shape, "pnts[0]", {9, 9, 9}); // the tweak node has taken over
    expectNear(point(shape, 0), {1, 0, 0});
    expectNear(point(shape, 1), {4, 0, 0});
    expectNear(point(shape, 2), {6, 10, 0});

    groupParts.plug("nodeState").setNumber(1.0); // no group data: everything is deformed
    expectNear(point(shape, 0), {2, 0, 0});
    graph.remove(tweak);
    ASSERT_TRUE(host::shapeGeometry(shape));
    EXPECT_EQ(host::shapeGeometry(shape)->count(), 3u);
}

TEST_F(Filters, ComponentTagExpressionsChooseThePoints)
{
    host::DagNode& shape = parts.mesh({{1, 0, 0}, {2, 0, 0}, {3, 0, 0}});
    host::Node& cluster = parts.node("cluster");
    const auto [shown, original] = parts.deform(shape, cluster);
    M44d twice;
    twice.setScale(2.0);
    cluster.plug("matrix").setMatrix(twice);
    auto list = std::make_shared<host::ComponentListData>();
    list->components = {"vtx[0]", "vtx[2]"};
    original.plugByPath("componentTags[4].componentTagName").setText("ends");
    original.plugByPath("componentTags[4].componentTagContents").setData(list);
    const host::Plug expression = cluster.plugByPath("input[0].componentTagExpression");
    // A structured binding cannot be captured.
    const auto xs = [this, &shape = shown] {
        return V3d(point(shape, 0).x, point(shape, 1).x, point(shape, 2).x);
    };
    EXPECT_EQ(xs(), V3d(2, 4, 6));
    expression.setText("*");
    EXPECT_EQ(xs(), V3d(2, 4, 6));
    expression.setText("ends");
    EXPECT_EQ(xs(), V3d(2, 2, 6));
    expression.setText("middle");
    EXPECT_EQ(xs(), V3d(1, 2, 3));
}

TEST_F(Filters, BlendShapeAddsLiveAndStoredTargetsWithTheirWeights)
{
    host::DagNode& base = parts.mesh({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, "base");
    host::DagNode& live = parts.mesh({{0, 1, 0}, {1, 1, 0}, {2, 0, 0}}, "live");
    host::Node& blend = parts.node("blendShape", "blend");
    parts.deform(base, blend);
    session.graph().connect(live.plug("worldMesh").element(0),
                            blend.plugByPath("inputTarget[0].inputTargetGroup[0].inputTargetItem[6000].igt"));
    auto store = [&](const std::string& item, const V3d& offset) {
        auto offsets = std::make_shared<host::PointArrayData>();
        offsets->values = {{offset.x, offset.y, offset.z, 1.0}};
        auto where = std::make_shared<host::ComponentListData>();
        where->components = {"vtx[2]"};
        const std::string path = "inputTarget[0].inputTargetGroup[3].inputTargetItem[" + item + "]";
        blend.plugByPath(path + ".inputPointsTarget").setData(offsets);
        blend.plugByPath(path + ".inputComponentsTarget").setData(where);
    };
    store("6000", {0, 0, 4});
    store("5500", {0, 0, 1}); // reached at half the weight

    blend.plug("weight").element(0).setNumber(0.5);
    blend.plug("weight").element(3).setNumber(0.75);
    expectNear(point(base, 0), {0, 0.5, 0});
    expectNear(point(base, 2), {2, 0, 2.5}); // half way from 1 to 4
    blend.plugByPath("inputTarget[0].inputTargetGroup[0].targetWeights[0]").setNumber(0.5);
    blend.plugByPath("inputTarget[0].baseWeights[1]").setNumber(0.0);
    expectNear(point(base, 0), {0, 0.25, 0});
    expectNear(point(base, 1), {1, 0, 0});
    parts.set(live, "pnts[0]", {0, 1, 0}); // the live target is followed
    expectNear(point(base, 0), {0, 0.5, 0});
}

TEST_F(Filters, PrimitivesFollowTheirHistoryAndTheirAxis)
{
    host::DagNode& shape = parts.dag("mesh", "planeShape", &parts.dag("transform", "plane"));
    host::Node& plane = parts.node("polyPlane");
    session.graph().connect(plane.plug("output"), shape.plug("inMesh"));
    plane.plug("subdivisionsWidth").setNumber(1.0);
    plane.plug("subdivisionsHeight").setNumber(2.0);
    ASSERT_EQ(host::shapeGeometry(shape)->count(), 6u);
    expectNear(point(shape, 0), {-0.5, 0, 0.5});
    expectNear(point(shape, 5), {0.5, 0, -0.5});
    parts.set(plane, "axis", {0, 0, 1});
    expectNear(point(shape, 0), {-0.5, -0.5, 0});
    parts.set(shape, "pnts[5]", {0, 0, 1});
    expectNear(point(shape, 5), {0.5, 0.5, 1});
}

} // namespace
