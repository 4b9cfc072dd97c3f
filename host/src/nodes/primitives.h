#pragma once

#include "nodes/geometry.h"

namespace host {

// Polygon primitives around the origin, axis y up, in the platform's vertex order, so that vertex numbers in
// scripts mean the same vertices here and there. Sizes in centimetres; subdivisions are at least 1 (a
// cylinder's caps may have none). Edges are listed once, by their lower and then their higher vertex.

/// More are refused with host::Error.
constexpr std::size_t kMostPoints = std::size_t{1} << 22;

/// In the xz plane. Vertex j * (sx + 1) + i: x grows with i, z falls with j.
std::shared_ptr<MeshData> planeMesh(double width, double height, int sx, int sy);

/// Front (z+) from the bottom up, over the top, down the back, along the bottom; then the inner vertices of
/// the right (x+) and of the left (x-) side. 1 x 1 x 1: vertex 0 (-,-,+), 1 (+,-,+), 2 (-,+,+), ... 7
/// (+,-,-).
std::shared_ptr<MeshData> cubeMesh(const Imath::V3d& size, int sx, int sy, int sz);

/// sy - 1 rings of sx vertices from the bottom up, then the bottom and the top pole. Within a ring vertex i
/// lies at the angle -(i + 1) * 360 / sx about y, measured from x towards z.
std::shared_ptr<MeshData> sphereMesh(double radius, int sx, int sy);

/// sy + 1 rings of sx vertices from the bottom up (angles as in sphereMesh), then for each cap (bottom, top)
/// its inner rings from the outside in and, when capRings > 0, its centre. capRings 0: one polygon per cap.
std::shared_ptr<MeshData> cylinderMesh(double radius, double height, int sx, int sy, int capRings);

/// A mesh from points and faces, with the edges, which of them are soft and the faces' edge words worked out.
std::shared_ptr<MeshData> meshFromFaces(Points points, std::vector<int> faceCounts,
                                        std::vector<int> faceVertices);

} // namespace host
