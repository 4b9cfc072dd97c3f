#include "nodes/attributeSpecs.h"
#include "nodes/families.h"

#include "graph/node.h"
#include "nodes/skinEvaluation.h"

namespace host {

namespace {

void computeSkin(Node& node, const Attribute& output)
{
    computeFilter(node, output, deformBySkin);
}

/// Attributes that decide how weights are bound and edited; evaluation does not read them.
void addBinding(NodeType& type)
{
    type.add(doubleAttribute("dropoffRate", "dr", 4.0));
    type.add(doubleAttribute("dropoff", "dpf", 4.0).array());
    type.add(doubleAttribute("smoothness", "smt").array());
    type.add(flagAttribute("lockWeights", "lw").array());
    type.add(flagAttribute("maintainMaxInfluences", "mmi"));
    type.add(longAttribute("maxInfluences", "mi", 2.0));
    type.add(AttributeSpec("bindMethod", "bm")
                 .enumeration({{"Closest Distance", 0},
                               {"Closest in Hierarchy", 1},
                               {"Heat Map", 2},
                               {"Geodesic Voxel", 3}}));
    type.add(AttributeSpec("weightDistribution", "wd").enumeration({{"Distance", 0}, {"Neighbors", 1}}));
    type.add(dataAttribute("paintWeights", "ptw", "doubleArray"));
    type.add(matrixAttribute("paintTrans", "ptt"));
    type.add(flagAttribute("useComponents", "uc"));
    type.add(flagAttribute("useComponentsMatrix", "ucm"));
    type.add(messageAttribute("bindPose", "bp"));
    type.add(colorAttribute("influenceColor", "ifcl").array());
    type.add(doubleAttribute("heatmapFalloff", "hmf"));
}

void addSkinCluster(NodeTypeRegistry& registry)
{
    NodeType& type = registry.add("skinCluster", "geometryFilter");
    type.apiType = MFn::kSkinClusterFilter;
    type.add(compoundAttribute("weightList", "wl")
                 .add(doubleAttribute("weights", "w").array())
                 .array()
                 .weightRows());
    type.add(matrixAttribute("bindPreMatrix", "pm").array());
    type.add(matrixAttribute("geomMatrix", "gm"));
    type.add(matrixAttribute("matrix", "ma").array());
    addBinding(type);
    type.add(AttributeSpec("normalizeWeights", "nw")
                 .enumeration({{"None", 0}, {"Interactive", 1}, {"Post", 2}}, 1));
    type.add(AttributeSpec("skinningMethod", "skm")
                 .enumeration({{"Classic Linear", 0}, {"Dual Quaternion", 1}, {"Weight Blended", 2}}));
    type.add(doubleAttribute("blendWeights", "bw").array());
    type.add(flagAttribute("deformUserNormals", "dun", true));
    type.affectAll({"weightList", "bindPreMatrix", "geomMatrix", "matrix", "normalizeWeights",
                    "skinningMethod", "blendWeights"},
                   {"outputGeometry"});
    type.compute = computeSkin;
}

void addDagPose(NodeTypeRegistry& registry)
{
    NodeType& type = registry.add("dagPose", "node");
    type.apiType = MFn::kDagPose;
    type.add(messageAttribute("world", "w").notStorable());
    type.add(matrixAttribute("worldMatrix", "wm").array());
    type.add(matrixAttribute("xformMatrix", "xm").array());
    type.add(messageAttribute("members", "m").array());
    type.add(messageAttribute("parents", "p").array());
    type.add(flagAttribute("global", "g").array());
    type.add(flagAttribute("bindPose", "bp"));
}

} // namespace

void registerSkinTypes(NodeTypeRegistry& registry)
{
    addSkinCluster(registry);
    addDagPose(registry);
}

} // namespace host
