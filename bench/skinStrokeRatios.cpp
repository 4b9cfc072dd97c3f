// Strokes on skin weights through the loaded plug-in: skins of few and of many influences, short rows and
// longer ones. All points are selected, without labels.
#include "graph/graph.h"
#include "graph/weightRows.h"
#include "plainSkin.h"
#include "ratios.h"
#include "stroke.h"

#include "mel/interpreter.h"

namespace bench {

namespace {

constexpr std::uint32_t kEdited = 1;

struct Skin {
    std::size_t influences;
    std::size_t entries; ///< of each row
};

const Skin kSkins[] = {{4, 4}, {60, 4}, {250, 4}, {60, 8}, {250, 8}};

struct Shape {
    Skin skin;
    std::size_t columns, lines;

    std::size_t count() const { return columns * lines; }
    PlainRows rows() const { return characterRows(columns, lines, skin.influences, skin.entries, kEdited); }
};

/// The rows lie on skin influences j0, j1 ... of the sheet.
Scene sceneOf(const Shape& shape, const PlainRows& rows, double change, double further)
{
    Scene scene;
    scene.name = "skin " + std::to_string(shape.skin.influences) + "x" + std::to_string(shape.skin.entries);
    scene.deformer = "string $js[]; int $i; for ($i = 0; $i < " + std::to_string(shape.skin.influences) +
                     "; ++$i) { select -cl; $js[$i] = `joint -n (\"j\" + $i) -p ($i * 0.01) 0 0`; }"
                     "skinCluster -tsb -mi 1 -n skin $js sheet; setAttr j1.translateY 8;";
    scene.flags = "-deformer skin -influence j1 -weightMode skinCluster";
    scene.fill = [&rows](host::Session& session, std::size_t pressed) {
        const host::Plug plug = session.graph().plug("skin.weightList");
        host::WeightRows& stored = plug.makeRows();
        stored.clear();
        for (std::uint32_t row = 0; row < rows.count(); ++row) {
            const std::size_t begin = rows.first[row];
            stored.assign(row, {&rows.weights[begin], &rows.columns[begin], rows.first[row + 1] - begin});
        }
        const auto vertex = static_cast<std::uint32_t>(pressed);
        for (const host::WeightRows::Entry entry : stored.row(vertex))
            stored.set(vertex, entry.column,
                       entry.column == kEdited ? 0.5
                                               : 0.5 / static_cast<double>(stored.row(vertex).count - 1));
        plug.changed();
    };
    scene.weights = "skin.weightList";
    scene.column = ".weights[1]";
    scene.change = change;
    scene.further = further;
    return scene;
}

void compareDrag(Contest& contest, const Shape& shape)
{
    const PlainRows rows = shape.rows();
    Stroke stroke(sceneOf(shape, rows, 0.06, 2.0), shape.columns, shape.lines);
    PlainRescale plain(rows, kEdited, 0.06);
    contest.run([&] { stroke.drag(); }, [&] { plain.run(); });
    stroke.requireMoves();
}

/// Far up and far down in turn: rows reach 1, come back, reach 0, and come back.
void compareEnds(Contest& contest, const Shape& shape)
{
    const PlainRows rows = shape.rows();
    Stroke stroke(sceneOf(shape, rows, 0.45, -1.0), shape.columns, shape.lines);
    PlainRebuild plain(rows, kEdited, 0.45);
    contest.run([&] { stroke.drag(); }, [&] { plain.run(); });
    stroke.requireMoves();
}

enum class Step { kPress, kRelease, kUndo, kRedo };

/// A whole stroke a round, of which one step is timed.
void compareStep(Contest& contest, const Shape& shape, Step step)
{
    const PlainRows rows = shape.rows();
    Stroke stroke(sceneOf(shape, rows, 0.06, 2.0), shape.columns, shape.lines);
    stroke.release();
    stroke.mel("undo");
    PlainRows copy;
    const double before = stroke.weight();
    const auto timed = [&](Step which, auto&& work) {
        if (which == step)
            contest.product(work);
        else
            work();
    };
    while (contest.next()) {
        if (step == Step::kPress)
            contest.bare([&] { copy = PlainRows(rows); });
        timed(Step::kPress, [&] { stroke.press(); });
        stroke.drag();
        if (step == Step::kPress)
            stroke.drag();
        else
            contest.bare([&] { stroke.drag(); });
        const double dragged = stroke.weight();
        timed(Step::kRelease, [&] { stroke.release(); });
        timed(Step::kUndo, [&] { stroke.mel("undo"); });
        require(stroke.weight() == before, "Undo does not put back the weights.");
        timed(Step::kRedo, [&] { stroke.mel("redo"); });
        require(stroke.weight() == dragged, "Redo does not give the weights of the stroke.");
        stroke.mel("undo");
    }
}

} // namespace

void addSkinStrokes(Ratios& ratios, std::size_t columns, std::size_t lines)
{
    for (const Skin& skin : kSkins) {
        const Shape shape{skin, columns, lines};
        const std::size_t count = shape.count();
        const std::string suffix =
            ", skin " + std::to_string(skin.influences) + "x" + std::to_string(skin.entries);
        const auto add = [&](const std::string& name, double bound, auto compare) {
            ratios.add({name + suffix, count, boundAt(count, bound), count > 100000 ? 7 : 31},
                       [=](Contest& contest) { compare(contest, shape); });
        };
        add("drag / rescale", 2.5, compareDrag);
        add("drag to 0 and 1 / rebuild", 4.0, compareEnds);
        const std::tuple<const char*, double, Step> steps[] = {
            {"press / copy of the rows", 10.0, Step::kPress},
            {"release / drag", 3.0, Step::kRelease},
            {"undo / drag", 2.0, Step::kUndo},
            {"redo / drag", 2.0, Step::kRedo}};
        for (const auto& [name, bound, step] : steps)
            add(name, bound,
                [step = step](Contest& contest, const Shape& which) { compareStep(contest, which, step); });
    }
}

} // namespace bench
