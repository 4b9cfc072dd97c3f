#include "types/api.h"

#include <maya/MStatus.h>
#include <maya/MString.h>

#include <iostream>

namespace {

const char* textOf(MStatus::MStatusCode code)
{
    switch (code) {
    case MStatus::kSuccess:
        return "(kSuccess): Success";
    case MStatus::kFailure:
        return "(kFailure): Unexpected internal failure";
    case MStatus::kInsufficientMemory:
        return "(kInsufficientMemory): Insufficient memory";
    case MStatus::kInvalidParameter:
        return "(kInvalidParameter): Invalid parameter for this call";
    case MStatus::kLicenseFailure:
        return "(kLicenseFailure): Not licensed";
    case MStatus::kUnknownParameter:
        return "(kUnknownParameter): Unknown parameter";
    case MStatus::kNotImplemented:
        return "(kNotImplemented): Not implemented";
    case MStatus::kNotFound:
        return "(kNotFound): Item not found";
    case MStatus::kEndOfFile:
        return "(kEndOfFile): End of file";
    }
    return "(unknown status)";
}

} // namespace

MString MStatus::errorString() const
{
    return textOf(code);
}

void MStatus::perror(const char* message) const
{
    std::cerr << (message ? message : "") << ": " << textOf(code) << '\n' << std::flush;
}

void MStatus::perror(const MString& message) const
{
    perror(message.asChar());
}

void MStatus::pAPIerror(const char* file, int line) const
{
    std::cerr << "API error detected in " << (file ? file : "") << " at line " << line << "\n"
              << textOf(code) << '\n'
              << std::flush;
}

MAYA_HOST_NAMESPACE_OPEN

std::ostream& operator<<(std::ostream& out, MStatus& status)
{
    return out << textOf(status.statusCode());
}

MAYA_HOST_NAMESPACE_CLOSE
