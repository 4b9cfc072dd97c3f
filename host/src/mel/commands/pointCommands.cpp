// pointPosition, polyEvaluate: asking where points are and how many.
#include "mel/command.h"
#include "mel/commands/commandTargets.h"
#include "mel/commands/geometryCommands.h"
#include "nodes/geometry.h"
#include "selection/selectionState.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

namespace host {

namespace {

using mel::Args;
using mel::CommandSpec;
using mel::Value;

Value pointPositionCommand(Session& session, const Args& args)
{
    const SelectionList targets = commandTargets(session, args.objectNames());
    if (targets.items.size() != 1)
        throw Error("pointPosition needs one control point.");
    const SelectionItem& item = targets.items.front();
    DagNode* shape = item.node->asDag();
    if (!shape || !item.component || pointIndices(*shape, item.component.get()).size() != 1)
        throw Error("pointPosition needs one control point.");
    const Imath::V3d at = pointPositions(*shape, item.component.get(), !args.isSet("local")).front();
    return mel::FloatArray{at.x, at.y, at.z};
}

/// The mesh shape of an item; throws when it is none.
const MeshData& meshOf(const SelectionItem& item, GeometryRef& keep)
{
    DagNode* dag = item.node ? item.node->asDag() : nullptr;
    if (dag && !dag->isShape())
        for (const Ref<DagNode>& child : dag->children())
            if (child->isShape() && !child->isIntermediate()) {
                dag = child.get();
                break;
            }
    keep = dag ? shapeGeometry(*dag) : nullptr;
    if (!keep || keep->kind() != Geometry::Kind::kMesh)
        throw Error("polyEvaluate works on polygon meshes: " + item.node->uniqueName() + " is none.");
    return static_cast<const MeshData&>(*keep);
}

Value polyEvaluateCommand(Session& session, const Args& args)
{
    mel::IntArray counts;
    for (const SelectionItem& item : commandTargets(session, args.objectNames()).items) {
        GeometryRef keep;
        const MeshData& mesh = meshOf(item, keep);
        const bool all = !args.isSet("vertex") && !args.isSet("edge") && !args.isSet("face");
        if (all || args.isSet("vertex"))
            counts.push_back(static_cast<int>(mesh.count()));
        if (all || args.isSet("edge"))
            counts.push_back(static_cast<int>(mesh.topology->edges.size()));
        if (all || args.isSet("face"))
            counts.push_back(static_cast<int>(mesh.topology->faceCounts.size()));
    }
    if (counts.size() == 1)
        return counts.front();
    return counts;
}

} // namespace

std::vector<Imath::V3d> pointPositions(DagNode& shape, const Component* component, bool world)
{
    const GeometryRef geometry = shapeGeometry(shape);
    if (!geometry)
        throw Error(shape.uniqueName() + " has no points.");
    const Imath::M44d matrix = world ? worldMatrix(shape) : Imath::M44d();
    std::vector<Imath::V3d> positions;
    for (const int point : pointIndices(shape, component))
        positions.push_back(geometry->points()[static_cast<std::size_t>(point)] * matrix);
    return positions;
}

void selectOnly(Session& session, Node& node)
{
    SelectionList next;
    next.items.push_back({Ref<Node>(&node), {}, {}});
    const SelectionList before = session.selection().active();
    session.edits().perform([next](Session& in) { in.selection().setActive(next); },
                            [before](Session& in) { in.selection().setActive(before); });
}

void registerPointCommands(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("pointPosition").flag("l", "local").flag("w", "world").objects(0),
                 pointPositionCommand);
    registry.add(
        CommandSpec("polyEvaluate").flag("v", "vertex").flag("e", "edge").flag("f", "face").objects(0),
        polyEvaluateCommand);
}

} // namespace host
