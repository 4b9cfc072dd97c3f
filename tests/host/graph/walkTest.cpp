#include "graphFixture.h"

#include "types/api.h"

#include <maya/MItDependencyGraph.h>
#include <maya/MPlug.h>

using namespace host;

namespace {

using Direction = MItDependencyGraph::Direction;
using Traversal = MItDependencyGraph::Traversal;
using Names = std::vector<std::string>;

/// root -> left -> far -> end    (all by sum -> a)
///      -> right -> far          (far.b)
/// left.tie, which is no input of anything, leads to off.
class WalkTest : public GraphTest {
public:
    WalkTest()
    {
        for (const char* name : {"root", "left", "right", "far", "end", "off"})
            make("adder", name);
        connect("root.sum", "left.a");
        connect("root.sum", "right.a");
        connect("left.sum", "far.a");
        connect("right.sum", "far.b");
        connect("far.sum", "end.a");
        connect("left.tie", "off.a");
    }

    Names walk(MItDependencyGraph& items)
    {
        Names names;
        for (; !items.isDone(); items.next())
            names.push_back(Api::node(items.currentItem())->name());
        return names;
    }
    MObject object(const std::string& name) { return Api::wrap(&graph.get(name)); }
};

} // namespace

TEST_F(WalkTest, EachNodeIsVisitedOnceInTheOrderAskedFor)
{
    MObject root = object("root"), end = object("end");
    MItDependencyGraph depth(root);
    EXPECT_EQ(walk(depth), (Names{"root", "left", "far", "end", "right"}));
    depth.reset();
    EXPECT_EQ(walk(depth).size(), 5u);
    MItDependencyGraph breadth(root, MFn::kInvalid, MItDependencyGraph::kDownstream,
                               MItDependencyGraph::kBreadthFirst);
    EXPECT_EQ(walk(breadth), (Names{"root", "left", "right", "far", "end"}));
    MItDependencyGraph up(end, MFn::kInvalid, MItDependencyGraph::kUpstream);
    EXPECT_EQ(walk(up), (Names{"end", "far", "left", "root", "right"}));
}

TEST_F(WalkTest, OnlyAttributesThatAffectEachOtherLeadOn)
{
    MObject root = object("root"), left = object("left"), off = object("off");
    MItDependencyGraph fromNode(left);
    EXPECT_EQ(walk(fromNode), (Names{"left", "far", "end", "off"})) << "all attributes of the root count";
    MItDependencyGraph up(off, MFn::kInvalid, MItDependencyGraph::kUpstream);
    EXPECT_EQ(walk(up), (Names{"off", "left"})) << "nothing affects the tie";
    MPlug tie = Api::wrap(plug("left.tie"));
    MItDependencyGraph fromPlug(tie);
    EXPECT_EQ(walk(fromPlug), (Names{"left", "off"}));
}

TEST_F(WalkTest, FilterPruneAndMissingRoots)
{
    NodeType& meshType = graph.types().add("meshLike", "adder");
    meshType.apiType = MFn::kMesh;
    graph.create(meshType, "shape");
    connect("end.sum", "shape.a");
    MObject root = object("root");
    MItDependencyGraph filtered(root, MFn::kMesh);
    EXPECT_EQ(walk(filtered), Names{"shape"});
    MItDependencyGraph pruned(root);
    pruned.next();
    EXPECT_EQ(pruned.prune(), MStatus::kSuccess);
    pruned.next();
    EXPECT_EQ(walk(pruned), (Names{"right", "far", "end", "shape"})) << "far is still reached the other way";

    MStatus status;
    MObject none;
    MItDependencyGraph nowhere(none, MFn::kInvalid, MItDependencyGraph::kDownstream,
                               MItDependencyGraph::kDepthFirst, MItDependencyGraph::kNodeLevel, &status);
    EXPECT_EQ(status, MStatus::kFailure);
    EXPECT_TRUE(nowhere.isDone());
    MItDependencyGraph cut(root);
    graph.remove(graph.get("left"));
    graph.remove(graph.get("root"));
    EXPECT_TRUE(cut.currentItem(&status).isNull());
    EXPECT_EQ(status, MStatus::kFailure);
}
