#pragma once

#include "session.h"

#include <map>
#include <string>
#include <vector>

namespace testing_support {

/// Weights read straight from the scene's storage, by vertex id (and logical influence index).
std::vector<double> defaultWeights(host::Session& session, const std::string& deformer, int vertexCount,
                                   int geometry = 0);
/// One row per vertex, one value per logical index below `columns`.
std::vector<std::vector<double>> skinWeights(host::Session& session, const std::string& skin, int vertexCount,
                                             int columns);

/// Vertex -> soft-selection falloff of what is selected on a shape now (1 without soft selection), the
/// mirrored part included.
std::map<int, double> selectedFalloff(host::Session& session, const std::string& shape);

/// Every value and connection of the scene as text, for whole-scene comparisons.
std::string sceneText(host::Session& session);

} // namespace testing_support
