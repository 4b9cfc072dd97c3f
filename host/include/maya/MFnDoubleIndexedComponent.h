#pragma once

#include <maya/MFnComponent.h>
#include <maya/MIntArray.h>

namespace host {
struct Api;
}

MAYA_HOST_NAMESPACE_OPEN

/// A component of elements with two indices: CVs of surfaces.
class MAYA_HOST_EXPORT MFnDoubleIndexedComponent : public MFnComponent {
public:
    MFnDoubleIndexedComponent();
    MFnDoubleIndexedComponent(MObject& object, MStatus* status = nullptr);
    MFnDoubleIndexedComponent(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override;

    /// A new, empty component; the set is then attached to it.
    MObject create(MFn::Type compType, MStatus* status = nullptr);
    MStatus addElement(int uIndex, int vIndex);
    MStatus addElements(const MIntArray& uIndexArray, const MIntArray& vIndexArray);
    MStatus getElement(int index, int& uIndex, int& vIndex) const;
    MStatus getElements(MIntArray& uIndexArray, MIntArray& vIndexArray) const;
    MStatus setCompleteData(int maxU, int maxV);
    MStatus getCompleteData(int& maxU, int& maxV) const;
    static const char* className() { return "MFnDoubleIndexedComponent"; }

private:
    friend struct host::Api;
};

MAYA_HOST_NAMESPACE_CLOSE
