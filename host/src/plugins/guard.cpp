#include "plugins/guard.h"

#include "types/error.h"

#include <maya/MStatus.h>
#include <maya/MString.h>

#include <exception>

namespace host {

void guarded(const std::string& where, const std::function<void()>& call)
{
    std::string what;
    try {
        call();
        return;
    } catch (const std::exception& failure) {
        what = failure.what();
    } catch (...) {
        what = "an exception of unknown type";
    }
    throw Error(where + ": " + what);
}

void requireSuccess(const std::string& where, const std::function<MStatus()>& call)
{
    MStatus status;
    guarded(where, [&] { status = call(); });
    if (!status)
        throw Error(where + ": " + status.errorString().asChar());
}

} // namespace host
