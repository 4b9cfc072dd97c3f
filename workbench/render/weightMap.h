#pragma once

#include "render/colors.h"

#include <optional>
#include <string>
#include <vector>

namespace host {
class DagNode;
class Session;
} // namespace host

namespace workbench {

/// What the current tool edits, as its command tells it. Names are as the person gave them, empty when they
/// were not given.
struct EditedWeights {
    std::string mode; ///< "skinCluster", "default", ...; empty when another tool is current
    std::string deformer, plug, target, layer;
    std::string influence; ///< a joint's path
};

/// Asks the current tool by MEL, and only if it is the weight-sculpting tool.
EditedWeights editedWeights(host::Session& session);

/// The weights being edited, one per point of a shape.
struct WeightMap {
    std::vector<double> weights;
    std::vector<bool> members; ///< which points the deformer works on; empty = all of them

    bool isMember(std::size_t point) const { return members.empty() || members[point]; }
    /// The weight as a colour; grey for points that have none.
    Color color(std::size_t point) const;
};

/// Nothing when the shape is not what is edited: not deformed by the deformer, not moved by the influence,
/// without such a target, attribute or layer.
std::optional<WeightMap> weightMap(host::Session& session, host::DagNode& shape, const EditedWeights& edited);

} // namespace workbench
