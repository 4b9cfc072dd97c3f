#pragma once

#include <maya/MFnComponent.h>
#include <maya/MIntArray.h>

namespace host {
struct Api;
}

MAYA_HOST_NAMESPACE_OPEN

/// A component of elements with three indices: points of lattices.
class MAYA_HOST_EXPORT MFnTripleIndexedComponent : public MFnComponent {
public:
    MFnTripleIndexedComponent();
    MFnTripleIndexedComponent(MObject& object, MStatus* status = nullptr);
    MFnTripleIndexedComponent(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override;

    /// A new, empty component; the set is then attached to it.
    MObject create(MFn::Type compType, MStatus* status = nullptr);
    MStatus addElement(int sIndex, int tIndex, int uIndex);
    MStatus addElements(const MIntArray& sIndexArray, const MIntArray& tIndexArray,
                        const MIntArray& uIndexArray);
    MStatus getElement(int index, int& sIndex, int& tIndex, int& uIndex) const;
    MStatus getElements(MIntArray& sIndexArray, MIntArray& tIndexArray, MIntArray& uIndexArray) const;
    MStatus setCompleteData(int maxS, int maxT, int maxU);
    MStatus getCompleteData(int& maxS, int& maxT, int& maxU) const;
    static const char* className() { return "MFnTripleIndexedComponent"; }

private:
    friend struct host::Api;
};

MAYA_HOST_NAMESPACE_CLOSE
