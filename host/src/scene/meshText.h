#pragma once

#include "nodes/geometry.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace host {

class MaCursor;

/// The geometry of one mesh as a file spells it over several setAttr:
///
///     setAttr -s 8 ".vt[0:7]"  x y z ...
///     setAttr -s 12 ".ed[0:11]"  start end hard ...
///     setAttr -s 6 -ch 24 ".fc[0:5]" -type "polyFaces" f 4 0 5 -2 -5 mu 0 4 0 1 3 2 ...
///
/// A face lists its edges, e forward and -e-1 backward; what follows (holes, texture and colour indices) is
/// kept as text.
class MeshText {
public:
    /// Whether the attribute path is one of the three.
    static bool isPart(std::string_view path);

    /// Reads the values of one such statement; the cursor is behind the path and -type. A size hint has none.
    /// Throws host::Error with file and line.
    void read(std::string_view path, MaCursor& words);

    bool empty() const { return points.empty() && topology.edges.empty() && topology.faceCounts.empty(); }
    int line() const { return lastLine; } ///< of the statement read last

    /// The mesh; throws host::Error when faces name edges, or edges vertices, that do not exist.
    std::shared_ptr<const MeshData> build() const;

private:
    void readVertices(std::size_t first, std::size_t count, MaCursor& words);
    void readEdges(std::size_t first, std::size_t count, MaCursor& words);
    void readFaces(std::size_t count, MaCursor& words);

    Points points;
    MeshTopology topology; ///< without faceVertices
    int lastLine = 0;
};

/// Appends the setAttr statements of a mesh, each with a tab in front and a line break behind.
void appendMesh(std::string& out, const MeshData& mesh);

} // namespace host
