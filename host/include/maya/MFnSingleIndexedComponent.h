#pragma once

#include <maya/MFnComponent.h>
#include <maya/MIntArray.h>

namespace host {
struct Api;
}

MAYA_HOST_NAMESPACE_OPEN

/// A component of elements with one index: vertices, edges, faces, CVs of curves.
class MAYA_HOST_EXPORT MFnSingleIndexedComponent : public MFnComponent {
public:
    MFnSingleIndexedComponent();
    MFnSingleIndexedComponent(MObject& object, MStatus* status = nullptr);
    MFnSingleIndexedComponent(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override;

    /// A new, empty component; the set is then attached to it.
    MObject create(MFn::Type compType, MStatus* status = nullptr);
    MStatus addElement(int element);
    MStatus addElements(MIntArray& elements);
    int element(int index, MStatus* status = nullptr) const;
    int elementMax(MStatus* status = nullptr) const;
    MStatus getElements(MIntArray& elements) const;
    MStatus setCompleteData(int numElements);
    MStatus getCompleteData(int& numElements) const;
    static const char* className() { return "MFnSingleIndexedComponent"; }

private:
    friend struct host::Api;
};

MAYA_HOST_NAMESPACE_CLOSE
