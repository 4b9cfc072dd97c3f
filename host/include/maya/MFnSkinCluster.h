#pragma once

#include <maya/MDagPath.h>
#include <maya/MDagPathArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MFloatArray.h>
#include <maya/MFnGeometryFilter.h>
#include <maya/MIntArray.h>

namespace host {
struct Api;
}

MAYA_HOST_NAMESPACE_OPEN

/// A skin. Influence indices are physical: places in the order of influenceObjects(). Arrays of weights for
/// many influences are vertex-major.
class MAYA_HOST_EXPORT MFnSkinCluster : public MFnGeometryFilter {
public:
    MFnSkinCluster();
    MFnSkinCluster(MObject& object, MStatus* status = nullptr);
    MFnSkinCluster(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override;

    MStatus getWeights(const MDagPath& path, const MObject& components, unsigned int influenceIndex,
                       MDoubleArray& weights) const;
    MStatus getWeights(const MDagPath& path, const MObject& components, MDoubleArray& weights,
                       unsigned int& influenceCount) const;
    MStatus getWeights(const MDagPath& path, const MObject& components, MIntArray& influenceIndices,
                       MDoubleArray& weights) const;
    MStatus getWeights(const MDagPath& path, const MObject& components, unsigned int influenceIndex,
                       MFloatArray& weights) const;
    MStatus getWeights(const MDagPath& path, const MObject& components, MFloatArray& weights,
                       unsigned int& influenceCount) const;
    /// The values hold one number per listed influence or one per vertex and listed influence. With normalize
    /// the other influences make room, so that a vertex sums to 1. The old values are those of all
    /// influences.
    MStatus setWeights(const MDagPath& path, const MObject& components, unsigned int jointIndex, double value,
                       bool normalize = true, MDoubleArray* oldValues = nullptr);
    MStatus setWeights(const MDagPath& path, const MObject& components, MIntArray& influenceIndices,
                       MDoubleArray& values, bool normalize = true, MDoubleArray* oldValues = nullptr);
    MStatus setWeights(const MDagPath& path, const MObject& components, unsigned int jointIndex, float value,
                       bool normalize = true, MFloatArray* oldValues = nullptr);
    MStatus setWeights(const MDagPath& path, const MObject& components, MIntArray& influenceIndices,
                       MFloatArray& values, bool normalize = true, MFloatArray* oldValues = nullptr);
    unsigned int influenceObjects(MDagPathArray& paths, MStatus* status = nullptr) const;
    /// The logical index of matrix[]; kFailure when the path is no influence.
    unsigned int indexForInfluenceObject(const MDagPath& path, MStatus* status = nullptr) const;
    MStatus getBlendWeights(const MDagPath& path, const MObject& components, MDoubleArray& weights) const;
    MStatus setBlendWeights(const MDagPath& path, const MObject& components, const MDoubleArray& weights);
    static const char* className() { return "MFnSkinCluster"; }

private:
    friend struct host::Api;
};

MAYA_HOST_NAMESPACE_CLOSE
