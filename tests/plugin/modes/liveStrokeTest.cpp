// The live stroke, mode by mode: what it writes where, how it clamps, what it draws and what it asks of the
// platform.
#include "plugin/modes/modeScene.h"

#include "graph/graph.h"
#include "selection/selectionState.h"
#include "support/weightModel.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>

using namespace testing_support;

namespace {

struct Clamps {
    const char* flags;
    bool low, high;
    double least, most;
};

// The lower bound can be set to nothing but 0 and 1.
const Clamps kClamps[] = {
    {"-clampMin false -clampMax false -weightMin 1 -weightMax 0.25", false, false, 0, 0},
    {"-clampMin true -clampMax false -weightMin 0", true, false, 0, 0},
    {"-clampMin true -clampMax false -weightMin 1", true, false, 1, 0},
    {"-clampMin false -clampMax true -weightMax 0.6", false, true, 0, 0.6},
    {"-clampMin true -clampMax true -weightMin 0 -weightMax 1.5", true, true, 0, 1.5},
    // Crossed: the lower bound comes first, so all end at the upper one.
    {"-clampMin true -clampMax true -weightMin 1 -weightMax 0.25", true, true, 1, 0.25},
};

/// One edited object as the platform selects it now.
struct Piece {
    std::string mesh;
    std::vector<int> vertices;
    std::vector<float> falloff;
};

class LiveStroke : public ModeScene, public ::testing::WithParamInterface<WeightPlace> {
public:
    void SetUp() override
    {
        ModeScene::SetUp();
        build(GetParam());
        lookAt(kMiddle, 6);
    }

