// A stroke that something comes between: what it wrote until then is one undo step of its own, and the rest
// of the drag does nothing. Nothing is left half-written.
#include "support/toolFixture.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

#include <ostream>

using namespace testing_support;

namespace {

constexpr int kVertices = 11 * 6;

class Interruption : public ToolTest {
public:
    void SetUp() override
    {
        ToolTest::SetUp();
        mel("polyPlane -n sheet -w 10 -h 5 -sx 10 -sy 5; setAttr persp.rotate -type double3 -55 12 0;"
            "cluster -n clu sheet; cluster -n other sheet; maskedOffset -n maps -offset 0 1 0 sheet;"
            "setAttr cluHandle.translateY 2; viewFit sheet");
        for (int vertex = 0; vertex < kVertices; ++vertex)
            mel("setAttr clu.weightList[0].weights[" + std::to_string(vertex) + "] 1;" +
                "setAttr maps.maskList[0].mask[" + std::to_string(vertex) + "] 1");
        edit("-deformer clu");
        toolOn();
        mel("select sheet.vtx[2:4]");
        edit("-copy true");
        mel("select sheet.vtx[29:31]");
        at = pixelOf("sheet.vtx[29]");
        session.undo().flush();
    }
    std::vector<double> weights() { return defaultWeights(session, "clu", kVertices); }

    Pixel at;
};

struct Interrupting {
    const char* name;
    const char* mel;
    unsigned undoSteps; ///< what the interrupting commands put onto the queue themselves
};

std::ostream& operator<<(std::ostream& out, const Interrupting& row)
{
    return out << row.name;
}

const Interrupting kInterruptions[] = {
    {"Paste", "morvaneContext -e -paste true morvaneContext1", 1},
    {"AnotherMode", "morvaneContext -e -weightMode plug morvaneContext1", 0},
    {"AnotherDeformer", "morvaneContext -e -deformer other morvaneContext1", 0},
    {"AnotherTool", "setToolTo selectSuperContext", 0},
};

class InterruptedBy : public Interruption, public ::testing::WithParamInterface<Interrupting> {};

INSTANTIATE_TEST_SUITE_P(Rows, InterruptedBy, ::testing::ValuesIn(kInterruptions),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(InterruptedBy, AStrokeIsRecordedAsFarAsItWent)
{
    const std::string start = sceneText(session);
    press(at);
    drag({at.x, at.y - 20});
    const std::vector<double> sculpted = weights();
    mel(GetParam().mel);
    EXPECT_EQ(session.undo().undoCount(), GetParam().undoSteps + 1);
    const std::string interrupted = sceneText(session);
    drag({at.x, at.y - 50});
    release({at.x, at.y - 50});
    EXPECT_EQ(sceneText(session), interrupted);
    for (unsigned step = 0; step < GetParam().undoSteps; ++step)
        mel("undo");
    EXPECT_EQ(weights(), sculpted);
    mel("undo");
    EXPECT_EQ(sceneText(session), start);
    mel("redo");
    EXPECT_EQ(weights(), sculpted);
}

TEST_F(Interruption, ACopyOfAnotherTargetLeavesTheStrokeItsOwn)
{
    mel("duplicate -n up sheet; move -r 0 1 0 up.vtx[*]; duplicate -n beside sheet; move -r 1 0 0 "
        "beside.vtx[*];"
        "blendShape -n face up beside sheet; setAttr face.weight[0] 1; viewFit sheet");
    for (int vertex = 0; vertex < kVertices; ++vertex)
        for (const char* target : {"0", "1"}) // elements that exist: reading makes the others
            mel(std::string("setAttr face.inputTarget[0].inputTargetGroup[") + target + "].targetWeights[" +
                std::to_string(vertex) + "] 1");
    edit("-weightMode blendShapeTarget -deformer face -target up");
    mel("select sheet.vtx[29:31]");
    session.undo().flush();
    const std::string start = sceneText(session);
    const Pixel from = pixelOf("sheet.vtx[29]");
    press(from);
    drag({from.x, from.y - 20});
    const std::string sculpted = sceneText(session);
    ASSERT_NE(sculpted, start);
    edit("-target beside");
    edit("-copy true");
    release({from.x, from.y - 20});
    mel("undo");
    EXPECT_EQ(sceneText(session), start);
    mel("redo");
    EXPECT_EQ(sceneText(session), sculpted);
}

TEST_F(Interruption, ALostReleaseLosesNoStroke)
{
    const std::string start = sceneText(session);
    press(at);
    drag({at.x, at.y - 20});
    press(pixelOf("sheet.vtx[29]"));
    EXPECT_EQ(session.undo().undoCount(), 1u);
    mel("undo");
    EXPECT_EQ(sceneText(session), start);
}

TEST_F(Interruption, UnloadingLeavesNothingToUndo)
{
    press(at);
    drag({at.x, at.y - 20});
    mel("unloadPlugin morvane");
    EXPECT_EQ(session.undo().undoCount(), 0u);
    release(at);
}

TEST_F(Interruption, ClampsMayChangeWhileTheMouseIsDown)
{
    edit("-clampMin true -clampMax false");
    press(at);
    drag({at.x, at.y + 40});
    EXPECT_GT(weights()[29], 1.0);
    edit("-clampMax true");
    drag({at.x, at.y + 41});
    EXPECT_EQ(weights()[29], 1.0);
    release({at.x, at.y + 41});
    mel("undo; redo");
    EXPECT_EQ(weights()[29], 1.0);
}

TEST_F(Interruption, AWriteThatFailsHalfWayIsTakenBackWhenTheDragReturns)
{
    mel("setAttr -lock true maps.maskList[0].mask[30]");
    edit("-deformer maps");
    edit("-weightMode plug -plug mask");
    session.undo().flush();
    const std::string start = sceneText(session);
    expectWarning("The weights of sheet cannot be changed: they are locked or connected.");
    testing::internal::CaptureStderr();
    press(at);
    drag({at.x, at.y - 20});
    EXPECT_NE(sceneText(session), start);
    drag(at);
    release(at);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("API error"), std::string::npos);
    EXPECT_EQ(sceneText(session), start);
    EXPECT_EQ(session.undo().undoCount(), 0u);
}

// Edges and faces have numbers of their own; taken for vertices they would change ones nobody selected.
TEST_F(Interruption, SelectedEdgesAndFacesAreNoPoints)
{
    const std::string start = sceneText(session);
    mel("setAttr clu.weightList[0].weights[29] 0.25; select sheet.vtx[29]");
    edit("-copy true");
    mel("undo; undo");
    for (const char* selected : {"sheet.e[5:9]", "sheet.f[0:4]", "sheet"}) {
        if (std::string(selected) != "sheet")
            expectWarning("Vertices are wanted: edges and faces such as " + std::string(selected) +
                          " cannot be sculpted.");
        mel(std::string("select ") + selected);
        edit("-paste true");
        EXPECT_EQ(sceneText(session), start) << selected;
    }
}

} // namespace
