#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace testing_support {

using Point = std::array<double, 3>;
using Points = std::vector<Point>;

/// Some points of a shape, ascending, with their falloffs; without soft selection there are none and every
/// point counts whole.
struct Piece {
    int shape;
    std::vector<int> points;
    std::vector<float> falloff;
    bool operator==(const Piece& other) const
    {
        return shape == other.shape && points == other.points && falloff == other.falloff;
    }
};
using Pieces = std::vector<Piece>;
using Selection = Pieces; ///< without falloffs; every shape once, none empty

struct RichPieces {
    Pieces primary, mirrored;
    bool empty() const { return primary.empty() && mirrored.empty(); }
};

struct ReachOptions {
    bool soft = false;
    int falloff = 0; ///< 0 through space, 1 along edges, 2 through space to all shapes, 3 per shape
    double radius = 1;
    bool symmetry = false;
    bool inWorld = false;
    int axis = 0;
    double tolerance = 0;
};

/// What is known of a shape's points beforehand, and where they are displayed when asked.
struct ReachShape {
    bool isMesh = false;
    std::vector<std::array<int, 2>> edges;
    std::function<Points()> local, world;
};

/// How far a selection reaches: soft selection and symmetry worked out by trying every pair of points.
class ReachModel {
public:
    explicit ReachModel(std::vector<ReachShape> reachShapes) : shapes(std::move(reachShapes)) {}

    ReachOptions options;

    RichPieces reach(const Selection& selection) const;
    /// The selection with the mirror images of its points.
    Selection symmetrized(const Selection& selection) const;

private:
    struct Seeds;
    /// The nearest point to a point's mirror image, for every point; -1 when there is none near enough.
    std::vector<int> images(int shape, std::vector<bool>& positive) const;
    Seeds seedsOf(const Piece& piece) const;
    std::vector<double> alongEdges(int shape, const std::vector<int>& from) const;
    std::vector<double> distances(const std::vector<Seeds>& all, std::size_t entry, bool mirrored) const;

    std::vector<ReachShape> shapes;
};

} // namespace testing_support
