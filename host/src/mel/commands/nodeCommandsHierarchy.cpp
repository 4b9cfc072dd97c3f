#include "graph/graph.h"
#include "graph/names.h"
#include "mel/command.h"
#include "mel/commands/geometryCommands.h"
#include "mel/commands/nodeCommands.h"
#include "mel/commands/plugArguments.h"
#include "mel/commands/selectionCommands.h"
#include "nodes/geometry.h"
#include "nodes/transformPlacing.h"
#include "scene/maReader.h"
#include "scene/maText.h"
#include "scene/maWriter.h"
#include "scene/sceneInfo.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <algorithm>
#include <memory>
#include <sstream>
#include <utility>

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

/// A joint learns the scale of the joint above, to take it out of its own matrix.
void linkScale(Session& session, DagNode& node)
{
    if (!node.type().isA("joint"))
        return;
    const Plug inverse = node.plug("inverseScale");
    const Plug fed = session.graph().source(inverse);
    if (!fed.isNull())
        session.edits().disconnect(fed, inverse);
    if (node.parent() && node.parent()->type().isA("joint"))
        session.edits().connect(node.parent()->plug("scale"), inverse);
}

Value parent(Session& session, const Args& args)
{
    std::vector<Node*> nodes = nodesOrSelection(session, args.objectNames());
    DagNode* above = nullptr;
    if (!args.isSet("world")) {
        if (nodes.size() < 2)
            throw Error("parent needs the nodes to move and the new parent.");
        above = nodes.back()->asDag();
        if (!above || above->isShape())
            throw Error("parent: " + nodes.back()->uniqueName() + " cannot be a parent.");
        nodes.pop_back();
    }
    for (Node* const node : nodes) {
        if (!node->asDag())
            throw Error("parent: " + node->uniqueName() + " is not in the DAG.");
        DagNode& dag = *node->asDag();
        if (dag.isShape() != args.isSet("shape"))
            throw Error("parent: " + dag.uniqueName() +
                        (dag.isShape() ? " is a shape (-shape)." : " is no shape (-shape)."));
        moveUnder(session, dag, above, args.isSet("relative") ? Placing::kRelative : Placing::kAbsolute);
    }
    mel::StringArray names;
    for (const Node* const node : nodes)
        names.push_back(node->uniqueName());
    return names;
}

enum class Subtree { kWhole, kRootOnly };

/// A node and all below it as the text of a file; history, which is intermediate, is left out.
void writeTree(std::string& text, const DagNode& node, const std::string& name, const std::string& parentName,
               Subtree subtree)
{
    text += "createNode " + node.type().name + " -n " + maQuoted(name);
    text += parentName.empty() ? ";\n" : " -p " + maQuoted(parentName) + ";\n";
    MaNodeWriter(text, node, SceneUnits()).write();
    if (subtree == Subtree::kRootOnly)
        return;
    const std::string path = parentName + "|" + name;
    for (const Ref<DagNode>& child : node.children()) {
        if (child->isIntermediate())
            continue;
        const bool customary = child->isShape() && child->name() == customaryShapeName(node.name());
        writeTree(text, *child, customary ? customaryShapeName(name) : child->name(), path, subtree);
    }
}

/// What history had made of the shapes becomes the copies' own.
void copyShapes(DagNode& from, DagNode& to)
{
    const Attribute* const stored = to.findAttribute(from.type().isA("mesh") ? "cachedInMesh" : "cached");
    if (from.isShape() && stored) {
        if (const GeometryRef geometry = shapeGeometry(from))
            Plug(&to, stored).setData(geometry);
        return;
    }
    std::size_t copied = 0;
    for (const Ref<DagNode>& child : from.children()) {
        if (!child->isIntermediate() && copied < to.children().size())
            copyShapes(*child, *to.children()[copied++]);
    }
}

DagNode& duplicateNode(Session& session, DagNode& original, const std::string& name, Subtree subtree)
{
    Graph& graph = session.graph();
    std::string text = "//Maya ASCII 2019 scene\n";
    writeTree(text, original, name, {}, subtree);
    const std::size_t before = graph.nodes().size();
    std::istringstream stream(text);
    SceneInfo unused;
    MaReadOptions options;
    options.import = true;
    options.copies = true;
    MaReader(graph, unused, stream, "duplicate", options).read();
    DagNode& copy = *graph.nodes()[before]->asDag();
    session.edits().made(copy); // from here on a failure takes it back
    // The copy of a locked node is locked, too.
    const bool locked = std::exchange(copy.locked, false);
    if (original.parent())
        graph.reparent(copy, original.parent());
    copy.locked = locked;
    copyShapes(original, copy);
    return copy;
}

/// The transforms below a node, those above first.
void collectBelow(const DagNode& node, std::vector<Ref<DagNode>>& found)
{
    for (const Ref<DagNode>& child : node.children())
        if (!child->isShape()) {
            found.push_back(child);
            collectBelow(*child, found);
        }
}

/// Gives nodes that share their name with others one of their own.
void renameApart(Session& session, const std::vector<Ref<DagNode>>& nodes)
{
    const Graph& graph = session.graph();
    for (const Ref<DagNode>& node : nodes) {
        if (graph.findAll(node->name()).size() < 2)
            continue;
        NumberedName name = numbered(node->name());
        do
            ++name.number;
        while (!graph.findAll(name.stem + std::to_string(name.number)).empty());
        session.edits().rename(*node, name.stem + std::to_string(name.number));
    }
}

Value duplicate(Session& session, const Args& args)
{
    const Subtree subtree = args.isSet("parentOnly") ? Subtree::kRootOnly : Subtree::kWhole;
    std::vector<Ref<DagNode>> made;
    SelectionList copies;
    for (Node* const node : nodesOrSelection(session, args.objectNames())) {
        DagNode* dag = node->asDag();
        if (dag && dag->isShape())
            dag = dag->parent();
        if (!dag)
            throw Error("duplicate: " + node->uniqueName() + " is not in the DAG.");
        DagNode& copy = duplicateNode(session, *dag, args.textOr("name", dag->name()), subtree);
        copies.items.push_back({Ref<Node>(&copy), {}, Plug()});
        made.emplace_back(&copy);
        std::vector<Ref<DagNode>> below;
        collectBelow(copy, below);
        if (args.isSet("renameChildren"))
            renameApart(session, below);
        if (!args.isSet("returnRootsOnly"))
            made.insert(made.end(), below.begin(), below.end());
    }
    recordSelection(session, std::move(copies));
    mel::StringArray names;
    for (const Ref<DagNode>& node : made)
        names.push_back(node->uniqueName());
    return names;
}

} // namespace

void moveUnder(Session& session, DagNode& node, DagNode* parent, Placing placing)
{
    if (node.parent() == parent)
        return;
    const Imath::M44d world = worldMatrix(node);
    session.edits().reparent(node, parent);
    linkScale(session, node);
    if (placing == Placing::kAbsolute && !node.isShape() &&
        !worldMatrix(node).equalWithAbsError(world, 1e-12))
        placeInWorld(session, node, world);
}

void registerHierarchyCommands(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("parent")
                     .flag("w", "world")
                     .flag("r", "relative")
                     .flag("a", "absolute")
                     .flag("s", "shape")
                     .objects(0)
                     .undoable(),
                 parent);
    registry.add(CommandSpec("duplicate")
                     .flag("n", "name", {ArgType::kString})
                     .flag("rr", "returnRootsOnly")
                     .flag("po", "parentOnly")
                     .flag("rc", "renameChildren")
                     .objects(0)
                     .undoable(),
                 duplicate);
    registerGroupCommand(registry);
}

} // namespace host
