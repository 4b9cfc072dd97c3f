#pragma once

#include <maya/MFn.h>

namespace host {

/// The name of a function type as it is written in code: "kMesh". "kInvalid" for numbers that mean nothing.
const char* functionTypeName(MFn::Type type);

} // namespace host
