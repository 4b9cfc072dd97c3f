#pragma once

#include <maya/MTypes.h>

#include <iosfwd>

MAYA_HOST_NAMESPACE_OPEN

/// How a call ended. Success unless said otherwise.
class MAYA_HOST_EXPORT MStatus {
public:
    enum MStatusCode {
        kSuccess = 0,
        kFailure = 1,
        kInsufficientMemory = 2,
        kInvalidParameter = 3,
        kLicenseFailure = 4,
        kUnknownParameter = 5,
        kNotImplemented = 6,
        kNotFound = 7,
        kEndOfFile = 8,
    };

    MStatus() : code(kSuccess) {}
    MStatus(MStatusCode status) : code(status) {}

    bool operator==(const MStatus& rhs) const { return code == rhs.code; }
    bool operator==(const MStatusCode rhs) const { return code == rhs; }
    bool operator!=(const MStatus& rhs) const { return code != rhs.code; }
    bool operator!=(const MStatusCode rhs) const { return code != rhs; }
    /// True on success.
    operator bool() const { return code == kSuccess; }

    bool error() const { return code != kSuccess; }
    MStatusCode statusCode() const { return code; }
    void clear() { code = kSuccess; }
    /// A text for people, such as "(kFailure): Unexpected Internal Failure".
    MString errorString() const;
    /// Writes the message and the text of the status to standard error.
    void perror(const char* message) const;
    void perror(const MString& message) const;
    /// What the macros below write to standard error: file, line and the text of the status.
    void pAPIerror(const char* file, int line) const;

private:
    MStatusCode code;
};

inline bool operator==(const MStatus::MStatusCode code, const MStatus& status)
{
    return status == code;
}
inline bool operator!=(const MStatus::MStatusCode code, const MStatus& status)
{
    return status != code;
}

MAYA_HOST_EXPORT std::ostream& operator<<(std::ostream& out, MStatus& status);

MAYA_HOST_NAMESPACE_CLOSE

typedef MStatus MS;

/// Reports a failed status and goes on.
#define CHECK_MSTATUS(_status)                                                                               \
    {                                                                                                        \
        MStatus _maya_status = (_status);                                                                    \
        if (MStatus::kSuccess != _maya_status)                                                               \
            _maya_status.pAPIerror(__FILE__, __LINE__);                                                      \
    }
/// Reports a failed status and returns the value from the function around.
#define CHECK_MSTATUS_AND_RETURN(_status, _retVal)                                                           \
    {                                                                                                        \
        MStatus _maya_status = (_status);                                                                    \
        if (MStatus::kSuccess != _maya_status) {                                                             \
            _maya_status.pAPIerror(__FILE__, __LINE__);                                                      \
            return (_retVal);                                                                                \
        }                                                                                                    \
    }
/// Reports a failed status and returns it. The expression is evaluated again then, as on the platform.
#define CHECK_MSTATUS_AND_RETURN_IT(_status) CHECK_MSTATUS_AND_RETURN((_status), (_status))
#define MFAIL(_status) (MStatus::kSuccess != (_status))
