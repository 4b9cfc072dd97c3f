#pragma once

#include <optional>
#include <string>
#include <vector>

namespace host {
class DagNode;
class Session;
} // namespace host

namespace workbench {

/// What the current tool edits, as its command tells it.
struct EditedWeights {
    std::string mode;      ///< "skinCluster", "default", ...; empty when another tool is current
    std::string deformer;  ///< of the deformer modes
    std::string influence; ///< of skinCluster; a joint's path
};

/// Asks the current tool by MEL, and only if it is the weight-sculpting tool.
EditedWeights editedWeights(host::Session& session);

/// The weights being edited, one per point of the shape; nothing when the shape is not edited or the mode is
/// one without a map.
std::optional<std::vector<double>> weightMap(host::DagNode& shape, const EditedWeights& edited);

} // namespace workbench
