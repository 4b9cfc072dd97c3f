#include "types/api.h"

#include <maya/MFnBase.h>

MFnBase::MFnBase() = default;
MFnBase::~MFnBase() = default;

MFn::Type MFnBase::type() const
{
    return MFn::kBase;
}

bool MFnBase::hasObj(MFn::Type wanted) const
{
    return handle.hasFn(wanted);
}

bool MFnBase::hasObj(const MObject& object) const
{
    return object.hasFn(type());
}

MObject MFnBase::object(MStatus* status) const
{
    const host::Object* attached = host::Api::object(handle);
    const bool usable = attached && attached->alive();
    host::report(status, usable ? MStatus::kSuccess : MStatus::kFailure);
    return usable ? handle : MObject();
}

MStatus MFnBase::setObject(MObject& object)
{
    return setObject(static_cast<const MObject&>(object));
}

MStatus MFnBase::setObject(const MObject& object)
{
    const host::Object* wanted = host::Api::object(object);
    if (!wanted || !wanted->alive()) {
        handle = MObject();
        return MStatus::kFailure;
    }
    if (!object.hasFn(type())) {
        handle = MObject();
        return MStatus::kInvalidParameter;
    }
    handle = object;
    return MStatus::kSuccess;
}
