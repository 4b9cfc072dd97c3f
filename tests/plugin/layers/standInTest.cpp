// The stand-in behind ngst2Layers, asked directly.
#include "graph/graph.h"
#include "graph/node.h"
#include "graph/numericArray.h"
#include "graph/weightRows.h"
#include "plugin/layers/layerFixture.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <random>

using namespace testing_support;
using nlohmann::json;

namespace {

using Weights = std::vector<double>;

TEST_F(LayerTest, TheListHoldsTheTopLevelWithItsGroupsInsideOneAnother)
{
    const int group = addLayer("group");
    const int inner = addLayer("\"a \\\"b\\\" \\\\ ü\"", group);
    addLayer("deep", inner);
    const json list = json::parse(melString("ngst2Layers -q -ll " + shape));
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0]["name"], "skinLayer");
    EXPECT_TRUE(list[0]["children"].empty());
    EXPECT_EQ(list[1]["children"][0]["name"], "a \"b\" \\ ü");
    EXPECT_EQ(list[1]["children"][0]["children"][0]["name"], "deep");
    EXPECT_GT(list[0].size(), 3u) << "there are keys that nobody reads";
    editLayers("-id " + std::to_string(group) + " -removeLayer");
    EXPECT_EQ(json::parse(melString("ngst2Layers -q -ll " + shape))[1]["id"], inner);
}

TEST_F(LayerTest, EditsMoveTheMeshByOpacityAndMask)
{
    const auto height = [&] { return melFloats("pointPosition -l sheet.vtx[1]")[1]; };
    mel("setAttr skin.skinningMethod 0; setAttr knee.rotateX 0");
    const double base = height();
    paint(1, "1", Weights(kVertices, 1.0));
    const double full = height();
    ASSERT_GT(std::abs(full - base), 0.1);
    paint(1, "mask", Weights(kVertices, 0.5));
    EXPECT_NEAR(height(), (base + full) / 2, 1e-9);
    editLayers("-id 1 -opacity 0.5");
    EXPECT_NEAR(height(), base + (full - base) / 4, 1e-9);
    editLayers("-id 1 -removeLayer");
    EXPECT_NEAR(height(), base, 1e-12);
}

/// One layer of the stack below; arrays are empty where nothing is painted.
struct Painted {
    int id;
    const Painted* group;
    double opacity;
    Weights mask;
    std::map<int, Weights> influences;
    Weights dualQuaternion;
};

/// One vertex of a skin with three influences, and its dual-quaternion weight.
struct Vertex {
    double weights[3];
    double blend;
};

/// The rule, one vertex at a time: see the README of the stand-in.
void layOver(Vertex& vertex, const Painted& layer, std::size_t v)
{
    double amount = 1.0;
    for (const Painted* part = &layer; part; part = part->group)
        amount *= part->opacity * (part->mask.empty() ? 1.0 : part->mask[v]);
    double sum = 0.0;
    for (const auto& influence : layer.influences)
        sum += influence.second[v];
    for (int k = 0; k < 3 && !layer.influences.empty(); ++k) {
        const auto found = layer.influences.find(k);
        const double own = found == layer.influences.end() ? 0.0 : found->second[v];
        vertex.weights[k] =
            vertex.weights[k] * (1.0 - amount * std::min(sum, 1.0)) + own * amount / std::max(sum, 1.0);
    }
    if (!layer.dualQuaternion.empty())
        vertex.blend += amount * (layer.dualQuaternion[v] - vertex.blend);
}

