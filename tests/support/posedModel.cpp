#include "support/posedModel.h"

#include <cmath>

namespace testing_support {

namespace {

constexpr double kTurnX = 20, kTurnZ = 50, kRise = 1.5; ///< of the knee, which stands at the origin

struct Quaternion {
    double w = 0;
    Point v = {0, 0, 0};
};

double dot(const Point& a, const Point& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Quaternion operator*(const Quaternion& a, const Quaternion& b)
{
    Quaternion product;
    product.w = a.w * b.w - dot(a.v, b.v);
    for (std::size_t x = 0; x < 3; ++x) {
        const std::size_t y = (x + 1) % 3, z = (x + 2) % 3;
        product.v[x] = a.w * b.v[x] + b.w * a.v[x] + a.v[y] * b.v[z] - a.v[z] * b.v[y];
    }
    return product;
}

Quaternion turn(std::size_t axis, double degrees)
{
    const double half = degrees * std::acos(-1.0) / 360;
    Quaternion quaternion;
    quaternion.w = std::cos(half);
    quaternion.v[axis] = std::sin(half);
    return quaternion;
}

/// A rotation followed by a translation.
Point moved(const Quaternion& rotation, const Point& translation, const Point& point)
{
    Quaternion back = rotation;
    for (double& x : back.v)
        x = -x;
    Point result = (rotation * Quaternion{0, point} * back).v;
    for (std::size_t axis = 0; axis < 3; ++axis)
        result[axis] += translation[axis];
    return result;
}

/// A point of weight `still` on the hip and `moving` on the other joints together, partly blended as dual
/// quaternions.
Point skinned(const Point& point, double still, double moving, double share)
{
    if (still + moving == 0)
        return point;
    const Quaternion whole = turn(2, kTurnZ) * turn(0, kTurnX);
    const Point target = moved(whole, {0, kRise, 0}, point);
    // The sum of the rotations, made a unit; the moving part's dual is half its translation times its
    // rotation.
    Quaternion mean = {still + moving * whole.w, whole.v};
    for (double& x : mean.v)
        x *= moving;
    const double length = std::sqrt(mean.w * mean.w + dot(mean.v, mean.v));
    Quaternion unit = mean, conjugate = mean;
    unit.w /= length;
    conjugate.w /= length;
    Quaternion dual = Quaternion{0, {0, kRise / 2, 0}} * whole;
    dual.w *= moving / length;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        unit.v[axis] /= length;
        conjugate.v[axis] = -unit.v[axis];
        dual.v[axis] *= moving / length;
    }
    Point translation = (dual * conjugate).v;
    for (double& x : translation)
        x *= 2;
    const Point rigid = moved(unit, translation, point);
    Point result;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double linear = still * point[axis] + moving * target[axis];
        result[axis] = linear + share * (rigid[axis] - linear);
    }
    return result;
}

/// Falls smoothly from 1 in the middle to 0 at the rim.
double hill(double share)
{
    return share >= 1 ? 0.0 : 0.5 * (1 + std::cos(std::acos(-1.0) * share));
}

void deform(const WeightModel& scene, const ModelDeformer& deformer, const ModelShape& shape, int geometry,
            std::size_t id, Point& point)
{
    const auto weightOf = [&](const std::string& map) {
        const auto found = scene.weights.numbers.find(MapKey(deformer.name, map, geometry));
        return found == scene.weights.numbers.end() ? 1.0 : found->second[id];
    };
    double factor = weightOf("weights") * weightOf("mask") * weightOf("base");
    if (deformer.falloffRadius > 0) {
        Point world = point;
        for (std::size_t axis = 0; axis < 3; ++axis)
            world[axis] += shape.place[axis];
        factor *= hill(std::sqrt(dot(world, world)) / deformer.falloffRadius);
    }
    Point offset = deformer.offset;
    for (std::size_t target = 0; target < deformer.targetOffsets.size(); ++target)
        for (std::size_t axis = 0; axis < 3; ++axis)
            offset[axis] +=
                weightOf("target" + std::to_string(target)) * deformer.targetOffsets[target][axis];
    for (std::size_t axis = 0; axis < 3; ++axis)
        point[axis] += factor * offset[axis] / (deformer.inWorld ? shape.scale[axis] : 1.0);
}

} // namespace

Points posedPoints(const WeightModel& scene, int shapeIndex)
{
    const ModelShape& shape = scene.shapes[static_cast<std::size_t>(shapeIndex)];
    Points points = shape.rest;
    for (const ModelDeformer& deformer : scene.deformers) {
        const auto members = deformer.members.find(shapeIndex);
        if (members == deformer.members.end())
            continue;
        for (const int member : members->second) {
            const auto id = static_cast<std::size_t>(member);
            deform(scene, deformer, shape, deformer.geometryOf(shapeIndex), id, points[id]);
        }
    }
    for (std::size_t id = 0; id < points.size() && shape.influences > 0; ++id) {
        const Values& row = scene.weights.skin[static_cast<std::size_t>(shapeIndex)][id];
        const double blend = scene.weights.numbers.at(MapKey(shape.name, "blend", 0))[id];
        double moving = 0, still = 0;
        for (std::size_t column = 0; column < row.size(); ++column)
            (static_cast<int>(column) == shape.hip ? still : moving) += row[column];
        Point world = points[id];
        for (std::size_t axis = 0; axis < 3; ++axis)
            world[axis] += shape.place[axis];
        points[id] = skinned(world, still, moving, blend);
        for (std::size_t axis = 0; axis < 3; ++axis)
            points[id][axis] -= shape.place[axis];
    }
    return points;
}

} // namespace testing_support
