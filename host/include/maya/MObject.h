#pragma once

#include <maya/MFn.h>
#include <maya/MTypes.h>

namespace host {
struct Api;
class Object;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

/// An opaque handle on something of the host: a node, an attribute, a component, a plug-in. It keeps the
/// thing in memory, not in the scene: calls through the handle of a deleted node fail.
class MAYA_HOST_EXPORT MObject {
public:
    MObject();
    MObject(const MObject& other);
    MObject(MObject&& other) noexcept : ptr(other.ptr) { other.ptr = nullptr; }
    ~MObject();
    MObject& operator=(const MObject&);
    MObject& operator=(MObject&& other) noexcept;
    bool hasFn(MFn::Type fs) const;
    bool isNull() const;
    MFn::Type apiType() const;
    const char* apiTypeStr() const;
    bool operator==(const MObject&) const;
    bool operator!=(const MObject&) const;

    static MObject kNullObj;

private:
    friend struct host::Api;
    explicit MObject(const host::Object* object);

    const host::Object* ptr = nullptr;
};

MAYA_HOST_NAMESPACE_CLOSE
