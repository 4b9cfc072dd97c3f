#pragma once

#include <string>

namespace workbench {

/// Writes a file beside its place and renames it when it is complete, so that a failure leaves the old file
/// as it was. Throws host::Error naming the file and the system's reason.
void writeFileSafely(const std::string& path, const std::string& contents);

} // namespace workbench
