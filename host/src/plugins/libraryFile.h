#pragma once

#include <string>

namespace host {

/// Why a file cannot be loaded as a shared library, or nothing. The system's loader trusts what a file says
/// about itself: one that was cut off, or damaged where it describes itself, takes the program down.
std::string libraryFault(const std::string& path);

} // namespace host
