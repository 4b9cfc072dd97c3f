#pragma once

#include <maya/MApiNamespace.h>

#include <memory>

namespace host {

/// The tool that is current when no other is: a click or a marquee selects.
std::unique_ptr<MPxContext> makeSelectTool();

} // namespace host
