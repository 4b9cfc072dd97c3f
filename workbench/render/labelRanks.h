#pragma once

#include "render/pressWatch.h"
#include "render/weightMap.h"

#include <map>
#include <vector>

namespace workbench {

using WeightMaps = std::map<const host::DagNode*, WeightMap>;

/// How much each text that the tool drew deserves to be seen: its point's falloff, and more than any for the
/// point that was pressed. A tool labels the points of the rich selection in their order; empty when the
/// texts are something else.
std::vector<float> labelRanks(host::Session& session, const WeightMaps& maps, const PressWatch* press);

} // namespace workbench
