#include "render/shadingCorners.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace workbench {

namespace {

using host::MeshTopology;

constexpr int kNone = -1;

/// Corners joined into groups; the lowest corner stands for a group.
class CornerGroups {
public:
    explicit CornerGroups(std::size_t count) : above(count) { std::iota(above.begin(), above.end(), 0); }
    int find(int corner)
    {
        int& parent = above[static_cast<std::size_t>(corner)];
        while (parent != above[static_cast<std::size_t>(parent)])
            parent = above[static_cast<std::size_t>(parent)];
        return parent;
    }
    void join(int a, int b)
    {
        const auto [low, high] = std::minmax({find(a), find(b)});
        above[static_cast<std::size_t>(high)] = low;
    }

private:
    std::vector<int> above;
};

/// Joins the corners that meet at the two ends of each soft edge.
class SoftEdges {
public:
    SoftEdges(const MeshTopology& mesh, CornerGroups& into)
        : topology(mesh), groups(into), first(mesh.edges.size(), {kNone, kNone})
    {}

    void addSide(std::size_t edge, int corner, int nextCorner)
    {
        if (topology.edges[edge][2] == 0)
            return;
        const int vertex = topology.faceVertices[static_cast<std::size_t>(corner)];
        const std::size_t end = topology.edges[edge][0] == vertex ? 0 : 1;
        meet(first[edge][end], corner);
        meet(first[edge][1 - end], nextCorner);
    }

private:
    void meet(int& known, int corner)
    {
        if (known == kNone)
            known = corner;
        else
            groups.join(known, corner);
    }

    const MeshTopology& topology;
    CornerGroups& groups;
    std::vector<std::array<int, 2>> first; ///< by edge and end: the corner met first
};

void joinSoftly(const MeshTopology& topology, CornerGroups& groups)
{
    SoftEdges soft(topology, groups);
    int begin = 0;
    for (const int count : topology.faceCounts) {
        for (int side = 0; side < count; ++side) {
            const int word = topology.faceEdges[static_cast<std::size_t>(begin + side)];
            const auto edge = static_cast<std::size_t>(word >= 0 ? word : -word - 1);
            if (edge < topology.edges.size())
                soft.addSide(edge, begin + side, begin + (side + 1) % count);
        }
        begin += count;
    }
}

} // namespace

ShadingCorners shadingCornersOf(const MeshTopology& topology)
{
    const std::size_t corners = topology.faceVertices.size();
    CornerGroups groups(corners);
    if (topology.faceEdges.size() == corners)
        joinSoftly(topology, groups);
    ShadingCorners result;
    result.drawnOfCorner.resize(corners);
    for (std::size_t corner = 0; corner < corners; ++corner) {
        const auto root = static_cast<std::size_t>(groups.find(static_cast<int>(corner)));
        if (root == corner) {
            result.drawnOfCorner[corner] = static_cast<unsigned>(result.vertexOfDrawn.size());
            result.vertexOfDrawn.push_back(topology.faceVertices[corner]);
        } else {
            result.drawnOfCorner[corner] = result.drawnOfCorner[root];
        }
    }
    return result;
}

} // namespace workbench
