#include "nodes/historyRemoval.h"

#include "graph/graph.h"
#include "nodes/geometry.h"
#include "nodes/shapeEvaluation.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <algorithm>
#include <set>

namespace host {

namespace {

/// What leads to a shape, from node to node along the geometry.
class History {
public:
    explicit History(DagNode& end) : shape(end) { follow(shape.plug(shapeAttributes(shape)->input)); }

    /// Nodes that feed nothing but one another and the shape, whoever comes first.
    std::vector<Ref<Node>> removable() const
    {
        std::set<const Node*> kept;
        for (bool changed = true; changed;) {
            changed = false;
            for (const Ref<Node>& node : nodes)
                if (kept.count(node.get()) == 0 && works(*node, kept)) {
                    kept.insert(node.get());
                    changed = true;
                }
        }
        std::vector<Ref<Node>> gone;
        for (const Ref<Node>& node : nodes)
            if (kept.count(node.get()) == 0)
                gone.push_back(node);
        return gone;
    }

    /// Connections through which geometry comes from history.
    std::vector<Graph::Connection> path;

private:
    void follow(const Plug& input)
    {
        const Plug source = input.source();
        if (source.isNull())
            return;
        path.push_back({source, input});
        Node& node = *source.node();
        if (!known.insert(&node).second)
            return;
        nodes.emplace_back(&node);
        if (node.type().isA("geometryFilter"))
            follow(node.plug("input")
                       .element(source.isElement() ? source.logicalIndex() : 0)
                       .child("inputGeometry"));
        else if (node.type().name == "groupParts")
            follow(node.plug("inputGeometry"));
        else if (shapeAttributes(node))
            follow(node.plug(shapeAttributes(node)->input));
    }

    bool isOnPath(const Graph::Connection& link) const
    {
        return std::any_of(path.begin(), path.end(), [&](const Graph::Connection& step) {
            return step.source == link.source && step.destination == link.destination;
        });
    }

    /// Whether geometry from the node goes elsewhere too, or it is an object that people see.
    bool works(const Node& node, const std::set<const Node*>& kept) const
    {
        const DagNode* const dag = node.asDag();
        if (dag && !dag->isIntermediate())
            return true;
        for (const Graph::Connection& link : node.graph().outputs(node)) {
            const Node* const user = link.destination.node();
            const AttributeType type = link.source.attribute()->type;
            const bool mayBeGeometry = type == AttributeType::kData || type == AttributeType::kOpaque;
            const bool goesOn = user != &shape && (known.count(user) == 0 || kept.count(user) != 0);
            if (mayBeGeometry && goesOn && !isOnPath(link))
                return true;
        }
        return false;
    }

    DagNode& shape;
    std::vector<Ref<Node>> nodes;
    std::set<const Node*> known;
};

/// The groupIds by which the deformers on the way know their points of this shape.
std::vector<Ref<Node>> groupIdsOf(const std::vector<Graph::Connection>& path)
{
    std::vector<Ref<Node>> ids;
    for (const Graph::Connection& link : path) {
        Node& fed = *link.destination.node();
        Plug id;
        if (fed.type().isA("geometryFilter"))
            id = link.destination.parent().child("groupId").source();
        else if (fed.type().name == "groupParts")
            id = fed.plug("groupId").source();
        if (!id.isNull())
            ids.emplace_back(id.node());
    }
    return ids;
}

/// Sets of members that deformers will leave behind.
std::vector<Ref<Node>> setsOf(const std::vector<Ref<Node>>& deformers)
{
    std::vector<Ref<Node>> sets;
    for (const Ref<Node>& deformer : deformers)
        if (deformer->type().isA("geometryFilter"))
            for (const Plug& user : deformer->plug("message").destinations())
                if (user.node()->type().isA("objectSet"))
                    sets.emplace_back(user.node());
    return sets;
}

} // namespace

void removeHistory(Session& session, DagNode& shape)
{
    const ShapeAttributes& names = *shapeAttributes(shape);
    const History history(shape);
    if (history.path.empty())
        return;
    const GeometryRef geometry = shapeGeometry(shape);
    if (!geometry)
        throw Error(shape.uniqueName() + " has no geometry that could be kept without its history.");
    const std::vector<Ref<Node>> removed = history.removable();
    const std::vector<Ref<Node>> ids = groupIdsOf(history.path), sets = setsOf(removed);
    Edits& edits = session.edits();
    for (const Graph::Connection& link : history.path)
        edits.disconnect(link.source, link.destination);
    edits.setData(shape.plug(names.stored), geometry);
    edits.unset(shape.plug(names.offsets));
    for (const std::vector<Ref<Node>>* group : {&removed, &ids, &sets})
        for (const Ref<Node>& node : *group)
            if (node->alive())
                edits.remove(*node);
}

} // namespace host
