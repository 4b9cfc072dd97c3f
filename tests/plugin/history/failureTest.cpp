// What redo, undo and paste do when a write fails or an object is gone: their words, their silence, and what
// is written all the same.
#include "plugin/history/historyScene.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

#include <algorithm>

using namespace testing_support;

namespace {

const char kReport[] = "\nAPI error detected in src/morvaneToolCommand at line ";

std::size_t countOf(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size())
        ++count;
    return count;
}

class Failures : public HistoryScene {
public:
    /// Everything that was shown, as the trace has it, but for what the platform says of a redo that failed.
    std::vector<std::string> shown()
    {
        std::vector<std::string> lines;
        for (const std::string& line : trace)
            if (line.compare(0, 8, "warning\t") == 0 ||
                (line.compare(0, 6, "error\t") == 0 && line.find("morvaneToolCmd: redoIt: ") != 6))
                lines.push_back(line);
        return lines;
    }
    /// Runs MEL; returns what reached the error stream, and leaves what was shown in the trace.
    std::string reported(const std::string& text)
    {
        allowMessages(); // they are compared here, in their order
        trace.clear();
        testing::internal::CaptureStderr();
        mel(text);
        return testing::internal::GetCapturedStderr();
    }
    /// The same of MEL that must fail.
    std::string reportedOfFailing(const std::string& text)
    {
        return reported("if (!catch(`" + text + "`)) error \"It has not failed.\"");
    }
    std::string warned(const std::string& object, const std::string& reason)
    {
        return "warning\t" + object + ": " + reason;
    }
    /// A stroke, or a paste of the weights of other points, on all meshes.
    void change(const ModeRow& row, const std::string& kind)
    {
        startTool();
        setClamps({true, true, 0, 1}); // redo then clamps as the live stroke does, in every mode
        if (kind == "paste") {
            select("sheet.vtx[*] twin.vtx[*] coarse.vtx[*]");
            edit("-copy true");
        }
        setState(clickableState(7));
        select("sheet.vtx[1] sheet.vtx[6:8] twin.vtx[6:12] coarse.vtx[4:6]");
        target = pieces();
        session.undo().flush();
        if (kind == "paste")
            return edit("-paste true");
        strokeBy(dragFor(0.3));
        EXPECT_EQ(session.undo().undoCount(), 1u) << row;
    }
    Pieces target;
};

/// A mode, a change, what to lock so that the change of the second mesh fails, and whether a redo minds a
/// failure.
struct FailingRow {
    const char* mode;
    const char* change;
    const char* lock;
    bool redoStops;
};

std::ostream& operator<<(std::ostream& out, const FailingRow& row)
{
    return out << row.change << " in " << row.mode;
}

const FailingRow kFailing[] = {
    {"default", "stroke", "lift.weightList[1].weights", false},
    {"default", "paste", "lift.weightList[1].weights", true},
    {"plug", "stroke", "lift.maskList[1].mask[7]", false},
    {"plug", "paste", "lift.maskList[1].mask[7]", false},
    {"skinCluster", "stroke", "twinSkin.weightList", true},
    {"skinCluster", "paste", "twinSkin.weightList", true},
    {"dualQuaternion", "stroke", "twinSkin.blendWeights", true},
    {"dualQuaternion", "paste", "twinSkin.blendWeights", true},
    {"blendShapeTarget", "stroke", "mix.inputTarget[0].inputTargetGroup[2].targetWeights[7]", false},
    {"blendShapeTarget", "paste", "mix.inputTarget[0].inputTargetGroup[2].targetWeights[7]", false},
    {"blendShapeBase", "stroke", "mix.inputTarget[0].baseWeights[7]", false},
    {"blendShapeBase", "paste", "mix.inputTarget[0].baseWeights[7]", false},
};

class FailingWrites : public Failures, public ::testing::WithParamInterface<FailingRow> {};

INSTANTIATE_TEST_SUITE_P(Rows, FailingWrites, ::testing::ValuesIn(kFailing), [](const auto& row) {
    return std::string(row.param.mode) + (std::string(row.param.change) == "paste" ? "Paste" : "Stroke");
});

/// Entries of a state that belong to the mode's array of a mesh.
Numbers numbersOf(const State& state, const ModeRow& row, int mesh)
{
    return state.at(row.arrayOf(mesh));
}

TEST_P(FailingWrites, ToLockedWeightsEndARedoWhereItIsCheckedAndNeverAnUndo)
{
    const ModeRow& row = rowOf(GetParam().mode);
    build(row);
    pose();
    change(row, GetParam().change);
    const State done = state();
    mel("undo");
    const State undone = state();
    ASSERT_NE(numbersOf(done, row, 2), numbersOf(undone, row, 2));
    unrecorded(std::string("setAttr -lock true ") + GetParam().lock);

    // A redo that fails keeps its place.
    const std::string report = GetParam().redoStops ? reportedOfFailing("redo") : reported("redo");
    EXPECT_EQ(countOf(report, kReport), GetParam().redoStops ? 1u : 0u) << report;
    EXPECT_EQ(report.empty(), !GetParam().redoStops) << report;
    EXPECT_EQ(shown(), std::vector<std::string>());
    EXPECT_EQ(numbersOf(state(), row, 0)[6], numbersOf(done, row, 0)[6]) << "what came before stays written";
    if (row.firstGeometryOnly) {
        EXPECT_EQ(numbersOf(state(), row, 0)[7], numbersOf(undone, row, 0)[7]) << "this one is locked";
        EXPECT_EQ(numbersOf(state(), row, 0)[8], numbersOf(done, row, 0)[8]) << "the others go on";
    } else {
        EXPECT_EQ(numbersOf(state(), row, 1)[7], numbersOf(undone, row, 1)[7]);
        EXPECT_EQ(numbersOf(state(), row, 2), numbersOf(GetParam().redoStops ? undone : done, row, 2));
    }

    if (!GetParam().redoStops) {
        EXPECT_EQ(reported("undo"), "") << "an undo minds nothing";
        EXPECT_EQ(shown(), std::vector<std::string>());
        EXPECT_EQ(state(), undone);
    }
    unrecorded(std::string("setAttr -lock false ") + GetParam().lock);
    mel("redo; undo");
    EXPECT_EQ(state(), undone);
    mel("redo");
    EXPECT_EQ(state(), done) << "unlocked, it is all there";
}

