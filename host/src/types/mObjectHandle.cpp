#include "types/api.h"

#include <maya/MObjectHandle.h>

#include <cstdint>

namespace {

// The handle holds the object in memory, so that no other can take its place; what it holds is not counted as
// being alive.

void watch(const MObject& watched)
{
    if (const host::Object* object = host::Api::object(watched))
        object->watch();
}

void unwatch(const MObject& watched)
{
    if (const host::Object* object = host::Api::object(watched))
        object->unwatch();
}

} // namespace

MObjectHandle::MObjectHandle() = default;

MObjectHandle::MObjectHandle(const MObject& object) : watched(object)
{
    watch(watched);
}

MObjectHandle::MObjectHandle(const MObjectHandle& handle) : MObjectHandle(handle.watched) {}

MObjectHandle::~MObjectHandle()
{
    unwatch(watched);
}

MObjectHandle& MObjectHandle::operator=(const MObject& object)
{
    const MObject next(object); // may be the one that is watched
    unwatch(watched);
    watched = next;
    watch(watched);
    return *this;
}

MObjectHandle& MObjectHandle::operator=(const MObjectHandle& other)
{
    return *this = other.watched;
}

MObject MObjectHandle::object() const
{
    return objectRef();
}

const MObject& MObjectHandle::objectRef() const
{
    return isAlive() ? watched : MObject::kNullObj;
}

unsigned int MObjectHandle::hashCode() const
{
    return objectHashCode(watched);
}

unsigned int MObjectHandle::objectHashCode(const MObject& object)
{
    const auto address = reinterpret_cast<std::uintptr_t>(host::Api::object(object));
    constexpr unsigned int kAlignmentBits = 4;
    return static_cast<unsigned int>(address >> kAlignmentBits);
}

bool MObjectHandle::isValid() const
{
    return isAlive() && host::Api::object(watched)->alive();
}

bool MObjectHandle::isAlive() const
{
    const host::Object* object = host::Api::object(watched);
    return object && object->heldByOthers();
}

bool MObjectHandle::operator==(const MObject& object) const
{
    return watched == object;
}

bool MObjectHandle::operator==(const MObjectHandle& object) const
{
    return watched == object.watched;
}

bool MObjectHandle::operator!=(const MObject& object) const
{
    return watched != object;
}

bool MObjectHandle::operator!=(const MObjectHandle& object) const
{
    return watched != object.watched;
}
