// Selecting with the tool: clicks, marquees, modifiers, what is recorded and what is drawn.
#include "support/toolFixture.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

#include <set>

using namespace testing_support;

namespace {

class ToolSelection : public ToolTest {
public:
    void SetUp() override
    {
        ToolTest::SetUp();
        mel("polyPlane -n sheet -w 10 -h 10 -sx 4 -sy 4; viewFit sheet; cluster -n clu sheet;"
            "setAttr cluHandle.translateY 1; setAttr cluHandle.translateY 0; select -cl");
        edit("-deformer clu");
        toolOn();
        entries = session.undo().undoCount();
    }
    std::vector<std::string> selected() { return melStrings("ls -sl"); }
    std::size_t recorded() { return session.undo().undoCount() - entries; }
    /// A press and release without motion.
    void click(Pixel at, const std::string& flags = {})
    {
        press(at, flags);
        release(at);
    }
    void marquee(Pixel from, Pixel to, const std::string& flags = {})
    {
        press(from, flags);
        drag(to);
        release(to);
    }
    Pixel empty() { return {3, 3}; }
    /// A rectangle around one vertex.
    void around(const std::string& vertex, const std::string& flags)
    {
        const Pixel at = pixelOf(vertex);
        marquee({at.x - 9, at.y - 9}, {at.x + 9, at.y + 9}, flags);
    }

    std::size_t entries = 0;
};

using Names = std::vector<std::string>;

TEST_F(ToolSelection, AClickOnAVertexSelectsItInsideOneChunk)
{
    const std::vector<std::string> lines = traced(*this, [&] { click(pixelOf("sheet.vtx[12]")); });
    EXPECT_EQ(selected(), Names{"sheet.vtx[12]"});
    EXPECT_EQ(recorded(), 1u);
    EXPECT_EQ(melString("undoInfo -q -undoName"), "morvaneToolCmd");
    const std::string symmetry =
        "mel\tdisplay=0 undo=1\tif (`symmetricModelling -q -symmetry`){SymmetrizeSelection;}";
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "mel\tdisplay=0 undo=0\tselectPref -q -preSelectHilite", symmetry,
                         "mel\tdisplay=0 undo=0\texists ngst2Layers",
                         "mel\tdisplay=0 undo=1\tundoInfo -openChunk -chunkName \"morvaneToolCmd\"", symmetry,
                         "mel\tdisplay=0 undo=1\tundoInfo -closeChunk"}));
    mel("undo");
    EXPECT_EQ(selected(), Names{});
    mel("redo");
    EXPECT_EQ(selected(), Names{"sheet.vtx[12]"});
    click(pixelOf("sheet.vtx[12]")); // already selected: nothing to record
    EXPECT_EQ(recorded(), 1u);
}

TEST_F(ToolSelection, ModifiersOfAClickOnAVertex)
{
    mel("select sheet.vtx[6]");
    click(pixelOf("sheet.vtx[12]"), "-control");
    EXPECT_EQ(selected(), (Names{"sheet.vtx[6]", "sheet.vtx[12]"})) << "control adds";
    click(pixelOf("sheet.vtx[6]"), "-shift");
    EXPECT_EQ(selected(), Names{"sheet.vtx[12]"}) << "shift toggles";
    click(pixelOf("sheet.vtx[6]"), "-shift -control");
    EXPECT_EQ(selected(), (Names{"sheet.vtx[6]", "sheet.vtx[12]"})) << "both add";
    click(pixelOf("sheet.vtx[8]"));
    EXPECT_EQ(selected(), Names{"sheet.vtx[8]"}) << "none replaces";
}

TEST_F(ToolSelection, ModifiersOfAMarquee)
{
    around("sheet.vtx[12]", "");
    EXPECT_EQ(selected(), Names{"sheet.vtx[12]"});
    around("sheet.vtx[6]", "-shift");
    EXPECT_EQ(selected(), (Names{"sheet.vtx[6]", "sheet.vtx[12]"})) << "shift toggles in";
    around("sheet.vtx[12]", "-shift");
    EXPECT_EQ(selected(), Names{"sheet.vtx[6]"}) << "shift toggles out";
    around("sheet.vtx[8]", "-shift -control");
    EXPECT_EQ(selected(), (Names{"sheet.vtx[6]", "sheet.vtx[8]"})) << "both add";
    around("sheet.vtx[6]", "-control");
    EXPECT_EQ(selected(), Names{"sheet.vtx[8]"}) << "control removes";
    EXPECT_EQ(recorded(), 5u);
    for (int k = 0; k < 5; ++k)
        mel("undo");
    EXPECT_EQ(selected(), Names{});
}

TEST_F(ToolSelection, OnePixelIsAClickTwoAreAMarquee)
{
    // Four pixels beside the vertex: near enough for a click, outside a small marquee. Shift selects only.
    const Pixel at = pixelOf("sheet.vtx[12]"), beside = {at.x + 4, at.y};
    press(beside, "-shift");
    release({beside.x + 1, beside.y - 1});
    EXPECT_EQ(selected(), Names{"sheet.vtx[12]"});
    mel("select -cl");
    press(beside, "-shift");
    release({beside.x + 2, beside.y});
    EXPECT_EQ(selected(), Names{}) << "two pixels on one axis: a marquee that holds nothing";
}