// A mesh that has fewer points by then: nothing is written for it, where the others go on.
TEST_P(FailingWrites, ToPointsThatAreNoLongerThereLeaveTheOthers)
{
    const ModeRow& row = rowOf(GetParam().mode);
    build(row);
    pose();
    change(row, GetParam().change);
    const Numbers done = edited(2);
    mel("undo");
    const Numbers undone = edited(2), twin = edited(1);
    unrecorded("connectAttr -f coarseShapeOrig.outMesh twinShapeOrig.inMesh");
    const bool stops = GetParam().redoStops;
    const bool named = row.storesFloats && row.mode != std::string("default"); // element by element
    const std::vector<std::string> refusal = {
        warned(shape(1), "its recorded weights do not fit its selected points; nothing was written for it.")};

    const std::string report = stops ? reportedOfFailing("redo") : reported("redo");
    EXPECT_EQ(countOf(report, kReport), stops ? 1u : 0u) << report;
    EXPECT_EQ(shown(), named ? refusal : std::vector<std::string>());
    EXPECT_EQ(edited(1) == twin, !row.firstGeometryOnly);
    EXPECT_EQ(edited(2), stops ? undone : done);
    if (stops)
        return;
    EXPECT_EQ(reported("undo"), "");
    EXPECT_EQ(shown(), named ? refusal : std::vector<std::string>());
    EXPECT_EQ(edited(1), twin);
    EXPECT_EQ(edited(2), undone);
}

class VanishedObjects : public Failures, public ::testing::WithParamInterface<std::tuple<ModeRow, bool>> {};

INSTANTIATE_TEST_SUITE_P(Modes, VanishedObjects,
                         ::testing::Combine(::testing::ValuesIn(modeRows()), ::testing::Bool()),
                         [](const auto& row) {
                             return std::string(std::get<0>(row.param).mode) +
                                    (std::get<1>(row.param) ? "Paste" : "Stroke");
                         });

// A mesh deleted behind the undo queue's back.
TEST_P(VanishedObjects, AreNamedAndTheRestGoesOn)
{
    const ModeRow& row = rowOf(std::get<0>(GetParam()).mode);
    build(row);
    pose();
    change(row, std::get<1>(GetParam()) ? "paste" : "stroke");
    const Numbers done = edited(2);
    mel("undo");
    const Numbers undone = edited(2);
    mel("redo");
    unrecorded("delete twin");
    for (int round = 0; round < 2; ++round)
        for (const bool back : {true, false}) {
            SCOPED_TRACE(back ? "undo" : "redo");
            EXPECT_EQ(reported(back ? "undo" : "redo"), "");
            EXPECT_EQ(shown(),
                      std::vector<std::string>{
                          warned("An edited object", "it is no longer there; nothing was written for it.")});
            EXPECT_EQ(edited(2), back ? undone : done);
        }
}

/// A mode and the node that is deleted behind the undo queue's back.
struct DeletedRow {
    const char* mode;
    const char* node;
};

const DeletedRow kDeleted[] = {
    {"default", "lift"},          {"plug", "lift"},
    {"blendShapeTarget", "mix"},  {"blendShapeBase", "mix"},
    {"skinCluster", "sheetSkin"}, {"dualQuaternion", "sheetSkin"},
};

class DeletedDeformer : public Failures,
                        public ::testing::WithParamInterface<std::tuple<DeletedRow, const char*>> {};

INSTANTIATE_TEST_SUITE_P(Rows, DeletedDeformer,
                         ::testing::Combine(::testing::ValuesIn(kDeleted),
                                            ::testing::Values("Stroke", "Paste")),
                         [](const auto& row) {
                             return std::string(std::get<0>(row.param).mode) + std::get<1>(row.param);
                         });

TEST_P(DeletedDeformer, LeavesItsObjectsAloneAndSaysSo)
{
    const DeletedRow deleted = std::get<0>(GetParam());
    const ModeRow& row = rowOf(deleted.mode);
    build(row);
    pose();
    change(row, std::get<1>(GetParam()) == std::string("Paste") ? "paste" : "stroke");
    const bool ofOneMesh = deleted.node == std::string("sheetSkin");
    const std::vector<std::string> refusals(
        ofOneMesh ? 1 : target.size(),
        warned("An edited object", "it is no longer there; nothing was written for it."));
    unrecorded(std::string("delete ") + deleted.node);
    const std::string scene = sceneText(session);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(reported("undo"), "");
        EXPECT_EQ(shown(), refusals);
        EXPECT_EQ(sceneText(session) == scene, !ofOneMesh) << "the other meshes go back";
        EXPECT_EQ(reported("redo"), "");
        EXPECT_EQ(shown(), refusals);
    }
}

} // namespace
