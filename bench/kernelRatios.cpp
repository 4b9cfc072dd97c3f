// Labels and the nearest-vertex match of a paste.
#include "kernels/labelText.h"
#include "kernels/nearestMatch.h"
#include "ratios.h"

#include <charconv>
#include <cmath>
#include <nanoflann.hpp>
#include <random>

namespace bench {

namespace {

/// A slightly crumpled sheet.
std::vector<Position> sheet(std::size_t columns, std::size_t lines, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> shift(-0.4, 0.4);
    std::vector<Position> points;
    points.reserve(columns * lines);
    for (std::size_t line = 0; line < lines; ++line)
        for (std::size_t column = 0; column < columns; ++column)
            points.push_back({static_cast<double>(column) + shift(random), shift(random),
                              static_cast<double>(line) + shift(random)});
    return points;
}

struct Cloud {
    const std::vector<Position>& points;
    std::size_t kdtree_get_point_count() const { return points.size(); }
    double kdtree_get_pt(std::size_t point, std::size_t axis) const { return points[point][axis]; }
    template <class Box>
    bool kdtree_get_bbox(Box&) const
    {
        return false;
    }
};

/// The nearest point; of several at one distance the first.
struct FirstMet {
    using DistanceType = double;
    using IndexType = std::size_t;
    double distance = kMatchLimit * kMatchLimit;
    std::size_t found = 0;

    std::size_t size() const { return 1; }
    bool empty() const { return false; }
    bool full() const { return true; }
    double worstDist() const { return std::nextafter(distance, HUGE_VAL); }
    void sort() {}
    bool addPoint(double candidate, std::size_t point)
    {
        if (candidate < distance || (candidate == distance && point < found)) {
            distance = candidate;
            found = point;
        }
        return true;
    }
};

using Tree =
    nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, Cloud>, Cloud, 3, std::size_t>;

void requireExhaustive(const std::vector<Position>& copied, const std::vector<Position>& targets,
                       const std::vector<std::size_t>& matches)
{
    for (std::size_t target = 0; target < targets.size(); ++target) {
        std::size_t best = 0;
        double distance = kMatchLimit;
        for (std::size_t point = 0; point < copied.size(); ++point) {
            const double candidate = distanceBetween(targets[target], copied[point]);
            if (candidate < distance) {
                distance = candidate;
                best = point;
            }
        }
        require(matches[target] == best, "The match differs from the exhaustive search.");
    }
}

void compareLabels(Contest& contest, std::size_t count)
{
    std::mt19937 random(2);
    std::uniform_real_distribution<double> weight(0.0, 1.0);
    std::vector<double> weights(count);
    std::generate(weights.begin(), weights.end(), [&] { return weight(random); });
    std::size_t written = 0, expected = 0;
    char text[kLabelCapacity];
    const auto product = [&] {
        written = 0;
        for (const double value : weights)
            written += writeLabel(value, 6, text);
    };
    const auto bare = [&] {
        expected = 0;
        for (const double value : weights)
            expected += static_cast<std::size_t>(
                std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 6).ptr - text);
    };
    contest.run(product, bare);
    require(written == expected, "Labels have other lengths than to_chars gives.");
}

void comparePaste(Contest& contest, std::size_t columns, std::size_t lines)
{
    const std::size_t count = columns * lines;
    const std::vector<Position> copied = sheet(columns, lines, 3), targets = sheet(columns, lines, 4);
    std::vector<std::size_t> matches(count), expected(count);
    const auto product = [&] {
        const NearestMatch search({copied});
        for (std::size_t target = 0; target < count; ++target)
            matches[target] = search.nearest(targets[target]).position;
    };
    const auto bare = [&] {
        const Cloud cloud{copied};
        const Tree tree(3, cloud, nanoflann::KDTreeSingleIndexAdaptorParams(12));
        for (std::size_t target = 0; target < count; ++target) {
            FirstMet nearest;
            tree.findNeighbors(nearest, targets[target].data(), {});
            expected[target] = nearest.found;
        }
    };
    contest.run(product, bare);
    require(matches == expected, "The match differs from the bare tree's.");
    if (count <= 10000)
        requireExhaustive(copied, targets, matches);
}

} // namespace

void addLabels(Ratios& ratios, std::size_t count)
{
    ratios.add({"labels / to_chars", count, boundAt(count, 2.5)},
               [count](Contest& contest) { compareLabels(contest, count); });
}

void addPaste(Ratios& ratios, std::size_t columns, std::size_t lines)
{
    const std::size_t count = columns * lines;
    ratios.add({"paste match / k-d tree", count, boundAt(count, 1.5), count > 100000 ? 3 : 7},
               [columns, lines](Contest& contest) { comparePaste(contest, columns, lines); });
}

} // namespace bench
