// Undo and redo bring back selections with their falloff, alone and together with a stroke; and histories of
// tool commands among other commands and deletions.
#include "plugin/history/historyScene.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

#include <functional>

using namespace testing_support;

namespace {

class History : public HistoryScene, public ::testing::WithParamInterface<ModeRow> {
public:
    void SetUp() override
    {
        HistoryScene::SetUp();
        build(GetParam());
        pose();
        startTool();
        setState(clickableState(2));
        setClamps({true, true, 0, 1}); // redo then clamps as the live stroke does, in every mode
        select("sheet.vtx[1] sheet.vtx[6] twin.vtx[8]");
        session.undo().flush();
    }
    /// What a step leaves: every weight, every value and what is selected.
    struct Moment {
        State state;
        std::string scene;
        std::vector<std::string> selected;
    };
    Moment now() { return {state(), sceneText(session), melStrings("ls -sl")}; }
    void expect(const Moment& wanted, const std::string& what)
    {
        const Moment found = now();
        EXPECT_EQ(found.state, wanted.state) << what;
        EXPECT_EQ(found.scene == wanted.scene, true) << what;
        EXPECT_EQ(found.selected, wanted.selected) << what;
    }
};

INSTANTIATE_TEST_SUITE_P(Modes, History, ::testing::ValuesIn(modeRows()),
                         [](const auto& row) { return std::string(row.param.mode); });

// Strokes and pastes between commands that have nothing to do with the tool. Layers keep more of an undone
// stroke than that; what they keep is compared elsewhere.
TEST_P(History, GoesBackAndForthAmongOtherCommands)
{
    const bool keepsStrokes = GetParam().isLayer();
    const Pixel motion = dragFor(0.2);
    std::vector<Moment> moments = {now()};
    const auto step = [&](const std::string& name, const std::function<void()>& run) {
        SCOPED_TRACE(name);
        run();
        moments.push_back(now());
        ASSERT_EQ(session.undo().undoCount(), moments.size() - 1);
    };
    step("stroke", [&] { strokeBy(motion); });
    step("setAttr", [&] { mel("setAttr all.translateX 0.5"); });
    step("stroke again", [&] { strokeBy({-motion.x, -motion.y}); });
    step("createNode", [&] { mel("createNode transform -n between"); });
    step("select", [&] { select("sheet.vtx[1:3] coarse.vtx[0:4]"); });
    step("copy and paste", [&] {
        edit("-copy true");
        mel("undoInfo -stateWithoutFlush off; select coarse.vtx[2:7]; undoInfo -stateWithoutFlush on");
        edit("-paste true");
        mel("undoInfo -stateWithoutFlush off; select sheet.vtx[1:3] coarse.vtx[0:4]; undoInfo "
            "-stateWithoutFlush on");
    });
    step("rename", [&] { mel("rename between betweenThem"); });
    for (int round = 0; round < 2; ++round) {
        for (std::size_t left = moments.size() - 1; left-- > 0;) {
            mel("undo");
            if (!keepsStrokes)
                expect(moments[left], "back to " + std::to_string(left));
        }
        for (std::size_t done = 1; done < moments.size(); ++done) {
            mel("redo");
            expect(moments[done], "forth to " + std::to_string(done));
        }
    }
}

// What was edited is deleted and comes back with the queue.
TEST_P(History, OutlivesTheDeletionOfWhatWasEdited)
{
    const bool keepsStrokes = GetParam().isLayer();
    const Moment start = now();
    strokeBy(dragFor(0.2));
    const Moment stroked = now();
    ASSERT_NE(stroked.state, start.state);
    for (const char* victim : {"lift", "mix", "sheet", "twin", "knee"}) {
        if (GetParam().isLayer() && victim[0] != 'l' && victim[0] != 'm')
            continue; // the layers go with the mesh or the influence and do not come back
        SCOPED_TRACE(victim);
        mel(std::string("delete ") + victim);
        mel("undo");
        expect(stroked, "the deletion undone");
        mel("undo");
        if (!keepsStrokes)
            expect(start, "the stroke undone");
        mel("redo");
        expect(stroked, "the stroke redone");
    }
}

// The falloff is recorded: it comes back as it was even when soft selection is off by then.
TEST_F(HistoryScene, SelectionsComeBackWithTheFalloffOfTheirTime)
{
    build(rowOf("default"));
    pose();
    startTool();
    setState(clickableState(2));
    mel("softSelect -sse 1 -ssd 4 -ssf 0; select twin.vtx[8]");
    session.undo().flush();
    const auto falloffs = [&] {
        std::vector<std::map<int, double>> found;
        for (int mesh = 0; mesh < kMeshes; ++mesh)
            found.push_back(selectedFalloff(session, shape(mesh)));
        return found;
    };
    const auto before = falloffs();
    ASSERT_GT(before[1].size(), 1u);
    for (const bool strokes : {false, true}) {
        SCOPED_TRACE(strokes ? "with a stroke" : "alone");
        mel("softSelect -sse 1; select twin.vtx[8]");
        session.undo().flush();
        const State start = state();
        if (strokes) {
            strokeBy(dragFor(0.2));
        } else {
            press(pixelOf("sheet.vtx[1]"));
            release(pixelOf("sheet.vtx[1]"));
        }
        ASSERT_EQ(session.undo().undoCount(), 1u);
        EXPECT_EQ(melString("undoInfo -q -undoName"),
                  strokes ? "morvaneToolCmd sculpt default lift" : "morvaneToolCmd");
        const auto after = falloffs();
        const State done = state();
        ASSERT_NE(after, before);
        unrecorded("softSelect -sse 0");
        for (int round = 0; round < 2; ++round) {
            mel("undo");
            EXPECT_EQ(melStrings("ls -sl"), std::vector<std::string>{"twin.vtx[8]"});
            EXPECT_EQ(falloffs(), before);
            EXPECT_EQ(state(), start);
            mel("redo");
            EXPECT_EQ(melStrings("ls -sl"), std::vector<std::string>{"sheet.vtx[1]"});
            EXPECT_EQ(falloffs(), after);
            EXPECT_EQ(state(), done);
        }
    }
}

} // namespace
