// The texts of the picture: which are there, and that none stands over another.
#include "support/toolFixture.h"

#include "render/overlay.h"
#include "render/pressWatch.h"
#include "tools/tools.h"
#include "view/drawRecord.h"
#include "view/viewport.h"

#include <algorithm>

using namespace testing_support;
using workbench::PlacedText;
using Kind = workbench::PlacedText::Kind;

namespace {

class LabelTest : public ToolTest {
public:
    /// A fine sheet under a cluster, every weight another, so that a label tells whose it is.
    void SetUp() override
    {
        ToolTest::SetUp();
        session.tools().pressWatcher = [this](int x, int y) { watch.press(session, x, y); };
        mel("polyPlane -n sheet -w 10 -h 10 -sx 40 -sy 40 -ch off; cluster -n lift sheet;"
            "setAttr liftHandle.ty 4; setAttr persp.rotate -type double3 -30 20 0; viewFit sheet;"
            "int $v; for ($v = 0; $v < 1681; $v++)"
            " setAttr (\"lift.weightList[0].weights[\" + $v + \"]\") (.3 + $v * .0001)");
        edit("-deformer lift -displayPrecision 4");
        toolOn();
    }
    std::vector<PlacedText> texts(double density = 1)
    {
        const host::Viewport& port = session.viewport();
        return overlayTexts(session, viewOf(session, &watch),
                            workbench::drawScaleOf(port.width, port.height, density));
    }
    static void expectApart(const std::vector<PlacedText>& texts)
    {
        for (std::size_t a = 0; a < texts.size(); ++a) {
            for (std::size_t b = a + 1; b < texts.size(); ++b)
                EXPECT_FALSE(texts[a].box.overlaps(texts[b].box))
                    << texts[a].text << " over " << texts[b].text;
        }
    }
    static int count(const std::vector<PlacedText>& texts, Kind kind)
    {
        return static_cast<int>(std::count_if(texts.begin(), texts.end(),
                                              [&](const PlacedText& text) { return text.kind == kind; }));
    }
    static bool has(const std::vector<PlacedText>& texts, const std::string& text)
    {
        return std::any_of(texts.begin(), texts.end(),
                           [&](const PlacedText& each) { return each.text == text; });
    }
    void begin(const std::string& vertex, int up)
    {
        const Pixel at = pixelOf(vertex);
        press(at);
        drag({at.x, at.y + up / 2});
        drag({at.x, at.y + up});
    }

    workbench::PressWatch watch;
};

TEST_F(LabelTest, ThePressedVertexAmongManyKeepsItsLabel)
{
    mel("select sheet.vtx[0:1680]");
    for (const int vertex : {63, 700, 905, 1640}) {
        begin("sheet.vtx[" + std::to_string(vertex) + "]", 40);
        const std::vector<PlacedText> placed = texts();
        ASSERT_EQ(session.drawing().texts.size(), 1681U);
        EXPECT_TRUE(has(placed, session.drawing().texts[static_cast<std::size_t>(vertex)].text)) << vertex;
        EXPECT_GT(count(placed, Kind::kLabel), 20);
        EXPECT_LT(count(placed, Kind::kLabel), 1681);
        expectApart(placed);
        mel("viewportEvent -release 0 0; undo");
    }
}

TEST_F(LabelTest, TheHighestFalloffWinsOverNearness)
{
    // Only every second vertex is a member, so that labels and selected points are not one to one.
    mel("select -cl; int $v; for ($v = 1; $v < 1681; $v += 2) select -add (\"sheet.vtx[\" + $v + \"]\"); "
        "sets -rm liftSet "
        "`ls -sl`;"
        "softSelect -sse on -ssd 3 -ssf 0; select sheet.vtx[840]");
    begin("sheet.vtx[840]", 30);
    const std::vector<host::DrawRecord::Text>& labels = session.drawing().texts;
    ASSERT_GT(labels.size(), 100U);
    const auto highest = std::max_element(labels.begin(), labels.end(), [](const auto& a, const auto& b) {
        return std::stod(a.text) < std::stod(b.text);
    });
    EXPECT_TRUE(has(texts(), highest->text))
        << highest->text << " of " << labels.size() << " ranks "
        << workbench::viewOf(session, &watch).labelRanks.size() << " at " << (highest - labels.begin());
}

TEST_F(LabelTest, TextsOfANarrowPictureStayApartAndInside)
{
    mel("int $s; for ($s = 0; $s < 10; $s++) if ($s != 7)"
        " headsUpDisplay -s $s -b 0 -label (\"section number \" + $s) (\"hud\" + $s)");
    mel("select sheet.vtx[0:1680]");
    for (const int width : {240, 400, 499, 960}) {
        session.viewport().width = width;
        session.viewport().height = width * 9 / 16;
        mel("viewFit sheet");
        begin("sheet.vtx[840]", 20);
        const std::vector<PlacedText> placed = texts();
        expectApart(placed);
        for (const PlacedText& text : placed) {
            if (text.kind == Kind::kLabel)
                continue;
            EXPECT_TRUE(text.box.left >= 0 && text.box.left + text.box.width <= static_cast<float>(width))
                << text.text << " at " << width;
        }
        EXPECT_EQ(count(placed, Kind::kStatus), 1);
        EXPECT_EQ(count(placed, Kind::kToolName), width == 960 ? 1 : 0);
        // Ten texts have no room in the smallest one.
        EXPECT_GE(count(placed, Kind::kHeadsUp), width == 240 ? 3 : 10) << width;
        mel("viewportEvent -release 0 0; undo");
    }
}

TEST_F(LabelTest, SizesFollowThePicture)
{
    const auto heightOfHud = [&](double density) {
        for (const PlacedText& text : texts(density)) {
            if (text.kind == Kind::kHeadsUp)
                return text.box.height;
        }
        return 0.0F;
    };
    const float plain = heightOfHud(1);
    ASSERT_GT(plain, 8);
    EXPECT_NEAR(heightOfHud(3), 3 * plain, 2);
    session.viewport().width = 3840;
    session.viewport().height = 2160;
    EXPECT_NEAR(heightOfHud(1), 2 * plain, 2) << "a large view is one on a high-density screen";
}

TEST_F(LabelTest, TheMarqueeIsGoneAfterTheRelease)
{
    press({5, 40});
    drag({100, 120});
    EXPECT_EQ(session.drawing().lines.size(), 4U);
    release({100, 120});
    EXPECT_EQ(session.drawing().lines.size(), 0U);
}

} // namespace
