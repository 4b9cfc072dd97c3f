#include "support/reachModel.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

namespace testing_support {

namespace {

constexpr double kFar = std::numeric_limits<double>::infinity();

double distanceOf(const Point& a, const Point& b)
{
    const double x = a[0] - b[0], y = a[1] - b[1], z = a[2] - b[2];
    return std::sqrt(x * x + y * y + z * z);
}

/// Eases from 1 at the seed to 0 at the radius.
float eased(double share)
{
    return static_cast<float>(1.0 - share * share * (3.0 - 2.0 * share));
}

} // namespace

struct ReachModel::Seeds {
    int shape;
    std::vector<int> primary, mirrored, images;
};

std::vector<int> ReachModel::images(int shape, std::vector<bool>& positive) const
{
    const ReachShape& known = shapes[static_cast<std::size_t>(shape)];
    const auto axis = static_cast<std::size_t>(options.axis);
    const Points points = options.inWorld ? known.world() : known.local();
    std::vector<int> found;
    for (const Point& point : points) {
        Point image = point;
        image[axis] = -image[axis];
        double best = kFar;
        int nearest = -1;
        for (std::size_t other = 0; other < points.size(); ++other) {
            const double distance = distanceOf(image, points[other]);
            if (distance <= options.tolerance && distance < best) {
                best = distance;
                nearest = static_cast<int>(other);
            }
        }
        found.push_back(nearest);
        positive.push_back(point[axis] >= 0.0);
    }
    return found;
}

ReachModel::Seeds ReachModel::seedsOf(const Piece& piece) const
{
    Seeds seeds{piece.shape, piece.points, {}, {}};
    if (!options.symmetry || !shapes[static_cast<std::size_t>(piece.shape)].isMesh)
        return seeds;
    std::vector<bool> positive;
    seeds.images = images(piece.shape, positive);
    seeds.primary.clear();
    const std::set<int> selected(piece.points.begin(), piece.points.end());
    std::set<int> mirrored;
    for (const int point : piece.points) {
        const int image = seeds.images[static_cast<std::size_t>(point)];
        const bool paired = image >= 0 && image != point, both = paired && selected.count(image) > 0;
        const bool imageIsPositive = image >= 0 && positive[static_cast<std::size_t>(image)];
        if (both && !positive[static_cast<std::size_t>(point)] && imageIsPositive) {
            mirrored.insert(point);
            continue;
        }
        seeds.primary.push_back(point);
        if (paired && !both)
            mirrored.insert(image);
    }
    seeds.mirrored.assign(mirrored.begin(), mirrored.end());
    return seeds;
}

/// Every edge again and again until no way is shorter any more.
std::vector<double> ReachModel::alongEdges(int shape, const std::vector<int>& from) const
{
    const ReachShape& known = shapes[static_cast<std::size_t>(shape)];
    const Points world = known.world();
    std::vector<double> found(world.size(), kFar);
    for (const int seed : from)
        found[static_cast<std::size_t>(seed)] = 0;
    for (bool changed = true; changed;) {
        changed = false;
        for (const auto& edge : known.edges)
            for (const int way : {0, 1}) {
                const auto start = static_cast<std::size_t>(edge[static_cast<std::size_t>(way)]);
                const auto end = static_cast<std::size_t>(edge[static_cast<std::size_t>(1 - way)]);
                const double length = found[start] + distanceOf(world[end], world[start]);
                if (length <= options.radius && length < found[end]) {
                    found[end] = length;
                    changed = true;
                }
            }
    }
    return found;
}

std::vector<double> ReachModel::distances(const std::vector<Seeds>& all, std::size_t entry,
                                          bool mirrored) const
{
    const Seeds& mine = all[entry];
    const ReachShape& known = shapes[static_cast<std::size_t>(mine.shape)];
    const auto seedsIn = [&](const Seeds& seeds) { return mirrored ? seeds.mirrored : seeds.primary; };
    if (options.falloff == 1 && known.isMesh)
        return alongEdges(mine.shape, seedsIn(mine));
    const bool alone = options.falloff == 1 || options.falloff == 3;
    Points from;
    for (std::size_t other = 0; other < all.size(); ++other) {
        if (alone && other != entry)
            continue;
        const Points world = shapes[static_cast<std::size_t>(all[other].shape)].world();
        for (const int seed : seedsIn(all[other]))
            from.push_back(world[static_cast<std::size_t>(seed)]);
    }
    std::vector<double> found;
    for (const Point& point : known.world()) {
        double best = kFar;
        for (const Point& seed : from)
            best = std::min(best, distanceOf(point, seed));
        found.push_back(best <= options.radius ? best : kFar);
    }
    return found;
}

RichPieces ReachModel::reach(const Selection& selection) const
{
    RichPieces rich;
    if (!options.soft && !options.symmetry)
        return {selection, {}};
    std::vector<Seeds> all;
    for (const Piece& piece : selection)
        all.push_back(seedsOf(piece));
    const auto add = [](Pieces& to, Piece piece) {
        if (!piece.points.empty())
            to.push_back(std::move(piece));
    };
    if (!options.soft || all.empty()) {
        for (const Seeds& seeds : all) {
            add(rich.primary, {seeds.shape, seeds.primary, {}});
            add(rich.mirrored, {seeds.shape, seeds.mirrored, {}});
        }
        return rich;
    }
    for (std::size_t shape = 0; options.falloff == 2 && shape < shapes.size(); ++shape) {
        const auto isOn = [&](const Seeds& seeds) { return seeds.shape == static_cast<int>(shape); };
        if (std::none_of(all.begin(), all.end(), isOn))
            all.push_back({static_cast<int>(shape), {}, {}, {}});
    }
    for (std::size_t entry = 0; entry < all.size(); ++entry) {
        const std::vector<double> near = distances(all, entry, false), far = distances(all, entry, true);
        Piece primary{all[entry].shape, {}, {}}, mirrored = primary;
        for (std::size_t point = 0; point < near.size(); ++point) {
            const double distance = std::min(near[point], far[point]);
            const float weight = distance == kFar ? 0.0F : eased(distance / options.radius);
            if (!(weight > 0.0F))
                continue;
            const bool seam =
                !all[entry].images.empty() && all[entry].images[point] == static_cast<int>(point);
            Piece& part = seam || near[point] <= far[point] ? primary : mirrored;
            part.points.push_back(static_cast<int>(point));
            part.falloff.push_back(weight);
        }
        add(rich.primary, std::move(primary));
        add(rich.mirrored, std::move(mirrored));
    }
    return rich;
}

Selection ReachModel::symmetrized(const Selection& selection) const
{
    Selection both = selection;
    for (Piece& piece : both) {
        if (!shapes[static_cast<std::size_t>(piece.shape)].isMesh)
            continue;
        std::vector<bool> positive;
        const std::vector<int> mirror = images(piece.shape, positive);
        std::set<int> all(piece.points.begin(), piece.points.end());
        for (const int point : piece.points)
            if (mirror[static_cast<std::size_t>(point)] >= 0)
                all.insert(mirror[static_cast<std::size_t>(point)]);
        piece.points.assign(all.begin(), all.end());
    }
    return both;
}

} // namespace testing_support
