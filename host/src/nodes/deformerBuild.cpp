#include "nodes/deformerBuild.h"

#include "graph/graph.h"
#include "nodes/geometry.h"
#include "nodes/geometryHistory.h"
#include "nodes/shapeEvaluation.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <algorithm>

namespace host {

namespace {

/// One shape on its way into a deformer.
class Wiring {
public:
    Wiring(Session& owner, DagNode& deformedShape)
        : session(owner), shape(deformedShape), names(*shapeAttributes(deformedShape))
    {}

    /// Makes an undeformed copy and a tweak node when nothing deforms the shape yet. What feeds it by
    /// construction feeds the copy from then on.
    void ensureHistory(Membership membership)
    {
        if (!deformersOf(shape).empty())
            return;
        DagNode& original = createOriginal();
        const Plug world = original.plug(names.world).element(0);
        if (membership == Membership::kComponentTags) {
            session.edits().connect(world, shape.plug(names.input), true);
            return;
        }
        Node& tweak = create("tweak", "tweak1");
        feedThroughGroup(tweak, 0, world, {}, "tweakSet1");
        session.edits().connect(tweak.plug("outputGeometry").element(0), shape.plug(names.input), true);
        const char* offsets = shape.type().name == "mesh" ? "vlist" : "plist";
        const Plug location = tweak.plug(offsets).element(0).child(0).element(0);
        session.edits().connect(location, shape.plug("tweakLocation"));
    }

    /// Puts the deformer between the shape, or the deformers that come after it, and what feeds them now.
    void insert(Node& deformer, std::uint32_t index, const std::vector<int>& points,
                const DeformerPlace& place)
    {
        const Plug input = place.frontOfChain ? frontOfChain() : shape.plug(names.input);
        const Plug feeding = input.source();
        if (place.membership == Membership::kSet) {
            feedThroughGroup(deformer, index, feeding, points, deformer.name() + "Set");
        } else {
            const Plug slot = deformer.plug("input").element(index);
            session.edits().connect(feeding, slot.child("inputGeometry"));
            session.edits().setText(slot.child("componentTagExpression"), "*");
        }
        session.edits().connect(deformer.plug("outputGeometry").element(index), input, true);
    }

private:
    /// What the tweaks, or the undeformed shape, feed.
    Plug frontOfChain() const
    {
        Plug fed = shape.plug(names.input);
        for (const GeometryStep& step : GeometryHistory(shape).steps) {
            if (step.fromShape() || step.node().type().name == "tweak")
                break;
            fed = geometryInput(step.source);
        }
        return fed;
    }

    Node& create(const char* type, const std::string& name, DagNode* parent = nullptr)
    {
        return session.edits().create(*session.graph().types().find(type), name, parent);
    }

    DagNode& createOriginal()
    {
        Node& original = create(shape.type().name.c_str(), shape.name() + "Orig", shape.parent());
        const GeometryRef geometry = shapeGeometry(shape);
        if (!geometry)
            throw Error(shape.uniqueName() + " has no geometry to deform.");
        const Plug construction = shape.plug(names.input).source();
        if (construction.isNull())
            session.edits().setData(original.plug(names.stored), geometry);
        else
            session.edits().connect(construction, original.plug(names.input));
        session.edits().setNumber(original.plug("intermediateObject"), 1);
        session.edits().unset(shape.plug(names.offsets)); // the copy has them in its points
        return *original.asDag();
    }

    /// source -> groupParts -> deformer.input[index], with a groupId and the set that holds the members.
    void feedThroughGroup(Node& deformer, std::uint32_t index, const Plug& source,
                          const std::vector<int>& points, const std::string& setName)
    {
        Edits& edits = session.edits();
        Node& id = create("groupId", "groupId1");
        Node& parts = create("groupParts", "groupParts1");
        auto list = std::make_shared<ComponentListData>();
        const Ref<Component> component = points.empty() ? allPoints(shape) : pointComponent(shape, points);
        list->components = componentTexts(shape, *component);
        edits.setData(parts.plug("inputComponents"), list);
        edits.connect(source, parts.plug("inputGeometry"));
        edits.connect(id.plug("groupId"), parts.plug("groupId"));
        const Plug slot = deformer.plug("input").element(index);
        edits.connect(parts.plug("outputGeometry"), slot.child("inputGeometry"));
        edits.connect(id.plug("groupId"), slot.child("groupId"));
        enroll(setFor(deformer, setName), id);
    }

    Node& setFor(Node& deformer, const std::string& name)
    {
        for (const Plug& user : deformer.plug("message").destinations())
            if (user.node()->type().isA("objectSet"))
                return *user.node();
        Node& set = create("objectSet", name);
        session.edits().setNumber(set.plug("verticesOnlySet"), 1);
        session.edits().connect(deformer.plug("message"), set.plug("usedBy").element(0));
        return set;
    }

    /// The object group of the shape that stands for the group in the set.
    void enroll(Node& set, Node& id)
    {
        Graph& graph = session.graph();
        const Plug groups = shape.plug("instObjGroups").element(0).child("objectGroups");
        const Plug group = groups.element(graph.nextAvailable(groups));
        session.edits().connect(id.plug("groupId"), group.child("objectGroupId"));
        const Plug members = set.plug("dagSetMembers"), nodes = set.plug("groupNodes");
        session.edits().connect(group, members.element(graph.nextAvailable(members)));
        session.edits().connect(id.plug("message"), nodes.element(graph.nextAvailable(nodes)));
    }

    Session& session;
    DagNode& shape;
    const ShapeAttributes& names;
};

DagNode* deformableShape(Node* node)
{
    DagNode* dag = node ? node->asDag() : nullptr;
    if (!dag || shapeAttributes(*dag))
        return dag;
    for (const Ref<DagNode>& child : dag->children())
        if (shapeAttributes(*child) && !child->isIntermediate())
            return child.get();
    return nullptr;
}

} // namespace

std::vector<DeformedShape> deformedShapes(const SelectionList& list)
{
    std::vector<DeformedShape> shapes;
    for (const SelectionItem& item : list.items) {
        DagNode* shape = deformableShape(item.node.get());
        if (!shape)
            throw Error("Not a shape that can be deformed: " + item.node->uniqueName());
        auto known = std::find_if(shapes.begin(), shapes.end(),
                                  [shape](const DeformedShape& each) { return each.shape.get() == shape; });
        if (known == shapes.end())
            known = shapes.insert(shapes.end(), {Ref<DagNode>(shape), {}});
        if (item.component) {
            const std::vector<int> points = pointIndices(*shape, item.component.get());
            known->points.insert(known->points.end(), points.begin(), points.end());
            std::sort(known->points.begin(), known->points.end());
        }
    }
    return shapes;
}

void wireDeformer(Session& session, Node& deformer, const std::vector<DeformedShape>& shapes,
                  const DeformerPlace& place)
{
    for (std::size_t index = 0; index < shapes.size(); ++index) {
        Wiring wiring(session, *shapes[index].shape);
        wiring.ensureHistory(place.membership);
        wiring.insert(deformer, static_cast<std::uint32_t>(index), shapes[index].points, place);
    }
}

} // namespace host
