#pragma once

#include <maya/MDagPath.h>
#include <maya/MFloatArray.h>
#include <maya/MFnGeometryFilter.h>

namespace host {
struct Api;
}

MAYA_HOST_NAMESPACE_OPEN

/// A deformer with a weight per point. Weights come in the order of the component.
class MAYA_HOST_EXPORT MFnWeightGeometryFilter : public MFnGeometryFilter {
public:
    MFnWeightGeometryFilter();
    MFnWeightGeometryFilter(MObject& object, MStatus* status = nullptr);
    MFnWeightGeometryFilter(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override;

    MStatus getWeights(unsigned int index, const MObject& components, MFloatArray& weights) const;
    MStatus getWeights(const MDagPath& path, const MObject& components, MFloatArray& weights) const;
    /// One value for all points, or one per point.
    MStatus setWeight(const MDagPath& path, unsigned int index, const MObject& components, float weight,
                      MFloatArray* oldValues = nullptr);
    MStatus setWeight(const MDagPath& path, const MObject& components, float weight,
                      MFloatArray* oldValues = nullptr);
    MStatus setWeight(const MDagPath& path, unsigned int index, const MObject& components,
                      MFloatArray& values);
    MStatus setWeight(const MDagPath& path, const MObject& components, MFloatArray& values);
    static const char* className() { return "MFnWeightGeometryFilter"; }

private:
    friend struct host::Api;
};

MAYA_HOST_NAMESPACE_CLOSE
