#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace host {
class DagNode;
class Session;
} // namespace host

namespace workbench {

/// The weights of a layer on a skinned shape: its "mask", its "dq" weights or those of an influence, by the
/// influence's logical index. Asked of the layer command by MEL; nothing when the command, the layer or the
/// right number of weights is not there. What was never painted is 0 everywhere.
std::optional<std::vector<double>> layerMap(host::Session& session, const host::DagNode& shape,
                                            const std::string& layer, const std::string& paintTarget,
                                            std::size_t count);

} // namespace workbench
