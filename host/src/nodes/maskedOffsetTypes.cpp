#include "nodes/attributeSpecs.h"
#include "nodes/families.h"

#include "graph/node.h"
#include "graph/numericArray.h"
#include "nodes/filterInput.h"

namespace host {

namespace {

/// A point ends at p + envelope * strength * weight * mask * offset, in object space.
void deformByOffset(Node& node, FilterInput& input)
{
    const Plug axes = node.plug("offset");
    const Imath::V3d offset(axes.child(0).number(), axes.child(1).number(), axes.child(2).number());
    const double factor = input.envelope * node.plug("strength").number();
    const NumericArray* weights = filterWeights(node, input.index);
    const NumericArray* mask = node.plug("maskList").element(input.index).child(0).numbers();
    forEachMember(input, [&](std::size_t first, std::size_t end) {
        for (std::size_t member = first; member < end; ++member) {
            const std::size_t id = input.point(member);
            const auto vertex = static_cast<std::uint32_t>(id);
            const double weight = weights ? weights->get(vertex) : 1.0;
            const double masked = mask ? mask->get(vertex) : 1.0;
            (*input.points)[id] += factor * weight * masked * offset;
        }
    });
}

void computeMaskedOffset(Node& node, const Attribute& output)
{
    computeFilter(node, output, deformByOffset);
}

/// Numbers per vertex as deformers of others keep them where a tool finds no map: kept and saved, without
/// effect.
void addOtherShapes(NodeType& type)
{
    type.add(floatAttribute("levels", "lvs").array());
    type.add(compoundAttribute("plainMask", "pmk").add(floatAttribute("plainMaskValues", "pmv").array()));
    type.add(compoundAttribute("zoneList", "znl")
                 .add(compoundAttribute("zones", "zns").add(floatAttribute("zoneWeight", "znw")).array())
                 .array());
    type.add(compoundAttribute("layerList", "lyl")
                 .add(compoundAttribute("layerGeometry", "lyg")
                          .add(floatAttribute("layerMask", "lym", 1.0).array())
                          .array())
                 .array());
}

} // namespace

void registerMaskedOffsetTypes(NodeTypeRegistry& registry)
{
    NodeType& type = registry.add("maskedOffset", "weightGeometryFilter");
    type.add(tripleAttribute("offset", "ofs", AttributeType::kDistance));
    type.add(floatAttribute("strength", "stg", 1.0).keyable());
    type.add(compoundAttribute("maskList", "mkl").add(floatAttribute("mask", "mk", 1.0).array()).array());
    addOtherShapes(type);
    type.affectAll({"offset", "strength", "maskList"}, {"outputGeometry"});
    type.compute = computeMaskedOffset;
}

} // namespace host
