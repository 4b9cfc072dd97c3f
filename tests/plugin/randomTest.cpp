// Thousands of random strokes, pastes, selections, undos and redos in every mode and on every kind of shape,
// against a model of the tool in plain arrays. Failures tell their seed; MORVANE_RANDOM_SEED=N starts from
// another one than 1, MORVANE_RANDOM_OPERATIONS=N makes each run longer or shorter.
#include "plugin/randomScene.h"
#include "support/modelDifference.h"
#include "support/posedModel.h"
#include "undo/undoQueue.h"

#include <cmath>
#include <cstdlib>
#include <set>

using namespace testing_support;

namespace {

unsigned fromEnvironment(const char* name, unsigned otherwise)
{
    const char* const text = std::getenv(name);
    return text ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

using Run = std::tuple<RandomScene::Kind, unsigned>;

class RandomTool : public RandomScene, public ::testing::WithParamInterface<Run> {
public:
    void SetUp() override
    {
        seed = fromEnvironment("MORVANE_RANDOM_SEED", 1) + std::get<1>(GetParam());
        careful = seed % 3 != 0;
        engine.seed(seed);
        RandomScene::SetUp();
        build(std::get<0>(GetParam()));
        session.undo().flush();
    }

    Pixel pixelOfAnyPoint();
    bool leavesNothing(const Spot& spot);
    Imath::V2d anyMotion(const Imath::V2d& way);
    void stroke();
    void marquee();
    void clickWithShift();
    void selectByScript();
    void copyOrPaste();
    void change();
    void changeReach();
    void back();
    void forth();
    void step();
    void compare(const std::string& what);
    void comparePoints(const std::string& what);
    static bool same(const Weights& a, const Weights& b);
    std::string where() const;

    /// The scene around an entry of the undo queue: before it, as the mouse left it, and as it stands now,
    /// which a redo may have clamped otherwise. Empty when unknown.
    struct Moment {
        Weights before, live, now;
        std::vector<Points> points; ///< before it
        bool restores;              ///< undo takes back all of it, to the last bit
    };
    std::vector<Moment> history;
    std::map<std::string, int> counts;
    unsigned seed = 0;
    /// Whether the run keeps to what undo takes back to the last bit; every third does not.
    bool careful = true;
    std::size_t nextPairing = 0; ///< in turn, so that every run meets all of them
};

std::string RandomTool::where() const
{
    return "seed " + std::to_string(seed) + ", in mode " + modeName(model.settings.mode) + " on " +
           model.settings.deformer + (model.reach.options.soft ? ", soft" : "") +
           (model.reach.options.symmetry ? ", symmetric" : "");
}

ToolTest::Pixel RandomTool::pixelOfAnyPoint()
{
    const int shape = below(static_cast<int>(model.scene.shapes.size()));
    const Imath::V2d pixel = pixelOf({shape, below(model.scene.shapes[at(shape)].size)});
    return {static_cast<int>(pixel.x), static_cast<int>(pixel.y)};
}

/// A press on a point that the mode does not edit, or that no weight moves, leaves the rounding of the probe,
/// which undo does not take back. So does letting go at once.
bool RandomTool::leavesNothing(const Spot& spot)
{
    const EditModel edit = model.editOf(spot);
    return !edit.pieces.empty() && direction(edit, spot).length() >= 0.01;
}

/// Up to most of the way that leads from 0 to 1 or back, a little aside of it; or none at all.
Imath::V2d RandomTool::anyMotion(const Imath::V2d& way)
{
    const double reach = fraction() * 1.6 - 0.8;
    const int aside = below(7), down = below(7); // one by one: every compiler draws them in this order
    const bool none = below(8) == 0;
    return none ? Imath::V2d(0, 0)
                : Imath::V2d(std::round(way.x * reach) + aside, std::round(way.y * reach) - down);
}

void RandomTool::stroke()
{
    const Pixel start = pixelOfAnyPoint();
    const bool highlighted = below(5) == 0, control = below(4) == 0;
    session.selection().preselectHilite = highlighted;
    const Selection under = highlighted ? highlight(start.x, start.y) : pick(start.x, start.y);
    if (under.empty())
        return;
    const Spot spot = {under[0].shape, under[0].points[0]};
    if (careful && !leavesNothing(spot))
        return;
    ASSERT_TRUE(model.press(under, false, control, highlighted));
    const Imath::V2d way = model.probes() ? direction(model.pressedEdit(), spot) : Imath::V2d(0, 0);
    const bool leads = way.length() >= 0.01;
    const Imath::V2d motion = anyMotion(way);
    int events = below(3);
    if (careful && events == 0 && motion.length() == 0)
        events = 1;
    press(start, control ? "-control" : "");
    const bool moved = leads && (events > 0 || motion.length() > 0);
    for (; events > 0; --events) {
        const int x = 1 + below(30), y = below(60) - 30;
        drag({start.x + x, start.y + y});
    }
    const Pixel end = {start.x + static_cast<int>(motion.x), start.y + static_cast<int>(motion.y)};
    drag(end);
    release(end);
    const double offset = leads ? (way ^ motion) / way.length() / way.length() / (control ? 10 : 1) : 0;
    model.releaseStroke(offset, moved);
    ++counts[std::string(offset != 0 ? "stroke in " : "motionless stroke in ") +
             modeName(model.settings.mode)];
    if (model.pressedEdit().pieces.size() > 1)
        ++counts["stroke on several objects"];
}

/// A rectangle that starts beside every point; or anywhere, with shift.
void RandomTool::marquee()
{
    const Pixel from = {below(session.viewport().width), below(session.viewport().height)};
    const Pixel to = {from.x + 30 + below(200), from.y - 30 - below(200)};
    const bool shift = below(2) == 0, control = below(2) == 0;
    const Selection under = pick(from.x, from.y);
    if (!shift && !under.empty())
        return;
    const Selection inside = pick(Imath::V2d(from.x, from.y), Imath::V2d(to.x, to.y));
    session.selection().preselectHilite = false;
    model.press(under, shift, control, false);
    press(from, std::string(shift ? "-shift " : "") + (control ? "-control" : ""));
    drag(to);
    release(to);
    model.releaseMarquee(inside);
    ++counts["marquee"];
}

void RandomTool::clickWithShift()
{
    Pixel start = pixelOfAnyPoint();
    start.x += below(3);
    const bool highlighted = below(3) == 0, control = below(3) == 0;
    session.selection().preselectHilite = highlighted;
    model.press(highlighted ? highlight(start.x, start.y) : pick(start.x, start.y), true, control,
                highlighted);
    press(start, control ? "-shift -control" : "-shift");
    const int x = below(2), y = below(2);
    release({start.x + x, start.y - y});
    model.releaseClick();
    ++counts["click"];
}

void RandomTool::selectByScript()
{
    Selection chosen;
    for (std::size_t shape = 0; shape < model.scene.shapes.size(); ++shape) {
        std::set<int> points;
        const int most = below(5), times = shape == 0 ? 1 : below(2);
        for (int many = most * times; many > 0; --many)
            points.insert(below(model.scene.shapes[shape].size));
        if (!points.empty())
            chosen.insert(chosen.begin() + below(static_cast<int>(chosen.size()) + 1),
                          {static_cast<int>(shape), {points.begin(), points.end()}, {}});
    }
    mel(chosen.empty() ? "select -cl" : "select" + names(chosen));
    model.selectByScript(chosen);
    ++counts["select"];
}

void RandomTool::copyOrPaste()
{
    // The model first: it looks where the points are before the paste moves them.
    if (below(3) == 0) {
        model.copy();
        edit("-copy true");
        ++counts["copy"];
    } else {
        const std::size_t entries = model.undoCount();
        model.settings.perVertex = below(2) == 0;
        edit(std::string("-pastePerVertex ") + (model.settings.perVertex ? "true" : "false"));
        model.paste();
        edit("-paste true");
        const std::string how = model.settings.perVertex ? "paste vertex by vertex" : "paste";
        ++counts[model.undoCount() > entries ? how : "refused " + how];
    }
}

void RandomTool::change()
{
    const auto anyOf = [this](const std::vector<std::string>& list) {
        return list[static_cast<std::size_t>(below(static_cast<int>(list.size())))];
    };
    const auto onOff = [this](bool& setting) {
        setting = below(2) == 0;
        return setting ? "true" : "false";
    };
    const int kind = below(10);
    if (kind < 5) {
        const Pairing& pairing = pairings[nextPairing++ % pairings.size()];
        model.setMode(pairing.mode);
        edit(std::string("-weightMode ") + modeName(pairing.mode));
        if (below(8) == 0) // now and then a deformer that the mode cannot use
            model.setDeformer(model.scene
                                  .deformers[static_cast<std::size_t>(
                                      below(static_cast<int>(model.scene.deformers.size())))]
                                  .name);
        else
            model.setDeformer(pairing.deformer);
        edit("-deformer " + model.settings.deformer);
    } else if (kind < 7 && !targetNames.empty()) {
        model.settings.target = anyOf(targetNames);
        edit("-target " + model.settings.target);
    } else if (kind < 7 && !layerNames.empty()) {
        model.settings.layer = anyOf(layerNames);
        edit("-ngLayer " + model.settings.layer);
    } else if (kind == 7) {
        edit(std::string("-ngDistributeWeights ") + onOff(model.settings.distribute));
    } else {
        const std::string low = onOff(model.settings.clampMin), high = onOff(model.settings.clampMax);
        model.settings.low = below(2);
        model.settings.high = 0.25 * (1 + below(5));
        edit("-clampMin " + low + " -clampMax " + high + " -weightMin " + std::to_string(model.settings.low) +
             " -weightMax " + std::to_string(model.settings.high));
    }
}

/// Soft selection and symmetry. The tolerance is wide: what the strokes have bent still has mirror images.
void RandomTool::changeReach()
{
    ReachOptions options = model.reach.options;
    if (below(2) == 0) {
        options.soft = below(3) > 0;
        options.falloff = below(4);
        options.radius = 1.5 + below(4);
        mel("softSelect -sse " + std::to_string(options.soft) + " -ssf " + std::to_string(options.falloff) +
            " -ssd " + std::to_string(options.radius));
    } else {
        options.symmetry = below(2) == 0;
        options.inWorld = below(2) == 0;
        options.axis = 2 * below(2);
        options.tolerance = 0.5 + below(3);
        mel(std::string("symmetricModelling -symmetry ") + (options.symmetry ? "1" : "0") + " -about " +
            (options.inWorld ? "world" : "object") + " -axis " + "xyz"[options.axis] + " -tolerance " +
            std::to_string(options.tolerance));
    }
    model.setReach(options);
    ++counts[options.soft ? "soft" : "hard"];
    ++counts[options.symmetry ? "symmetry" : "no symmetry"];
}

void RandomTool::back()
{
    for (int many = 1 + below(6); many > 0 && model.undoCount() > 0 && !HasFatalFailure(); --many) {
        const Moment& entry = history[model.undoCount() - 1];
        const bool restores = entry.restores && same(model.scene.weights, entry.now);
        mel("undo");
        model.undo();
        ++counts["undo"];
        compare("undo");
        if (!restores)
            continue;
        ++counts["undo bit for bit"];
        ASSERT_TRUE(same(model.scene.weights, entry.before)) << "weights";
        ASSERT_TRUE(positions() == entry.points) << "points";
    }
}

void RandomTool::forth()
{
    for (int many = 1 + below(6); many > 0 && model.redoCount() > 0 && !HasFatalFailure(); --many) {
        Moment& entry = history[model.undoCount()];
        const bool fromThere = same(model.scene.weights, entry.before), likeLive = model.redoesAlike();
        mel("redo");
        model.redo();
        ++counts["redo"];
        compare("redo");
        // After another redo that was clamped otherwise, undo puts back what the live stroke found.
        entry.now = fromThere ? model.scene.weights : Weights();
        if (!fromThere || !likeLive || !entry.restores)
            continue;
        ++counts["redo like live"];
        ASSERT_TRUE(same(model.scene.weights, entry.live)) << "not bit for bit";
    }
}

bool RandomTool::same(const Weights& a, const Weights& b)
{
    return a.numbers == b.numbers && a.skin == b.skin && a.painted == b.painted;
}

/// The model follows the scene's last digits once they have been compared, so that they do not add up.
void RandomTool::compare(const std::string& what)
{
    const Weights now = actual();
    ASSERT_EQ(difference(now, model.scene.weights, model.scene.shapes, Tolerance{2e-7, 1e-9, 1e-12}), "")
        << what;
    model.scene.weights = now;
    const Selection selected = actualSelection();
    ASSERT_EQ(textOf(selected), textOf(model.selection)) << what;
    ASSERT_EQ(session.undo().undoCount(), model.undoCount()) << what;
    comparePoints(what);
    const RichPieces reached = actualRich(), expected = model.rich();
    ASSERT_EQ(difference(reached.primary, expected.primary), "") << what;
    ASSERT_EQ(difference(reached.mirrored, expected.mirrored), "") << what << ", mirrored";
}

/// Every shape but the one that a lattice bends: that one has no form as simple.
void RandomTool::comparePoints(const std::string& what)
{
    const std::vector<Points> now = positions();
    for (std::size_t shape = 0; shape < now.size(); ++shape) {
        const ModelShape& known = model.scene.shapes[shape];
        if (known.bent)
            continue;
        const Points expected = posedPoints(model.scene, static_cast<int>(shape));
        for (std::size_t point = 0; point < expected.size(); ++point)
            for (std::size_t axis = 0; axis < 3; ++axis)
                ASSERT_TRUE(near(now[shape][point][axis], expected[point][axis], 1e-9))
                    << what << ": " << known.name << " " << point << " at " << now[shape][point][axis]
                    << " not " << expected[point][axis] << " on axis " << axis;
    }
}

void RandomTool::step()
{
    const std::size_t entries = model.undoCount(), further = model.redoCount();
    const int leftovers = model.leftovers;
    const Weights before = model.scene.weights;
    const std::vector<Points> points = positions();
    const int kind = below(100);
    if (kind < 38)
        stroke();
    else if (kind < 43)
        marquee();
    else if (kind < 46)
        clickWithShift();
    else if (kind < 53)
        selectByScript();
    else if (kind < 62)
        copyOrPaste();
    else if (kind < 72)
        change();
    else if (kind < 76)
        changeReach();
    else
        return kind < 88 ? back() : forth();
    ASSERT_FALSE(HasFatalFailure());
    compare("operation of kind " + std::to_string(kind));
    if (model.undoCount() == entries) {
        ASSERT_EQ(model.redoCount(), further);
        return;
    }
    // A press with symmetry on makes an entry of its own for the selection, before that of the release.
    history.resize(entries);
    while (history.size() + 1 < model.undoCount())
        history.push_back({before, before, before, points, true});
    history.push_back(
        {before, model.scene.weights, model.scene.weights, points, model.leftovers == leftovers});
}

std::string runName(const ::testing::TestParamInfo<Run>& info)
{
    return std::string(RandomScene::nameOf(std::get<0>(info.param))) +
           std::to_string(std::get<1>(info.param));
}

INSTANTIATE_TEST_SUITE_P(
    Runs, RandomTool,
    ::testing::Combine(::testing::Values(RandomScene::Kind::kMeshes, RandomScene::Kind::kPoints,
                                         RandomScene::Kind::kBlendShapes, RandomScene::Kind::kLayers),
                       ::testing::Range(0u, 8u)),
    runName);

TEST_P(RandomTool, DoesWhatTheModelSays)
{
    const Weights start = model.scene.weights;
    const std::vector<Points> points = positions();
    const unsigned operations = fromEnvironment("MORVANE_RANDOM_OPERATIONS", 1000);
    for (unsigned operation = 0; operation < operations; ++operation) {
        SCOPED_TRACE("operation " + std::to_string(operation) + " of " + where());
        step();
        ASSERT_FALSE(HasFatalFailure());
    }
    SCOPED_TRACE("the end of " + where());
    while (model.undoCount() > 0) {
        mel("undo");
        model.undo();
    }
    compare("everything undone");
    EXPECT_TRUE(model.leftovers == 0 || !careful || std::get<0>(GetParam()) == Kind::kLayers);
    if (model.leftovers == 0) {
        EXPECT_TRUE(same(model.scene.weights, start));
        EXPECT_TRUE(positions() == points);
    }
    for (const auto& [what, count] : counts)
        RecordProperty(what, count);
    if (operations < 1000)
        return; // too short to have met everything
    for (const Pairing& pairing : pairings)
        EXPECT_GT(counts["stroke in " + std::string(modeName(pairing.mode))], 0) << modeName(pairing.mode);
    for (const char* wanted :
         {"marquee", "click", "select", "copy", "paste", "paste vertex by vertex", "undo bit for bit",
          "redo like live", "soft", "symmetry", "stroke on several objects"})
        EXPECT_GT(counts[wanted], 0) << wanted;
}

} // namespace
