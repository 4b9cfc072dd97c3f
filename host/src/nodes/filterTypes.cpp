#include "nodes/attributeSpecs.h"
#include "nodes/families.h"
#include "nodes/filterInput.h"

#include "graph/node.h"

#include <algorithm>

namespace host {

namespace {

AttributeSpec offsetArray(const char* longName, const char* shortName, const char* (&axes)[3][2],
                          AttributeType type)
{
    AttributeSpec point = compoundAttribute(longName, shortName);
    for (const auto& axis : axes)
        point.add(AttributeSpec(axis[0], axis[1], type));
    point.array();
    return point;
}

/// vlist[g].vertex[v] for meshes, plist[g].controlPoints[v] for everything else.
void tweakPoints(Node& node, FilterInput& input)
{
    const bool mesh = input.geometry->kind() == Geometry::Kind::kMesh;
    const Plug offsets = node.plug(mesh ? "vlist" : "plist").element(input.index).child(0);
    for (const std::uint32_t index : offsets.existingIndices()) {
        const bool member = input.all || std::binary_search(input.members.begin(), input.members.end(),
                                                            static_cast<int>(index));
        if (index >= input.points->size() || !member)
            continue;
        const Plug offset = offsets.element(index);
        (*input.points)[index] +=
            input.envelope *
            Imath::V3d(offset.child(0).number(), offset.child(1).number(), offset.child(2).number());
    }
}

void computeTweak(Node& node, const Attribute& output)
{
    computeFilter(node, output, tweakPoints);
}

void addGeometryFilter(NodeTypeRegistry& registry)
{
    NodeType& type = registry.add("geometryFilter", "node");
    type.apiType = MFn::kGeometryFilt;
    type.add(compoundAttribute("input", "ip")
                 .add(dataAttribute("inputGeometry", "ig", "geometry").notStorable())
                 .add(longAttribute("groupId", "gi"))
                 .add(textAttribute("componentTagExpression", "gtg"))
                 .array());
    type.add(dataAttribute("originalGeometry", "orggeom", "geometry").array().notStorable());
    type.add(dataAttribute("outputGeometry", "og", "geometry").array().output());
    type.add(floatAttribute("envelope", "en", 1.0).keyable());
    type.affectAll({"input", "envelope", "nodeState"}, {"outputGeometry"});
}

void addWeightGeometryFilter(NodeTypeRegistry& registry)
{
    NodeType& type = registry.add("weightGeometryFilter", "geometryFilter");
    type.apiType = MFn::kWeightGeometryFilt;
    type.add(compoundAttribute("weightList", "wl").add(floatAttribute("weights", "w", 1.0).array()).array());
    type.affect("weightList", "outputGeometry");
}

void addTweak(NodeTypeRegistry& registry)
{
    const char* vertexAxes[3][2] = {{"xVertex", "vx"}, {"yVertex", "vy"}, {"zVertex", "vz"}};
    const char* pointAxes[3][2] = {{"xValue", "xv"}, {"yValue", "yv"}, {"zValue", "zv"}};
    NodeType& type = registry.add("tweak", "geometryFilter");
    type.apiType = MFn::kTweak;
    type.add(flagAttribute("relativeTweak", "rtw", true));
    type.add(compoundAttribute("plist", "pl")
                 .add(offsetArray("controlPoints", "cp", pointAxes, AttributeType::kDouble))
                 .array());
    type.add(compoundAttribute("vlist", "vl")
                 .add(offsetArray("vertex", "vt", vertexAxes, AttributeType::kFloat))
                 .array());
    type.affectAll({"plist", "vlist"}, {"outputGeometry"});
    type.compute = computeTweak;
}

} // namespace

void registerFilterTypes(NodeTypeRegistry& registry)
{
    addGeometryFilter(registry);
    addWeightGeometryFilter(registry);
    addTweak(registry);
}

} // namespace host
