#pragma once

#include <string>

namespace workbench {

/// The plug-in that was built with this program: in ../lib or beside the executable. Empty when it is in
/// neither place.
std::string builtPlugIn();

} // namespace workbench
