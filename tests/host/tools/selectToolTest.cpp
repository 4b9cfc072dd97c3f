#include "support/hostFixture.h"

namespace {

using testing_support::HostTest;
using Texts = std::vector<std::string>;

/// A flat grid of 3 x 3 vertices seen from above; vertex 4 is in the middle.
class SelectToolTest : public HostTest {
public:
    void SetUp() override
    {
        mel("polyPlane -w 2 -h 2 -sx 2 -sy 2 -name \"sheet\"; lookThru topShape; viewFit -all");
        mel("select -cl; selectMode -component");
    }
    std::string at(const std::string& step, int vertex, const std::string& flags = {}, int right = 0,
                   int up = 0)
    {
        const auto pixel = mel("viewportProject \"sheet.vtx[" + std::to_string(vertex) + "]\"").toIntArray();
        return "viewportEvent -" + step + " " + std::to_string(pixel.at(0) + right) + " " +
               std::to_string(pixel.at(1) + up) + " " + flags + ";";
    }
    void click(int vertex, const std::string& flags = {})
    {
        mel(at("press", vertex, flags) + at("release", vertex));
    }
    Texts selected() { return melStrings("ls -selection"); }
};

TEST_F(SelectToolTest, ClicksReplaceToggleRemoveAndAdd)
{
    click(4);
    EXPECT_EQ(selected(), Texts({"sheet.vtx[4]"}));
    click(0);
    EXPECT_EQ(selected(), Texts({"sheet.vtx[0]"}));
    click(1, "-shift");
    EXPECT_EQ(selected(), Texts({"sheet.vtx[0:1]"}));
    click(0, "-shift");
    EXPECT_EQ(selected(), Texts({"sheet.vtx[1]"}));
    click(0, "-shift -control");
    click(1, "-shift -control");
    EXPECT_EQ(selected(), Texts({"sheet.vtx[0:1]"}));
    click(1, "-control");
    EXPECT_EQ(selected(), Texts({"sheet.vtx[0]"}));
}

TEST_F(SelectToolTest, MarqueeTakesWhatIsInsideAndIsOneUndoStep)
{
    click(4);
    // From beyond one corner to beyond the middle of the opposite side: two rows of vertices.
    mel(at("press", 0, "", -6, -6) + at("drag", 5, "", 6, 6));
    mel(at("release", 5, "", 6, 6));
    EXPECT_EQ(selected(), Texts({"sheet.vtx[0:5]"}));
    EXPECT_EQ(melString("undoInfo -q -undoName"), "select -r sheet.vtx[0:5]");
    mel("undo");
    EXPECT_EQ(selected(), Texts({"sheet.vtx[4]"}));
    mel("redo");
    EXPECT_EQ(selected(), Texts({"sheet.vtx[0:5]"}));
}

TEST_F(SelectToolTest, ClickOnNothingClearsAndAnUnchangedSelectionRecordsNothing)
{
    click(4);
    const std::string name = melString("undoInfo -q -undoName");
    click(4);
    mel("undo");
    EXPECT_EQ(selected(), Texts()) << "clicking the same vertex again made a second step after " << name;
    click(4);
    mel("viewportEvent -press 2 2; viewportEvent -release 2 2");
    EXPECT_EQ(selected(), Texts());
}

TEST_F(SelectToolTest, SymmetryAddsTheOtherSide)
{
    mel("symmetricModelling -symmetry true -about \"object\" -axis \"x\"");
    click(3);
    EXPECT_EQ(selected(), Texts({"sheet.vtx[3]", "sheet.vtx[5]"}));
}

} // namespace