    /// The entries of an edit, in order: the selection's objects, then those of its mirrored half. A layer is
    /// written as a whole, so that there the halves on a mesh are one entry.
    std::vector<Piece> pieces()
    {
        std::vector<Piece> found;
        const host::RichSelection rich = session.selection().rich();
        for (const host::SelectionList* half : {&rich.selection, &rich.symmetry})
            for (const host::SelectionItem& item : half->items) {
                if (!item.component)
                    continue;
                const std::string mesh =
                    item.node.get() == &session.graph().get("sheetShape") ? "sheet" : "twin";
                std::vector<float> falloff = item.component->weights;
                if (falloff.empty())
                    falloff.assign(item.component->count(), 1.0F);
                addPiece(found, {mesh, item.component->elements, falloff});
            }
        return found;
    }
    void addPiece(std::vector<Piece>& pieces, const Piece& added) const
    {
        const auto same = std::find_if(pieces.begin(), pieces.end(),
                                       [&](const Piece& piece) { return piece.mesh == added.mesh; });
        if (!place.isLayer() || same == pieces.end())
            return pieces.push_back(added);
        std::map<int, float> points;
        for (const Piece* piece : {static_cast<const Piece*>(&*same), &added})
            for (std::size_t k = 0; k < piece->vertices.size(); ++k)
                points[piece->vertices[k]] = piece->falloff[k];
        same->vertices.clear();
        same->falloff.clear();
        for (const auto& [vertex, falloff] : points) {
            same->vertices.push_back(vertex);
            same->falloff.push_back(falloff);
        }
    }
    double clamped(double value, const Clamps& clamps) const
    {
        if (place.unitClamp)
            return std::min(std::max(value, 0.0), 1.0);
        if (clamps.low)
            value = std::max(value, clamps.least);
        if (clamps.high)
            value = std::min(value, clamps.most);
        return value;
    }
    /// The weights of a mesh after a drag event: entry after entry writes its points, each from the weights
    /// of the press.
    std::vector<double> expected(const std::string& mesh, const std::vector<Piece>& entries,
                                 const State& before, double offset, const Clamps& clamps)
    {
        std::vector<double> values = oldOf(mesh, before);
        const std::vector<double> pressed = values;
        for (const Piece& entry : entries) {
            if (arrayOf(entry.mesh) != arrayOf(mesh) || (!*place.array && entry.mesh != mesh))
                continue;
            for (std::size_t k = 0; k < entry.vertices.size(); ++k) {
                const auto v = static_cast<std::size_t>(entry.vertices[k]);
                values[v] =
                    stored(clamped(pressed[v] + offset * static_cast<double>(entry.falloff[k]), clamps));
            }
        }
        return values;
    }
    std::vector<double> oldOf(const std::string& mesh, const State& before) const
    {
        if (place.isLayer())
            return before.layers.at(mesh).at(place.target);
        if (!place.isSkin())
            return before.numbers.at(mesh);
        std::vector<double> values;
        for (const std::vector<double>& row : before.rows.at(mesh))
            values.push_back(row[2]);
        return values;
    }
    /// The other influences share what is left; other layer data stays.
    void expectTheRest(const std::string& mesh, const State& before)
    {
        const State now = state();
        if (place.isSkin()) {
            const std::vector<double> edited = weights(mesh);
            for (std::size_t v = 0; v < kVertices; ++v) {
                const std::vector<double>& old = before.rows.at(mesh)[v];
                const std::vector<double> row =
                    edited[v] == old[2] ? old : WeightModel::withRoom(old, 2, edited[v]);
                for (std::size_t influence = 0; influence < row.size(); ++influence)
                    EXPECT_NEAR(now.rows.at(mesh)[v][influence], row[influence], 1e-12) << "vertex " << v;
            }
        }
        for (const std::string target : {"mask", "dq", "0", "1", "2"}) {
            const bool shared = std::string(place.target) == "1" && target < "3";
            if (place.isLayer() && target != place.target && !shared) {
                EXPECT_EQ(now.layers.at(mesh).at(target), before.layers.at(mesh).at(target)) << target;
            }
        }
    }
    /// The text beside the k-th vertex of an entry, without user clamps, at six digits.
    std::string labelOf(const Piece& entry, std::size_t k, const std::vector<double>& old,
                        double offset) const
    {
        const double weight =
            old[static_cast<std::size_t>(entry.vertices[k])] + offset * static_cast<double>(entry.falloff[k]);
        char text[64];
        std::snprintf(text, sizeof text, "%.6f", clamped(weight, kClamps[0]));
        return text;
    }
    void dragTo(Pixel start, Pixel by) { drag({start.x + by.x, start.y + by.y}); }
};

INSTANTIATE_TEST_SUITE_P(Modes, LiveStroke, ::testing::ValuesIn(kWeightPlaces),
                         [](const auto& row) { return row.param.name(); });

TEST_P(LiveStroke, EveryEventWritesThePressTimeWeightPlusOffsetTimesFalloffClamped)
{
    mel("softSelect -sse 1 -ssd 4.5 -ssf 0; select sheet.vtx[7]");
    for (const Clamps& clamps : kClamps) {
        SCOPED_TRACE(clamps.flags);
        edit(clamps.flags);
        const std::string start = sceneText(session);
        const State before = state();
        const std::vector<Piece> entries = pieces();
        ASSERT_EQ(entries.size(), 1u);
        ASSERT_GT(entries[0].vertices.size(), 4u);
        ASSERT_LT(entries[0].vertices.size(), static_cast<std::size_t>(kVertices));
        session.undo().flush();
        const Imath::V2d way = direction(kMiddle);
        const Pixel from = at(kMiddle);
        press(from);
        Pixel by = {};
        for (const double wanted : {0.07, -0.3, 2.5, -2.5, 0.2}) {
            by = dragFor(way, wanted);
            const double offset = offsetOf(way, by.x, by.y);
            dragTo(from, by);
            EXPECT_EQ(weights(), expected("sheet", entries, before, offset, clamps)) << offset;
            expectTheRest("sheet", before);
        }
        drag(from);
        EXPECT_EQ(weights(), expected("sheet", entries, before, 0, clamps)) << "back where it began";
        dragTo(from, by);
        release({from.x + by.x, from.y + by.y});
        EXPECT_EQ(session.undo().undoCount(), 1u);
        session.undo().flush();
        restore(before);
        EXPECT_EQ(sceneText(session), start) << "nothing else was written";
    }
}

TEST_P(LiveStroke, SeveralMeshesAreEditedInTheirOrder)
{
    // A surface falloff stays on its mesh, so the two have falloffs of their own for the same vertices.
    mel("softSelect -sse 1 -ssd 4.5 -ssf 1; select twin.vtx[3] sheet.vtx[7]");
    edit("-clampMin false -displayPrecision 6");
    const State before = state();
    const std::vector<Piece> entries = pieces();
    ASSERT_EQ(entries.size(), 2u);
    ASSERT_EQ(entries[0].mesh, "twin");
    const Imath::V2d way = direction(kMiddle);
    const Pixel from = at(kMiddle), by = dragFor(way, 0.06);
    const double offset = offsetOf(way, by.x, by.y);
    press(from);
    dragTo(from, by);
    std::vector<std::string> texts;
    for (const Piece& entry : entries) {
        EXPECT_EQ(weights(entry.mesh), expected(entry.mesh, entries, before, offset, kClamps[0]))
            << entry.mesh;
        expectTheRest(entry.mesh, before);
        const std::vector<double> old = oldOf(entry.mesh, before);
        for (std::size_t k = 0; k < entry.vertices.size(); ++k) {
            texts.push_back(labelOf(entry, k, old, offset));
        }
    }
    EXPECT_EQ(melStrings("viewportLabels"), texts) << "labels: object after object, vertex after vertex";
    release({from.x + by.x, from.y + by.y});
}

// The soft selection of each half has its own entry; the mirrored half comes after.
TEST_P(LiveStroke, WithSymmetryBothSidesChangeAlike)
{
    mel("setAttr lift.offset -type double3 0.1 0.5 0.3; setAttr face.envelope 0.2; setAttr knee.translateY "
        "0.6;"
        "setAttr knee.rotateX 20; setAttr toe.translateY 0.3; setAttr toe.rotateZ 4;"
        "softSelect -sse 1 -ssd 2.5 -ssf 0; select -cl;"
        "symmetricModelling -symmetry 1 -about object -axis x -tolerance 0.9");
    edit("-clampMin false -displayPrecision 6");
    lookAt(8, 1.5);
    const Imath::V2d way = direction(8);
    const State before = state();
    const Pixel from = at(8), by = dragFor(way, 0.1);
    const double offset = offsetOf(way, by.x, by.y);
    ASSERT_GT(std::fabs(offset), 0.01) << way;
    press(from); // selects the vertex and its image
    EXPECT_EQ(melStrings("ls -sl"), (std::vector<std::string>{"sheet.vtx[6]", "sheet.vtx[8]"}));
    const std::vector<Piece> entries = pieces();
    ASSERT_EQ(entries.size(), place.isLayer() ? 1u : 2u);
    dragTo(from, by);
    const std::vector<double> now = weights();
    EXPECT_EQ(now, expected("sheet", entries, before, offset, kClamps[0]));
    const std::vector<double> old = oldOf("sheet", before);
    EXPECT_NEAR(now[6] - old[6], offset, 1e-6);
    EXPECT_NEAR(now[8] - old[8], offset, 1e-6);
    std::vector<std::string> expectedLabels;
    for (const Piece& entry : entries)
        for (std::size_t k = 0; k < entry.vertices.size(); ++k)
            expectedLabels.push_back(labelOf(entry, k, old, offset));
    EXPECT_EQ(melStrings("viewportLabels"), expectedLabels);
    release({from.x + by.x, from.y + by.y});
    restore(before);
    mel("undo; redo");
    EXPECT_EQ(weights(), now) << "redone, both sides change alike too";
    mel("symmetricModelling -symmetry 0");
}

// Two halves with the same vertices: each counts from the weights of the press, and the later one stands.
TEST_P(LiveStroke, OfAMeshThatIsSelectedTwiceTheSecondFalloffCounts)
{
    mel("selectPref -preSelectHilite true; softSelect -sse 0; select sheet.vtx[6:8]");
    edit("-clampMin false");
    host::RichSelection rich = session.selection().rich();
    ASSERT_EQ(rich.selection.items.size(), 1u);
    rich.symmetry = rich.selection;
    const auto halved = [](const host::SelectionItem& item, std::vector<float> falloff) {
        host::Ref<host::Component> component = item.component->clone();
        component->weights = std::move(falloff);
        return host::SelectionItem{item.node, component, host::Plug()};
    };
    rich.selection.items[0] = halved(rich.selection.items[0], {1.0F, 0.75F, 0.5F});
    rich.symmetry.items[0] = halved(rich.symmetry.items[0], {0.25F, 0.5F, 1.0F});
    const State before = state();
    const Imath::V2d way = direction(kMiddle);
    const Pixel from = at(kMiddle), by = dragFor(way, 0.06);
    mel("viewportEvent -move " + std::to_string(from.x) + " " + std::to_string(from.y));
    session.selection().setRich(rich);
    const std::vector<Piece> entries = pieces();
    ASSERT_EQ(entries.size(), place.isLayer() ? 1u : 2u);
    press(from);
    dragTo(from, by);
    EXPECT_EQ(weights(), expected("sheet", entries, before, offsetOf(way, by.x, by.y), kClamps[0]));
    release({from.x + by.x, from.y + by.y});
    mel("selectPref -preSelectHilite false");
}

TEST_P(LiveStroke, LabelsShowTheNewWeightsCutWhereTheVerticesAreMappedTwice)
{
    mel("softSelect -sse 0; select sheet.vtx[6:8]");
    edit("-clampMin false -displayPrecision 6 -fontSize 17 -fontColorR 0.25 -fontColorG 0.5 -fontColorB 0.75 "
         "-fontOpacity 0.125");
    const State before = state();
    const std::vector<double> old = oldOf("sheet", before);
    const Imath::V2d way = direction(kMiddle);
    const Pixel from = at(kMiddle);
    press(from);
    const Imath::M44d world = host::worldMatrix(*session.graph().get("sheetShape").asDag());
    for (const double wanted : {0.04, -0.09}) {
        std::vector<Imath::V3d> places;
        for (const int vertex : {6, 7, 8}) // as they stand when the event begins
            places.push_back(point(vertex) * world * world);
        const Pixel by = dragFor(way, wanted);
        const double offset = offsetOf(way, by.x, by.y);
        const std::vector<std::string> lines = linesOf(traced(*this, [&] { dragTo(from, by); }), "draw");
        ASSERT_EQ(lines.size(), 7u);
        EXPECT_EQ(lines[0], "draw\tbeginDrawable selectable=2 name=0");
        EXPECT_EQ(lines[1], "draw\tsetColor 0.25 0.5 0.75 0.125");
        EXPECT_EQ(lines[2], "draw\tsetFontSize 17");
        EXPECT_EQ(lines[6], "draw\tendDrawable");
        for (std::size_t k = 0; k < 3; ++k) {
            std::istringstream line(lines[3 + k].substr(5));
            std::string word, text, align;
            Imath::V3d where;
            line >> word >> where.x >> where.y >> where.z >> text >> align;
            EXPECT_EQ(word, "text");
            EXPECT_EQ(align, "0");
            EXPECT_LE((where - places[k]).length(), 1e-9 * (1 + places[k].length())) << lines[3 + k];
            char six[64];
            std::snprintf(six, sizeof six, "\"%.6f\"", clamped(old[6 + k] + offset, kClamps[0]));
            EXPECT_EQ(text, six);
        }
    }
    edit("-displayWeights false");
    EXPECT_TRUE(linesOf(traced(*this, [&] { drag({from.x + 30, from.y}); }), "draw").empty());
    release({from.x + 30, from.y});
}

TEST_P(LiveStroke, ADragAsksTheScriptLanguageForNothingButTheLayerWrites)
{
    mel("select sheet.vtx[6:8] twin.vtx[2:4]");
    const Pixel from = at(kMiddle);
    const Imath::V2d way = direction(kMiddle);
    const std::vector<std::string> asked = traced(*this, [&] { press(from); });
    for (int event = 1; event <= 3; ++event) {
        const Pixel by = dragFor(way, 0.02 * event);
        trace.clear();
        dragTo(from, by);
        std::vector<std::string> writes;
        for (const std::string mesh : {"sheet", "twin"}) {
            if (std::string(place.target) == "1")
                for (const char* target : {"0", "2"})
                    writes.push_back(std::string(target) + " " + path(mesh));
            if (place.isLayer())
                writes.push_back(std::string(place.target) + " " + path(mesh));
        }
        std::vector<std::string> asks;
        for (const std::string& line : linesOf(trace, "mel")) {
            const std::string head = "mel\tdisplay=0 undo=0\tngst2Layers -id 1 -paintTarget ";
            ASSERT_EQ(line.compare(0, head.size(), head), 0) << line;
            const std::string target = line.substr(head.size(), line.find(' ', head.size()) - head.size());
            ASSERT_NE(line.find(" -e -vertexWeights \""), std::string::npos) << line;
            asks.push_back(target + " " + line.substr(line.rfind(' ') + 1));
        }
        EXPECT_EQ(asks, writes);
        EXPECT_TRUE(linesOf(trace, "idle").empty());
    }
    release(from);
    if (!place.isLayer()) {
        EXPECT_EQ(linesOf(asked, "mel"),
                  (std::vector<std::string>{"mel\tdisplay=0 undo=0\tselectPref -q -preSelectHilite",
                                            "mel\tdisplay=0 undo=0\texists ngst2Layers"}))
            << "all that a press asks";
    }
}

// What a stroke works on was found at the press; its names are not asked for again.
TEST_P(LiveStroke, NamesMayChangeDuringAStroke)
{
    mel("softSelect -sse 1 -ssd 4.5 -ssf 0; select sheet.vtx[7]");
    edit("-clampMin false");
    const State before = state();
    const std::vector<Piece> entries = pieces();
    const Imath::V2d way = direction(kMiddle);
    const Pixel from = at(kMiddle), by = dragFor(way, 0.05);
    press(from);
    const std::vector<const char*> names = {"lift",  "face", "sheetSkin", "sheetShape",
                                            "sheet", "pair", "knee"};
    for (const char* name : names)
        mel(std::string("rename ") + name + " renamed_" + name + "; createNode transform -n " + name);
    dragTo(from, by);
    for (const char* name : names)
        mel(std::string("delete ") + name + "; rename renamed_" + name + " " + name);
    EXPECT_EQ(weights(), expected("sheet", entries, before, offsetOf(way, by.x, by.y), kClamps[0]));
    expectTheRest("sheet", before);
    release({from.x + by.x, from.y + by.y});
}

} // namespace
