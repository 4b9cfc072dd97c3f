// Soft selection against brute force: which points, which weights, in which order.
#include "selection/falloffCurve.h"
#include "selectionFixture.h"

#include <cmath>
#include <limits>
#include <random>

using namespace testing_support;
using host::SoftSelectOptions;

namespace {

constexpr double kFar = std::numeric_limits<double>::infinity();

class SoftSelection : public SelectionTest {
public:
    /// A crumpled sheet under a transform that turns and scales unevenly, and a second sheet near by.
    SoftSelection()
    {
        mel("polyPlane -n sheet -w 10 -h 10 -sx 12 -sy 12; setAttr sheet.rotate 20 30 40;"
            "setAttr sheet.scale 1 2.5 0.7; setAttr sheet.translateX 3;"
            "polyPlane -n other -w 6 -h 6 -sx 6 -sy 6; setAttr other.translate 4 1 0;"
            "polyPlane -n far -w 1 -h 1; setAttr far.translateY 500; select -cl");
        std::mt19937 random(7);
        std::uniform_real_distribution<double> shift(-0.6, 0.6);
        for (const char* object : {"sheet", "other"}) {
            const std::size_t count = world(object).size();
            for (std::size_t vertex = 0; vertex < count; ++vertex)
                mel("setAttr " + std::string(object) + "Shape.pnts[" + std::to_string(vertex) + "] " +
                    std::to_string(shift(random)) + " " + std::to_string(shift(random)) + " " +
                    std::to_string(shift(random)));
        }
    }
    void options(SoftSelectOptions::Falloff falloff, double distance)
    {
        state().soft.enabled = true;
        state().soft.falloff = falloff;
        state().soft.distance = distance;
        state().optionsChanged();
    }

