#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MString.h>

#include <vector>

namespace layers {

/// A skinned shape as it is now.
struct SkinShape {
    MDagPath path;
    MObject skin;
    MObject allVertices;
    unsigned int vertexCount = 0;
    std::vector<int> logicalIndices; ///< of the influences, in physical order
};

/// Throws std::runtime_error when the text is no full path of a shape with vertices.
MDagPath shapePath(const MString& fullPath);

/// Throws std::runtime_error when no skin deforms the shape.
SkinShape skinShape(const MDagPath& path);

/// Connects a node of type ngst2SkinLayerData to the skin's message, unless one is there. The host knows no
/// such type, so the node comes from a scene file, which may hold nodes of any type.
void attachDataNode(const SkinShape& shape);

} // namespace layers
