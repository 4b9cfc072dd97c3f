#include "nodes/historyRemoval.h"

#include "graph/graph.h"
#include "nodes/geometry.h"
#include "nodes/geometryHistory.h"
#include "nodes/shapeEvaluation.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <algorithm>
#include <map>
#include <set>

namespace host {

namespace {

/// What leads to a shape, from node to node along the geometry.
class History {
public:
    History(DagNode& end, const std::vector<GeometryStep>& path) : shape(end)
    {
        for (const GeometryStep& step : path) {
            std::vector<const GeometryStep*>& from = known[&step.node()];
            if (from.empty())
                nodes.emplace_back(&step.node());
            from.push_back(&step);
        }
    }

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

private:
    bool isOnPath(const Graph::Connection& link) const
    {
        const auto& from = known.at(link.source.node());
        return std::any_of(from.begin(), from.end(), [&](const GeometryStep* step) {
            return step->source == link.source && step->input == link.destination;
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
    std::map<const Node*, std::vector<const GeometryStep*>> known; ///< the steps that come from each
};

/// The groupIds by which the deformers on the way know their points of this shape.
std::vector<Ref<Node>> groupIdsOf(const std::vector<GeometryStep>& path)
{
    std::vector<Ref<Node>> ids;
    for (const GeometryStep& step : path) {
        Node& fed = *step.input.node();
        Plug id;
        if (fed.type().isA("geometryFilter"))
            id = step.input.parent().child("groupId").source();
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
    const GeometryHistory path(shape);
    if (path.steps.empty())
        return;
    path.requireEnd();
    const GeometryRef geometry = shapeGeometry(shape);
    if (!geometry)
        throw Error(shape.uniqueName() + " has no geometry that could be kept without its history.");
    const std::vector<Ref<Node>> removed = History(shape, path.steps).removable();
    const std::vector<Ref<Node>> ids = groupIdsOf(path.steps), sets = setsOf(removed);
    Edits& edits = session.edits();
    for (const GeometryStep& step : path.steps)
        edits.disconnect(step.source, step.input);
    edits.setData(shape.plug(names.stored), geometry);
    edits.unset(shape.plug(names.offsets));
    for (const std::vector<Ref<Node>>* group : {&removed, &ids, &sets})
        for (const Ref<Node>& node : *group)
            if (node->alive())
                edits.remove(*node);
}

} // namespace host
