#include "plugin/layers/layerFixture.h"

#include <cstdio>

namespace testing_support {

std::string listText(const std::vector<double>& weights)
{
    std::string text;
    char number[32];
    for (const double weight : weights) {
        std::snprintf(number, sizeof number, "%.17g", weight);
        text += (text.empty() ? "" : ",") + std::string(number);
    }
    return text;
}

void LayerTest::SetUp()
{
    ToolTest::SetUp();
    mel("polyPlane -n sheet -w 10 -h 5 -sx 2 -sy 1; setAttr persp.rotate -type double3 -55 12 0;"
        "select -cl; joint -n hip -p -5 0 0; joint -n knee -p 0 0 0; joint -n toe -p 4 0 0;"
        "skinCluster -tsb -mi 3 -dr 4 -n skin hip knee toe sheet; setAttr skin.skinningMethod 2;"
        "setAttr knee.translateY 2; setAttr knee.rotateX 80; setAttr toe.translateY 1; viewFit sheet;"
        "select -cl");
    loadLayers();
    editLayers("-attach");
    ASSERT_EQ(addLayer("skinLayer"), 1);
    edit("-deformer skin -influence knee -ngLayer skinLayer");
    toolOn();
    mel("select sheet.vtx[1]");
    trace.clear();
}

void LayerTest::loadLayers()
{
    mel("loadPlugin \"" + testing_support::libraryPath("layerStandIn") + "\"");
}

int LayerTest::addLayer(const std::string& quotedName, int parent)
{
    return editLayers("-addLayer " + quotedName + " -parent " + std::to_string(parent)).toInt();
}

void LayerTest::paint(int id, const std::string& target, const std::vector<double>& weights)
{
    editLayers("-id " + std::to_string(id) + " -paintTarget " + target + " -vertexWeights \"" +
               listText(weights) + "\"");
}

std::vector<double> LayerTest::painted(int id, const std::string& target)
{
    return melFloats("ngst2Layers -q -id " + std::to_string(id) + " -paintTarget " + target +
                     " -vertexWeights " + shape);
}

ToolTest::Pixel LayerTest::farAway(const std::string& target, int vertex, bool less)
{
    const std::vector<double> before = painted(1, target);
    const Pixel start = at(vertex);
    std::vector<double> nudged = before;
    nudged[static_cast<std::size_t>(vertex)] = 0.25;
    paint(1, target, nudged);
    const Pixel low = at(vertex);
    nudged[static_cast<std::size_t>(vertex)] = 0.75;
    paint(1, target, nudged);
    const Pixel high = at(vertex);
    paint(1, target, before);
    EXPECT_TRUE(low.x != high.x || low.y != high.y) << target << " does not move vertex " << vertex;
    const int scale = less ? -80 : 80;
    return {start.x + scale * (high.x - low.x), start.y + scale * (high.y - low.y)};
}

void LayerTest::strokeToClamp(const std::string& target, int vertex, bool less)
{
    const Pixel to = farAway(target, vertex, less);
    press(at(vertex));
    drag(to);
    release(to);
}

std::vector<std::string> LayerTest::layerCommands() const
{
    const std::string prefix = "mel\tdisplay=0 undo=0\t";
    std::vector<std::string> commands;
    for (const std::string& line : trace) {
        if (line.compare(0, 4, "mel\t") != 0 || line.find("ngst2Layers") == std::string::npos)
            continue;
        EXPECT_EQ(line.compare(0, prefix.size(), prefix), 0) << line;
        commands.push_back(line.substr(prefix.size()));
    }
    return commands;
}

bool LayerTest::sawMessage(const std::string& kind, const std::string& part) const
{
    for (const std::string& text : messages()) {
        if (text.compare(0, kind.size(), kind) == 0 && text.find(part) != std::string::npos)
            return true;
    }
    return false;
}

} // namespace testing_support
