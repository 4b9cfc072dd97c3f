#pragma once

#include <maya/MFnBase.h>
#include <maya/MString.h>

namespace host {
struct Api;
}

MAYA_HOST_NAMESPACE_OPEN

/// A definition of an attribute.
class MAYA_HOST_EXPORT MFnAttribute : public MFnBase {
public:
    MFnAttribute();
    MFnAttribute(MObject& object, MStatus* status = nullptr);
    MFnAttribute(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override;

    MString name(MStatus* status = nullptr) const;
    MString shortName(MStatus* status = nullptr) const;
    bool isArray(MStatus* status = nullptr) const;
    /// The compound that the attribute is a child of; null for one of the node itself.
    MObject parent(MStatus* status = nullptr) const;
    static const char* className() { return "MFnAttribute"; }

private:
    friend struct host::Api;
};

MAYA_HOST_NAMESPACE_CLOSE
