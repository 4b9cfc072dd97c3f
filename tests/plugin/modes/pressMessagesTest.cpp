// What presses, drags and copies say when something under them fails, word for word; and who is left alone
// without a word.
#include "plugin/modes/modeScene.h"

#include "graph/graph.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

#include <functional>

using namespace testing_support;

namespace {

const std::string kContext = "src/morvaneContext", kHelpers = "src/helperFunctions";

struct Report {
    std::string source;
    int line; ///< 0: any
};

/// The reports of failed calls in a text of the error stream, in order; each must be whole.
std::vector<Report> reportsIn(const std::string& text)
{
    const std::string head = "\nAPI error detected in ", middle = " at line ";
    std::vector<Report> reports;
    for (std::size_t at = text.find(head); at != std::string::npos; at = text.find(head, at + 1)) {
        const std::size_t source = at + head.size(), line = text.find(middle, source);
        const std::size_t end = text.find('\n', source);
        EXPECT_LT(line, end) << text;
        EXPECT_EQ(text.compare(end, 4, "\n: ("), 0) << "what the platform says follows: " << text;
        reports.push_back({text.substr(source, line - source), std::stoi(text.substr(line + middle.size()))});
    }
    return reports;
}

std::string errorStreamOf(const std::function<void()>& run)
{
    testing::internal::CaptureStderr();
    run();
    return testing::internal::GetCapturedStderr();
}

enum Act { kPress, kCopy };

struct Failure {
    const char* name;
    const char* mode;
    const char* setUp; ///< MEL, before the act
    Act act;
    std::vector<Report> reports;
    std::vector<std::string> warnings = {};
    enum After { kNoDirection, kNothingToEdit, kSelects } after = kNoDirection; ///< what a drag finds
};

void PrintTo(const Failure& failure, std::ostream* out)
{
    *out << failure.name;
}

const char kEdges[] = "select sheet.e[3]";
const char kFailingRead[] = "ngst2Layers -misbehave failingRead";
const char kFailingCount[] = "ngst2Layers -misbehave failingCount";
const char kVerticesWanted[] = "Vertices are wanted: edges and faces such as sheet.e[3] cannot be sculpted.";
const std::string kNoBlendShape = "The current deformer is not a blendShape";

const Failure kFailures[] = {
    {"DeformerIsGone",
     "default",
     "delete lift",
     kPress,
     {{kContext, 201}, {kContext, 0}},
     {"There is no deformer named lift in the scene."},
     Failure::kSelects},
    {"DeformersNameIsNowAMesh",
     "plug",
     "rename lift away; polyPlane -n lift; viewFit sheet",
     kPress,
     {{kContext, 0}},
     {"lift is not a deformer."},
     Failure::kSelects},
    {"PlugIsGone",
     "plug",
     "deleteAttr lift.maps",
     kPress,
     {{kContext, 138}},
     {"The weights plug is invalid."},
     Failure::kNothingToEdit},
    {"PlugIsGoneAtACopy",
     "plug",
     "deleteAttr lift.maps",
     kCopy,
     {{kContext, 138}},
     {"The weights plug is invalid."}},
    {"SkinWeightsOfEdges", "skinCluster", kEdges, kCopy, {}, {kVerticesWanted}},
    {"BlendWeightsOfEdges", "dualQuaternion", kEdges, kCopy, {}, {kVerticesWanted}},
    {"MapOfFaces",
     "default",
     "select sheet.f[0:2]",
     kCopy,
     {},
     {"Vertices are wanted: edges and faces such as sheet.f[0:2] cannot be sculpted."}},
    {"MaskOfEdges", "ngSkinToolsMask", kEdges, kCopy, {}, {kVerticesWanted}},
    // A deformer of another kind can have a target by name: whoever reads or nudges it says no.
    {"TargetOfAnotherKindOfDeformer",
     "blendShapeTarget",
     "addAttr -ln shapes -at \"double\" -m lift; aliasAttr grin lift.shapes[3];"
     "morvaneContext -e -deformer lift -target grin morvaneContext1",
     kPress,
     {},
     {kNoBlendShape}},
    {"MaskRead", "ngSkinToolsMask", kFailingRead, kPress, {{kHelpers, 251}, {kContext, 1728}}},
    {"MaskCount", "ngSkinToolsMask", kFailingCount, kPress, {{kHelpers, 268}, {kContext, 1728}}},
    {"LayerDualQuaternionRead",
     "ngSkinToolsDualQuaternion",
     kFailingRead,
     kPress,
     {{kHelpers, 296}, {kContext, 1750}}},
    {"LayerDualQuaternionCount",
     "ngSkinToolsDualQuaternion",
     kFailingCount,
     kPress,
     {{kHelpers, 313}, {kContext, 1750}}},
    {"LayerInfluenceRead", "ngSkinToolsInfluence", kFailingRead, kPress, {{kHelpers, 206}, {kContext, 1706}}},
    {"LayerInfluenceCount",
     "ngSkinToolsInfluence",
     kFailingCount,
     kPress,
     {{kHelpers, 223}, {kContext, 1706}}},
};

class PressMessages : public ModeScene, public ::testing::WithParamInterface<Failure> {};

INSTANTIATE_TEST_SUITE_P(Failures, PressMessages, ::testing::ValuesIn(kFailures),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(PressMessages, SayWhatFailedAndChangeNothing)
{
    const Failure& failure = GetParam();
    const bool selects = failure.after == Failure::kSelects;
    build(weightPlace(failure.mode));
    if (std::string(failure.setUp).find("maps") != std::string::npos) {
        mel("addAttr -ln maps -at compound -nc 1 -m lift; addAttr -ln map -at \"float\" -m -p maps lift");
        edit("-plug map");
    }
    mel(failure.setUp);
    session.undo().flush();
    const std::string start = sceneText(session);
    const std::vector<std::string> selected = melStrings("ls -sl");
    if (place.isLayer())
        allowMessages(); // the layer command tells for itself
    for (const std::string& warning : failure.warnings)
        expectWarning(warning);
    const Pixel from = at(kMiddle);
    trace.clear();
    const std::string text = errorStreamOf([&] {
        if (failure.act == kCopy)
            edit("-copy true");
        else
            press(from);
    });
    const std::vector<Report> reports = reportsIn(text);
    ASSERT_EQ(reports.size(), failure.reports.size()) << text;
    for (std::size_t k = 0; k < reports.size(); ++k) {
        EXPECT_EQ(reports[k].source, failure.reports[k].source);
        if (failure.reports[k].line != 0) {
            EXPECT_EQ(reports[k].line, failure.reports[k].line);
        }
    }
    EXPECT_EQ(linesOf(trace, "warning").size(), failure.warnings.size());
    for (const std::string& line : linesOf(trace, "warning"))
        EXPECT_EQ(line, "warning\t" + failure.warnings.at(0));
    if (failure.act == kPress) {
        const std::string dragged = errorStreamOf([&] { drag({from.x + 9, from.y + 14}); });
        EXPECT_EQ(reportsIn(dragged).size(), failure.after == Failure::kNoDirection ? 1u : 0u) << dragged;
        const std::vector<std::string> marquee = linesOf(trace, "draw");
        EXPECT_EQ(marquee.size(), selects ? 8u : 0u);
        errorStreamOf([&] { drag(from); });
        release(from);
    }
    // Without a deformer a click selects what lies there.
    EXPECT_EQ(melStrings("ls -sl"), selects ? std::vector<std::string>{"sheet.vtx[7]"} : selected);
    EXPECT_EQ(session.undo().undoCount(), selects ? 1u : 0u);
    EXPECT_TRUE(sceneText(session) == start);
}

struct LockedPlace {
    const char* mode;
    const char* sheet; ///< what holds the sheet's weights
    const char* twin;  ///< the twin's; empty where both meshes share one place
};

void PrintTo(const LockedPlace& place, std::ostream* out)
{
    *out << place.mode;
}

class LockedWeights : public ModeScene, public ::testing::WithParamInterface<LockedPlace> {
public:
    void SetUp() override
    {
        ModeScene::SetUp();
        build(weightPlace(GetParam().mode));
        edit("-clampMin false");
    }
    /// The number of reports, all of them from the context.
    static std::size_t reported(const std::string& text)
    {
        const std::vector<Report> reports = reportsIn(text);
        for (const Report& report : reports)
            EXPECT_EQ(report.source, kContext);
        return reports.size();
    }
};

INSTANTIATE_TEST_SUITE_P(
    Modes, LockedWeights,
    ::testing::Values(LockedPlace{"default", "lift.weightList[1].weights", "lift.weightList[0].weights"},
                      LockedPlace{"plug", "lift.maskList[1].mask", "lift.maskList[0].mask"},
                      LockedPlace{"skinCluster", "sheetSkin.weightList", "twinSkin.weightList"},
                      LockedPlace{"dualQuaternion", "sheetSkin.blendWeights", "twinSkin.blendWeights"},
                      LockedPlace{"blendShapeTarget", "face.inputTarget[0].inputTargetGroup[4].targetWeights",
                                  ""},
                      LockedPlace{"blendShapeBase", "face.inputTarget[0].baseWeights", ""}));

TEST_P(LockedWeights, CannotBeNudgedSoThereIsNoDirection)
{
    mel(std::string("setAttr -lock 1 ") + GetParam().sheet);
    const std::string start = sceneText(session);
    session.undo().flush();
    const Pixel from = at(kMiddle);
    expectWarning("The weight of sheet.vtx[7] cannot be changed: it is locked or connected.");
    EXPECT_GE(reported(errorStreamOf([&] { press(from); })), 1u);
    EXPECT_EQ(reported(errorStreamOf([&] { drag({from.x + 8, from.y + 21}); })), 1u);
    EXPECT_EQ(reported(errorStreamOf([&] { drag({from.x + 9, from.y + 21}); })), 0u);
    EXPECT_TRUE(melStrings("viewportLabels").empty());
    release({from.x + 8, from.y + 21});
    EXPECT_TRUE(sceneText(session) == start);
    EXPECT_EQ(session.undo().undoCount(), 0u);
}

// The objects before the one that fails keep what they got; those after it are not written.
TEST_P(LockedWeights, EndTheDragEventWhereTheyAreMet)
{
    const std::string locked = *GetParam().twin ? GetParam().twin : GetParam().sheet;
    mel("select sheet.vtx[6:8] twin.vtx[6:8]");
    const std::vector<double> sheet = weights("sheet"), twin = weights("twin");
    const Imath::V2d way = direction(kMiddle);
    const Pixel from = at(kMiddle), by = dragFor(way, 0.03);
    press(from);
    mel("setAttr -lock 1 " + locked);
    const std::string object = *GetParam().twin ? "twin" : "sheet";
    expectWarning("The weights of " + object + " cannot be changed: they are locked or connected.");
    trace.clear();
    EXPECT_EQ(reported(errorStreamOf([&] { drag({from.x + by.x, from.y + by.y}); })), 1u);
    EXPECT_TRUE(linesOf(trace, "draw").empty()) << "nor are labels drawn";
    EXPECT_EQ(weights("twin"), twin);
    const double change = *GetParam().twin ? offsetOf(way, by.x, by.y) : 0;
    EXPECT_NEAR(weights("sheet")[kMiddle], sheet[kMiddle] + change, 1e-6);
    mel("setAttr -lock 0 " + locked);
    drag({from.x + by.x, from.y + by.y});
    EXPECT_NE(weights("twin"), twin) << "the next event writes all";
    release({from.x + by.x, from.y + by.y});
}

class SilentRefusal : public ModeScene {};

// Objects that lack what the mode needs are passed over; the others keep their own columns.
TEST_F(SilentRefusal, AMeshWithoutTheInfluenceOrASkinIsPassedOver)
{
    build(weightPlace("skinCluster"));
    mel("skinCluster -e -ri knee twinSkin; polyPlane -n bare -w 2 -h 2 -sx 1 -sy 1;"
        "select bare.vtx[0:3] twin.vtx[0:14] sheet.vtx[6:8]");
    const std::vector<std::vector<double>> twin = rows("twin");
    const std::vector<double> before = weights();
    const Imath::V2d way = direction(kMiddle);
    const Pixel from = at(kMiddle), by = dragFor(way, 0.04);
    const double offset = offsetOf(way, by.x, by.y);
    EXPECT_EQ(errorStreamOf([&] {
                  press(from);
                  drag({from.x + by.x, from.y + by.y});
              }),
              "");
    EXPECT_EQ(rows("twin"), twin);
    for (std::size_t v = 0; v < kVertices; ++v)
        EXPECT_EQ(weights()[v], v >= 6 && v <= 8 ? before[v] + offset : before[v]) << v;
    EXPECT_EQ(melStrings("viewportLabels").size(), 3u);
    release({from.x + by.x, from.y + by.y});
}

// The deformer's members decide: the others among the selected points stay as they are, without a word.
TEST_F(SilentRefusal, PointsThatTheDeformerDoesNotDeformArePassedOver)
{
    build(weightPlace("default"));
    mel("sets -rm liftSet sheet.vtx[0:6] twin.vtx[*]; select twin.vtx[6:8] sheet.vtx[5:9]");
    const std::vector<double> before = weights(), twin = weights("twin");
    const Pixel from = at(kMiddle);
    EXPECT_EQ(errorStreamOf([&] {
                  press(from);
                  drag({from.x + 4, from.y + 9});
              }),
              "");
    EXPECT_EQ(weights("twin"), twin);
    for (std::size_t v = 0; v < kVertices; ++v)
        EXPECT_EQ(weights()[v] != before[v], v >= 7 && v <= 9) << v;
    EXPECT_EQ(melStrings("viewportLabels").size(), 3u);
    release({from.x + 4, from.y + 9});
}

} // namespace
