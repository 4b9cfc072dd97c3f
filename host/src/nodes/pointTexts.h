#pragma once

#include "nodes/geometry.h"

#include <string>
#include <vector>

namespace host {

/// The texts of some points of a geometry, as component lists hold them: {"vtx[0:3]", "vtx[7]"}. `points` is
/// ascending; each text is a run along the direction in which point order is closest.
std::vector<std::string> pointTexts(const Geometry& geometry, const std::vector<int>& points);

} // namespace host
