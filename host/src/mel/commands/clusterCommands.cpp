// cluster: a cluster deformer with its handle. percent: weights of deformers with one weight per point.
#include "graph/graph.h"
#include "mel/commands/commandTargets.h"
#include "mel/commands/deformerCommands.h"
#include "mel/commands/deformerHandles.h"
#include "mel/commands/geometryCommands.h"
#include "nodes/deformerBuild.h"
#include "nodes/geometry.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <algorithm>

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

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
    wireDeformer(session, cluster, shapes, placeOf(args));
    for (std::uint32_t index = 0; index < shapes.size(); ++index)
        edits.setMatrix(cluster.plug("geomMatrix").element(index), worldMatrix(*shapes[index].shape));
    Node& handle =
        createHandle(session, cluster, centre, {"clusterHandle", "clusterTransforms", "clusterXforms"});
    selectOnly(session, handle);
    return mel::StringArray{cluster.name(), handle.uniqueName()};
}

void setWeights(Session& session, const Plug& weights, const std::vector<int>& points, double value)
{
    std::vector<std::uint32_t> indices(points.begin(), points.end());
    std::sort(indices.begin(), indices.end());
    session.edits().replaceElements(weights, indices, [&] {
        for (const std::uint32_t index : indices)
            weights.element(index).setNumber(value);
    });
}

Value percentCommand(Session& session, const Args& args)
{
    std::vector<std::string> names = args.objectNames();
    if (names.empty())
        throw Error("percent: name the deformer.");
    Node& deformer = deformerNamed(session, args, names.front(), "weightGeometryFilter");
    names.erase(names.begin());
    mel::FloatArray asked;
    for (const ShapePoints& each : shapePoints(session, names)) {
        const Plug weights =
            deformer.plug("weightList").element(geometryIndex(deformer, *each.shape)).child(0);
        if (args.query())
            for (const int point : each.points)
                asked.push_back(weights.element(static_cast<std::uint32_t>(point)).number());
        else if (args.isSet("value"))
            setWeights(session, weights, each.points, args.number("value"));
    }
    return args.query() ? Value(asked) : Value();
}

} // namespace

void registerClusterCommands(mel::CommandRegistry& registry)
{
    registry.add(withPlaceFlags(CommandSpec("cluster")
                                    .flag("n", "name", {ArgType::kString})
                                    .flag("rel", "relative")
                                    .flag("en", "envelope", {ArgType::kFloat})
                                    .objects(0)
                                    .query()
                                    .edit()
                                    .undoable()),
                 clusterCommand);
    registry.add(CommandSpec("percent").flag("v", "value", {ArgType::kFloat}).objects(1).query().undoable(),
                 percentCommand);
}

} // namespace host
