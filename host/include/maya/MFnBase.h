#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

namespace host {
struct Api;
}

MAYA_HOST_NAMESPACE_OPEN

/// What all function sets share: the object they are attached to. A set attached to nothing, to an object of
/// another type or to one that has left the scene answers kFailure and default values.
class MAYA_HOST_EXPORT MFnBase {
public:
    virtual ~MFnBase();
    MFnBase(const MFnBase&) = delete;
    MFnBase& operator=(const MFnBase&) = delete;
    virtual MFn::Type type() const;
    bool hasObj(MFn::Type) const;
    bool hasObj(const MObject&) const;
    /// The object, if the set is attached to one that is in the scene; else null.
    MObject object(MStatus* status = nullptr) const;
    /// Attaches the set; kInvalidParameter, and detached, when the object is not of the right type.
    virtual MStatus setObject(MObject& object);
    virtual MStatus setObject(const MObject& object);
    static const char* className() { return "MFnBase"; }

protected:
    MFnBase();

private:
    friend struct host::Api;
    MObject handle;
};

MAYA_HOST_NAMESPACE_CLOSE
