#include "nodes/skinEvaluation.h"

#include "graph/node.h"
#include "graph/numericArray.h"
#include "types/error.h"

#include <cstring>

namespace host {

namespace {

using Imath::M44d;
using Imath::V3d;

void gatherInfluences(Node& node, SkinPose& pose)
{
    const Plug matrices = node.plug("matrix");
    const Plug bindPre = node.plug("bindPreMatrix");
    for (const std::uint32_t index : matrices.existingIndices()) {
        pose.placeOf.set(index, static_cast<std::uint32_t>(pose.influences.size()));
        SkinInfluence& influence = pose.influences.emplace_back();
        influence.logical = index;
        influence.motion = bindPre.element(index).matrix() * matrices.element(index).matrix();
        if (pose.method != SkinMethod::kLinear)
            influence.rigid = DualQuaternion::fromMatrix(influence.motion);
    }
}

SkinPose gather(Node& node)
{
    const int method = static_cast<int>(node.plug("skinningMethod").number());
    if (method < 0 || method > 2)
        throw Error("'" + node.name() + ".skinningMethod' has the unknown value " + std::to_string(method) +
                    ".");
    SkinPose pose;
    pose.method = static_cast<SkinMethod>(method);
    gatherInfluences(node, pose);
    pose.geometry = node.plug("geomMatrix").matrix();
    pose.normalizeRows = node.plug("normalizeWeights").number() == 2.0;
    return pose;
}

const SkinInfluence* find(const SkinPose& pose, std::uint32_t column)
{
    const std::uint32_t place = pose.placeOf[column];
    return place == SkinPose::kNone ? nullptr : &pose.influences[place];
}

/// Two numbers that are worked on at once.
typedef double Pair __attribute__((vector_size(2 * sizeof(double))));

Pair pairAt(const double* numbers)
{
    Pair pair;
    std::memcpy(&pair, numbers, sizeof pair);
    return pair;
}

/// What the weights that count sum up to, alone and with the point moved by each influence.
struct LinearSum {
    V3d point;
    double weight;
};

/// Linear skinning as far as it needs no look at the pose: the same sums as linearPoint gives, number by
/// number, in registers.
class LinearMotions {
public:
    explicit LinearMotions(const SkinPose& pose)
    {
        for (const SkinInfluence& influence : pose.influences)
            motions.set(influence.logical, influence.motion.getValue());
    }

    LinearSum sum(WeightRows::Span row, const V3d& world) const
    {
        const double x = world.x, y = world.y, z = world.z;
        Pair movedXY = {0.0, 0.0};
        double movedZ = 0.0, weight = 0.0;
        for (const WeightRows::Entry entry : row) {
            const double* const m = motions[entry.column];
            if (!m)
                continue;
            movedXY +=
                entry.weight * (x * pairAt(m) + y * pairAt(m + 4) + z * pairAt(m + 8) + pairAt(m + 12));
            movedZ += entry.weight * (x * m[2] + y * m[6] + z * m[10] + m[14]);
            weight += entry.weight;
        }
        return {V3d(movedXY[0], movedXY[1], movedZ), weight};
    }

private:
    LogicalTable<const double*> motions{nullptr}; ///< of the pose's influences: matrices row by row
};

/// What the threads share; all of it is read only.
struct SkinJob {
    const SkinPose& pose;
    const WeightRows* rows;
    const NumericArray* blend; ///< how far a point is dual quaternion, 0 to 1; null = nowhere
    GeometryFrame frame;
    LinearMotions motions{pose};
    bool inWorld = frame.to == M44d(); ///< object space was the world's at binding, as it mostly is

    V3d toWorld(const V3d& point) const { return inWorld ? point : transformed(point, frame.to); }
    V3d fromWorld(const V3d& point) const { return inWorld ? point : transformed(point, frame.from); }

    V3d moved(std::size_t id, const V3d& point) const
    {
        const WeightRows::Span row = rows->row(static_cast<std::uint32_t>(id));
        if (pose.method == SkinMethod::kLinear && !pose.normalizeRows) {
            const LinearSum sum = motions.sum(row, toWorld(point));
            return sum.weight == 0.0 ? point : fromWorld(sum.point);
        }
        const double sum = usedWeight(pose, row);
        if (sum == 0.0)
            return point;
        return fromWorld(skinned(id, row, pose.normalizeRows ? 1.0 / sum : 1.0, toWorld(point)));
    }

    V3d skinned(std::size_t id, WeightRows::Span row, double scale, const V3d& world) const
    {
        if (pose.method == SkinMethod::kLinear)
            return linearPoint(pose, row, scale, world);
        if (pose.method == SkinMethod::kDualQuaternion)
            return dualQuaternionPoint(pose, row, world);
        const double share = blend ? blend->get(static_cast<std::uint32_t>(id)) : 0.0;
        const V3d linear = linearPoint(pose, row, scale, world);
        return linear + share * (dualQuaternionPoint(pose, row, world) - linear);
    }
};

} // namespace

double usedWeight(const SkinPose& pose, WeightRows::Span row)
{
    double sum = 0.0;
    for (const WeightRows::Entry entry : row)
        if (find(pose, entry.column))
            sum += entry.weight;
    return sum;
}

V3d linearPoint(const SkinPose& pose, WeightRows::Span row, double scale, const V3d& world)
{
    V3d result(0.0);
    for (const WeightRows::Entry entry : row)
        if (const SkinInfluence* influence = find(pose, entry.column))
            result += scale * entry.weight * transformed(world, influence->motion);
    return result;
}

V3d dualQuaternionPoint(const SkinPose& pose, WeightRows::Span row, const V3d& world)
{
    const SkinInfluence* pivot = nullptr;
    double largest = 0.0;
    for (const WeightRows::Entry entry : row) {
        const SkinInfluence* influence = find(pose, entry.column);
        if (influence && (!pivot || entry.weight > largest)) {
            pivot = influence;
            largest = entry.weight;
        }
    }
    if (!pivot)
        return world;
    DualQuaternion blended;
    blended.real = Imath::Quatd(0.0, 0.0, 0.0, 0.0);
    for (const WeightRows::Entry entry : row)
        if (const SkinInfluence* influence = find(pose, entry.column)) {
            const Imath::Quatd& a = influence->rigid.real;
            const Imath::Quatd& b = pivot->rigid.real;
            const bool opposite = a.r * b.r + a.v.dot(b.v) < 0.0;
            blended.add(influence->rigid, opposite ? -entry.weight : entry.weight);
        }
    return blended.transform(world);
}

void deformBySkin(Node& node, FilterInput& input)
{
    const Plug weightList = node.plug("weightList");
    const WeightRows* rows = weightList.rows();
    if (!rows)
        return;
    const SkinPose pose = gather(node);
    const SkinJob job{pose, rows, node.plug("blendWeights").numbers(), GeometryFrame(pose.geometry)};
    forEachMember(input, [&](std::size_t first, std::size_t end) {
        for (std::size_t member = first; member < end; ++member) {
            const std::size_t id = input.point(member);
            V3d& point = (*input.points)[id];
            const V3d moved = job.moved(id, point);
            point = input.envelope == 1.0 ? moved : point + input.envelope * (moved - point);
        }
    });
}

} // namespace host
