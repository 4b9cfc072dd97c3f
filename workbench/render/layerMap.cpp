#include "render/layerMap.h"

#include "graph/node.h"
#include "mel/interpreter.h"
#include "session.h"
#include "types/error.h"

#include <nlohmann/json.hpp>

namespace workbench {

namespace {

constexpr const char* kLayerCommand = "ngst2Layers";

/// The id of the first layer of that name; empty when there is none.
std::string layerId(const std::string& list, const std::string& name)
{
    const nlohmann::json layers = nlohmann::json::parse(list, nullptr, false);
    if (!layers.is_array())
        return {};
    for (const nlohmann::json& layer : layers) {
        if (layer.is_object() && layer.contains("name") && layer.contains("id") && layer["name"] == name)
            return layer["id"].dump();
    }
    return {};
}

} // namespace

std::optional<std::vector<double>> layerMap(host::Session& session, const host::DagNode& shape,
                                            const std::string& layer, const std::string& paintTarget,
                                            std::size_t count)
{
    if (!session.mel().knows(kLayerCommand))
        return std::nullopt;
    const std::string command = kLayerCommand, path = shape.fullPath();
    try {
        const std::string id = layerId(session.mel().execute(command + " -q -ll " + path).toString(), layer);
        if (id.empty())
            return std::nullopt;
        std::vector<double> weights = session.mel()
                                          .execute(command + " -id " + id + " -paintTarget " + paintTarget +
                                                   " -q -vertexWeights " + path)
                                          .toFloatArray();
        if (weights.empty())
            weights.assign(count, 0.0);
        if (weights.size() == count)
            return weights;
    } catch (const host::Error&) {
        // A shape without layers: nothing to show.
    }
    return std::nullopt;
}

} // namespace workbench
