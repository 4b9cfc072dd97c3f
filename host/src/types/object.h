#pragma once

#include <maya/MFn.h>

#include <cstdint>
#include <utility>

namespace host {

/// What an MObject can refer to: a node, an attribute, a component, a loaded plug-in.
///
/// Objects are counted intrusively and without atomics: handles are made, copied and dropped on the main
/// thread only, as on the platform. Evaluation threads see plain data, never handles.
/// An object may outlive its place in the scene (a deleted node that the undo queue or a handle still
/// holds); alive() tells.
class Object {
public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    /// The exact function type, for MObject::apiType().
    virtual MFn::Type apiType() const = 0;
    /// Whether the object supports the function type: its own type or one that it inherits from.
    virtual bool hasFn(MFn::Type type) const = 0;
    /// False once the object has left the scene (and true again after an undo brought it back).
    virtual bool alive() const { return true; }

    void retain() const { ++references; }
    void release() const
    {
        if (--references == 0)
            delete this;
    }

    /// Handles that keep the object in memory and do not want to count: they watch what becomes of it.
    void watch() const { ++watchers; }
    void unwatch() const { --watchers; }
    /// Whether anything but watching handles refers to it.
    bool heldByOthers() const { return references > watchers; }

protected:
    virtual ~Object();

private:
    mutable std::uint32_t references = 0;
    mutable std::uint32_t watchers = 0; ///< of those references
};

/// A counted pointer to an Object or a class derived from it; null by default.
template <class T>
class Ref {
public:
    Ref() = default;
    Ref(T* object) : pointer(object) { retain(); }
    Ref(const Ref& other) : pointer(other.pointer) { retain(); }
    Ref(Ref&& other) noexcept : pointer(std::exchange(other.pointer, nullptr)) {}
    template <class U>
    Ref(const Ref<U>& other) : pointer(other.get())
    {
        retain();
    }
    ~Ref() { drop(); }

    Ref& operator=(Ref other) noexcept
    {
        std::swap(pointer, other.pointer);
        return *this;
    }

    T* get() const { return pointer; }
    T* operator->() const { return pointer; }
    T& operator*() const { return *pointer; }
    explicit operator bool() const { return pointer != nullptr; }
    friend bool operator==(const Ref& a, const Ref& b) { return a.pointer == b.pointer; }
    friend bool operator!=(const Ref& a, const Ref& b) { return a.pointer != b.pointer; }

private:
    void retain() const
    {
        if (pointer)
            pointer->retain();
    }
    void drop() const
    {
        if (pointer)
            pointer->release();
    }

    T* pointer = nullptr;
};

} // namespace host
