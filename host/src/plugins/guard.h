#pragma once

#include <maya/MApiNamespace.h>

#include <functional>
#include <string>

namespace host {

/// Runs code of a plug-in. Whatever it throws becomes a host::Error "where: what", so that no exception of a
/// library that may be unloaded travels through the host.
void guarded(const std::string& where, const std::function<void()>& call);

/// The same for code that returns a status; one that is no success becomes a host::Error too.
void requireSuccess(const std::string& where, const std::function<MStatus()>& call);

} // namespace host
