// cluster: a cluster deformer with its handle. percent: weights of deformers with one weight per point.
#include "graph/graph.h"
#include "mel/commands/commandTargets.h"
#include "mel/commands/deformerCommands.h"
#include "mel/commands/geometryCommands.h"
#include "nodes/deformerBuild.h"
#include "nodes/geometry.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <ImathBox.h>

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

Imath::V3d centreOf(const std::vector<DeformedShape>& shapes)
{
    Imath::Box3d box;
    for (const DeformedShape& each : shapes) {
        const GeometryRef geometry = shapeGeometry(*each.shape);
        if (!geometry)
            throw Error(each.shape->uniqueName() + " has no points.");
        const Imath::M44d world = worldMatrix(*each.shape);
        if (each.points.empty())
            for (const Imath::V3d& point : geometry->points())
                box.extendBy(point * world);
        for (const int point : each.points)
            box.extendBy(geometry->points()[static_cast<std::size_t>(point)] * world);
    }
    return box.center();
}

/// The handle's transform, with its pivots in the middle of what it moves.
Node& createHandle(Session& session, Node& cluster, const Imath::V3d& centre)
{
    Graph& graph = session.graph();
    Edits& edits = session.edits();
    DagNode& handle = *edits.create(*graph.types().find("transform"), cluster.name() + "Handle").asDag();
    Node& shape = edits.create(*graph.types().find("clusterHandle"), handle.name() + "Shape", &handle);
    for (unsigned k = 0; k < 3; ++k) {
        const double at = centre[static_cast<int>(k)];
        edits.setNumber(shape.plug("origin").child(k), at);
        edits.setNumber(handle.plug("rotatePivot").child(k), at);
        edits.setNumber(handle.plug("scalePivot").child(k), at);
    }
    edits.connect(handle.plug("worldMatrix").element(0), cluster.plug("matrix"));
    edits.connect(shape.plug("clusterTransforms"), cluster.plug("clusterXforms"));
    return handle;
}

Value clusterCommand(Session& session, const Args& args)
{
    Edits& edits = session.edits();
    if (args.query() || args.edit()) {
        if (args.objects().size() != 1)
            throw Error("cluster: name the cluster to query or edit.");
        Node& cluster = deformerNamed(session, args, args.objectNames().front(), "cluster");
        const Plug envelope = cluster.plug("envelope"), relative = cluster.plug("relative");
        if (args.query() && args.isSet("envelope"))
            return envelope.number();
        if (args.query())
            return static_cast<int>(relative.number());
        if (args.isSet("envelope"))
            edits.setNumber(envelope, args.number("envelope"));
        if (args.isSet("relative"))
            edits.setNumber(relative, 1);
        return {};
    }
    const std::vector<DeformedShape> shapes = deformedShapes(commandTargets(session, args.objectNames()));
    Node& cluster = edits.create(*session.graph().types().find("cluster"), args.textOr("name", "cluster1"));
    if (args.isSet("relative"))
        edits.setNumber(cluster.plug("relative"), 1);
    if (args.isSet("envelope"))
        edits.setNumber(cluster.plug("envelope"), args.number("envelope"));
    const Imath::V3d centre = centreOf(shapes);
    wireDeformer(session, cluster, shapes,
                 args.booleanOr("useComponentTags", false) ? Membership::kComponentTags : Membership::kSet);
    for (std::uint32_t index = 0; index < shapes.size(); ++index)
        edits.setMatrix(cluster.plug("geomMatrix").element(index), worldMatrix(*shapes[index].shape));
    Node& handle = createHandle(session, cluster, centre);
    selectOnly(session, handle);
    return mel::StringArray{cluster.name(), handle.uniqueName()};
}

Value percentCommand(Session& session, const Args& args)
{
    std::vector<std::string> names = args.objectNames();
    Node& deformer = deformerNamed(session, args, names.front(), "weightGeometryFilter");
    names.erase(names.begin());
    mel::FloatArray asked;
    for (const ShapePoints& each : shapePoints(session, names)) {
        const Plug weights =
            deformer.plug("weightList").element(geometryIndex(deformer, *each.shape)).child(0);
        for (const int point : each.points) {
            const Plug weight = weights.element(static_cast<std::uint32_t>(point));
            if (args.query())
                asked.push_back(weight.number());
            else if (args.isSet("value"))
                session.edits().setNumber(weight, args.number("value"));
        }
    }
    return args.query() ? Value(asked) : Value();
}

} // namespace

void registerClusterCommands(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("cluster")
                     .flag("n", "name", {ArgType::kString})
                     .flag("rel", "relative")
                     .flag("en", "envelope", {ArgType::kFloat})
                     .flag("uct", "useComponentTags", {ArgType::kBool})
                     .objects(0)
                     .query()
                     .edit()
                     .undoable(),
                 clusterCommand);
    registry.add(CommandSpec("percent").flag("v", "value", {ArgType::kFloat}).objects(1).query().undoable(),
                 percentCommand);
}

} // namespace host
