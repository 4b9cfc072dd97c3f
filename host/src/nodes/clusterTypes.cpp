#include "nodes/attributeSpecs.h"
#include "nodes/families.h"

#include "graph/node.h"
#include "graph/numericArray.h"
#include "nodes/filterInput.h"
#include "nodes/transformMatrix.h"

namespace host {

namespace {

/// What the handle hands to its cluster: a point goes through pre, then as far through weighted as its weight
/// says, then through post.
AttributeSpec clusterMatrices(const char* longName, const char* shortName)
{
    return compoundAttribute(longName, shortName)
        .add(matrixAttribute("preMatrix", "pre"))
        .add(matrixAttribute("weightedMatrix", "wt"))
        .add(matrixAttribute("postMatrix", "post"));
}

/// The handle's own transform in the space of its parent, and the way there and back.
void computeHandle(Node& node, const Attribute& output)
{
    if (output.longName != "clusterTransforms")
        return computeDagMatrices(node, output);
    const Plug plug(&node, &output);
    DagNode* transform = node.asDag() ? node.asDag()->parent() : nullptr;
    if (!transform)
        return;
    // Read so that it is up to date: only then does a change above reach what is computed here.
    node.plug("worldMatrix").element(0).matrix();
    node.storeMatrix(plug.child(0), transform->plug("parentInverseMatrix").element(0).matrix());
    node.storeMatrix(plug.child(1),
                     transform->plug("matrix").matrix() * transform->plug("offsetParentMatrix").matrix());
    node.storeMatrix(plug.child(2), transform->plug("parentMatrix").element(0).matrix());
}

/// What a point of weight 1 goes through, in world space. Absolute: from the handle's world matrix at the
/// time of binding to the present one. Relative: the same of the handle's local matrix only, in the space of
/// its parent, so that moving the parent moves nothing.
Imath::M44d clusterMotion(Node& node)
{
    const Imath::M44d bindPre = node.plug("bindPreMatrix").matrix();
    const Plug transforms = node.plug("clusterXforms");
    if (node.plug("relative").number() == 0.0 || !transforms.isDestination())
        return bindPre * node.plug("matrix").matrix();
    return transforms.child(0).matrix() * bindPre * transforms.child(1).matrix() *
           transforms.child(2).matrix();
}

/// A point of weight w ends at p + envelope * w * (p * motion - p).
void deformByCluster(Node& node, FilterInput& input)
{
    const GeometryFrame frame(node.plug("geomMatrix").element(input.index).matrix());
    const Imath::M44d motion = frame.to * clusterMotion(node) * frame.from;
    const NumericArray* weights = filterWeights(node, input.index);
    forEachMember(input, [&](std::size_t first, std::size_t end) {
        for (std::size_t member = first; member < end; ++member) {
            const std::size_t id = input.point(member);
            const double weight = weights ? weights->get(static_cast<std::uint32_t>(id)) : 1.0;
            Imath::V3d& point = (*input.points)[id];
            point += input.envelope * weight * (transformed(point, motion) - point);
        }
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
    handle.add(clusterMatrices("clusterTransforms", "x").output());
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
    cluster.add(clusterMatrices("clusterXforms", "x"));
    cluster.add(flagAttribute("bindState", "bs"));
    cluster.affectAll({"relative", "bindPreMatrix", "geomMatrix", "matrix", "clusterXforms"},
                      {"outputGeometry"});
    cluster.compute = computeCluster;
}

} // namespace host
