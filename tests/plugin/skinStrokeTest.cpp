// Strokes on a skin with the influences of a character: many of them, a handful in each row.
#include "graph/graph.h"
#include "graph/weightRows.h"
#include "support/toolFixture.h"
#include "support/weights.h"

#include <algorithm>
#include <cmath>

using namespace testing_support;

namespace {

constexpr int kColumns = 60, kLines = 30;
constexpr int kVertices = kColumns * kLines;
constexpr int kInfluences = 70;

/// What happens to the skin before the stroke.
struct Skin {
    const char* name;
    const char* mel;
};

const Skin kSkins[] = {
    {"plain", ""},
    {"locked", "setAttr j12.lockInfluenceWeights 1; setAttr j20.lockInfluenceWeights 1"},
    // Rows that sum to less and to more than 1, one of the edited influence alone, one without it, one empty.
    {"odd", "setAttr skin.weightList[3].weights[1] 0.25; setAttr skin.weightList[7].weights[69] 1.5;"
            "skinPercent -tv j11 1 skin sheet.vtx[40]; skinPercent -tv j0 1 skin sheet.vtx[41];"
            "setAttr skin.normalizeWeights 0; skinPercent -tv j0 0 skin sheet.vtx[41]; setAttr "
            "skin.normalizeWeights 1"},
    {"notNormalized", "setAttr skin.normalizeWeights 0"},
};

class SkinStroke : public ToolTest, public ::testing::WithParamInterface<Skin> {
public:
    void SetUp() override
    {
        ToolTest::SetUp();
        mel("polyPlane -n sheet -w 10 -h 5 -ch 0 -sx " + std::to_string(kColumns - 1) + " -sy " +
            std::to_string(kLines - 1) + "; setAttr persp.rotate -type double3 -55 12 0");
        mel("string $js[]; int $i; for ($i = 0; $i < 70; ++$i) { select -cl;"
            "$js[$i] = `joint -n (\"j\" + $i) -p ($i % 10 - 4.5) 0 ($i / 10 * 0.7 - 2.1)`; }"
            "skinCluster -tsb -mi 4 -dr 4 -n skin $js sheet; setAttr j11.translateY 8; viewFit sheet");
        mel(GetParam().mel);
        edit("-weightMode skinCluster -influence j11 -clampMin true -clampMax true -displayWeights false");
        toolOn();
        mel("select sheet.vtx[*]");
        start = rows();
    }

    std::vector<std::vector<double>> rows() { return skinWeights(session, "skin", kVertices, kInfluences); }
    /// A stroke with these drags, each in pixels above the press.
    void strokeBy(const std::vector<int>& drags)
    {
        const Pixel at = pixelOf("sheet.vtx[900]");
        press(at);
        for (const int dy : drags)
            drag({at.x, at.y + dy});
        release({at.x, at.y + drags.back()});
    }

    std::vector<std::vector<double>> start;
};

INSTANTIATE_TEST_SUITE_P(Skins, SkinStroke, ::testing::ValuesIn(kSkins),
                         [](const auto& tested) { return std::string(tested.param.name); });

/// Far up every row reaches 1 and the others lose their weight; far down the edited influence loses its own.
TEST_P(SkinStroke, DependsOnWhereTheMouseEndsAndGoesBackToTheLastBit)
{
    const std::vector<std::vector<int>> ways = {{20}, {5, 9, 20}, {400, 20}, {-400, 400, 399, 3, 20}};
    std::vector<std::vector<double>> direct;
    for (const std::vector<int>& way : ways) {
        strokeBy(way);
        const auto stroked = rows();
        ASSERT_NE(stroked, start);
        if (direct.empty())
            direct = stroked;
        EXPECT_TRUE(stroked == direct) << way.size();
        mel("undo");
        EXPECT_TRUE(rows() == start) << way.size();
        mel("redo");
        EXPECT_TRUE(rows() == direct) << way.size();
        mel("undo");
    }
}

/// Between the press and the release only rounding may tell what the events before were.
TEST_P(SkinStroke, IsRightAtEveryEventOfADrag)
{
    const std::vector<int> drags = {10, 400, 25, -400, 30, 400, 399, 20};
    std::vector<std::vector<std::vector<double>>> alone;
    for (const int dy : drags) {
        strokeBy({dy});
        alone.push_back(rows());
        mel("undo");
    }
    const Pixel at = pixelOf("sheet.vtx[900]");
    press(at);
    for (std::size_t event = 0; event < drags.size(); ++event) {
        drag({at.x, at.y + drags[event]});
        const auto now = rows();
        double difference = 0.0;
        for (std::size_t vertex = 0; vertex < kVertices; ++vertex)
            for (std::size_t k = 0; k < kInfluences; ++k)
                difference = std::max(difference, std::abs(now[vertex][k] - alone[event][vertex][k]));
        EXPECT_LT(difference, 1e-14) << "event " << event;
    }
    release(at);
}

/// More writes than one per event would be felt on every character.
TEST_P(SkinStroke, WritesOncePerEventWhereNoRowIsFull)
{
    const Pixel at = pixelOf("sheet.vtx[900]");
    press(at);
    drag({at.x, at.y - 1});
    for (const int dy : {-2, -3, -2}) {
        const std::uint64_t before = session.graph().changeCount();
        drag({at.x, at.y + dy});
        EXPECT_EQ(session.graph().changeCount() - before, 1u);
    }
    release(at);
}

} // namespace
