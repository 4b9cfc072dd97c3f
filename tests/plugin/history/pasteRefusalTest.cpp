// Pastes of which a part cannot be done: the object is named, nothing is written for it, and the rest goes
// on.
#include "plugin/history/historyScene.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

using namespace testing_support;

namespace {

const char kTooShort[] = "the copied weights do not reach it; nothing was written for it.";
const char kOtherCount[] = "its skin has another number of influences than was copied; nothing was written "
                           "for it.";
const char kNotDeformedAtAll[] =
    "weights were copied from it, but the deformer does not deform it; nothing was pasted.";
const char kGone[] = "weights were copied from it, but it is no longer there; nothing was pasted.";
const char kMoreObjects[] = "more objects are selected than were copied; nothing was written for it.";
const char kFewerPoints[] =
    "it has fewer selected points than influences were copied; nothing was written for it.";
const char kNotDeformed[] = "the deformer does not deform it; nothing was written for it.";

struct RefusalRow {
    const char* name;
    const char* mode;
    const char* beforeCopy; ///< MEL
    const char* copied;
    const char* beforePaste;
    const char* target;
    const char* refused; ///< the object
    const char* reason;
    int written; ///< a mesh for which the paste goes on, or -1
};

std::ostream& operator<<(std::ostream& out, const RefusalRow& row)
{
    return out << row.name;
}

// A small mesh with a skin of two influences, hip and knee.
const char kSmall[] = "polyPlane -ch 0 -n small -w 2 -h 2 -sx 1 -sy 1; parent small all;"
                      "skinCluster -tsb -mi 2 -dr 2 -n smallSkin hip knee small";
const char kSmallWithLayer[] =
    "polyPlane -ch 0 -n small -w 2 -h 2 -sx 1 -sy 1; parent small all;"
    "skinCluster -tsb -mi 2 -dr 2 -n smallSkin hip knee small;"
    "ngst2Layers -e -attach |all|small|smallShape; ngst2Layers -e -addLayer skinLayer |all|small|smallShape";
// The twin stays a member of the deformer's set, but the deformer does not reach it any more.
const char kCutOff[] = "string $to[] = `listConnections -p true -s false \"lift.outputGeometry[1]\"`;"
                       "disconnectAttr \"lift.outputGeometry[1]\" $to[0]";
const char kStranger[] = "polyPlane -ch 0 -n stranger; cluster -n elsewhere stranger;"
                         "morvaneContext -e -deformer elsewhere morvaneContext1";
const char kBackOn[] = "undo";

const RefusalRow kRows[] = {
    {"FewerPointsInTheLastCopiedObject", "ngSkinToolsMask", "", "sheet.vtx[*] coarse.vtx[0:1]", "",
     "twin.vtx[*] coarse.vtx[0:1]", "|all|twin|twinShape", kTooShort, 2},
    {"FewerPointsInTheLastCopiedObjectToo", "ngSkinToolsDualQuaternion", "", "sheet.vtx[*] coarse.vtx[0:1]",
     "", "twin.vtx[*] coarse.vtx[0:1]", "|all|twin|twinShape", kTooShort, 2},
    {"VerticesThatTheMatchedObjectHasNot", "ngSkinToolsMask", "", "coarse.vtx[0:4] sheet.vtx[15:19]", "",
     "coarse.vtx[0:4] sheet.vtx[15:19]", "|all|coarse|coarseShape", kTooShort, 0},
    {"FewerInfluencesInTheCopiedLayer", "ngSkinToolsInfluence", kSmallWithLayer, "small.vtx[*]", "",
     "twin.vtx[*]", "|all|twin|twinShape", kTooShort, -1},
    {"RowsBeyondASmallerSkin", "skinCluster", kSmall, "sheet.vtx[0:1] small.vtx[*]", "", "twin.vtx[11:13]",
     "|all|twin|twinShape", kTooShort, -1},
    {"RowsOfAnotherSkin", "skinCluster", kSmall, "small.vtx[*] sheet.vtx[*]", "", "twin.vtx[*] coarse.vtx[*]",
     "|all|twin|twinShape", kOtherCount, 2},
    {"MoreObjectsThanWereCopied", "skinCluster", "", "sheet.vtx[*]", "", "twin.vtx[*] coarse.vtx[*]",
     "|all|coarse|coarseShape", kMoreObjects, 1},
    {"FewerPointsThanInfluences", "skinCluster", "", "sheet.vtx[*] coarse.vtx[*]", "",
     "twin.vtx[1:2] coarse.vtx[*]", "|all|twin|twinShape", kFewerPoints, 2},
    {"CopiedFromWhatTheDeformerDoesNotReach", "default", "", "twin.vtx[*]", kCutOff,
     "sheet.vtx[*] coarse.vtx[*]", "|all|twin|twinShape", kNotDeformedAtAll, -1},
    {"CopiedFromWhatTheDeformerDoesNotReachToo", "plug", "", "sheet.vtx[*] twin.vtx[*]", kCutOff,
     "sheet.vtx[*] coarse.vtx[*]", "|all|twin|twinShape", kNotDeformedAtAll, -1},
    {"CopiedFromWhatIsGone", "default", kStranger, "stranger.vtx[*]", "delete stranger",
     "sheet.vtx[*] coarse.vtx[*]", "An edited object", kGone, -1},
    {"CopiedWhereTheDeformerDidNotReach", "default", kCutOff, "sheet.vtx[15:19] twin.vtx[*]", kBackOn,
     "coarse.vtx[*] sheet.vtx[15:19]", "|all|coarse|coarseShape", kTooShort, 0},
    {"CopiedWhereTheDeformerDidNotReachToo", "plug", kCutOff, "sheet.vtx[15:19] twin.vtx[*]", kBackOn,
     "coarse.vtx[*] sheet.vtx[15:19]", "|all|coarse|coarseShape", kTooShort, 0},
    {"TargetThatTheDeformerDoesNotReach", "default", "", "sheet.vtx[*]", kCutOff, "twin.vtx[*] coarse.vtx[*]",
     "|all|twin|twinShape", kNotDeformed, 2},
    {"TargetThatTheDeformerDoesNotReachToo", "plug", "", "sheet.vtx[*]", kCutOff, "twin.vtx[*] coarse.vtx[*]",
     "|all|twin|twinShape", kNotDeformed, 2},
};

class PasteRefusal : public HistoryScene, public ::testing::WithParamInterface<RefusalRow> {
public:
    std::vector<std::string> warnings()
    {
        std::vector<std::string> lines;
        for (const std::string& line : trace)
            if (line.compare(0, 8, "warning\t") == 0)
                lines.push_back(line.substr(8));
        return lines;
    }
};

INSTANTIATE_TEST_SUITE_P(Rows, PasteRefusal, ::testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(PasteRefusal, IsSaidAndNothingIsWrittenForTheObject)
{
    const RefusalRow& row = GetParam();
    build(rowOf(row.mode));
    startTool();
    if (*row.beforeCopy)
        mel(row.beforeCopy);
    select(row.copied);
    unrecorded("morvaneContext -e -copy true morvaneContext1");
    if (row.beforePaste == kBackOn)
        mel("undo; undo"); // the selection and the cut
    else if (*row.beforePaste)
        mel(row.beforePaste);
    choose(rowOf(row.mode));
    setState(randomState(8));
    select(row.target);
    session.undo().flush();
    const State old = state();
    const std::string scene = sceneText(session);
    expectWarning(std::string(row.refused) + ": " + row.reason);
    trace.clear();
    edit("-paste true");
    EXPECT_EQ(warnings(), std::vector<std::string>{std::string(row.refused) + ": " + row.reason});
    const State done = state();
    for (int mesh = 0; mesh < kMeshes; ++mesh) {
        const std::string array = rowOf(row.mode).arrayOf(mesh);
        EXPECT_EQ(done.at(array) != old.at(array), mesh == row.written) << array;
    }
    EXPECT_EQ(sceneText(session) == scene, row.written < 0);
    EXPECT_EQ(session.undo().undoCount(), row.written < 0 ? 0u : 1u);
    if (row.written < 0)
        return;
    for (int round = 0; round < 2; ++round) {
        mel("undo");
        EXPECT_EQ(state(), old);
        mel("redo");
        EXPECT_EQ(state(), done);
    }
    // Neither way writes anything for it, whatever it holds by then.
    const State other = randomState(9);
    for (const char* step : {"undo", "redo"}) {
        setState(other);
        mel(step);
        const State after = state();
        for (int mesh = 0; mesh < kMeshes; ++mesh) {
            const std::string array = rowOf(row.mode).arrayOf(mesh);
            EXPECT_EQ(after.at(array) != other.at(array), mesh == row.written) << step << ": " << array;
        }
    }
}

class EmptyPaste : public HistoryScene, public ::testing::WithParamInterface<ModeRow> {};

INSTANTIATE_TEST_SUITE_P(Modes, EmptyPaste, ::testing::ValuesIn(modeRows()),
                         [](const auto& row) { return std::string(row.param.mode); });

TEST_P(EmptyPaste, SaysNothingAndDoesNothing)
{
    build(GetParam());
    startTool();
    const State start = state();
    const std::string scene = sceneText(session);
    const auto expectNothing = [&](const std::string& what, const std::string& target) {
        SCOPED_TRACE(what);
        select(target);
        session.undo().flush();
        testing::internal::CaptureStderr();
        edit("-paste true");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        EXPECT_EQ(state(), start);
        EXPECT_EQ(sceneText(session), scene);
        EXPECT_EQ(session.undo().undoCount(), 0u);
    };
    const auto copy = [&](const std::string& names) {
        select(names);
        testing::internal::CaptureStderr();
        edit("-copy true");
        return testing::internal::GetCapturedStderr();
    };
    expectNothing("nothing was ever copied", "twin.vtx[*]");
    EXPECT_EQ(copy("sheet.vtx[*]"), "");
    expectNothing("nothing is selected", "-cl");
    expectNothing("what is selected has no weights", "hip");
    EXPECT_EQ(copy("-cl"), "");
    expectNothing("a copy of nothing leaves nothing", "twin.vtx[*]");

    choose(rowOf("default"));
    EXPECT_EQ(copy("sheet.vtx[*]"), "");
    edit("-weightMode blendShapeBase");
    expectWarning("The current deformer is not a blendShape");
    EXPECT_EQ(copy("sheet.vtx[*]"), "\n");
    choose(rowOf(GetParam().mode));
    expectNothing("a copy that fails leaves nothing", "twin.vtx[*]");
}

} // namespace
