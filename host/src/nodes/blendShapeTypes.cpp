#include "nodes/attributeSpecs.h"
#include "nodes/blendShapeEvaluation.h"
#include "nodes/families.h"

namespace host {

namespace {

void computeBlendShape(Node& node, const Attribute& output)
{
    computeFilter(node, output, deformByBlendShape);
}

/// One shape of a target, by item number 5000 + 1000 * the weight at which it is reached.
AttributeSpec targetItem()
{
    return compoundAttribute("inputTargetItem", "iti")
        .add(dataAttribute("inputGeomTarget", "igt", "geometry").notStorable())
        .add(dataAttribute("inputRelativePointsTarget", "irpt", "pointArray"))
        .add(dataAttribute("inputRelativeComponentsTarget", "irct", "componentList"))
        .add(dataAttribute("inputPointsTarget", "ipt", "pointArray"))
        .add(dataAttribute("inputComponentsTarget", "ict", "componentList"))
        .array();
}

/// Child order matters: scripts reach the weights of a target and of the base by position.
AttributeSpec inputTarget()
{
    return compoundAttribute("inputTarget", "it")
        .add(compoundAttribute("inputTargetGroup", "itg")
                 .add(targetItem())
                 .add(floatAttribute("targetWeights", "tw", 1.0).array())
                 .add(longAttribute("normalizationId", "nid"))
                 .add(longAttribute("postDeformersMode", "pdm"))
                 .array())
        .add(floatAttribute("baseWeights", "bw", 1.0).array())
        .add(compoundAttribute("normalizationGroup", "ng")
                 .add(flagAttribute("normalizationUseWeights", "nuw"))
                 .add(floatAttribute("normalizationWeights", "nw", 1.0).array())
                 .array())
        .add(floatAttribute("paintTargetWeights", "ptw", 1.0).array())
        .add(longAttribute("paintTargetIndex", "pti"))
        .array();
}

} // namespace

void registerBlendShapeTypes(NodeTypeRegistry& registry)
{
    NodeType& type = registry.add("blendShape", "geometryFilter");
    type.apiType = MFn::kBlendShape;
    type.add(flagAttribute("topologyCheck", "tc", true));
    type.add(floatAttribute("weight", "w").keyable().array());
    type.add(inputTarget());
    type.add(flagAttribute("useTargetCompWeights", "utcw"));
    type.add(flagAttribute("supportNegativeWeights", "sn"));
    type.add(flagAttribute("parallelBlender", "pb"));
    type.add(longAttribute("midLayerId", "mlid"));
    type.add(longAttribute("midLayerParent", "mlpr"));
    type.add(longAttribute("nextNode", "nn"));
    type.add(longAttribute("parentDirectory", "pndr").array());
    type.affectAll({"weight", "inputTarget"}, {"outputGeometry"});
    type.compute = computeBlendShape;
    type.keepInput = keepTarget;
}

} // namespace host
