#include "nodes/attributeSpecs.h"
#include "nodes/families.h"
#include "nodes/shapeEvaluation.h"

namespace host {

namespace {

/// Offsets of control points, made by moving them: `x` carries the name of the three coordinates.
AttributeSpec offsets(const char* longName, const char* shortName, AttributeType type,
                      const char* (&axes)[3][2])
{
    AttributeSpec point = compoundAttribute(longName, shortName);
    for (const auto& axis : axes)
        point.add(AttributeSpec(axis[0], axis[1], type));
    point.array();
    return point;
}

void addDeformable(NodeTypeRegistry& registry)
{
    // The registry has the plain bases already; geometry shapes share what follows.
    NodeType& type = registry.add("deformedShape", "surfaceShape");
    type.add(compoundAttribute("componentTags", "gtag")
                 .add(textAttribute("componentTagName", "gtagnm"))
                 .add(dataAttribute("componentTagContents", "gtagcmp", "componentList"))
                 .array());
    type.add(messageAttribute("tweakLocation", "twl").notStorable());
    type.add(flagAttribute("visibleInReflections", "vir"));
    type.add(flagAttribute("visibleInRefractions", "vif"));
    type.add(flagAttribute("castsShadows", "csh", true));
    type.add(flagAttribute("receiveShadows", "rcsh", true));
    type.add(flagAttribute("primaryVisibility", "vis", true));
    type.add(flagAttribute("doubleSided", "ds", true));
    type.add(flagAttribute("opposite", "op"));
    type.compute = computeShape;
}

void addMesh(NodeTypeRegistry& registry)
{
    const char* axes[3][2] = {{"pntx", "px"}, {"pnty", "py"}, {"pntz", "pz"}};
    NodeType& type = registry.add("mesh", "deformedShape");
    type.apiType = MFn::kMesh;
    type.defaultName = "polySurfaceShape";
    type.add(dataAttribute("inMesh", "i", "mesh").notStorable());
    type.add(dataAttribute("cachedInMesh", "cim", "mesh").hidden());
    type.add(offsets("pnts", "pt", AttributeType::kFloat, axes));
    type.add(dataAttribute("outMesh", "o", "mesh").output());
    type.add(dataAttribute("worldMesh", "w", "mesh").array().output());
    type.add(flagAttribute("displayVertices", "dv"));
    type.add(flagAttribute("displayColors", "dcol"));
    type.add(textAttribute("displayColorChannel", "dcc"));
    type.add(AttributeSpec("displaySmoothMesh", "dsm", AttributeType::kShort));
    type.add(shortAttribute("vertexColorSource", "vcs"));
    type.affectAll({"inMesh", "cachedInMesh", "pnts", "componentTags", "tweakLocation"},
                   {"outMesh", "worldMesh"});
    type.affect("worldMatrix", "worldMesh"); // deformers that work in world space look at the transform
}

NodeType& addNurbs(NodeTypeRegistry& registry, const char* name, MFn::Type apiType)
{
    const char* axes[3][2] = {{"xValue", "xv"}, {"yValue", "yv"}, {"zValue", "zv"}};
    NodeType& type = registry.add(name, "deformedShape");
    type.apiType = apiType;
    type.defaultName = std::string(name) + "Shape";
    type.add(dataAttribute("create", "cr", name).notStorable());
    type.add(dataAttribute("cached", "cc", name).hidden());
    type.add(offsets("controlPoints", "cp", AttributeType::kDouble, axes));
    type.add(flagAttribute("tweak", "tw"));
    type.add(dataAttribute("local", "l", name).output());
    type.add(dataAttribute("worldSpace", "ws", name).array().output());
    type.affectAll({"create", "cached", "controlPoints", "componentTags", "tweakLocation"},
                   {"local", "worldSpace"});
    type.affect("worldMatrix", "worldSpace");
    return type;
}

/// What scripts ask curves for.
void addCurveFacts(NodeType& type)
{
    for (const auto& [longName, shortName] :
         {std::pair("form", "f"), std::pair("degree", "d"), std::pair("spans", "s")}) {
        type.add(longAttribute(longName, shortName).output());
        type.affectAll({"create", "cached"}, {longName});
    }
}

void addLattice(NodeTypeRegistry& registry)
{
    const char* axes[3][2] = {{"xValue", "xv"}, {"yValue", "yv"}, {"zValue", "zv"}};
    NodeType& type = registry.add("lattice", "deformedShape");
    type.apiType = MFn::kLattice;
    type.defaultName = "latticeShape";
    type.add(longAttribute("sDivisions", "sd", 2.0));
    type.add(longAttribute("tDivisions", "td", 5.0));
    type.add(longAttribute("uDivisions", "ud", 2.0));
    type.add(dataAttribute("latticeInput", "li", "lattice").notStorable());
    type.add(dataAttribute("cached", "cc", "lattice").hidden());
    type.add(offsets("controlPoints", "cp", AttributeType::kDouble, axes));
    type.add(dataAttribute("latticeOutput", "lo", "lattice").output());
    type.add(dataAttribute("worldLattice", "wl", "lattice").array().output());
    type.affectAll({"latticeInput", "cached", "controlPoints", "componentTags", "tweakLocation", "sDivisions",
                    "tDivisions", "uDivisions"},
                   {"latticeOutput", "worldLattice"});
    type.affect("worldMatrix", "worldLattice");
    NodeType& base = registry.add("baseLattice", "geometryShape");
    base.defaultName = "latticeBaseShape";
}

} // namespace

void registerShapeTypes(NodeTypeRegistry& registry)
{
    addDeformable(registry);
    addMesh(registry);
    addCurveFacts(addNurbs(registry, "nurbsCurve", MFn::kNurbsCurve));
    addNurbs(registry, "nurbsSurface", MFn::kNurbsSurface);
    addLattice(registry);
}

} // namespace host