TEST_F(ToolSelection, AnEmptyMarqueeClearsWithoutAToolCommand)
{
    mel("select sheet.vtx[12]");
    const std::vector<std::string> lines = traced(*this, [&] {
        marquee(empty(), {empty().x + 20, empty().y + 20});
    });
    EXPECT_EQ(selected(), Names{});
    EXPECT_EQ(lines.back(), "mel\tdisplay=1 undo=1\tselect -cl");
    EXPECT_EQ(melString("undoInfo -q -undoName"), "select -cl");
}

TEST_F(ToolSelection, TheMarqueeIsDrawnDashedAndWhite)
{
    press(empty());
    const std::vector<std::string> lines = traced(*this, [&] { drag({43, 33}); });
    EXPECT_EQ(lines,
              (std::vector<std::string>{"draw\tbeginDrawable selectable=2 name=0", "draw\tsetColor 1 1 1 1",
                                        "draw\tsetLineStyle 2", lines.size() > 3 ? lines[3] : "",
                                        lines.size() > 4 ? lines[4] : "", lines.size() > 5 ? lines[5] : "",
                                        lines.size() > 6 ? lines[6] : "", "draw\tendDrawable"}));
    std::vector<std::string> edges(lines.begin() + 3, lines.begin() + 7);
    for (std::string& edge : edges) // either direction
        for (const auto& [from, to] : {std::pair<std::string, std::string>{"43 3 3 3", "3 3 43 3"},
                                       {"3 33 3 3", "3 3 3 33"},
                                       {"43 33 43 3", "43 3 43 33"},
                                       {"43 33 3 33", "3 33 43 33"}})
            if (edge == "draw\tline2d " + from)
                edge = "draw\tline2d " + to;
    EXPECT_EQ((std::set<std::string>(edges.begin(), edges.end())),
              (std::set<std::string>{"draw\tline2d 3 3 43 3", "draw\tline2d 3 3 3 33",
                                     "draw\tline2d 43 3 43 33", "draw\tline2d 3 33 43 33"}));
    release({43, 33});
}

TEST_F(ToolSelection, OtherButtonsNeverSculpt)
{
    mel("setAttr cluHandle.translateY 2; select sheet.vtx[12]");
    const std::vector<double> before = defaultWeights(session, "clu", 25);
    const Pixel at = pixelOf("sheet.vtx[12]");
    testing::internal::CaptureStderr();
    press(at, "-button 2");
    drag({at.x, at.y + 40});
    release({at.x, at.y + 40});
    EXPECT_NE(testing::internal::GetCapturedStderr().find("API error detected in src/morvaneContext at line"),
              std::string::npos);
    const std::vector<std::string> lines = traced(*this, [&] {
        press(at, "-button 3");
        release({at.x, at.y + 40});
    });
    EXPECT_TRUE(lines.empty()) << "the right button does not reach tools";
    EXPECT_EQ(defaultWeights(session, "clu", 25), before);
}

// A press that cannot sculpt picks all the same, so that a click selects instead of clearing the selection.
TEST_F(ToolSelection, AClickThatCannotSculptSelectsWhatLiesThere)
{
    const struct {
        const char* name;
        const char* flags; ///< of the press
        bool warns;
        bool named = false; ///< the deformer is there
    } rows[] = {{"middle button", "-button 2", false, true},
                {"without a deformer", "", true},
                {"without a deformer, shift", "-shift", false},
                {"middle button without a deformer", "-button 2", false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        if (!row.named && mel("objExists clu").toInt())
            mel("delete clu");
        mel("select sheet.vtx[6]");
        const std::size_t before = session.undo().undoCount();
        if (row.warns)
            expectWarning("There is no deformer named clu in the scene.");
        testing::internal::CaptureStderr();
        click(pixelOf("sheet.vtx[12]"), row.flags);
        testing::internal::GetCapturedStderr();
        const bool adds = std::string(row.flags) == "-shift";
        EXPECT_EQ(selected(), adds ? (Names{"sheet.vtx[6]", "sheet.vtx[12]"}) : Names{"sheet.vtx[12]"});
        EXPECT_EQ(session.undo().undoCount(), before + 1);
        mel("undo");
        EXPECT_EQ(selected(), Names{"sheet.vtx[6]"});
    }
}

TEST_F(ToolSelection, SymmetryMirrorsTheSelectionOfAClickAndAMarquee)
{
    mel("symmetricModelling -symmetry 1 -about object -axis x");
    click(pixelOf("sheet.vtx[11]"));
    EXPECT_EQ(selected(), (Names{"sheet.vtx[11]", "sheet.vtx[13]"}));
    around("sheet.vtx[6]", "");
    EXPECT_EQ(selected(), (Names{"sheet.vtx[6]", "sheet.vtx[8]"}));
    mel("undo; undo");
    EXPECT_EQ(selected(), Names{});
    mel("symmetricModelling -symmetry 0");
}

TEST_F(ToolSelection, ThePreselectionHighlightIsTakenInsteadOfAPickWhenItIsOn)
{
    mel("selectPref -preSelectHilite true");
    const Pixel at = pixelOf("sheet.vtx[12]");
    mel("viewportEvent -move " + std::to_string(at.x) + " " + std::to_string(at.y));
    click(at);
    EXPECT_EQ(selected(), Names{"sheet.vtx[12]"});
}

} // namespace
