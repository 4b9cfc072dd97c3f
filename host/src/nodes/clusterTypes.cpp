#include "nodes/attributeSpecs.h"
#include "nodes/families.h"

#include "graph/node.h"
#include "nodes/handleMotion.h"
#include "nodes/transformMatrix.h"
#include "nodes/weightedMembers.h"

namespace host {

namespace {

void computeHandle(Node& node, const Attribute& output)
{
    if (output.longName != "clusterTransforms")
        return computeDagMatrices(node, output);
    computeHandleMatrices(node, Plug(&node, &output));
}

/// A point of weight w ends at p + envelope * w * (p * motion - p).
void deformByCluster(Node& node, FilterInput& input)
{
    const GeometryFrame frame(node.plug("geomMatrix").element(input.index).matrix());
    const Imath::M44d motion = frame.to * handleMotion(node, node.plug("clusterXforms")) * frame.from;
    moveMembers(node, input, [&](Imath::V3d& point, double share) {
        point += share * (transformed(point, motion) - point);
    });
}

void computeCluster(Node& node, const Attribute& output)
{
    computeFilter(node, output, deformByCluster);
}

} // namespace

void registerClusterTypes(NodeTypeRegistry& registry)
{
    NodeType& handle = registry.add("clusterHandle", "shape");
    handle.apiType = MFn::kCluster;
    handle.add(handleMatrices("clusterTransforms", "x").output());
    handle.add(tripleAttribute("origin", "or", AttributeType::kDistance));
    handle.add(messageAttribute("weightedNode", "wn"));
    handle.add(matrixAttribute("bindPreMatrix", "bpm"));
    handle.affect("worldMatrix", "clusterTransforms");
    handle.compute = computeHandle;

    NodeType& cluster = registry.add("cluster", "weightGeometryFilter");
    cluster.apiType = MFn::kClusterFilter;
    cluster.add(flagAttribute("relative", "rel"));
    cluster.add(flagAttribute("usePartialResolution", "upr"));
    cluster.add(floatAttribute("percentResolution", "pr", 5.0));
    cluster.add(matrixAttribute("bindPreMatrix", "pm"));
    cluster.add(matrixAttribute("geomMatrix", "gm").array());
    cluster.add(matrixAttribute("matrix", "ma"));
    cluster.add(handleMatrices("clusterXforms", "x"));
    cluster.add(flagAttribute("bindState", "bs"));
    cluster.affectAll({"relative", "bindPreMatrix", "geomMatrix", "matrix", "clusterXforms"},
                      {"outputGeometry"});
    cluster.compute = computeCluster;
}

} // namespace host
