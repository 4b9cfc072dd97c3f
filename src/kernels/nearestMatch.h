#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

/// Object-space position of a vertex.
using Position = std::array<double, 3>;

/// Vertices at this distance or farther never match.
constexpr double kMatchLimit = 1000.0;

/// What the search finds for one vertex.
struct VertexMatch {
    bool found;           ///< a vertex nearer than kMatchLimit exists; the rest holds only then
    std::size_t object;   ///< which of the searched objects
    std::size_t position; ///< position within that object's vertices
};

/// Finds nearest vertices over several objects. The answer is that of the exhaustive search, which visits
/// object by object and vertex by vertex and keeps a vertex only when it is strictly nearer than the best so
/// far: on equal distances the first one met wins. Distances are the square roots, so two squares that round
/// to one root are equal. Positions that are not finite never match. Queries cost the logarithm of the vertex
/// count.
class NearestMatch {
public:
    /// Object 0, 1, ... and within each its vertices in the order in which the exhaustive search would visit
    /// them.
    explicit NearestMatch(const std::vector<std::vector<Position>>& objects);
    ~NearestMatch();
    NearestMatch(const NearestMatch&) = delete;
    NearestMatch& operator=(const NearestMatch&) = delete;

    VertexMatch nearest(const Position& from) const;

private:
    class Tree;
    std::vector<std::unique_ptr<Tree>> trees;
};

/// The distance that decides: the square root of the sum of squares in the order x, y, z.
double distanceBetween(const Position& a, const Position& b);
