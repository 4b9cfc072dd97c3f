// Thousands of random strokes, pastes, selections, undos and redos against a model of the tool in plain
// arrays. Every test is one seed; its name says which.
#include "plugin/randomScene.h"
#include "selection/picking.h"
#include "undo/undoQueue.h"

#include <algorithm>
#include <cmath>
#include <set>

using namespace testing_support;

namespace {

class RandomTool : public RandomScene, public ::testing::WithParamInterface<unsigned> {
public:
    void SetUp() override
    {
        engine.seed(GetParam());
        RandomScene::SetUp();
        session.undo().flush();
    }

    void stroke();
    void marquee();
    void selectByScript();
    void copyOrPaste();
    void change();
    void back();
    void forth();
    static bool same(const ToolModel::Weights& a, const ToolModel::Weights& b);
    static bool alike(const ToolModel::Weights& a, const ToolModel::Weights& b);
    void step();
    void compare(const std::string& what);

    /// The scene's weights around an entry of the undo queue: before it, as the mouse left them, and as it
    /// stands now, which a redo may have clamped otherwise. Empty when unknown.
    struct Moment {
        ToolModel::Weights before, live, now;
    };
    std::vector<Moment> history;
    std::map<std::string, int> counts;
};

void RandomTool::stroke()
{
    const int aimed = below(2), from = below(kVertices);
    const Imath::V2d at = pixel(objectPoint(aimed, from));
    const host::SelectionList under = host::pickPoint(session, at.x, at.y, true);
    if (under.items.empty() || !under.items[0].component)
        return;
    const int mesh = meshOf(under.items[0].node.get());
    const int vertex = under.items[0].component->elements[0];
    const Imath::V2d way = direction(mesh, vertex);
    if (way.length() < 2)
        return;
    const bool control = below(4) == 0;
    const ToolModel::Selection before = model.selection;
    const auto held = before.find(mesh);
    if (held == before.end() || !std::binary_search(held->second.begin(), held->second.end(), vertex)) {
        std::set<int> all = {vertex};
        if (control && held != before.end())
            all.insert(held->second.begin(), held->second.end());
        if (!control)
            model.selection.clear();
        model.selection[mesh] = Vertices(all.begin(), all.end());
    }
    const ToolModel::Pieces edited = piecesOf(model.selection);
    const double reach = way.length() * (fraction() * 1.6 - 0.8);
    const int aside = below(7), down = below(7); // one by one: every compiler draws them in this order
    Imath::V2d drag(std::round(way.x / way.length() * reach) + aside,
                    std::round(way.y / way.length() * reach) - down);
    double offset = (way ^ drag) / way.length() / way.length() / (control ? 10 : 1);
    // Where probing costs no rounding, some strokes return to where they began.
    if (offset == 0 || (below(8) == 0 && model.settings.mode == "skinCluster"))
        drag = Imath::V2d(0, 0), offset = 0;
    if (offset == 0 && model.settings.mode != "skinCluster") {
        model.selection = before;
        return;
    }
    const Pixel start = {static_cast<int>(at.x), static_cast<int>(at.y)};
    press(start, control ? "-control" : "");
    for (int events = below(3); events > 0; --events)
        this->drag({start.x + below(60) - 30, start.y + below(60) - 30});
    const Pixel end = {start.x + static_cast<int>(drag.x), start.y + static_cast<int>(drag.y)};
    this->drag(end);
    release(end);
    model.stroke(edited, offset, before);
    ++counts["stroke in " + model.settings.mode];
}

/// A rectangle that starts beside every vertex; or anywhere, with shift.
void RandomTool::marquee()
{
    const Pixel from = {below(session.viewport().width), below(session.viewport().height)};
    const Pixel to = {from.x + 30 + below(200), from.y - 30 - below(200)};
    const bool shift = below(2) == 0, control = below(2) == 0;
    if (!shift && !host::pickPoint(session, from.x, from.y, true).items.empty())
        return;
    const host::PixelRectangle rectangle = {double(from.x), double(from.y), double(to.x), double(to.y)};
    const ToolModel::Selection inside = selectionOf(host::pickRectangle(session, rectangle, true));
    ToolModel::Selection after = shift || control ? model.selection : ToolModel::Selection();
    for (const auto& [mesh, vertices] : inside) {
        std::set<int> all(after[mesh].begin(), after[mesh].end());
        for (const int vertex : vertices) {
            const bool drops = control ? !shift : shift && all.count(vertex) > 0;
            if (drops)
                all.erase(vertex);
            else
                all.insert(vertex);
        }
        after[mesh] = Vertices(all.begin(), all.end());
        if (all.empty())
            after.erase(mesh);
    }
    press(from, std::string(shift ? "-shift " : "") + (control ? "-control" : ""));
    drag(to);
    release(to);
    // A selection that becomes empty is recorded by a command that comes after the change: undo cannot bring
    // the former selection back.
    if (after.empty())
        model.selection.clear();
    model.select(after);
    ++counts["marquee"];
}

void RandomTool::selectByScript()
{
    ToolModel::Selection chosen;
    std::string text;
    for (const int mesh : {0, 1}) {
        std::set<int> vertices;
        const int most = below(5), times = mesh == 0 ? 1 : below(2);
        for (int many = most * times; many > 0; --many)
            vertices.insert(below(kVertices));
        if (vertices.empty())
            continue;
        chosen[mesh] = Vertices(vertices.begin(), vertices.end());
        text += " " + names(mesh, chosen[mesh]);
    }
    mel(text.empty() ? "select -cl" : "select" + text);
    model.select(chosen);
    ++counts["select"];
}

void RandomTool::copyOrPaste()
{
    const ToolModel::Pieces here = pieces();
    testing::internal::CaptureStderr(); // a skin that is given another mode's copy reports a failed write
    if (below(3) == 0) {
        edit("-copy true");
        model.copy(here);
        ++counts["copy"];
    } else {
        edit("-paste true");
        model.paste(here);
        ++counts["paste in " + model.settings.mode];
    }
    testing::internal::GetCapturedStderr();
}

void RandomTool::change()
{
    if (below(3) > 0) {
        model.settings.mode = std::vector<std::string>{"default", "skinCluster", "dualQuaternion",
                                                       "plug"}[std::size_t(below(4))];
        edit("-weightMode " + model.settings.mode);
        return;
    }
    model.settings.clampMin = below(2) == 0;
    model.settings.clampMax = below(2) == 0;
    model.settings.low = below(2);
    model.settings.high = 0.25 * (1 + below(5));
    edit(std::string("-clampMin ") + (model.settings.clampMin ? "true" : "false") + " -clampMax " +
         (model.settings.clampMax ? "true" : "false") + " -weightMin " + std::to_string(model.settings.low) +
         " -weightMax " + std::to_string(model.settings.high));
}

void RandomTool::back()
{
    for (int many = 1 + below(6); many > 0 && model.undoCount() > 0; --many) {
        const Moment& entry = history[model.undoCount() - 1];
        const bool fromThere = same(actual(), entry.now);
        mel("undo");
        model.undo();
        ++counts["undo"];
        compare("undo");
        if (!fromThere)
            continue;
        ++counts["undo bit for bit"];
        ASSERT_TRUE(same(actual(), entry.before)) << "not bit for bit";
    }
}

void RandomTool::forth()
{
    for (int many = 1 + below(6); many > 0 && model.redoCount() > 0; --many) {
        Moment& entry = history[model.undoCount()];
        const bool fromThere = same(actual(), entry.before);
        mel("redo");
        model.redo();
        ++counts["redo"];
        const bool likeLive = alike(model.weights, entry.live);
        compare("redo");
        // After another redo that was clamped otherwise, undo puts back what the live stroke found.
        entry.now = fromThere ? actual() : ToolModel::Weights();
        if (!fromThere || !likeLive)
            continue;
        ++counts["redo like live"];
        ASSERT_TRUE(same(actual(), entry.live)) << "not bit for bit";
    }
}

bool RandomTool::same(const ToolModel::Weights& a, const ToolModel::Weights& b)
{
    return a.plain == b.plain && a.skin == b.skin;
}

/// Whether they differ by rounding at most.
bool RandomTool::alike(const ToolModel::Weights& a, const ToolModel::Weights& b)
{
    double worst = 0;
    for (const auto& [key, values] : a.plain)
        for (std::size_t v = 0; v < values.size(); ++v)
            worst = std::max(worst, std::abs(values[v] - b.plain.at(key)[v]));
    for (std::size_t mesh = 0; mesh < a.skin.size(); ++mesh)
        for (std::size_t v = 0; v < a.skin[mesh].size(); ++v)
            for (std::size_t column = 0; column < 3; ++column)
                worst = std::max(worst, std::abs(a.skin[mesh][v][column] - b.skin[mesh][v][column]));
    return worst < 2e-7;
}

/// The model follows the scene's last digits once they have been compared, so that they do not add up.
void RandomTool::compare(const std::string& what)
{
    const ToolModel::Weights now = actual();
    for (const auto& [key, values] : now.plain)
        for (std::size_t v = 0; v < values.size(); ++v)
            ASSERT_NEAR(values[v], model.plain(key.first, key.second)[v], 2e-7)
                << what << ": " << key.first << " weight of " << meshes[std::size_t(key.second)] << " " << v;
    for (std::size_t mesh = 0; mesh < 2; ++mesh)
        for (std::size_t v = 0; v < kVertices; ++v)
            for (std::size_t column = 0; column < 3; ++column)
                ASSERT_NEAR(now.skin[mesh][v][column], model.weights.skin[mesh][v][column], 1e-9)
                    << what << ": skin of " << meshes[mesh] << " " << v;
    model.weights = now;
    ASSERT_EQ(selectionOf(session.selection().active()), model.selection) << what;
    ASSERT_EQ(session.undo().undoCount(), model.undoCount()) << what;
}

void RandomTool::step()
{
    const std::size_t entries = model.undoCount(), further = model.redoCount();
    const ToolModel::Weights before = actual();
    const int kind = below(100);
    if (kind < 40)
        stroke();
    else if (kind < 48)
        marquee();
    else if (kind < 56)
        selectByScript();
    else if (kind < 66)
        copyOrPaste();
    else if (kind < 74)
        change();
    else
        return kind < 88 ? back() : forth();
    compare("operation " + std::to_string(kind));
    if (model.undoCount() == entries + 1) {
        history.resize(entries);
        history.push_back({before, actual(), actual()});
    } else {
        ASSERT_EQ(model.redoCount(), further);
    }
}

INSTANTIATE_TEST_SUITE_P(Seed, RandomTool, ::testing::Range(1u, 11u));

TEST_P(RandomTool, DoesWhatTheModelSays)
{
    const ToolModel::Weights start = actual();
    for (int operation = 0; operation < 2000 && !HasFatalFailure(); ++operation) {
        SCOPED_TRACE("operation " + std::to_string(operation) + " in mode " + model.settings.mode);
        step();
    }
    ASSERT_FALSE(HasFatalFailure());
    while (model.undoCount() > 0) {
        mel("undo");
        model.undo();
    }
    EXPECT_EQ(session.undo().undoCount(), 0u);
    EXPECT_EQ(actual().plain, start.plain);
    EXPECT_EQ(actual().skin, start.skin);
    for (const char* wanted :
         {"stroke in default", "stroke in skinCluster", "stroke in dualQuaternion", "stroke in plug",
          "paste in default", "paste in plug", "paste in skinCluster", "paste in dualQuaternion", "marquee",
          "select", "copy", "undo bit for bit", "redo", "redo like live"})
        EXPECT_GT(counts[wanted], 5) << wanted;
}

} // namespace
