#include "nodes/attributeSpecs.h"
#include "nodes/families.h"
#include "nodes/transformMatrix.h"

namespace host {

namespace {

void addNode(NodeTypeRegistry& registry)
{
    NodeType& type = registry.add("node", "");
    type.apiType = MFn::kDependencyNode;
    type.add(messageAttribute("message", "msg").notStorable());
    type.add(flagAttribute("caching", "cch"));
    type.add(flagAttribute("frozen", "fzn"));
    type.add(AttributeSpec("isHistoricallyInteresting", "ihi", AttributeType::kByte).number(2.0));
    type.add(AttributeSpec("nodeState", "nds")
                 .enumeration({{"Normal", 0},
                               {"HasNoEffect", 1},
                               {"Blocking", 2},
                               {"Waiting-Normal", 3},
                               {"Waiting-HasNoEffect", 4},
                               {"Waiting-Blocking", 5}}));
    type.add(textAttribute("binMembership", "bnm"));
}

AttributeSpec instObjGroups()
{
    return compoundAttribute("instObjGroups", "iog")
        .add(compoundAttribute("objectGroups", "og")
                 .add(dataAttribute("objectGrpCompList", "gcl", "componentList"))
                 .add(longAttribute("objectGroupId", "gid"))
                 .add(shortAttribute("objectGrpColor", "gco"))
                 .array())
        .array();
}

AttributeSpec drawOverride()
{
    return compoundAttribute("drawOverride", "do")
        .add(AttributeSpec("overrideDisplayType", "ovdt")
                 .enumeration({{"Normal", 0}, {"Template", 1}, {"Reference", 2}}))
        .add(AttributeSpec("overrideLevelOfDetail", "ovlod").enumeration({{"Full", 0}, {"Bounding Box", 1}}))
        .add(flagAttribute("overrideShading", "ovs", true))
        .add(flagAttribute("overrideTexturing", "ovt", true))
        .add(flagAttribute("overridePlayback", "ovp", true))
        .add(flagAttribute("overrideEnabled", "ove"))
        .add(flagAttribute("overrideVisibility", "ovv", true))
        .add(flagAttribute("hideOnPlayback", "hpb"))
        .add(flagAttribute("overrideRGBColors", "ovrgbf"))
        .add(AttributeSpec("overrideColor", "ovc", AttributeType::kByte))
        .add(colorAttribute("overrideColorRGB", "ovrgb"));
}

void addMatrices(NodeType& type)
{
    type.add(matrixAttribute("matrix", "m").output());
    type.add(matrixAttribute("inverseMatrix", "im").output());
    type.add(matrixAttribute("worldMatrix", "wm").array().output());
    type.add(matrixAttribute("worldInverseMatrix", "wim").array().output());
    type.add(matrixAttribute("parentMatrix", "pm").array().output());
    type.add(matrixAttribute("parentInverseMatrix", "pim").array().output());
    type.add(matrixAttribute("offsetParentMatrix", "opm"));
    type.dagOutput = type.find("worldMatrix");
    type.affectAll({"matrix", "offsetParentMatrix"}, {"worldMatrix"});
    type.affect("matrix", "inverseMatrix");
    // The graph dirties the world matrix of a child with its parent's; what else hangs on the parent follows.
    type.affectAll({"worldMatrix"}, {"worldInverseMatrix", "parentMatrix", "parentInverseMatrix"});
    type.compute = computeDagMatrices;
}

void addDagNode(NodeTypeRegistry& registry)
{
    NodeType& type = registry.add("dagNode", "node");
    type.apiType = MFn::kDagNode;
    type.dag = true;
    addMatrices(type);
    type.add(flagAttribute("visibility", "v", true).keyable());
    type.add(flagAttribute("intermediateObject", "io"));
    type.add(flagAttribute("template", "tmp"));
    type.add(flagAttribute("ghosting", "gh"));
    type.add(instObjGroups());
    type.add(flagAttribute("useObjectColor", "uoc"));
    type.add(shortAttribute("objectColor", "oc"));
    type.add(colorAttribute("objectColorRGB", "obcc"));
    type.add(colorAttribute("wireColorRGB", "wfcc"));
    type.add(drawOverride());
    type.add(flagAttribute("lodVisibility", "lodv", true));
}

void addShapeBase(NodeTypeRegistry& registry, const char* name, const char* baseName, MFn::Type apiType)
{
    NodeType& type = registry.add(name, baseName);
    type.apiType = apiType;
    type.shape = true;
}

} // namespace

void registerBaseTypes(NodeTypeRegistry& registry)
{
    addNode(registry);
    addDagNode(registry);
    addShapeBase(registry, "shape", "dagNode", MFn::kShape);
    addShapeBase(registry, "geometryShape", "shape", MFn::kGeometric);
    addShapeBase(registry, "deformableShape", "geometryShape", MFn::kGeometric);
    addShapeBase(registry, "controlPoint", "deformableShape", MFn::kGeometric);
    addShapeBase(registry, "surfaceShape", "controlPoint", MFn::kGeometric);
}

} // namespace host
