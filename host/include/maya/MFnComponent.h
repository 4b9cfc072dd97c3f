#pragma once

#include <maya/MFnBase.h>
#include <maya/MWeight.h>

namespace host {
struct Api;
}

MAYA_HOST_NAMESPACE_OPEN

/// The elements of one shape that somebody chose, with a weight each when soft selection chose them.
/// Positions are places in the component, 0 to elementCount()-1, not element ids.
class MAYA_HOST_EXPORT MFnComponent : public MFnBase {
public:
    MFnComponent();
    MFnComponent(MObject& object, MStatus* status = nullptr);
    MFnComponent(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override;

    int elementCount(MStatus* status = nullptr) const;
    MFn::Type componentType(MStatus* status = nullptr) const;
    bool isEmpty(MStatus* status = nullptr) const;
    bool isEqual(MObject&, MStatus* status = nullptr) const;
    /// All elements of the shape, without listing them.
    bool isComplete(MStatus* status = nullptr) const;
    MStatus setComplete(bool);

    /// Whether elements carry weights; without them every weight is 1.
    bool hasWeights() const;
    MWeight weight(int index, MStatus* status = nullptr) const;
    MStatus setWeight(int index, const MWeight& weight);
    MStatus setWeights(const MWeight& weight);
    static const char* className() { return "MFnComponent"; }

private:
    friend struct host::Api;
};

MAYA_HOST_NAMESPACE_CLOSE
