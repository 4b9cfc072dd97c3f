#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <memory>

namespace host {
struct Api;
struct Syntax;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

/// The flags and arguments that a command takes. Copies are deep.
class MAYA_HOST_EXPORT MSyntax {
public:
    enum MArgType : int {
        kInvalidArgType = 0,
        kNoArg = 1,
        kBoolean = 2,
        kLong = 3,
        kDouble = 4,
        kString = 5,
        kUnsigned = 6,
        kDistance = 7,
        kAngle = 8,
        kTime = 9,
        kSelectionItem = 10,
        kLastArgType = 11,
    };

    enum MObjectFormat : int {
        kInvalidObjectFormat = 0,
        kNone = 1,
        kStringObjects = 2,
        kSelectionList = 3,
        kLastObjectFormat = 4,
    };

    MSyntax();
    MSyntax(const MSyntax& other);
    MSyntax(MSyntax&& other) noexcept;
    virtual ~MSyntax();
    MSyntax& operator=(const MSyntax& rhs);
    MSyntax& operator=(MSyntax&& other) noexcept;

    /// Short names have fewer than four characters, long ones more than three; the dash may be written.
    MStatus addFlag(const char* shortName, const char* longName, MArgType argType1 = kNoArg,
                    MArgType argType2 = kNoArg, MArgType argType3 = kNoArg, MArgType argType4 = kNoArg,
                    MArgType argType5 = kNoArg, MArgType argType6 = kNoArg);
    MStatus makeFlagMultiUse(const char* flag);
    MStatus addArg(MArgType arg);
    MStatus setObjectType(MObjectFormat objectFormat, unsigned int minimumObjects = 0);
    MStatus setObjectType(MObjectFormat objectFormat, unsigned int minimumObjects,
                          unsigned int maximumObjects);
    void setMinObjects(unsigned int minimumObjectCount);
    void setMaxObjects(unsigned int maximumObjectCount);
    unsigned int minObjects() const;
    unsigned int maxObjects() const;
    void useSelectionAsDefault(bool useSelectionList = true);
    void enableQuery(bool supportsQuery = true);
    void enableEdit(bool supportsEdit = true);
    bool canQuery() const;
    bool canEdit() const;
    static const char* className() { return "MSyntax"; }

private:
    friend struct host::Api;
    std::shared_ptr<host::Syntax> syntax;
};

MAYA_HOST_NAMESPACE_CLOSE