TEST_F(LayerTest, StacksAreComposedByTheRuleOnMeshesOfAnySize)
{
    constexpr std::size_t kCount = 2100; // several blocks, the last one not full
    mel("polyPlane -n large -w 10 -h 5 -sx 69 -sy 29; select -cl; joint -n a -p -4 0 0; joint -n b; joint -n "
        "c -p 3 0 "
        "0; skinCluster -tsb -mi 3 -dr 2 -n largeSkin a b c large; select sheet.vtx[1]");
    host::Node& skin = session.graph().get("largeSkin");
    const auto now = [&](std::size_t v) {
        const host::WeightRows& rows = *skin.plug("weightList").rows();
        const auto row = static_cast<std::uint32_t>(v);
        const host::NumericArray* const blend = skin.plug("blendWeights").numbers();
        return Vertex{{rows.get(row, 0), rows.get(row, 1), rows.get(row, 2)}, blend ? blend->get(row) : 0.0};
    };
    std::vector<Vertex> base;
    for (std::size_t v = 0; v < kCount; ++v)
        base.push_back(now(v));
    std::mt19937 random(11);
    std::uniform_real_distribution<double> weight(0.0, 0.8);
    const auto painted = [&] {
        Weights weights(kCount);
        std::generate(weights.begin(), weights.end(), [&] { return weight(random); });
        return weights;
    };
    const Painted group = {1,         nullptr,          0.75,
                           painted(), {{0, painted()}}, painted()}; // its own weights do not count
    const Painted layers[] = {
        {2, &group, 1.0, {}, {{0, painted()}, {1, painted()}}, {}},
        {3, &group, 0.5, painted(), {{2, painted()}}, painted()},
        {4, nullptr, 1.0, painted(), {}, painted()},
        {5, nullptr, 0.25, painted(), {{0, painted()}, {1, painted()}, {2, painted()}}, {}}};
    const std::string large = "|large|largeShape";
    mel("ngst2Layers -e -attach " + large + "; ngst2Layers -e -addLayer group " + large);
    const auto put = [&](const Painted& layer) {
        const std::string call = "ngst2Layers -e -id " + std::to_string(layer.id);
        const auto write = [&](const std::string& target, const Weights& weights) {
            if (!weights.empty())
                mel(call + " -paintTarget " + target + " -vertexWeights \"" + listText(weights) + "\" " +
                    large);
        };
        mel(call + " -opacity " + std::to_string(layer.opacity) + " " + large);
        write("mask", layer.mask);
        write("dq", layer.dualQuaternion);
        for (const auto& influence : layer.influences)
            write(std::to_string(influence.first), influence.second);
    };
    for (const Painted& layer : layers)
        mel("ngst2Layers -e -addLayer layer -parent " + std::string(layer.group ? "1 " : "-1 ") + large);
    put(group);
    for (const Painted& layer : layers)
        put(layer);
    for (std::size_t v = 0; v < kCount; ++v) {
        Vertex expected = base[v];
        for (const Painted& layer : layers)
            layOver(expected, layer, v);
        const Vertex got = now(v);
        for (int k = 0; k < 3; ++k)
            ASSERT_NEAR(got.weights[k], expected.weights[k], 1e-12) << "vertex " << v << " influence " << k;
        ASSERT_NEAR(got.blend, expected.blend, 1e-12) << "vertex " << v;
    }
    // With the last layer that blends, the blend of the skin comes back; so do its weights with the last
    // layer.
    for (int id : {1, 3, 4, 2, 5})
        mel("ngst2Layers -e -id " + std::to_string(id) + " -removeLayer " + large);
    for (std::size_t v = 0; v < kCount; ++v) {
        const Vertex got = now(v);
        for (int k = 0; k < 3; ++k)
            ASSERT_NEAR(got.weights[k], base[v].weights[k], 1e-12);
        ASSERT_EQ(got.blend, base[v].blend);
    }
}

TEST_F(LayerTest, WhatWasNeverPaintedReadsEmptyAndNumbersComeBackAsTheyWent)
{
    EXPECT_TRUE(painted(1, "mask").empty());
    EXPECT_TRUE(painted(1, "2").empty());
    EXPECT_EQ(melInt("ngst2Layers -q -vertexCount " + shape), kVertices);
    const Weights odd = {0.1, 1.0 / 3, 5e-324, 0.30000000000000004, 1, 0};
    paint(1, "mask", odd);
    EXPECT_EQ(painted(1, "mask"), odd);
}

TEST_F(LayerTest, WrongCallsFailAndChangeNothing)
{
    allowMessages();
    paint(1, "mask", Weights(kVertices, 0.5));
    const std::string list = melString("ngst2Layers -q -ll " + shape);
    for (const char* call : {"-e -id 1 -paintTarget mask -vertexWeights \"1,1\" |sheet|sheetShape",
                             "-e -id 1 -paintTarget mask -vertexWeights \"1,1,x,1,1,1\" |sheet|sheetShape",
                             "-e -id 1 -paintTarget mask -vertexWeights \"1,1,1,1,1,1,\" |sheet|sheetShape",
                             "-e -id 1 -paintTarget 7 -vertexWeights \"1,1,1,1,1,1\" |sheet|sheetShape",
                             "-e -id 9 -paintTarget mask -vertexWeights \"1,1,1,1,1,1\" |sheet|sheetShape",
                             "-e -id 1 -parent 1 |sheet|sheetShape", "-e -attach |sheet|sheetShape",
                             "-q -ll sheetShape", "-q -ll |sheet", "-q -ll |persp|perspShape", "-q -ll",
                             "-q -nonsense |sheet|sheetShape", "-misbehave nicely"}) {
        SCOPED_TRACE(call);
        melError(std::string("ngst2Layers ") + call);
    }
    EXPECT_EQ(painted(1, "mask"), Weights(kVertices, 0.5));
    EXPECT_EQ(melString("ngst2Layers -q -ll " + shape), list);
}

} // namespace