    std::vector<double> straight(const std::string& object, const std::vector<Imath::V3d>& seeds)
    {
        std::vector<double> out;
        for (const Imath::V3d& point : world(object)) {
            double best = kFar;
            for (const Imath::V3d& seed : seeds)
                best = std::min(best, (point - seed).length());
            out.push_back(best);
        }
        return out;
    }
    /// Shortest ways along edges by relaxing all edges until nothing changes.
    std::vector<double> alongEdges(const std::string& object, const std::vector<int>& seeds)
    {
        const std::vector<Imath::V3d> points = world(object);
        std::vector<double> out(points.size(), kFar);
        for (const int seed : seeds)
            out[static_cast<std::size_t>(seed)] = 0;
        const auto geometry = host::shapeGeometry(shape(object));
        const auto& edges = static_cast<const host::MeshData&>(*geometry).topology->edges;
        for (bool changed = true; changed;) {
            changed = false;
            for (const auto& edge : edges)
                for (int way = 0; way < 2; ++way) {
                    const auto from = static_cast<std::size_t>(edge[way == 0 ? 0u : 1u]),
                               to = static_cast<std::size_t>(edge[way == 0 ? 1u : 0u]);
                    const double length = out[from] + (points[from] - points[to]).length();
                    if (length < out[to]) {
                        out[to] = length;
                        changed = true;
                    }
                }
        }
        return out;
    }
    void expectWeights(const std::map<int, double>& got, const std::vector<double>& distances)
    {
        const host::FalloffCurve curve(state().soft.curve);
        const double radius = state().soft.distance;
        for (std::size_t point = 0; point < distances.size(); ++point) {
            const double wanted = distances[point] <= radius ? curve.at(distances[point] / radius) : 0.0;
            const auto found = got.find(static_cast<int>(point));
            if (found == got.end()) {
                EXPECT_LT(wanted, 1e-7) << "point " << point << " is missing";
                continue;
            }
            EXPECT_NEAR(found->second, wanted, 1e-6) << "point " << point;
            EXPECT_GT(found->second, 0.0);
        }
    }
    std::vector<Imath::V3d> positions(const std::string& object, const std::vector<int>& points)
    {
        const std::vector<Imath::V3d> all = world(object);
        std::vector<Imath::V3d> out;
        for (const int point : points)
            out.push_back(all[static_cast<std::size_t>(point)]);
        return out;
    }
};

TEST_F(SoftSelection, EveryFalloffGivesTheWeightsOfBruteForce)
{
    mel("select sheet.vtx[20:22] sheet.vtx[90] other.vtx[0]");
    std::vector<Imath::V3d> sheetSeeds = positions("sheet", {20, 21, 22, 90});
    const std::vector<Imath::V3d> otherSeeds = positions("other", {0});
    std::vector<Imath::V3d> seeds = sheetSeeds;
    seeds.insert(seeds.end(), otherSeeds.begin(), otherSeeds.end());
    for (const double radius : {0.8, 3.0, 9.0}) {
        for (const char* curve : {"1,0,2,0,1,2", "1,0,1,0.4,0.3,0,0,1,1", "1,0,3,0.2,0.5,3,0,1,3"}) {
            SCOPED_TRACE(std::string(curve) + " radius " + std::to_string(radius));
            state().soft.curve = host::parseFalloffCurve(curve);
            options(SoftSelectOptions::kVolume, radius);
            expectWeights(weights(state().rich().selection, "sheet"), straight("sheet", seeds));
            expectWeights(weights(state().rich().selection, "other"), straight("other", seeds));
            options(SoftSelectOptions::kObject, radius);
            expectWeights(weights(state().rich().selection, "sheet"), straight("sheet", sheetSeeds));
            expectWeights(weights(state().rich().selection, "other"), straight("other", otherSeeds));
            options(SoftSelectOptions::kSurface, radius);
            expectWeights(weights(state().rich().selection, "sheet"), alongEdges("sheet", {20, 21, 22, 90}));
            expectWeights(weights(state().rich().selection, "other"), alongEdges("other", {0}));
        }
    }
}

TEST_F(SoftSelection, OnlyGlobalFalloffReachesShapesThatAreNotSelected)
{
    mel("select sheet.vtx[84]");
    const std::vector<Imath::V3d> seeds = positions("sheet", {84});
    options(SoftSelectOptions::kVolume, 12);
    EXPECT_TRUE(weights(state().rich().selection, "other").empty());
    options(SoftSelectOptions::kGlobal, 12);
    expectWeights(weights(state().rich().selection, "sheet"), straight("sheet", seeds));
    expectWeights(weights(state().rich().selection, "other"), straight("other", seeds));
    EXPECT_FALSE(weights(state().rich().selection, "other").empty());
    EXPECT_TRUE(weights(state().rich().selection, "far").empty());
    mel("setAttr other.visibility 0");
    EXPECT_TRUE(weights(state().rich().selection, "other").empty()) << "hidden shapes are not reached";
}

TEST_F(SoftSelection, FollowsTheSceneAndTheSelection)
{
    options(SoftSelectOptions::kVolume, 3);
    mel("select sheet.vtx[84]");
    expectWeights(weights(state().rich().selection, "sheet"), straight("sheet", positions("sheet", {84})));
    mel("setAttr sheet.scaleY 0.3");
    expectWeights(weights(state().rich().selection, "sheet"), straight("sheet", positions("sheet", {84})));
    mel("select sheet.vtx[3]");
    expectWeights(weights(state().rich().selection, "sheet"), straight("sheet", positions("sheet", {3})));
    mel("select sheet sheet.e[3] sheet.translateX");
    EXPECT_EQ(texts(state().rich().selection), (Names{"sheet", "sheet.e[3]", "sheet.translateX"}))
        << "what has no points stays as it is";
}

TEST_F(SoftSelection, ARadiusOfNothingHoldsTheSelectedPointsOnly)
{
    options(SoftSelectOptions::kSurface, 0);
    mel("select sheet.vtx[5] sheet.vtx[9]");
    EXPECT_EQ(weights(state().rich().selection, "sheet"), (std::map<int, double>{{5, 1.0}, {9, 1.0}}));
}

TEST_F(SoftSelection, CurvesSurfacesAndLatticesFallOffThroughSpace)
{
    mel("curve -n bow -d 1 -p 0 0 0 -p 1 0 0 -p 2 0 0 -p 3 0 0 -p 4 0 0; nurbsPlane -n patch -d 1 -u 4 -v 4;"
        "createNode transform -n cage; createNode lattice -n cageShape -p cage;"
        "setAttr cageShape.sDivisions 3; setAttr cageShape.tDivisions 3; setAttr cageShape.uDivisions 3");
    const struct {
        const char *object, *selected;
        int seed;
        double radius;
    } rows[] = {{"bow", "bow.cv[1]", 1, 2.2},
                {"patch", "patch.cv[2][1]", 11, 0.6},
                {"cage", "cage.pt[1][0][2]", 19, 0.9}};
    for (const auto& row : rows) {
        mel("select " + std::string(row.selected));
        options(SoftSelectOptions::kSurface, row.radius);
        const std::map<int, double> got = weights(state().rich().selection, row.object);
        EXPECT_GT(got.size(), 1u) << row.object;
        expectWeights(got, straight(row.object, positions(row.object, {row.seed})));
    }
}

} // namespace
