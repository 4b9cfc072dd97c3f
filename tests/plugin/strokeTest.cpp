// Strokes as a person makes them, in the modes default and skinCluster: one undo step, the way back, labels,
// refusals. What every mode writes stands with the modes.
#include "support/toolFixture.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

using namespace testing_support;

namespace {

constexpr int kVertices = 11 * 6;

// A sheet of 10 x 5 squares in the ground plane, seen from above at an angle.
class Stroke : public ToolTest {
public:
    void SetUp() override
    {
        ToolTest::SetUp();
        mel("polyPlane -n sheet -w 10 -h 5 -sx 10 -sy 5; setAttr persp.rotate -type double3 -55 12 0");
    }

    void bindToThreeJoints()
    {
        mel("select -cl; joint -n hip -p -5 0 0; joint -n knee -p 0 0 0; joint -n toe -p 4 0 0;"
            "skinCluster -tsb -mi 3 -dr 4 -n skin hip knee toe sheet;"
            "setAttr knee.rotateZ 40; setAttr toe.rotateZ -25; viewFit sheet; select -cl");
        edit("-weightMode skinCluster -influence knee");
        skinned = true;
    }
    void clusterAll()
    {
        mel("cluster -n clu sheet; setAttr cluHandle.translateY 3; viewFit sheet; select -cl");
        for (int vertex = 0; vertex < kVertices; ++vertex)
            mel("setAttr clu.weightList[0].weights[" + std::to_string(vertex) +
                "] 0.75"); // elements that exist, so that whole scenes can be compared
        edit("-deformer clu -weightMode default");
        session.undo().flush();
    }

