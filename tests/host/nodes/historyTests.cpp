// Histories that no hand would build: circles, and chains longer than a call stack.
#include "nodes/geometryHistory.h"

#include "nodes/geometry.h"
#include "sceneParts.h"
#include "support/hostFixture.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

#include <maya/MFnGeometryFilter.h>

#include "types/api.h"
#include "types/error.h"

using namespace host;

namespace {

using testing_support::sceneText;

class HistoryTest : public testing_support::HostTest {
public:
    DagNode& shape(const std::string& name) { return *session.graph().get(name).asDag(); }
    double height(const std::string& name) { return shapeGeometry(shape(name))->points().front().y; }
};

/// Two deformers that feed one another, or one that feeds itself.
struct Ring {
    const char* name;
    const char* close;
};

class HistoryRing : public HistoryTest, public ::testing::WithParamInterface<Ring> {};

INSTANTIATE_TEST_SUITE_P(Rings, HistoryRing,
                         ::testing::Values(Ring{"two", "connectAttr -f b.og[0] a.ip[0].ig"},
                                           Ring{"itself", "connectAttr -f b.og[0] b.ip[0].ig"},
                                           Ring{"group", "connectAttr -f b.og[0] groupParts1.ig"}),
                         [](const auto& ring) { return std::string(ring.param.name); });

TEST_P(HistoryRing, EndsEveryWalk)
{
    allowMessages(); // of values that depend on themselves
    mel("polyPlane -n sheet -sx 1 -sy 1; cluster -n a sheet; cluster -n b sheet; select -cl; joint -n hip");
    mel(GetParam().close);
    const std::string start = sceneText(session);
    for (const char* command : {"cluster sheet", "cluster -foc sheet", "skinCluster -tsb hip sheet",
                                "lattice sheet", "softMod sheet", "delete -ch sheet"})
        EXPECT_NE(melError(command).find("runs in a circle"), std::string::npos) << command;
    EXPECT_EQ(sceneText(session), start) << "nothing is left half-done";
    mel("catch(`percent -v 0.5 a sheet.vtx[0]`); catch(`percent -q -v b sheet.vtx[0]`);"
        "catch(`skinCluster -q -g hip`); catch(`pointPosition sheet.vtx[0]`)");
    for (const char* name : {"a", "b"}) {
        const MFnGeometryFilter filter(Api::wrap(&session.graph().get(name)));
        filter.inputShapeAtIndex(0);
        filter.outputShapeAtIndex(0);
    }
    mel("undoInfo -openChunk; delete a; delete b; undoInfo -closeChunk; undo");
    mel("polyPlane -n other; cluster -n fine other");
}

/// A mesh behind `count` deformers, each of which leaves the points as they are.
void chain(Session& session, int count)
{
    Graph& graph = session.graph();
    testing_support::SceneParts parts(graph);
    DagNode& mesh = parts.mesh({{0, 0, 0}, {1, 0, 0}, {0, 0, 1}});
    DagNode& original = parts.mesh({{0, 0, 0}, {1, 0, 0}, {0, 0, 1}}, "original");
    Plug feeding = original.plug("worldMesh").element(0);
    for (int step = 0; step < count; ++step) {
        Node& tweak = parts.node("tweak", "link" + std::to_string(step));
        graph.connect(feeding, tweak.plug("input").element(0).child("inputGeometry"));
        feeding = tweak.plug("outputGeometry").element(0);
    }
    graph.connect(feeding, mesh.plug("inMesh"));
}

constexpr int kLong = 20000;

TEST_F(HistoryTest, AChainOfManyDeformersIsAsGoodAsAShortOne)
{
    chain(session, kLong);
    session.undo().flush();
    EXPECT_EQ(height("bodyShape"), 0.0);
    mel("setAttr originalShape.pnts[0].pnty 2");
    EXPECT_EQ(height("bodyShape"), 2.0) << "a change at the far end";
    mel("setAttr link10000.envelope 0; setAttr originalShape.pnts[0].pnty 3");
    EXPECT_EQ(height("bodyShape"), 3.0);
    EXPECT_EQ(deformersOf(shape("bodyShape")).size(), std::size_t{kLong});
    EXPECT_EQ(shapeBehind(shape("bodyShape").plug("inMesh")), &shape("originalShape"));
    EXPECT_EQ(shapeFedBy(session.graph().plug("link0.og[0]")), &shape("bodyShape"));
    const std::string text = sceneText(session);
    mel("delete link15000");
    EXPECT_EQ(height("bodyShape"), 3.0);
    mel("undo; delete original; undo; delete body; undo");
    EXPECT_EQ(sceneText(session), text);
    mel("delete -ch bodyShape");
    EXPECT_EQ(height("bodyShape"), 3.0);
    mel("undo");
    EXPECT_EQ(sceneText(session), text);
}

TEST_F(HistoryTest, AChainThatFailsAtTheFarEndFailsAtOnceAndComesBack)
{
    chain(session, 500);
    mel("createNode softMod -n bad; setAttr bad.falloffMode 1;"
        "connectAttr originalShape.worldMesh[0] bad.ip[0].ig; connectAttr -f bad.og[0] link0.ip[0].ig");
    EXPECT_THROW(shapeGeometry(shape("bodyShape")), Error);
    mel("setAttr bad.falloffMode 0; setAttr originalShape.pnts[0].pnty 2");
    EXPECT_EQ(height("bodyShape"), 2.0);
}

TEST_F(HistoryTest, NumbersComeThroughAnyNumberOfNodes)
{
    Graph& graph = session.graph();
    const NodeType& type = *graph.types().find("transform");
    Plug before;
    for (int step = 0; step < kLong; ++step) {
        Node& node = graph.create(type, "n" + std::to_string(step));
        const Plug own = node.plug("translateX");
        if (step > 0)
            graph.connect(before, own);
        before = own;
    }
    mel("setAttr n0.tx 2.5");
    EXPECT_EQ(before.number(), 2.5);
    expectWarning("Cycle on 'n0.translateX' may not evaluate as expected.");
    graph.connect(before, graph.plug("n0.tx"));
    EXPECT_EQ(graph.plug("n0.tx").number(), 2.5) << "of a circle, where it begins";
    mel("file -f -new");
}

} // namespace
