// What a stroke works on disappears in the middle of it: messages, a living program, nothing half-written.
#include "support/toolFixture.h"
#include "support/weights.h"

using namespace testing_support;

namespace {

struct Case {
    const char* mode;
    const char* deletion;
};

void PrintTo(const Case& which, std::ostream* out)
{
    *out << which.mode << ": " << which.deletion;
}

class Deletion : public ToolTest, public ::testing::WithParamInterface<Case> {
public:
    void SetUp() override
    {
        ToolTest::SetUp();
        allowMessages();
        mel("polyPlane -n sheet -w 10 -h 5 -sx 10 -sy 5; viewFit sheet");
        if (std::string(GetParam().mode) == "skinCluster") {
            mel("select -cl; joint -n hip -p -5 0 0; joint -n knee -p 0 0 0; select -cl;"
                "skinCluster -tsb -mi 3 -dr 4 -n deformer hip knee sheet; setAttr knee.rotateZ 40");
            edit("-weightMode skinCluster -influence knee");
        } else {
            mel("cluster -n deformer sheet; setAttr deformerHandle.translateY 2; viewFit sheet");
            for (int vertex = 0; vertex < 66; ++vertex)
                mel("percent -v 0.75 deformer sheet.vtx[" + std::to_string(vertex) + "]");
            edit("-deformer deformer");
        }
        toolOn();
        mel("select sheet.vtx[20:30]");
        at = pixelOf("sheet.vtx[25]");
    }
    void TearDown() override
    {
        // The program lives on: a new scene can be built, sculpted and undone.
        mel("file -f -new; polyPlane -n again -sx 4 -sy 4; cluster -n clu again;"
            "setAttr cluHandle.translateY 0.5; viewFit again");
        edit("-weightMode default -deformer clu");
        mel("select again.vtx[12]");
        stroke("again.vtx[12]", 0, -30);
        EXPECT_LT(defaultWeights(session, "clu", 25)[12], 1.0);
        mel("undo");
        EXPECT_NEAR(defaultWeights(session, "clu", 25)[12], 1.0, 1e-6);
        ToolTest::TearDown();
    }
    void destroy() { mel(GetParam().deletion); }
    Pixel at;
};

INSTANTIATE_TEST_SUITE_P(
    Everything, Deletion,
    ::testing::Values(Case{"skinCluster", "delete deformer"}, Case{"skinCluster", "delete sheet"},
                      Case{"skinCluster", "delete knee"}, Case{"skinCluster", "delete hip"},
                      Case{"skinCluster", "file -f -new"}, Case{"default", "delete deformer"},
                      Case{"default", "delete sheet"}, Case{"default", "delete deformerHandle"},
                      Case{"default", "file -f -new"}));

TEST_P(Deletion, BetweenPressAndDrag)
{
    press(at);
    destroy();
    drag({at.x, at.y + 20});
    drag({at.x, at.y + 30});
    release({at.x, at.y + 30});
    mel("catch(`undo`); catch(`redo`)");
}

TEST_P(Deletion, BetweenDragAndRelease)
{
    press(at);
    drag({at.x, at.y + 20});
    destroy();
    release({at.x, at.y + 20});
    mel("catch(`undo`); catch(`redo`); catch(`undo`); catch(`undo`)");
}

TEST_P(Deletion, BetweenCopyAndPaste)
{
    edit("-copy true");
    destroy();
    mel("if (!`objExists sheet`) polyPlane -n sheet -w 10 -h 5 -sx 10 -sy 5; select sheet.vtx[20:30];"
        "catch(`morvaneContext -e -paste true morvaneContext1`); catch(`undo`);"
        "morvaneContext -q -influence morvaneContext1");
    EXPECT_EQ(session.staleCalls, 0);
}

TEST_P(Deletion, BeforeUndoAndBroughtBackByIt)
{
    const std::string start = sceneText(session);
    stroke("sheet.vtx[25]", 0, 20);
    const std::string stroked = sceneText(session);
    ASSERT_NE(stroked, start);
    destroy();
    if (std::string(GetParam().deletion).find("file") == 0) {
        mel("catch(`undo`); catch(`undo`)");
        return;
    }
    mel("undo");
    EXPECT_EQ(sceneText(session), stroked) << "the deletion is undone";
    mel("undo");
    EXPECT_EQ(sceneText(session), start) << "and then the stroke";
}

TEST_P(Deletion, UnderTheUndoQueueWithUndoOff)
{
    stroke("sheet.vtx[25]", 0, 20);
    mel("undoInfo -stateWithoutFlush off");
    destroy();
    mel("undoInfo -stateWithoutFlush on; catch(`undo`); catch(`redo`)");
}

} // namespace
