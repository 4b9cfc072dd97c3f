// Skinning in the host next to a plain kernel over arrays, both on all threads.
#include "graph/graph.h"
#include "graph/node.h"
#include "graph/weightRows.h"
#include "mel/interpreter.h"
#include "nodes/skinEvaluation.h"
#include "ratios.h"
#include "session.h"

#include <cmath>
#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

namespace bench {

namespace {

using host::DualQuaternion;
using Imath::M44d;
using Imath::V3d;

constexpr std::size_t kInfluences = 4;

/// Plain arrays of what a skin needs; every point has all the influences.
struct Plain {
    std::vector<V3d> rest;
    std::vector<double> weights; ///< kInfluences per point
    M44d motions[kInfluences];
    DualQuaternion rigid[kInfluences];

    V3d linear(std::size_t point) const
    {
        V3d sum(0.0);
        for (std::size_t k = 0; k < kInfluences; ++k)
            sum += weights[point * kInfluences + k] * host::transformed(rest[point], motions[k]);
        return sum;
    }
    V3d dualQuaternion(std::size_t point) const
    {
        const double* row = &weights[point * kInfluences];
        const DualQuaternion& pivot = rigid[std::max_element(row, row + kInfluences) - row];
        DualQuaternion sum;
        sum.real = Imath::Quatd(0.0, 0.0, 0.0, 0.0);
        for (std::size_t k = 0; k < kInfluences; ++k) {
            const Imath::Quatd& a = rigid[k].real;
            const double side = a.r * pivot.real.r + a.v.dot(pivot.real.v) < 0.0 ? -1.0 : 1.0;
            sum.add(rigid[k], side * row[k]);
        }
        return sum.transform(rest[point]);
    }
};

Plain plainOf(host::Node& skin, std::vector<V3d> rest)
{
    Plain plain;
    plain.rest = std::move(rest);
    const host::Plug weights = skin.plug("weightList");
    for (std::uint32_t point = 0; point < plain.rest.size(); ++point)
        for (std::uint32_t k = 0; k < kInfluences; ++k)
            plain.weights.push_back(weights.rows()->get(point, k));
    for (std::uint32_t k = 0; k < kInfluences; ++k) {
        plain.motions[k] =
            skin.plug("bindPreMatrix").element(k).matrix() * skin.plug("matrix").element(k).matrix();
        plain.rigid[k] = DualQuaternion::fromMatrix(plain.motions[k]);
    }
    return plain;
}

void compareMethod(Contest& contest, host::Node& skin, const Plain& plain, host::SkinMethod method)
{
    const bool linear = method == host::SkinMethod::kLinear;
    const std::size_t count = plain.rest.size();
    skin.plug("skinningMethod").setNumber(static_cast<double>(method));
    std::vector<V3d> product(count), bare(count);
    const auto evaluate = [&] {
        std::copy(plain.rest.begin(), plain.rest.end(), product.begin());
        host::FilterInput input;
        input.points = &product;
        host::deformBySkin(skin, input);
    };
    const auto kernel = [&] {
        std::copy(plain.rest.begin(), plain.rest.end(), bare.begin());
        tbb::parallel_for(tbb::blocked_range<std::size_t>(0, count, 1024), [&](const auto& run) {
            for (std::size_t point = run.begin(); point < run.end(); ++point)
                bare[point] = linear ? plain.linear(point) : plain.dualQuaternion(point);
        });
    };
    contest.run(evaluate, kernel);
    for (std::size_t point = 0; point < count; ++point)
        require((product[point] - bare[point]).length() < 1e-9, "Skinning differs from the plain kernel.");
}

void compareSkinning(Contest& contest, std::size_t columns, std::size_t lines, host::SkinMethod method)
{
    host::Session session;
    session.mel().execute("polyPlane -n sheet -w 10 -h 5 -ch 0 -sx " + std::to_string(columns - 1) + " -sy " +
                          std::to_string(lines - 1) +
                          "; select -cl; joint -n a -p -5 0 0; joint -n b -p -2 0 0; joint -n c -p 1 0 0;"
                          "joint -n d -p 4 0 0; skinCluster -tsb -mi 4 -dr 4 -n skin a b c d sheet;"
                          "setAttr b.rotateZ 30; setAttr c.rotateX 40; setAttr d.rotateZ -20");
    host::Node& skin = session.graph().get("skin");
    const auto geometry = std::dynamic_pointer_cast<const host::Geometry>(
        skin.plug("input").element(0).child("inputGeometry").data());
    require(geometry != nullptr, "The skin has no geometry.");
    const Plain plain = plainOf(skin, geometry->points());
    compareMethod(contest, skin, plain, method);
}

} // namespace

void addSkinning(Ratios& ratios, std::size_t columns, std::size_t lines)
{
    const std::size_t count = columns * lines;
    const auto add = [&](const char* name, host::SkinMethod method) {
        ratios.add({name, count, boundAt(count, 1.5), count > 100000 ? 7 : 31},
                   [=](Contest& contest) { compareSkinning(contest, columns, lines, method); });
    };
    add("linear skinning / kernel", host::SkinMethod::kLinear);
    add("dual quaternions / kernel", host::SkinMethod::kDualQuaternion);
}

} // namespace bench
