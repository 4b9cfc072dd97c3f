#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

#include <memory>

namespace host {
struct Api;
struct ArgList;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

/// The arguments of a command as they were typed: flags and values in one list. addArg("text") means a bool,
/// as on the platform.
class MAYA_HOST_EXPORT MArgList {
public:
    MArgList();
    MArgList(const MArgList& other);
    MArgList(MArgList&& other) noexcept;
    ~MArgList();
    MArgList& operator=(const MArgList& other);
    MArgList& operator=(MArgList&& other) noexcept;

    unsigned int length(MStatus* status = nullptr) const;
    bool asBool(unsigned int index, MStatus* status = nullptr) const;
    int asInt(unsigned int index, MStatus* status = nullptr) const;
    double asDouble(unsigned int index, MStatus* status = nullptr) const;
    MString asString(unsigned int index, MStatus* status = nullptr) const;
    /// All following arguments of that type; the index moves behind them.
    MIntArray asIntArray(unsigned int& index, MStatus* status = nullptr) const;
    MDoubleArray asDoubleArray(unsigned int& index, MStatus* status = nullptr) const;
    const MStringArray asStringArray(unsigned int& index, MStatus* status = nullptr) const;
    /// So many numbers from the index on, which moves behind them; the others of the point or vector keep
    /// their defaults.
    MVector asVector(unsigned int& index, unsigned int numElements = 3, MStatus* status = nullptr) const;
    MPoint asPoint(unsigned int& index, unsigned int numElements = 3, MStatus* status = nullptr) const;
    MStatus get(unsigned int index, bool& ret) const;
    MStatus get(unsigned int index, int& ret) const;
    MStatus get(unsigned int index, double& ret) const;
    MStatus get(unsigned int index, MString& ret) const;
    /// As the as...Array members.
    MStatus get(unsigned int& index, MIntArray& ret) const;
    MStatus get(unsigned int& index, MDoubleArray& ret) const;
    MStatus get(unsigned int& index, MStringArray& ret) const;
    MStatus get(unsigned int& index, MVector& ret, unsigned int numElements = 3) const;
    MStatus get(unsigned int& index, MPoint& ret, unsigned int numElements = 3) const;
    /// The position of a flag, given without or with its dash; kInvalidArgIndex when it is not there.
    unsigned int flagIndex(const char* shortFlag, const char* longFlag = nullptr) const;
    static const unsigned int kInvalidArgIndex = 0xFFFFFFFFU;
    MStatus addArg(bool arg);
    MStatus addArg(int arg);
    MStatus addArg(double arg);
    MStatus addArg(const MString& arg);
    /// Three numbers.
    MStatus addArg(const MVector& arg);
    MStatus addArg(const MPoint& arg);
    static const char* className() { return "MArgList"; }

private:
    friend struct host::Api;
    std::unique_ptr<host::ArgList> arguments;
};

MAYA_HOST_NAMESPACE_CLOSE
