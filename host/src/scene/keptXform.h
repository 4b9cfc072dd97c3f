#pragma once

#include <ImathMatrix.h>

#include <string>

namespace host {

/// Whether a kept statement is `setAttr ".xm[0]" -type "matrix" "xform" ...`; then also the path (without the
/// dot) and the matrix that the parts of the transformation make.
bool readKeptXform(const std::string& statement, std::string& path, Imath::M44d& matrix);

} // namespace host
