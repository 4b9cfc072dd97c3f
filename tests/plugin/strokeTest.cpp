// Strokes as a person makes them, in the modes default and skinCluster: values, clamps, labels, undo, redo.
#include "support/toolFixture.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

#include <algorithm>
#include <cmath>

using namespace testing_support;

namespace {

constexpr int kVertices = 11 * 6;

std::string exact(double number)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.17g", number);
    return text;
}

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
            setEdited(vertex, 0.75); // elements that exist, so that whole scenes can be compared
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
    void setEdited(int vertex, double value)
    {
        const std::string v = std::to_string(vertex);
        if (skinned)
            mel("skinPercent -tv knee " + exact(value) + " skin sheet.vtx[" + v + "]");
        else
            mel("setAttr clu.weightList[0].weights[" + v + "] " + exact(value));
    }

    /// The offset of a drag, worked out from the scene alone: where the vertex is drawn when its weight is a
    /// little lower and a little higher. The sheet's transform is the identity, so object space is world
    /// space.
    double predictedOffset(int vertex, double dx, double dy)
    {
        const double step = 0.005;
        const std::string component = "sheet.vtx[" + std::to_string(vertex) + "]";
        const std::string before = sceneText(session);
        const double weight = edited()[static_cast<std::size_t>(vertex)];
        setEdited(vertex, weight - step);
        const std::vector<double> low = melFloats("pointPosition -l " + component);
        const Pixel lowPixel = pixelOf(component);
        setEdited(vertex, weight + step);
        const std::vector<double> high = melFloats("pointPosition -l " + component);
        const Pixel highPixel = pixelOf(component);
        mel("undo; undo");
        EXPECT_EQ(sceneText(session), before);
        double x = highPixel.x - lowPixel.x, y = highPixel.y - lowPixel.y;
        if (std::hypot(x, y) >= 1) {
            x /= 2 * step;
            y /= 2 * step;
        } else {
            const std::vector<int> to = projected(low, high, 2 * step);
            x = to[0] - lowPixel.x;
            y = to[1] - lowPixel.y;
        }
        const double length = std::sqrt(x * x + y * y);
        return (x * dx + y * dy) / length / length;
    }

    /// low + (high - low) / span, as pixels: a one-point curve is drawn there for the question.
    std::vector<int> projected(const std::vector<double>& low, const std::vector<double>& high, double span)
    {
        std::string at;
        for (std::size_t k = 0; k < 3; ++k)
            at += " " + exact(low[k] + (high[k] - low[k]) / span);
        mel("curve -n probe -d 1 -p" + at + " -p 0 0 0");
        const std::vector<int> pixel = mel("viewportProject \"probe.cv[0]\"").toIntArray();
        mel("undo");
        return pixel;
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

TEST_P(StrokeInMode, AddsTheOffsetTimesTheFalloffAndClamps)
{
    mel("select sheet.vtx[29] sheet.vtx[31]");
    const std::map<int, double> falloff = selectedFalloff(session, "sheetShape");
    ASSERT_GT(falloff.size(), 4u);
    for (const int dy : {-40, 60, -400, 400}) {
        SCOPED_TRACE(dy);
        const std::vector<double> before = edited();
        const double offset = predictedOffset(29, 3, dy);
        stroke("sheet.vtx[29]", 3, dy, {}, 3);
        const std::vector<double> after = edited();
        for (int v = 0; v < kVertices; ++v) {
            const auto k = static_cast<std::size_t>(v);
            double expected = before[k];
            const auto soft = falloff.find(v);
            if (soft != falloff.end()) {
                expected += offset * soft->second;
                expected = skinned ? std::min(std::max(expected, 0.0), 1.0)
                                   : static_cast<double>(static_cast<float>(std::max(expected, 0.0)));
            }
            EXPECT_EQ(after[k], expected) << "vertex " << v;
        }
        if (skinned) {
            for (const std::vector<double>& row : skinWeights(session, "skin", kVertices, 3))
                EXPECT_NEAR(row[0] + row[1] + row[2], 1.0, 1e-12);
        }
        mel("undo");
    }
}

TEST_P(StrokeInMode, IsOneUndoStepThatUndoAndRedoBringBackBitForBit)
{
    const std::string start = sceneText(session);
    const std::size_t entries = session.undo().undoCount();
    // A redo is clamped as the settings say, a live stroke on a skin always to 0..1: here both agree.
    edit("-clampMax true");
    stroke("sheet.vtx[29]", 2, skinned ? 12 : 25, {}, 5);
    EXPECT_EQ(session.undo().undoCount(), entries + 1);
    EXPECT_EQ(melString("undoInfo -q -undoName"), "morvaneToolCmd");
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

TEST_P(StrokeInMode, ControlGivesATenth)
{
    mel("softSelect -sse 0");
    const double before = edited()[29];
    // Control adds the vertex under the cursor to the selection only when it is not selected yet.
    stroke("sheet.vtx[29]", 0, -5);
    const double whole = edited()[29] - before;
    mel("undo");
    stroke("sheet.vtx[29]", 0, -5, "-control");
    const double tenth = edited()[29] - before;
    EXPECT_NEAR(tenth, whole / 10, 1e-6);
    EXPECT_NE(tenth, 0.0);
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

TEST_F(Stroke, WithoutClampsADefaultWeightMayLeaveZeroToOne)
{
    clusterAll();
    toolOn();
    edit("-clampMin false");
    mel("select sheet.vtx[29]");
    stroke("sheet.vtx[29]", 0, -400);
    EXPECT_LT(edited()[29], 0.0);
    mel("undo");
    stroke("sheet.vtx[29]", 0, 900);
    EXPECT_GT(edited()[29], 1.0);
}

TEST_F(Stroke, AWeightThatMovesNothingCannotBeDragged)
{
    clusterAll();
    mel("setAttr cluHandle.translateY 0");
    toolOn();
    mel("select sheet.vtx[29]");
    const std::string start = sceneText(session);
    testing::internal::CaptureStderr();
    stroke("sheet.vtx[29]", 10, 50);
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

TEST_F(Stroke, EveryRefusalHasItsWordsOrItsSilence)
{
    clusterAll();
    mel("createNode blendShape -n blend; select -cl");
    bindToThreeJoints();
    toolOn();
    mel("select sheet.vtx[29]");
    const struct {
        const char* flags;
        const char* warning; ///< empty: refused without a word
    } rows[] = {
        {"-weightMode default -deformer skin", ""},
        {"-weightMode plug -deformer skin", ""},
        {"-weightMode default -deformer blend", "The specified deformer does not have a default weightMap"},
        {"-weightMode blendShapeTarget -deformer blend -target smile",
         "Target:smile is not a valid target on blend"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.flags);
        edit(row.flags);
        if (*row.warning)
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
