// The stand-in behind ngst2Layers, asked directly.
#include "plugin/layers/layerFixture.h"

#include <cmath>
#include <nlohmann/json.hpp>

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
