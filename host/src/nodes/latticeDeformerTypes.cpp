#include "nodes/attributeSpecs.h"
#include "nodes/families.h"

#include "graph/node.h"
#include "nodes/filterAccess.h"
#include "nodes/latticeDeformer.h"
#include "nodes/weightedMembers.h"
#include "types/error.h"

namespace host {

namespace {

/// Modes that are kept in files but not computed.
void requireSupported(Node& node)
{
    if (node.plug("local").number() != 0.0)
        throw Error("'" + node.uniqueName() +
                    ".local': only lattices whose points all reach everywhere (off) "
                    "are computed.");
    if (node.plug("outsideLattice").number() != 0.0)
        throw Error("'" + node.uniqueName() + ".outsideLattice': only inside (0) is computed.");
}

/// Point -> world -> space of the base cube -> through the lattice -> world -> point. A point of weight w
/// goes that share of the way; what lies outside the base stays.
void deformByLattice(Node& node, FilterInput& input)
{
    requireSupported(node);
    const auto lattice =
        std::dynamic_pointer_cast<const LatticeData>(node.plug("deformedLatticePoints").data());
    if (!lattice)
        return;
    DagNode* shape = inputShape(node, input.index);
    const Imath::M44d world = shape ? worldMatrix(*shape) : Imath::M44d();
    const Imath::M44d toBase = world * node.plug("baseLatticeMatrix").matrix().inverse();
    const Imath::M44d fromLattice = node.plug("deformedLatticeMatrix").matrix() * world.inverse();
    const FreeForm deformation(lattice);
    moveMembers(node, input, [&](Imath::V3d& point, double share) {
        if (const auto moved = deformation.at(transformed(point, toBase)))
            point += share * (transformed(*moved, fromLattice) - point);
    });
}

void computeLatticeDeformer(Node& node, const Attribute& output)
{
    computeFilter(node, output, deformByLattice);
}

} // namespace

void registerLatticeDeformerTypes(NodeTypeRegistry& registry)
{
    NodeType& type = registry.add("ffd", "weightGeometryFilter");
    type.apiType = MFn::kFFD;
    type.add(dataAttribute("deformedLatticePoints", "dlp", "lattice").notStorable());
    type.add(matrixAttribute("deformedLatticeMatrix", "dlm"));
    type.add(matrixAttribute("baseLatticeMatrix", "blm"));
    type.add(shortAttribute("localInfluenceS", "lis", 2.0));
    type.add(shortAttribute("localInfluenceT", "lit", 2.0));
    type.add(shortAttribute("localInfluenceU", "liu", 2.0));
    type.add(flagAttribute("local", "lo", true));
    type.add(flagAttribute("usePartialResolution", "upr"));
    type.add(shortAttribute("outsideLattice", "ot"));
    type.add(floatAttribute("outsideFalloffDist", "ofd", 1.0));
    type.add(flagAttribute("freezeGeometry", "fg"));
    type.affectAll(
        {"deformedLatticePoints", "deformedLatticeMatrix", "baseLatticeMatrix", "local", "outsideLattice"},
        {"outputGeometry"});
    type.compute = computeLatticeDeformer;
}

} // namespace host
