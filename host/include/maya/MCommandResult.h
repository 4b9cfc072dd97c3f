#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

#include <memory>

namespace host {
struct Api;
struct CommandResult;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

/// What a command returned. A read of another type fails and leaves the target as it was.
class MAYA_HOST_EXPORT MCommandResult {
public:
    enum Type : int {
        kInvalid = 0,
        kInt = 1,
        kInt64 = 2,
        kIntArray = 3,
        kInt64Array = 4,
        kDouble = 5,
        kDoubleArray = 6,
        kString = 7,
        kStringArray = 8,
        kVector = 9,
        kVectorArray = 10,
        kMatrix = 11,
        kMatrixArray = 12,
    };

    MCommandResult(MStatus* status = nullptr);
    MCommandResult(const MCommandResult&) = delete;
    MCommandResult& operator=(const MCommandResult&) = delete;
    virtual ~MCommandResult();

    Type resultType(MStatus* status = nullptr) const;
    MStatus getResult(int& result) const;
    MStatus getResult(MIntArray& result) const;
    MStatus getResult(double& result) const;
    MStatus getResult(MDoubleArray& result) const;
    MStatus getResult(MString& result) const;
    MStatus getResult(MStringArray& result) const;
    MStatus getResult(MVector& result) const;
    MString stringResult(MStatus* status = nullptr) const;
    static const char* className() { return "MCommandResult"; }

private:
    friend struct host::Api;
    std::unique_ptr<host::CommandResult> result;
};

MAYA_HOST_NAMESPACE_CLOSE
