#include "nodes/blendShapeEvaluation.h"

#include "graph/node.h"
#include "graph/numericArray.h"
#include "nodes/pointTexts.h"
#include "types/error.h"

#include <algorithm>
#include <iterator>

namespace host {

namespace {

constexpr double kItemOfBase = 5000.0;
constexpr double kItemsPerWeight = 1000.0;

Plug targetGroup(Node& node, std::uint32_t geometry, std::uint32_t target)
{
    return node.plug("inputTarget").element(geometry).child("inputTargetGroup").element(target);
}

/// Points that a smaller target does not have stay where they are when topologies need not agree.
TargetDeltas liveDeltas(const Plug& item, const Geometry& shape, const Points& base)
{
    if (shape.count() < base.size() && item.node()->plug("topologyCheck").number() != 0.0)
        throw Error("The target '" + item.name() + "' has " + std::to_string(shape.count()) +
                    " points, the base " + std::to_string(base.size()) + ".");
    TargetDeltas deltas;
    for (std::size_t point = 0; point < std::min(base.size(), shape.count()); ++point) {
        const Imath::V3d offset = shape.points()[point] - base[point];
        if (offset == Imath::V3d(0.0))
            continue;
        deltas.points.push_back(static_cast<int>(point));
        deltas.offsets.push_back(offset);
    }
    return deltas;
}

/// Puts the deltas of a target into the node.
void storeDeltas(const Plug& item, const TargetDeltas& deltas, const Geometry& base)
{
    auto offsets = std::make_shared<PointArrayData>();
    offsets->values.reserve(deltas.offsets.size());
    for (const Imath::V3d& offset : deltas.offsets)
        offsets->values.push_back({offset.x, offset.y, offset.z, 1.0});
    auto list = std::make_shared<ComponentListData>();
    list->components = pointTexts(base, deltas.points);
    Node& node = *item.node();
    const Plug points = item.child("inputPointsTarget"), components = item.child("inputComponentsTarget");
    const auto knownPoints = std::dynamic_pointer_cast<const PointArrayData>(points.storedData());
    const auto knownList = std::dynamic_pointer_cast<const ComponentListData>(components.storedData());
    if (!knownPoints || knownPoints->values != offsets->values)
        node.storeData(points, offsets);
    if (!knownList || knownList->components != list->components)
        node.storeData(components, list);
}

/// The component list names the points to which the offsets belong, in order.
TargetDeltas storedDeltas(const Plug& item, const Geometry& geometry)
{
    TargetDeltas deltas;
    const auto offsets =
        std::dynamic_pointer_cast<const PointArrayData>(item.child("inputPointsTarget").data());
    const auto list =
        std::dynamic_pointer_cast<const ComponentListData>(item.child("inputComponentsTarget").data());
    if (!offsets || !list)
        return deltas;
    for (const std::string& text : list->components) {
        const PointGroup run = pointGroup(geometry, {text});
        for (std::size_t point = 0; run.all && point < geometry.count(); ++point)
            deltas.points.push_back(static_cast<int>(point));
        deltas.points.insert(deltas.points.end(), run.points.begin(), run.points.end());
    }
    deltas.points.resize(std::min(deltas.points.size(), offsets->values.size()));
    for (std::size_t i = 0; i < deltas.points.size(); ++i)
        deltas.offsets.emplace_back(offsets->values[i][0], offsets->values[i][1], offsets->values[i][2]);
    return deltas;
}

std::map<double, TargetDeltas> shapesOf(const Plug& group, const Geometry& geometry)
{
    const Plug items = group.child("inputTargetItem");
    std::map<double, TargetDeltas> shapes;
    for (const std::uint32_t index : items.existingIndices()) {
        const Plug item = items.element(index);
        const Plug target = item.child("inputGeomTarget");
        const auto live =
            target.isDestination() ? std::dynamic_pointer_cast<const Geometry>(target.data()) : GeometryRef();
        shapes[(index - kItemOfBase) / kItemsPerWeight] =
            live ? liveDeltas(item, *live, geometry.points()) : storedDeltas(item, geometry);
    }
    return shapes;
}

/// Adds one shape's deltas; `factor` is the target's share at weight 1 of its points.
void addDeltas(Points& sum, const TargetDeltas& deltas, const NumericArray* weights, double factor)
{
    for (std::size_t i = 0; i < deltas.points.size(); ++i) {
        const double weight = weights ? weights->get(static_cast<std::uint32_t>(deltas.points[i])) : 1.0;
        sum[static_cast<std::size_t>(deltas.points[i])] += factor * weight * deltas.offsets[i];
    }
}

} // namespace

std::vector<std::pair<double, double>> shapeShares(const std::map<double, TargetDeltas>& shapes,
                                                   double weight)
{
    std::vector<double> stops{0.0};
    for (const auto& shape : shapes)
        if (shape.first != 0.0)
            stops.push_back(shape.first);
    if (stops.size() == 1 || weight == 0.0)
        return {};
    std::sort(stops.begin(), stops.end());
    auto upper = std::lower_bound(stops.begin(), stops.end(), weight);
    upper = std::clamp(upper, std::next(stops.begin()), std::prev(stops.end()));
    const double high = *upper;
    const double low = *std::prev(upper);
    const double share = (weight - low) / (high - low);
    std::vector<std::pair<double, double>> result;
    if (low != 0.0)
        result.emplace_back(low, 1.0 - share);
    if (high != 0.0)
        result.emplace_back(high, share);
    return result;
}

std::map<double, TargetDeltas> targetShapes(Node& blendShape, std::uint32_t geometry, std::uint32_t target,
                                            const Geometry& base)
{
    return shapesOf(targetGroup(blendShape, geometry, target), base);
}

void keepTarget(const Plug& input)
{
    const Plug item = input.parent();
    if (input.attribute()->longName != "inputGeomTarget")
        return;
    const Plug base = input.node()->plug("input").element(input.index(0)).child("inputGeometry");
    const auto geometry = std::dynamic_pointer_cast<const Geometry>(base.data());
    const auto live = std::dynamic_pointer_cast<const Geometry>(input.data());
    if (geometry && live)
        storeDeltas(item, liveDeltas(item, *live, geometry->points()), *geometry);
}

void deformByBlendShape(Node& node, FilterInput& input)
{
    const Plug targets = node.plug("inputTarget").element(input.index);
    const Plug values = node.plug("weight");
    Points sum(input.points->size(), Imath::V3d(0.0));
    for (const std::uint32_t target : targets.child("inputTargetGroup").existingIndices()) {
        const double value = values.element(target).number();
        const Plug group = targetGroup(node, input.index, target);
        if (value == 0.0)
            continue;
        const std::map<double, TargetDeltas> shapes = shapesOf(group, *input.geometry);
        for (const auto& [stop, share] : shapeShares(shapes, value))
            addDeltas(sum, shapes.at(stop), group.child("targetWeights").numbers(), share);
    }
    const NumericArray* base = targets.child("baseWeights").numbers();
    for (std::size_t member = 0; member < input.count(); ++member) {
        const std::size_t id = input.point(member);
        const double weight = base ? base->get(static_cast<std::uint32_t>(id)) : 1.0;
        (*input.points)[id] += input.envelope * weight * sum[id];
    }
}

} // namespace host
