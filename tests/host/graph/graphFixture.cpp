#include "graphFixture.h"

#include "graph/nodeState.h"
#include "undo/undoQueue.h"

#include <sstream>

using namespace host;

int GraphTest::computed = 0;

namespace {

void computeSum(Node& node, const Attribute& output)
{
    ++GraphTest::computed;
    const double a = node.plug("a").number();
    if (a < 0.0)
        throw Error("'" + node.uniqueName() + ".a' must not be negative.");
    node.storeNumber(Plug(&node, &output), a + node.plug("b").number());
}

void computeDepth(Node& node, const Attribute& output)
{
    ++GraphTest::computed;
    DagNode* parent = node.asDag()->parent();
    const double above = parent ? parent->plug("depth").number() : 0.0;
    node.storeNumber(Plug(&node, &output), above + node.plug("step").number());
}

void addTypes(NodeTypeRegistry& types)
{
    NodeType& adder = types.add("adder", "");
    adder.add(AttributeSpec("a", "a"));
    adder.add(AttributeSpec("b", "b").number(10.0));
    adder.add(AttributeSpec("tie", "tie"));
    adder.add(AttributeSpec("sum", "sum").output());
    adder.affectAll({"a", "b"}, {"sum"});
    adder.compute = computeSum;

    NodeType& holder = types.add("holder", "");
    holder.add(AttributeSpec("flag", "f", AttributeType::kBool));
    holder.add(AttributeSpec("count", "c", AttributeType::kShort).range(0, 100));
    holder.add(AttributeSpec("single", "s", AttributeType::kFloat).number(0.5));
    holder.add(AttributeSpec("turn", "tn", AttributeType::kAngle));
    holder.add(AttributeSpec("plain", "p"));
    holder.add(AttributeSpec("label", "l", AttributeType::kString));
    holder.add(AttributeSpec("frame", "fr", AttributeType::kMatrix).array());
    holder.add(AttributeSpec("shape", "sh").data("mesh"));
    holder.add(AttributeSpec("move", "m").triple(AttributeType::kDouble));
    holder.add(AttributeSpec("push", "pu").triple(AttributeType::kFloat));
    holder.add(AttributeSpec("weight", "w").array());
    holder.add(AttributeSpec("weightList", "wl")
                   .array()
                   .add(AttributeSpec("weights", "ws", AttributeType::kFloat).array().number(1.0)));
    holder.add(
        AttributeSpec("skin", "sk").weightRows().array().add(AttributeSpec("skinWeights", "sw").array()));
    holder.add(
        AttributeSpec("deep", "d")
            .array()
            .add(AttributeSpec("group", "g").array().add(AttributeSpec("id", "id", AttributeType::kLong))));
    holder.add(AttributeSpec("ring", "rg", AttributeType::kMessage));

    NodeType& place = types.add("place", "");
    place.dag = true;
    place.add(AttributeSpec("step", "st").number(1.0));
    place.dagOutput = &place.add(AttributeSpec("depth", "dp").output());
    place.affect("step", "depth");
    place.compute = computeDepth;
}

void describeValue(std::ostream& out, const Plug& plug)
{
    if (!plug.hasStored())
        return;
    const Attribute& attribute = *plug.attribute();
    if (plug.isArray()) {
        for (const std::uint32_t index : plug.storedIndices())
            describeValue(out << " [" << index << "]", plug.element(index));
    } else if (attribute.type == AttributeType::kCompound) {
        for (unsigned position = 0; position < attribute.children.size(); ++position)
            describeValue(out, plug.child(position));
    } else if (attribute.isNumber()) {
        out << " " << attribute.longName << "=" << std::hexfloat << plug.storedNumber();
    } else if (attribute.type == AttributeType::kString) {
        out << " " << attribute.longName << "=" << plug.storedText();
    } else if (attribute.type == AttributeType::kMatrix) {
        out << " " << attribute.longName << "=" << plug.storedMatrix();
    } else if (attribute.type == AttributeType::kData) {
        out << " " << attribute.longName << "=" << plug.storedData().get();
    }
}

} // namespace

GraphTest::GraphTest() : graph(session.graph())
{
    graph.clear();
    session.undo().flush();
    addTypes(graph.types());
    computed = 0;
}

Node& GraphTest::make(const std::string& type, const std::string& name, DagNode* parent)
{
    const NodeType* found = graph.types().find(type);
    if (!found)
        throw Error("no type " + type);
    return graph.create(*found, name, parent);
}

DagNode& GraphTest::place(const std::string& name, DagNode* parent)
{
    return *make("place", name, parent).asDag();
}

std::string GraphTest::describe()
{
    std::ostringstream out;
    for (const Ref<Node>& node : graph.nodes()) {
        out << node->uniqueName() << " " << node->uuid() << (node->alive() ? "" : " dead");
        if (const DagNode* dag = node->asDag())
            for (const Ref<DagNode>& child : dag->children())
                out << " >" << child->name();
        for (const Ref<Attribute>& root : node->type().roots)
            if (!root->flags.output)
                describeValue(out, Plug(node.get(), root.get()));
        for (const Ref<Attribute>& root : node->dynamicAttributes())
            describeValue(out << " +" << root->longName, Plug(node.get(), root.get()));
        for (const auto& alias : node->aliases)
            out << " " << alias.first << "=" << alias.second;
        out << " locks=" << node->state().lockedPlugs << (node->locked ? " locked\n" : "\n");
    }
    for (const Ref<DagNode>& root : graph.roots())
        out << "|" << root->name();
    for (const Graph::Connection& connection : graph.connections())
        out << "\n" << connection.source.name() << " -> " << connection.destination.name();
    return out.str();
}
