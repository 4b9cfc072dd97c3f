#pragma once

#include <maya/MFnDependencyNode.h>
#include <maya/MObjectArray.h>

namespace host {
struct Api;
}

MAYA_HOST_NAMESPACE_OPEN

/// A deformer. Plug indices are logical indices of input[] and outputGeometry[].
class MAYA_HOST_EXPORT MFnGeometryFilter : public MFnDependencyNode {
public:
    MFnGeometryFilter();
    MFnGeometryFilter(MObject& object, MStatus* status = nullptr);
    MFnGeometryFilter(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override;

    MStatus getInputGeometry(MObjectArray& objects) const;
    MStatus getOutputGeometry(MObjectArray& objects) const;
    /// The undeformed shape.
    MObject inputShapeAtIndex(unsigned int index, MStatus* status = nullptr) const;
    MObject outputShapeAtIndex(unsigned int index, MStatus* status = nullptr) const;
    /// kInvalidParameter when the object is no shape, kFailure when this deformer does not deform it.
    unsigned int indexForOutputShape(const MObject& shape, MStatus* status = nullptr) const;
    /// The set of deformed elements; fails for a deformer that works with component tags.
    MObject deformerSet(MStatus* status = nullptr) const;
    /// A new component holding what this deformer works on in an output geometry; null when there is no such
    /// geometry.
    MObject getComponentAtIndex(unsigned int index, MStatus* status = nullptr);
    static const char* className() { return "MFnGeometryFilter"; }

private:
    friend struct host::Api;
};

MAYA_HOST_NAMESPACE_CLOSE
