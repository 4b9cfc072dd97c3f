#include "nodes/shapeEvaluation.h"

#include "graph/node.h"
#include "nodes/transformMatrix.h"
#include "types/error.h"

namespace host {

namespace {

constexpr ShapeAttributes kMeshAttributes{"inMesh", "cachedInMesh", "pnts", "outMesh", "worldMesh"};
constexpr ShapeAttributes kNurbsAttributes{"create", "cached", "controlPoints", "local", "worldSpace"};
constexpr ShapeAttributes kLatticeAttributes{"latticeInput", "cached", "controlPoints", "latticeOutput",
                                             "worldLattice"};

constexpr double kMostLatticePoints = 1 << 16;

/// Evenly spaced in a unit cube around the origin, as a fresh lattice is.
GeometryRef evenLattice(Node& node)
{
    auto lattice = std::make_shared<LatticeData>();
    lattice->s = std::max(2, static_cast<int>(node.plug("sDivisions").number()));
    lattice->t = std::max(2, static_cast<int>(node.plug("tDivisions").number()));
    lattice->u = std::max(2, static_cast<int>(node.plug("uDivisions").number()));
    if (1.0 * lattice->s * lattice->t * lattice->u > kMostLatticePoints)
        throw Error("'" + node.uniqueName() + "' has too many divisions.");
    const auto at = [](int index, int count) { return static_cast<double>(index) / (count - 1) - 0.5; };
    auto points = std::make_shared<Points>();
    for (int u = 0; u < lattice->u; ++u)
        for (int t = 0; t < lattice->t; ++t)
            for (int s = 0; s < lattice->s; ++s)
                points->emplace_back(at(s, lattice->s), at(t, lattice->t), at(u, lattice->u));
    lattice->pointsRef = std::move(points);
    return lattice;
}

GeometryRef sourceGeometry(Node& node, const ShapeAttributes& names)
{
    const Plug input = node.plug(names.input);
    GeometryRef geometry;
    if (input.isDestination())
        geometry = std::dynamic_pointer_cast<const Geometry>(input.data());
    if (!geometry)
        geometry = std::dynamic_pointer_cast<const Geometry>(node.plug(names.stored).data());
    if (!geometry && node.type().name == "lattice")
        geometry = evenLattice(node);
    if (geometry && node.type().name != geometry->typeName())
        throw Error("'" + node.uniqueName() + "." + names.input + "' is fed with a " + geometry->typeName() +
                    ".");
    return geometry;
}

void addOffsets(const Plug& offsets, Points& points)
{
    for (const std::uint32_t index : offsets.existingIndices()) {
        if (index >= points.size())
            break;
        const Plug offset = offsets.element(index);
        points[index] +=
            Imath::V3d(offset.child(0).number(), offset.child(1).number(), offset.child(2).number());
    }
}

/// Own tags are put over those that came with the geometry.
void addTags(Node& node, Geometry& geometry)
{
    const Plug tags = node.plug("componentTags");
    auto all = std::make_shared<std::map<std::string, std::vector<std::string>>>();
    if (geometry.tags)
        *all = *geometry.tags;
    for (const std::uint32_t index : tags.existingIndices()) {
        const Plug tag = tags.element(index);
        const auto list = std::dynamic_pointer_cast<const ComponentListData>(tag.child(1).data());
        (*all)[tag.child(0).text()] = list ? list->components : std::vector<std::string>();
    }
    geometry.tags = std::move(all);
}

DataRef evaluated(Node& node, const ShapeAttributes& names)
{
    GeometryRef geometry = sourceGeometry(node, names);
    if (!geometry)
        return nullptr;
    const bool tweakedUpstream =
        node.plug(names.input).isDestination() && node.plug("tweakLocation").isDestination();
    const bool moved = !tweakedUpstream && node.plug(names.offsets).numElements() > 0;
    const bool tagged = node.plug("componentTags").numElements() > 0;
    if (!moved && !tagged)
        return geometry;
    std::shared_ptr<Geometry> copy = geometry->copy();
    if (moved) {
        auto points = std::make_shared<Points>(geometry->points());
        addOffsets(node.plug(names.offsets), *points);
        copy->pointsRef = std::move(points);
    }
    if (tagged)
        addTags(node, *copy);
    return copy;
}

bool shown(const DagNode& constNode)
{
    DagNode& node = const_cast<DagNode&>(constNode); // reading evaluates
    const auto on = [&](const char* name) { return node.plug(name).number() != 0.0; };
    return on("visibility") && on("lodVisibility") && !on("intermediateObject") && !on("template") &&
           (!on("overrideEnabled") || on("overrideVisibility"));
}

Imath::M44d matrixOf(const DagNode& node, const char* output)
{
    return const_cast<DagNode&>(node).plug(output).element(0).matrix(); // reading evaluates
}

/// False when the output is none of a curve's form, degree and spans.
bool storeCurveFact(Node& node, const Plug& output)
{
    const std::string& name = output.attribute()->longName;
    if (node.type().name != "nurbsCurve" || (name != "form" && name != "degree" && name != "spans"))
        return false;
    const auto curve = std::dynamic_pointer_cast<const CurveData>(shapeGeometry(node));
    const int fact = !curve             ? 0
                     : name == "form"   ? curve->form
                     : name == "degree" ? curve->degree
                                        : curve->spans;
    node.storeNumber(output, fact);
    return true;
}

} // namespace

const ShapeAttributes* shapeAttributes(const Node& node)
{
    if (!node.type().isA("deformedShape"))
        return nullptr;
    switch (node.type().apiType) {
    case MFn::kMesh:
        return &kMeshAttributes;
    case MFn::kNurbsCurve:
    case MFn::kNurbsSurface:
        return &kNurbsAttributes;
    case MFn::kLattice:
        return &kLatticeAttributes;
    default:
        return nullptr;
    }
}

void computeShape(Node& node, const Attribute& output)
{
    const ShapeAttributes* names = shapeAttributes(node);
    const Plug plug(&node, &output);
    if (names && output.longName == names->local)
        node.storeData(plug, evaluated(node, *names));
    else if (names && output.longName == names->world)
        node.storeData(plug.element(0), node.plug(names->local).data());
    else if (!storeCurveFact(node, plug))
        computeDagMatrices(node, output);
}

GeometryRef shapeGeometry(Node& shape)
{
    const ShapeAttributes* names = shapeAttributes(shape);
    return names ? std::dynamic_pointer_cast<const Geometry>(shape.plug(names->local).data()) : nullptr;
}

Imath::M44d worldMatrix(const DagNode& node)
{
    return matrixOf(node, "worldMatrix");
}

Imath::M44d parentMatrix(const DagNode& node)
{
    return matrixOf(node, "parentMatrix");
}

bool isVisible(const DagNode& node)
{
    for (const DagNode* step = &node; step; step = step->parent())
        if (!shown(*step))
            return false;
    return true;
}

} // namespace host
