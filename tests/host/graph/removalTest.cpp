#include "graphFixture.h"

#include "graph/data.h"
#include "undo/undoQueue.h"

#include <maya/MDagPath.h>
#include <maya/MFnAttribute.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MPlug.h>
#include <maya/MStringArray.h>

#include "types/api.h"

#include <memory>

using namespace host;

namespace {

/// A hierarchy with values and connections in every direction.
void buildScene(GraphTest& test)
{
    test.make("adder", "before");
    DagNode& top = test.place("top");
    DagNode& arm = test.place("arm", &top);
    test.place("hand", &arm);
    test.place("leg", &top);
    test.make("holder", "h").aliases = {{"smile", "weight[3]"}};
    test.set("arm.step", 0.1);
    test.set("h.weightList[1].weights[5]", 0.3);
    test.set("h.skin[2].skinWeights[9]", 0.7);
    test.plug("h.label").setText("text");
    test.plug("h.shape").setData(std::make_shared<IntArrayData>());
    test.plug("h.moveX").setLocked(true);
    test.connect("arm.depth", "before.a");
    test.connect("before.sum", "h.plain");
    test.connect("h.plain", "leg.step");
    test.connect("hand.depth", "before.b");
    test.connect("before.tie", "arm.step");
}

} // namespace

TEST_F(GraphTest, WhatWasDeletedComesBackExactlyAsItWas)
{
    buildScene(*this);
    const std::string before = describe();
    const double sum = number("before.sum");
    const Ref<Node> hand(&graph.get("hand"));
    std::vector<std::string> told;
    graph.observers.push_back(
        [&](Node& node, bool added) { told.push_back((added ? "+" : "-") + node.name()); });
    for (const char* name : {"arm", "top", "before", "h", "hand"}) {
        told.clear();
        const Graph::Removal removal = graph.remove(graph.get(name));
        EXPECT_EQ(graph.find(name), nullptr);
        EXPECT_NE(describe(), before);
        EXPECT_FALSE(told.empty());
        graph.restore(removal);
        EXPECT_EQ(describe(), before) << name;
        EXPECT_EQ(number("before.sum"), sum);
        EXPECT_TRUE(hand->alive());
    }
    const Graph::Removal removal = graph.remove(graph.get("arm"));
    EXPECT_EQ(told, (std::vector<std::string>{"-hand", "+hand", "-hand", "-arm"}));
    EXPECT_FALSE(hand->alive());
    EXPECT_EQ(removal.nodes.size(), 2u);
    EXPECT_EQ(number("before.a"), 1.0) << "the last value stays where the connection was: " << sum;
}

TEST_F(GraphTest, TheWholeSceneCanBeTakenOutAndPutBack)
{
    buildScene(*this);
    const std::string before = describe();
    const Ref<Node> arm(&graph.get("arm"));
    auto contents = graph.takeContents();
    EXPECT_FALSE(arm->alive());
    EXPECT_TRUE(graph.nodes().empty());
    make("adder", "before");
    graph.putContents(std::move(contents));
    EXPECT_EQ(describe(), before);
    EXPECT_TRUE(arm->alive());
    EXPECT_EQ(make("adder", "before").name(), "before1");
}

TEST_F(GraphTest, DefaultNodesAndTheirSubtreesStay)
{
    DagNode& top = place("top");
    place("child", &top).isDefault = true;
    const std::string before = describe();
    EXPECT_THROW(graph.remove(top), Error);
    EXPECT_EQ(describe(), before);
}

namespace {

/// What every handle must answer when its node is gone.
void expectDead(MObject& object, MPlug& plug, MDagPath& path)
{
    MStatus status;
    EXPECT_EQ(plug.asFloat(&status), 0.0f);
    EXPECT_EQ(status, MStatus::kFailure);
    EXPECT_EQ(plug.setFloat(1.0f), MStatus::kFailure);
    EXPECT_EQ(plug.numElements(&status), 0u);
    EXPECT_TRUE(plug.elementByLogicalIndex(0, &status).isNull());
    EXPECT_EQ(status, MStatus::kFailure);
    EXPECT_TRUE(plug.node(&status).isNull());
    EXPECT_EQ(plug.name(&status).length(), 0u);
    EXPECT_FALSE(path.isValid());
    EXPECT_EQ(path.length(&status), 0u);
    EXPECT_EQ(status, MStatus::kFailure);
    EXPECT_EQ(path.fullPathName().length(), 0u);
    path.inclusiveMatrix(&status);
    EXPECT_EQ(status, MStatus::kFailure);
    MFnDependencyNode set(object, &status);
    EXPECT_EQ(status, MStatus::kFailure);
    EXPECT_TRUE(set.findPlug("step", true, &status).isNull());
    EXPECT_EQ(status, MStatus::kFailure);
}

} // namespace

TEST_F(GraphTest, HandlesOfDeletedNodesFailAndLiveAgainAfterARestore)
{
    DagNode& node = place("node");
    MObject object = Api::wrap(&node);
    MPlug plugHandle = MFnDependencyNode(object).findPlug("step", true);
    MDagPath path = Api::path(&node);
    const Graph::Removal removal = graph.remove(node);
    expectDead(object, plugHandle, path);
    graph.restore(removal);
    EXPECT_EQ(plugHandle.asFloat(), 1.0f);
    EXPECT_EQ(path.length(), 1u);
    EXPECT_EQ(path.fullPathName(), MString("|node"));
}

TEST(Handles, OutliveTheSessionTheyCameFrom)
{
    auto session = std::make_unique<Session>();
    NodeType& type = session->graph().types().add("thing", "");
    type.dag = true;
    type.add(AttributeSpec("step", "st").add(AttributeSpec("inner", "in")));
    Node& node = session->graph().create(type, "t");
    MObject object = Api::wrap(&node);
    MPlug plug = MFnDependencyNode(object).findPlug("step", true);
    MObject inner = Api::wrap(node.findAttribute("inner"));
    MDagPath path = Api::path(node.asDag());
    session.reset();
    expectDead(object, plug, path);
    EXPECT_TRUE(object.hasFn(MFn::kDagNode)) << "what it was can still be asked";
    plug = MPlug();
    object = MObject();
    path = MDagPath();
    EXPECT_TRUE(MFnAttribute(inner).parent().isNull()) << "the compound above has gone with its type";
    EXPECT_EQ(MFnAttribute(inner).name(), MString("inner"));
}
