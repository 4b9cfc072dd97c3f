#pragma once

#include "support/toolFixture.h"

#include <string>
#include <vector>

namespace testing_support {

/// A values list as the layer command takes it, with all digits.
std::string listText(const std::vector<double>& weights);

/// A sheet of 3 x 2 vertices with the joints hip, knee and toe (logical indices 0, 1, 2), posed so that every
/// weight moves its vertex, and the layer stand-in with the layer `skinLayer` (id 1) attached.
class LayerTest : public ToolTest {
public:
    static constexpr int kVertices = 6;
    const std::string shape = "|sheet|sheetShape";

    void SetUp() override;

    void loadLayers();
    void unloadLayers() { mel("unloadPlugin layerStandIn"); }
    /// Runs `ngst2Layers -e FLAGS |sheet|sheetShape`.
    host::mel::Value editLayers(const std::string& flags)
    {
        return mel("ngst2Layers -e " + flags + " " + shape);
    }
    int addLayer(const std::string& quotedName, int parent = -1);
    void paint(int id, const std::string& target, const std::vector<double>& weights);
    /// Empty when nothing was painted.
    std::vector<double> painted(int id, const std::string& target);
    void misbehave(const std::string& kind) { mel("ngst2Layers -misbehave " + kind); }

    /// The vertex' pixel, and the one to which a drag has the weight at its clamp: 1, or 0 for `less`.
    Pixel at(int vertex) { return pixelOf("sheet.vtx[" + std::to_string(vertex) + "]"); }
    Pixel farAway(const std::string& target, int vertex, bool less = false);
    /// Press on a vertex, drag until the weight is at its clamp, release.
    void strokeToClamp(const std::string& target, int vertex, bool less = false);

    /// What was asked of ngst2Layers since the trace was emptied: the texts of calls that neither display nor
    /// record.
    std::vector<std::string> layerCommands() const;
    bool sawMessage(const std::string& kind, const std::string& part) const;
};

} // namespace testing_support
