#include "nodes/blendShapeEvaluation.h"

#include "graph/node.h"
#include "graph/numericArray.h"
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

TargetDeltas liveDeltas(const Plug& item, const Geometry& shape, const Points& base)
{
    if (shape.count() < base.size())
        throw Error("The target '" + item.name() + "' has " + std::to_string(shape.count()) +
                    " points, the base " + std::to_string(base.size()) + ".");
    TargetDeltas deltas;
    for (std::size_t point = 0; point < base.size(); ++point) {
        const Imath::V3d offset = shape.points()[point] - base[point];
        if (offset == Imath::V3d(0.0))
            continue;
        deltas.points.push_back(static_cast<int>(point));
        deltas.offsets.push_back(offset);
    }
    return deltas;
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
        const auto live = std::dynamic_pointer_cast<const Geometry>(item.child("inputGeomTarget").data());
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

void deformByBlendShape(Node& node, FilterInput& input)
{
    const Plug targets = node.plug("inputTarget").element(input.index);
    const Plug values = node.plug("weight");
    Points sum(input.points->size(), Imath::V3d(0.0));
    for (const std::uint32_t target : targets.child("inputTargetGroup").existingIndices()) {
        const double value = values.element(target).number();
        if (value == 0.0)
            continue;
        const Plug group = targetGroup(node, input.index, target);
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
