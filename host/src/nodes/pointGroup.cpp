#include "nodes/geometry.h"
#include "types/error.h"

#include <algorithm>
#include <cstdlib>

namespace host {

namespace {

struct Range {
    int first = 0;
    int last = -1; ///< inclusive
};

/// A component text taken apart: the word before the brackets and a range per bracket.
struct ComponentText {
    std::string word;
    std::vector<Range> ranges;
    bool all = false; ///< every bracket holds a star
};

[[noreturn]] void refuse(const std::string& text)
{
    throw Error("'" + text + "' is no component.");
}

Range readRange(const std::string& inside, const std::string& text)
{
    constexpr int kEnd = 0x7FFFFFFF;
    if (inside == "*")
        return {0, kEnd};
    const char* from = inside.c_str();
    char* end = nullptr;
    Range range;
    range.first = static_cast<int>(std::strtol(from, &end, 10));
    if (end == from)
        refuse(text);
    range.last = range.first;
    if (*end == ':') {
        from = end + 1;
        range.last = static_cast<int>(std::strtol(from, &end, 10));
        if (end == from)
            refuse(text);
    }
    if (*end != '\0' || range.first < 0)
        refuse(text);
    return range;
}

ComponentText readText(const std::string& text)
{
    ComponentText result;
    std::size_t at = text.find('[');
    result.word = text.substr(0, at);
    result.all = true;
    while (at != std::string::npos && at < text.size()) {
        const std::size_t close = text.find(']', at);
        if (text[at] != '[' || close == std::string::npos)
            refuse(text);
        const std::string inside = text.substr(at + 1, close - at - 1);
        result.all = result.all && inside == "*";
        result.ranges.push_back(readRange(inside, text));
        at = close + 1;
    }
    if (result.ranges.empty() || result.ranges.size() > 3)
        refuse(text);
    return result;
}

void addRun(std::vector<int>& points, Range range, std::size_t size)
{
    const int end = static_cast<int>(std::min<std::size_t>(size, static_cast<unsigned>(range.last) + 1u));
    for (int point = range.first; point < end; ++point)
        points.push_back(point);
}

void addFaces(std::vector<int>& points, Range range, const MeshTopology& topology)
{
    std::size_t corner = 0;
    for (std::size_t face = 0; face < topology.faceCounts.size(); ++face) {
        const std::size_t end = corner + static_cast<std::size_t>(topology.faceCounts[face]);
        if (static_cast<int>(face) >= range.first && static_cast<int>(face) <= range.last)
            points.insert(points.end(), topology.faceVertices.begin() + static_cast<std::ptrdiff_t>(corner),
                          topology.faceVertices.begin() + static_cast<std::ptrdiff_t>(end));
        corner = end;
    }
}

void addMesh(std::vector<int>& points, const ComponentText& text, const MeshData& mesh)
{
    const Range range = text.ranges.front();
    if (text.word == "f")
        return addFaces(points, range, *mesh.topology);
    if (text.word != "e")
        return addRun(points, range, mesh.count());
    const auto& edges = mesh.topology->edges;
    const std::size_t end = std::min<std::size_t>(edges.size(), static_cast<unsigned>(range.last) + 1u);
    for (std::size_t edge = static_cast<std::size_t>(range.first); edge < end; ++edge)
        points.insert(points.end(), {edges[edge][0], edges[edge][1]});
}

void addGrid(std::vector<int>& points, const std::vector<Range>& ranges, const int (&sizes)[3],
             const int (&strides)[3])
{
    const auto end = [&](int axis) {
        return std::min(ranges[static_cast<std::size_t>(axis)].last, sizes[axis] - 1);
    };
    for (int a = ranges[0].first; a <= end(0); ++a)
        for (int b = ranges[1].first; b <= end(1); ++b)
            for (int c = ranges[2].first; c <= end(2); ++c)
                points.push_back(a * strides[0] + b * strides[1] + c * strides[2]);
}

void addText(std::vector<int>& points, const std::string& text, const Geometry& geometry)
{
    ComponentText parsed = readText(text);
    switch (geometry.kind()) {
    case Geometry::Kind::kMesh:
        return addMesh(points, parsed, static_cast<const MeshData&>(geometry));
    case Geometry::Kind::kCurve:
        return addRun(points, parsed.ranges.front(), geometry.count());
    case Geometry::Kind::kSurface: {
        const auto& surface = static_cast<const SurfaceData&>(geometry);
        parsed.ranges.resize(2, Range{0, surface.numV - 1});
        parsed.ranges.push_back({0, 0});
        return addGrid(points, parsed.ranges, {surface.numU, surface.numV, 1}, {surface.numV, 1, 0});
    }
    case Geometry::Kind::kLattice: {
        const auto& lattice = static_cast<const LatticeData&>(geometry);
        parsed.ranges.resize(3, Range{0, 0x7FFFFFFE});
        return addGrid(points, parsed.ranges, {lattice.s, lattice.t, lattice.u},
                       {1, lattice.s, lattice.s * lattice.t});
    }
    }
}

} // namespace

PointGroup pointGroup(const Geometry& geometry, const std::vector<std::string>& components)
{
    PointGroup group;
    for (const std::string& text : components) {
        const bool points =
            text.compare(0, 3, "vtx") == 0 || text.compare(0, 2, "cv") == 0 || text.compare(0, 2, "pt") == 0;
        if (points && readText(text).all)
            group.all = true;
        else
            addText(group.points, text, geometry);
    }
    std::sort(group.points.begin(), group.points.end());
    group.points.erase(std::unique(group.points.begin(), group.points.end()), group.points.end());
    if (group.all)
        group.points.clear();
    return group;
}

} // namespace host
