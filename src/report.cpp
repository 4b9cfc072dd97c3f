#include "report.h"

#include <cstdio>
#include <iostream>
#include <maya/MGlobal.h>
#include <new>
#include <stdexcept>

MStatus apiError(const MStatus& status, const char* source, int line)
{
    std::cerr << "\nAPI error detected in " << source << " at line " << line << std::endl;
    status.perror("");
    return status;
}

void refuseObject(const MDagPath& path, const char* reason)
{
    const MString name = path.isValid() ? path.fullPathName() : MString("An edited object");
    MGlobal::displayWarning(name + ": " + reason);
}

void require(const MStatus& status, const char* failure)
{
    if (!status)
        throw std::runtime_error(failure);
}

namespace {

/// What is wrong with the exception that is being handled.
MString reasonOfException()
{
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return "there is not enough memory.";
    } catch (const std::exception& failure) {
        return failure.what();
    } catch (...) {
        return "for an unknown reason.";
    }
}

} // namespace

void reportException(const char* doing) noexcept
{
    const bool shown = insist([doing] {
        MGlobal::displayError(MString("morvane: ") + doing + " has failed: " + reasonOfException());
        return true;
    });
    if (!shown)
        std::fputs("morvane: out of memory\n", stderr);
}
