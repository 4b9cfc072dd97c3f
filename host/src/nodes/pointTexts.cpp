#include "nodes/pointTexts.h"

namespace host {

namespace {

std::string run(int first, int last)
{
    const std::string text = "[" + std::to_string(first);
    return first == last ? text + "]" : text + ":" + std::to_string(last) + "]";
}

std::string one(int index)
{
    return run(index, index);
}

/// How many points in a row lie on one line of the geometry: runs do not reach beyond.
int lineLength(const Geometry& geometry)
{
    if (geometry.kind() == Geometry::Kind::kSurface)
        return static_cast<const SurfaceData&>(geometry).numV;
    if (geometry.kind() == Geometry::Kind::kLattice)
        return static_cast<const LatticeData&>(geometry).s;
    return static_cast<int>(geometry.count());
}

/// The text of `count` points on one line.
std::string lineText(const Geometry& geometry, int first, int count)
{
    const int line = lineLength(geometry);
    const int across = first / line;
    const std::string along = run(first % line, first % line + count - 1);
    switch (geometry.kind()) {
    case Geometry::Kind::kMesh:
        return "vtx" + along;
    case Geometry::Kind::kCurve:
        return "cv" + along;
    case Geometry::Kind::kSurface:
        return "cv" + one(across) + along;
    case Geometry::Kind::kLattice: {
        const int lines = static_cast<const LatticeData&>(geometry).t;
        return "pt" + along + one(across % lines) + one(across / lines);
    }
    }
    return {};
}

} // namespace

std::vector<std::string> pointTexts(const Geometry& geometry, const std::vector<int>& points)
{
    std::vector<std::string> texts;
    const int line = points.empty() ? 1 : lineLength(geometry);
    for (std::size_t begin = 0; begin < points.size();) {
        std::size_t end = begin + 1;
        while (end < points.size() && points[end] == points[end - 1] + 1 && points[end] % line != 0)
            ++end;
        texts.push_back(lineText(geometry, points[begin], static_cast<int>(end - begin)));
        begin = end;
    }
    return texts;
}

} // namespace host
