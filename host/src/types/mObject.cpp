#include "types/object.h"

#include "types/functionTypes.h"

#include <maya/MObject.h>

#include <utility>

namespace {

void retain(const host::Object* object)
{
    if (object)
        object->retain();
}

void release(const host::Object* object)
{
    if (object)
        object->release();
}

} // namespace

MObject MObject::kNullObj;

MObject::MObject() = default;

MObject::MObject(const host::Object* object) : ptr(object)
{
    retain(ptr);
}

MObject::MObject(const MObject& other) : ptr(other.ptr)
{
    retain(ptr);
}

MObject::~MObject()
{
    release(ptr);
}

MObject& MObject::operator=(const MObject& other)
{
    MObject copy(other);
    std::swap(ptr, copy.ptr);
    return *this;
}

MObject& MObject::operator=(MObject&& other) noexcept
{
    std::swap(ptr, other.ptr);
    return *this;
}

bool MObject::hasFn(MFn::Type fs) const
{
    return ptr && ptr->hasFn(fs);
}

bool MObject::isNull() const
{
    return !ptr;
}

MFn::Type MObject::apiType() const
{
    return ptr ? ptr->apiType() : MFn::kInvalid;
}

const char* MObject::apiTypeStr() const
{
    return host::functionTypeName(apiType());
}

bool MObject::operator==(const MObject& other) const
{
    return ptr == other.ptr;
}
bool MObject::operator!=(const MObject& other) const
{
    return ptr != other.ptr;
}