    std::vector<double> edited()
    {
        if (!skinned)
            return defaultWeights(session, "clu", kVertices);
        std::vector<double> column;
        for (const std::vector<double>& row : skinWeights(session, "skin", kVertices, 3))
            column.push_back(row[1]);
        return column;
    }
    bool skinned = false;
};

class StrokeInMode : public Stroke, public ::testing::WithParamInterface<const char*> {
public:
    void SetUp() override
    {
        Stroke::SetUp();
        if (std::string(GetParam()) == "skinCluster")
            bindToThreeJoints();
        else
            clusterAll();
        mel("softSelect -sse 1 -ssd 2.5 -ssf 0");
        toolOn();
        mel("select sheet.vtx[29]");
    }
};

INSTANTIATE_TEST_SUITE_P(Modes, StrokeInMode, ::testing::Values("default", "skinCluster"));

TEST_P(StrokeInMode, IsOneUndoStepThatUndoAndRedoBringBackBitForBit)
{
    const std::string start = sceneText(session);
    const std::size_t entries = session.undo().undoCount();
    // A redo is clamped as the settings say, a live stroke on a skin always to 0..1: here both agree.
    edit("-clampMax true");
    stroke("sheet.vtx[29]", 2, skinned ? 12 : 25, {}, 5);
    EXPECT_EQ(session.undo().undoCount(), entries + 1);
    EXPECT_EQ(melString("undoInfo -q -undoName").find("morvaneToolCmd sculpt "), 0u);
    const std::string stroked = sceneText(session);
    ASSERT_NE(stroked, start);
    for (int round = 0; round < 3; ++round) {
        mel("undo");
        EXPECT_EQ(sceneText(session), start) << "round " << round;
        mel("redo");
        EXPECT_EQ(sceneText(session), stroked) << "round " << round;
    }
}

TEST_P(StrokeInMode, DraggingBackRestoresThePressTimeValuesAndRecordsNothing)
{
    edit("-clampMax true -weightMax 0.5"); // what was above the clamp comes back too
    const std::string start = sceneText(session);
    const std::size_t entries = session.undo().undoCount();
    const Pixel at = pixelOf("sheet.vtx[29]");
    press(at);
    for (const int dy : {200, -300, 40}) {
        drag({at.x, at.y + dy});
        EXPECT_NE(sceneText(session), start);
    }
    drag(at);
    release(at);
    EXPECT_EQ(sceneText(session), start);
    EXPECT_EQ(session.undo().undoCount(), entries);
    EXPECT_TRUE(melStrings("viewportLabels").empty());
}

TEST_P(StrokeInMode, LabelsAreCutNotRoundedAndDrawnWhereTheVerticesAre)
{
    mel("softSelect -sse 0");
    edit("-displayPrecision 4");
    const Pixel at = pixelOf("sheet.vtx[29]");
    press(at);
    drag({at.x, at.y + 7});
    // The label shows the value before it is stored in single precision, so allow for the last digit there.
    const std::vector<std::string> labels = melStrings("viewportLabels");
    ASSERT_EQ(labels.size(), 1u);
    EXPECT_EQ(labels[0].size(), labels[0].find('.') + 5) << labels[0];
    EXPECT_GE(edited()[29], std::stod(labels[0]) - 1e-7);
    EXPECT_LT(edited()[29], std::stod(labels[0]) + 1e-4 + 1e-7);
    if (skinned) {
        char six[64];
        std::snprintf(six, sizeof six, "%.6f", edited()[29]);
        EXPECT_EQ(labels[0], std::string(six).substr(0, std::string(six).find('.') + 5));
    }
    edit("-displayPrecision 0");
    drag({at.x, at.y + 8});
    EXPECT_EQ(melStrings("viewportLabels")[0].back(), '.');
    release(at);
    EXPECT_TRUE(melStrings("viewportLabels").empty()) << "the release clears them";
}

TEST_P(StrokeInMode, APressOnAnUnselectedVertexSelectsItInTheSameUndoStep)
{
    mel("softSelect -sse 0; select sheet.vtx[5]");
    const std::size_t entries = session.undo().undoCount();
    stroke("sheet.vtx[29]", 0, 20);
    EXPECT_EQ(melStrings("ls -sl"), (std::vector<std::string>{"sheet.vtx[29]"}));
    EXPECT_EQ(session.undo().undoCount(), entries + 1);
    mel("undo");
    EXPECT_EQ(melStrings("ls -sl"), (std::vector<std::string>{"sheet.vtx[5]"}));
    mel("redo");
    EXPECT_EQ(melStrings("ls -sl"), (std::vector<std::string>{"sheet.vtx[29]"}));
}

TEST_F(Stroke, TheClampsOfLiveStrokeAndRedoDifferOnlyWhenTheyCross)
{
    clusterAll();
    toolOn();
    edit("-clampMin true -clampMax true -weightMin 1 -weightMax 0.25");
    mel("select sheet.vtx[29]");
    stroke("sheet.vtx[29]", 0, 30);
    EXPECT_EQ(edited()[29], 0.25) << "live: lower clamp first, then upper";
    mel("undo");
    EXPECT_EQ(edited()[29], 0.75);
    mel("redo");
    EXPECT_EQ(edited()[29], 1.0) << "redo: upper clamp first, then lower";
}

TEST_F(Stroke, AWeightThatMovesNothingCannotBeDragged)
{
    clusterAll();
    mel("setAttr cluHandle.translateY 0");
    toolOn();
    mel("select sheet.vtx[29]");
    const std::string start = sceneText(session);
    expectWarning(
        "sheet.vtx[29] does not move with clu.weights in this pose. Pose it, or turn the deformer on, "
        "so that the weight shows.");
    testing::internal::CaptureStderr();
    stroke("sheet.vtx[29]", 10, 50, {}, 3);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("API error detected in src/morvaneContext"),
              std::string::npos);
    // Probing single-precision weights costs a rounding: (w - 0.005 + 0.01) - 0.005.
    float probed = 0.75f;
    probed = static_cast<float>(static_cast<double>(probed) - 0.005);
    probed = static_cast<float>(static_cast<double>(probed) + 0.01);
    probed = static_cast<float>(static_cast<double>(probed) - 0.005);
    EXPECT_EQ(edited()[29], static_cast<double>(probed));
    EXPECT_EQ(session.undo().undoName(), "select \"sheet.vtx[29]\"") << "no stroke was recorded";
}

TEST_F(Stroke, EveryRefusalHasItsWords)
{
    clusterAll();
    mel("createNode blendShape -n blend; select -cl");
    bindToThreeJoints();
    toolOn();
    mel("select sheet.vtx[29]");
    const char kSkin[] =
        "skin is a skin cluster: use the mode skinCluster or dualQuaternion for its weights.";
    const struct {
        const char* flags;
        const char* warning;
    } rows[] = {
        {"-weightMode default -deformer skin", kSkin},
        {"-weightMode plug -deformer skin", kSkin},
        {"-weightMode default -deformer blend", "The specified deformer does not have a default weightMap"},
        {"-weightMode blendShapeTarget -deformer blend -target smile",
         "Target:smile is not a valid target on blend"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.flags);
        edit(row.flags);
        expectWarning(row.warning);
        const std::string start = sceneText(session);
        stroke("sheet.vtx[29]", 0, 30);
        EXPECT_EQ(sceneText(session), start);
    }
    edit("-weightMode default -deformer clu");
    mel("delete clu");
    expectWarning("No valid deformer has been specified.");
    const std::string start = sceneText(session);
    edit("-copy true");
    EXPECT_EQ(sceneText(session), start);
}

} // namespace
