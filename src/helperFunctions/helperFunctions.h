#pragma once

#include "common.h"

#include <maya/MDagPath.h>
#include <maya/MDoubleArray.h>
#include <maya/MFloatArray.h>
#include <maya/MFn.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MSelectionList.h>
#include <maya/MStatus.h>
#include <vector>

// Look-ups and conversions that need no tool. None of them keeps state, shows a message or touches the undo
// queue. A look-up that finds nothing answers with all bits set: -1, or 4294967295 where the result is
// unsigned.

constexpr unsigned int kNotFound = ~0U;

/// The skin cluster that deforms the shape: the first one upstream whose first output geometry is the shape.
/// A skin cluster without output ends the search. Null, with a failed status, when there is none.
MObject getSkinCluster(MDagPath& shape, MStatus& status);

/// The weight index of a blend shape target, by alias. The alias list (alias, attribute, alias, ...) is
/// searched entry by entry, so a name that equals an attribute entry matches it and reads the entry after it.
int convertTargetToIndex(MObject blendShape, MString targetName);

/// Position of the influence in the skin cluster's influence list.
unsigned int getPhysicalIndex(const MObject& skinCluster, const MDagPath& influence);

/// Position of the first item on the same node; components are ignored.
int selectionListIndexOf(const MSelectionList& list, const MDagPath& path);

/// Logical index of every influence, in physical order.
MIntArray getAllLogicalIndices(const MObject& skinCluster);

/// The physical indices 0 ... n-1 of the skin cluster's influences.
MIntArray allPhysicalIndices(const MFnSkinCluster& skin);

/// A shape under the name that people know it by, its transform's.
MString shapeName(const MDagPath& shape);
MString nodeName(const MObject& node);

MDoubleArray floatToDouble(const MFloatArray& values);
MFloatArray doubleToFloat(const MDoubleArray& values);

std::vector<float> toVector(const MFloatArray& values);
std::vector<double> toVector(const MDoubleArray& values);
std::vector<int> toVector(const MIntArray& values);

/// The array's values in one block, writable; null when it is empty. Valid until the length changes.
inline double* dataOf(MDoubleArray& values)
{
    return values.length() == 0 ? nullptr : &values[0];
}
inline float* dataOf(MFloatArray& values)
{
    return values.length() == 0 ? nullptr : &values[0];
}

/// The kind of points that a component holds: mesh vertices, curve or surface control points, lattice points;
/// kInvalid for any other, such as edges and faces.
MFn::Type pointKind(const MObject& component);
/// Vertex indices of a component in its iteration order.
std::vector<int> vertexIndices(const MDagPath& path, const MObject& component);
/// Elements of a single-indexed component in its order; empty for any other.
std::vector<int> componentElements(const MObject& component);
