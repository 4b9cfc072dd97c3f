// The nearest-vertex search against the exhaustive one, where trees are usually wrong: ties, equal roots, the
// limit.
#include "kernels/nearestMatch.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

using Objects = std::vector<std::vector<Position>>;

VertexMatch exhaustive(const Objects& objects, const Position& from)
{
    VertexMatch match{false, 0, 0};
    double best = kMatchLimit;
    for (std::size_t object = 0; object < objects.size(); ++object) {
        for (std::size_t position = 0; position < objects[object].size(); ++position) {
            const double distance = distanceBetween(objects[object][position], from);
            if (distance < best) {
                best = distance;
                match = {true, object, position};
            }
        }
    }
    return match;
}

void compare(const Objects& objects, const std::vector<Position>& queries)
{
    const NearestMatch search(objects);
    for (const Position& from : queries) {
        const VertexMatch expected = exhaustive(objects, from);
        const VertexMatch got = search.nearest(from);
        ASSERT_EQ(got.found, expected.found) << from[0] << ' ' << from[1] << ' ' << from[2];
        if (!expected.found)
            continue;
        ASSERT_EQ(got.object, expected.object) << from[0] << ' ' << from[1] << ' ' << from[2];
        ASSERT_EQ(got.position, expected.position) << from[0] << ' ' << from[1] << ' ' << from[2];
    }
}

class Points {
public:
    explicit Points(unsigned seed) : random(seed) {}

    std::vector<Position> cloud(std::size_t count, double size)
    {
        std::uniform_real_distribution<double> place(-size, size);
        std::vector<Position> points(count);
        for (Position& point : points)
            point = {place(random), place(random), place(random)};
        return points;
    }
    /// Points on a grid, in random order and with repeats.
    std::vector<Position> lattice(std::size_t count, int steps, double spacing)
    {
        std::uniform_int_distribution<int> place(0, steps);
        std::vector<Position> points(count);
        for (Position& point : points)
            point = {place(random) * spacing, place(random) * spacing, place(random) * spacing};
        return points;
    }

private:
    std::mt19937 random;
};

} // namespace

TEST(NearestMatch, EqualsTheExhaustiveSearchOnRandomObjects)
{
    for (unsigned seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE(seed);
        Points points(seed);
        const double size = std::pow(10.0, static_cast<double>(seed % 6) - 2.0);
        const Objects objects = {points.cloud(300, size), {}, points.cloud(1, size), points.cloud(150, size)};
        compare(objects, points.cloud(200, size * 1.5));
        compare(objects, objects[0]);
    }
}

TEST(NearestMatch, KeepsTheFirstVertexMetOnEqualDistances)
{
    for (unsigned seed = 1; seed <= 30; ++seed) {
        SCOPED_TRACE(seed);
        Points points(seed);
        const double spacing = seed % 2 == 0 ? 1.0 : 0.1;
        const Objects objects = {points.lattice(400, 5, spacing), points.lattice(400, 5, spacing)};
        compare(objects, points.lattice(200, 5, spacing));
        // Centres of cells, edges and faces have two to eight equal neighbours.
        compare(objects, points.lattice(200, 11, spacing / 2.0));
    }
    // Two corners of a unit square at one distance: the later object never takes over.
    const NearestMatch search(Objects{{{1, 0, 0}, {0, 0, 0}}, {{0, 0, 0}}});
    EXPECT_EQ(search.nearest({0.5, 0, 0}).position, 0U);
    EXPECT_EQ(search.nearest({0.25, 0, 0}).object, 0U);
}

TEST(NearestMatch, ComparesDistancesAndNotTheirSquares)
{
    // Steps of the last place apart: many squares share one root, and then the first vertex wins, not the
    // nearest.
    std::vector<Position> line;
    double place = 3.0;
    for (int k = 0; k < 64; ++k) {
        line.push_back({place, 1e-8 * (64 - k), 0.0});
        place = std::nextafter(place, k % 3 == 0 ? 0.0 : 4.0);
    }
    std::vector<Position> queries;
    for (int k = 0; k < 64; ++k)
        queries.push_back({0.1 * k, 0.0, 1e-9 * k});
    compare({line, {line.rbegin(), line.rend()}}, queries);
}

TEST(NearestMatch, MatchesNothingAtTheLimitOrBeyond)
{
    const double below = std::nextafter(kMatchLimit, 0.0);
    compare({{{0, 0, 0}}},
            {{below, 0, 0}, {kMatchLimit, 0, 0}, {1001, 0, 0}, {1e6, 1e6, 1e6}, {1e300, 0, 0}});
    const NearestMatch search(Objects{{{0, 0, 0}}});
    EXPECT_TRUE(search.nearest({below, 0, 0}).found);
    EXPECT_FALSE(search.nearest({kMatchLimit, 0, 0}).found);
    EXPECT_FALSE(NearestMatch(Objects{}).nearest({0, 0, 0}).found);

    Points points(5);
    compare({points.cloud(200, 3000.0), points.cloud(100, 3000.0)}, points.cloud(300, 4000.0));
}

TEST(NearestMatch, IgnoresPositionsThatAreNotFinite)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    const Objects objects = {{{nan, 0, 0}, {infinity, 0, 0}, {2, 0, 0}, {0, nan, 1}}, {{nan, nan, nan}}};
    compare(objects, {{0, 0, 0}, {5, 0, 0}, {nan, 0, 0}, {infinity, 0, 0}});
}

TEST(NearestMatch, CoincidentVerticesCountAsTheFirstOfThem)
{
    Objects objects = {std::vector<Position>(20000, Position{1, 2, 3})};
    objects[0].push_back({1, 2, 4});
    const NearestMatch search(objects);
    for (int k = 0; k < 20000; ++k)
        ASSERT_EQ(search.nearest({1.0, 2.0, 3.0 + 1e-5 * (k % 100)}).position, 0U);
    EXPECT_EQ(search.nearest({1, 2, 5}).position, 20000U);
}
