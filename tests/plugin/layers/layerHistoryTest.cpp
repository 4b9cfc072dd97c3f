// Strokes, pastes, undo and redo on layers in any order, against a model of what each of them leaves.
#include "plugin/layers/layerFixture.h"
#include "undo/undoQueue.h"

#include <map>
#include <random>

using namespace testing_support;

namespace {

using State = std::map<std::string, std::vector<double>>; ///< by paint target

const char* const kTargets[] = {"mask", "dq", "0", "1", "2"};

struct LayerMode {
    const char* mode;
    const char* target;
};
const LayerMode kModes[] = {
    {"ngSkinToolsMask", "mask"}, {"ngSkinToolsDualQuaternion", "dq"}, {"ngSkinToolsInfluence", "1"}};

/// What an entry of the undo queue writes when it is undone and redone, by paint target.
struct Entry {
    State undo;
    State redo;
};

/// The targets that an edit in a mode writes, with their values in a state.
State written(const State& state, const std::string& target)
{
    if (target != "1")
        return {{target, state.at(target)}};
    return {{"0", state.at("0")}, {"1", state.at("1")}, {"2", state.at("2")}};
}

class LayerHistory : public LayerTest, public ::testing::WithParamInterface<unsigned> {
public:
    State now()
    {
        State state;
        for (const char* target : kTargets)
            state[target] = painted(1, target);
        return state;
    }
    void apply(const State& change)
    {
        for (const auto& target : change)
            model[target.first] = target.second;
    }
    void record(Entry entry)
    {
        entries.resize(done);
        entries.push_back(std::move(entry));
        ++done;
    }

    void select(int vertex)
    {
        mel("select sheet.vtx[" + std::to_string(vertex) + "] sheet.vtx[" + std::to_string((vertex + 2) % 6) +
            "]");
        record({});
    }
    void strokeSelected(const LayerMode& mode, int vertex, int dx, int dy)
    {
        const State before = model;
        const std::size_t queued = session.undo().undoCount();
        stroke("sheet.vtx[" + std::to_string(vertex) + "]", dx, dy, {}, 3);
        model = now();
        for (const char* target : kTargets) {
            if (written(model, mode.target).count(target) == 0) {
                EXPECT_EQ(model.at(target), before.at(target)) << target;
            }
        }
        if (session.undo().undoCount() == queued) {
            EXPECT_EQ(model, before) << "a stroke that is not recorded leaves nothing";
            return;
        }
        ++strokes;
        Entry entry;
        if (std::string(mode.target) == "1")
            entry.undo["1"] = before.at("1");
        entry.redo = written(model, mode.target);
        record(std::move(entry));
    }
    void pasteSelected(const LayerMode& mode)
    {
        const State before = model;
        edit("-paste true");
        model = now();
        record({written(before, mode.target), written(model, mode.target)});
    }
    void undo()
    {
        if (done == 0)
            return;
        mel("undo");
        apply(entries[--done].undo);
    }
    void redo()
    {
        if (done == entries.size())
            return;
        mel("redo");
        apply(entries[done++].redo);
    }

    State model;
    std::vector<Entry> entries;
    std::size_t done = 0;
    int strokes = 0;
};

INSTANTIATE_TEST_SUITE_P(Seeds, LayerHistory, ::testing::Values(1u, 2u, 3u, 4u));

TEST_P(LayerHistory, EveryStepLeavesWhatItsModeSays)
{
    std::mt19937 random(GetParam());
    const auto below = [&](int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); };
    for (const char* target : kTargets) {
        std::vector<double> weights;
        for (int v = 0; v < kVertices; ++v)
            weights.push_back(below(64) / 128.0); // survives single precision, through which some pastes go
        paint(1, target, weights);
    }
    edit("-weightMode ngSkinToolsMask");
    press(at(1));
    release(at(1));
    session.undo().flush();
    model = now();
    for (int step = 0; step < 150; ++step) {
        const LayerMode& mode = kModes[below(3)];
        const int vertex = below(kVertices);
        switch (below(5)) {
        case 0:
        case 1:
            edit(std::string("-weightMode ") + mode.mode);
            select(vertex);
            strokeSelected(mode, vertex, below(61) - 30, below(61) - 30);
            break;
        case 2:
            edit(std::string("-weightMode ") + mode.mode);
            select(vertex);
            edit("-copy true");
            select((vertex + 1) % kVertices);
            pasteSelected(mode);
            break;
        case 3:
            for (int times = below(4); times >= 0; --times)
                undo();
            break;
        default:
            for (int times = below(3); times >= 0; --times)
                redo();
            break;
        }
        ASSERT_EQ(now(), model) << "step " << step;
        ASSERT_EQ(session.undo().undoCount(), done) << "step " << step;
    }
    EXPECT_GT(strokes, 20);
}

} // namespace
