// Copy and paste in every mode: what goes with what, which number lands where, its undo and redo.
#include "plugin/history/historyScene.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

#include <cmath>
#include <tuple>

using namespace testing_support;

namespace {

double narrowed(double number)
{
    return static_cast<double>(static_cast<float>(number));
}

/// A copied point: its piece, its position there, and what goes for its vertex.
struct Match {
    std::size_t piece, position, id;
};

class PasteScene : public HistoryScene {
public:
    /// What a copy holds, and how it goes on to the target.
    struct Copied {
        const ModeRow* row;
        Pieces pieces;
        State state;
    };

    /// What deforms the meshes must not disturb a match: everything but what goes into the deformers is bent.
    void buildBent(const ModeRow& row)
    {
        build(row);
        mel("setAttr lift.offsetY 5; setAttr knee.rotateX 60; setAttr knee.translateY 3");
        startTool();
    }
    Copied copy(const ModeRow& row, const std::string& names)
    {
        choose(row);
        select(names);
        Copied copied{&row, pieces(), state()};
        edit("-copy true");
        return copied;
    }
    /// The search from every target point through every copied one; the first of the nearest wins. A point
    /// that is too far from all takes position 0 and id 0 of the piece that the point before it matched.
    std::vector<Match> matches(const Piece& target, const Pieces& copied) const
    {
        std::vector<Match> found;
        std::size_t piece = 0;
        for (const int vertex : target.vertices) {
            const Numbers& at = restPoints[target.mesh][static_cast<std::size_t>(vertex)];
            double best = 1000;
            std::size_t position = 0, id = 0;
            for (std::size_t c = 0; c < copied.size(); ++c)
                for (std::size_t k = 0; k < copied[c].vertices.size(); ++k) {
                    const auto v = static_cast<std::size_t>(copied[c].vertices[k]);
                    const Numbers& other = restPoints[copied[c].mesh][v];
                    const double x = at[0] - other[0], y = at[1] - other[1], z = at[2] - other[2];
                    const double distance = std::sqrt(x * x + y * y + z * z);
                    if (distance < best) {
                        best = distance;
                        piece = c;
                        position = k;
                        id = v;
                    }
                }
            found.push_back({piece, position, id});
        }
        return found;
    }
    static double copiedNumber(const Copied& copied, std::size_t piece, std::size_t vertex,
                               std::size_t influence)
    {
        const int mesh = copied.pieces[piece].mesh;
        const std::string place = " " + std::to_string(mesh);
        if (copied.row->kind == ModeRow::kSkin)
            return copied.state.at("skin" + place)[vertex * 3 + influence];
        if (copied.row->kind == ModeRow::kLayerInfluence)
            return copied.state.at("layer " + std::to_string(influence) + place)[vertex];
        return copied.state.at(copied.row->arrayOf(mesh))[vertex];
    }
    /// The number at the position that a match has in a piece's component.
    static double numberAt(const Copied& copied, const Match& match, std::size_t influence)
    {
        const int vertex = copied.pieces[match.piece].vertices[match.position];
        return copiedNumber(copied, match.piece, static_cast<std::size_t>(vertex), influence);
    }

    /// The place of an influence of one mesh in the order of another's: the orders are the same but for where
    /// they begin.
    static std::size_t sameInfluence(std::size_t influence, int from, int to)
    {
        return (influence + 3 - knee(from) + knee(to)) % 3;
    }
    /// Every point gets just what its match had.
    Change pastedPerVertex(const ModeRow& row, const Copied& copied, const Pieces& target, const State& old)
    {
        Change change = row.isLayer() ? undonePaste(row, target, old) : Change();
        for (const Piece& piece : target) {
            const std::vector<Match> match = matches(piece, copied.pieces);
            const std::string array = row.arrayOf(piece.mesh);
            for (std::size_t m = 0; m < match.size(); ++m) {
                const auto v = static_cast<std::size_t>(piece.vertices[m]);
                const int mesh = copied.pieces[match[m].piece].mesh;
                const double number = numberAt(copied, match[m], knee(mesh));
                if (row.kind == ModeRow::kPlain)
                    change[array][v] = row.storesFloats ? narrowed(number) : number;
                if (row.kind == ModeRow::kLayer)
                    change[array][v] = copiedNumber(copied, match[m].piece, match[m].id, 0);
                for (std::size_t j = 0; j < 3; ++j) {
                    const std::size_t theirs = sameInfluence(j, piece.mesh, mesh);
                    if (row.kind == ModeRow::kSkin)
                        change[array][v * 3 + j] = numberAt(copied, match[m], theirs);
                    if (row.kind == ModeRow::kLayerInfluence)
                        change["layer " + std::to_string(j) + " " + std::to_string(piece.mesh)][v] =
                            copiedNumber(copied, match[m].piece, match[m].id, theirs);
                }
            }
        }
        return change;
    }
    Change pasted(const ModeRow& row, const Copied& copied, const Pieces& target, const State& old)
    {
        if (perVertex)
            return pastedPerVertex(row, copied, target, old);
        // Whole arrays are written in the layer modes, of masks and dual quaternions through floats.
        Change change = row.isLayer() ? undonePaste(row, target, old) : Change();
        if (row.kind == ModeRow::kLayer)
            for (auto& [array, numbers] : change)
                for (auto& [index, number] : numbers)
                    number = narrowed(number);
        for (std::size_t i = 0; i < target.size(); ++i) {
            const std::vector<Match> match = matches(target[i], copied.pieces);
            const std::string array = row.arrayOf(target[i].mesh);
            for (std::size_t m = 0; m < match.size(); ++m) {
                const auto v = static_cast<std::size_t>(target[i].vertices[m]);
                if (row.kind == ModeRow::kPlain)
                    change[array][v] =
                        narrowed(numberAt(copied, match[m], knee(copied.pieces[match[m].piece].mesh)));
                // All rows are alike: influence j comes from the match of the target's point j.
                for (std::size_t j = 0; row.kind == ModeRow::kSkin && j < 3; ++j)
                    change[array][v * 3 + j] = narrowed(numberAt(copied, match[j], j));
                // Found by the vertex at the match's position in the last copied component.
                if (row.kind == ModeRow::kLayer) {
                    const int vertex = copied.pieces.back().vertices[match[m].position];
                    change[array][v] =
                        narrowed(copiedNumber(copied, match[m].piece, static_cast<std::size_t>(vertex), 0));
                }
                // Of several objects only the last keeps what was pasted.
                for (std::size_t j = 0; row.kind == ModeRow::kLayerInfluence && j < 3; ++j)
                    if (i + 1 == target.size())
                        change["layer " + std::to_string(j) + " " + std::to_string(target[i].mesh)][v] =
                            copiedNumber(copied, match[m].piece, match[m].id, j);
            }
        }
        return change;
    }
    /// Pastes both ways, and takes it back and forth over whatever the scene holds by then.
    void pasteBothWays(const ModeRow& row, const Copied& copied, const std::string& names)
    {
        for (const bool each : {false, true}) {
            SCOPED_TRACE(each ? "vertex by vertex" : "plain");
            setState(copied.state);
            perVertex = each;
            pasteUndoRedo(row, copied, names);
        }
    }
    void pasteUndoRedo(const ModeRow& row, const Copied& copied, const std::string& names)
    {
        choose(row);
        select(names);
        const Pieces target = pieces();
        session.undo().flush();
        const State old = state(), other = randomState(5);
        const Change change = pasted(row, copied, target, old);
        edit(std::string("-pastePerVertex ") + (perVertex ? "true" : "false"));
        edit("-paste true");
        edit(std::string("-pastePerVertex ") + (perVertex ? "false" : "true")); // the record keeps its own
        expectState(state(), changed(old, change), "paste");
        EXPECT_EQ(session.undo().undoCount(), 1u);
        EXPECT_EQ(melString("undoInfo -q -undoName"), std::string("morvaneToolCmd paste ") + row.edited);
        setState(other);
        mel("undo");
        expectState(state(), changed(other, undonePaste(row, target, old)), "undo");
        setState(other);
        unrecorded("select -cl");
        mel("redo");
        expectState(state(), changed(other, change), "redo");
    }

    bool perVertex = false;
};

class PasteModes : public PasteScene, public ::testing::WithParamInterface<std::tuple<ModeRow, ModeRow>> {};

INSTANTIATE_TEST_SUITE_P(Pairs, PasteModes,
                         ::testing::Combine(::testing::ValuesIn(modeRows()), ::testing::ValuesIn(modeRows())),
                         [](const auto& pair) {
                             return std::string(std::get<0>(pair.param).mode) + "Takes" +
                                    std::get<1>(pair.param).mode;
                         });

TEST_P(PasteModes, OneMeshsWeightsReachItsDuplicateOrTheCopyIsRefused)
{
    const auto& [row, source] = GetParam();
    buildBent(row.isLayer() ? row : source);
    setState(randomState(4));
    const Copied copied = copy(rowOf(source.mode), "sheet.vtx[*]");
    ASSERT_EQ(copied.pieces.size(), 1u);
    const bool accepted = row.kind == ModeRow::kPlain ? !source.isLayer() : row.kind == source.kind;
    const std::string target = "twin.vtx[3:17] coarse.vtx[*]";
    if (accepted)
        return pasteBothWays(rowOf(row.mode), copied, row.kind == ModeRow::kSkin ? "twin.vtx[3:17]" : target);
    choose(rowOf(row.mode));
    select(target);
    session.undo().flush();
    const std::string scene = sceneText(session);
    const State old = state();
    // A skin says so for each object and then fails to write the first; a layer's influences say nothing.
    const int warnings = row.kind == ModeRow::kLayerInfluence ? 0 : row.kind == ModeRow::kSkin ? 2 : 1;
    for (int warning = 0; warning < warnings; ++warning)
        expectWarning("Weights were copied in an incompatible weight mode");
    testing::internal::CaptureStderr();
    edit("-paste true");
    EXPECT_EQ(session.undo().undoCount(), 0u);
    const std::string report = testing::internal::GetCapturedStderr();
    EXPECT_EQ(report.empty(), row.kind != ModeRow::kSkin) << report;
    EXPECT_EQ(report.find("\nAPI error detected in src/morvaneToolCommand at line ") == 0,
              row.kind == ModeRow::kSkin);
    expectState(state(), old, "refused");
    EXPECT_EQ(sceneText(session), scene);
}

class PasteAcross : public PasteScene, public ::testing::WithParamInterface<ModeRow> {};

INSTANTIATE_TEST_SUITE_P(Modes, PasteAcross, ::testing::ValuesIn(modeRows()),
                         [](const auto& row) { return std::string(row.param.mode); });

const std::pair<const char*, const char*> kAcross[] = {
    {"sheet.vtx[*]", "coarse.vtx[*]"},
    {"coarse.vtx[*]", "sheet.vtx[*]"},
    {"sheet.vtx[5:12]", "twin.vtx[*]"},
    {"sheet.vtx[0:9] twin.vtx[*]", "coarse.vtx[*]"},
    {"sheet.vtx[10:19] coarse.vtx[*] twin.vtx[*]", "coarse.vtx[2:7] sheet.vtx[3:9] twin.vtx[*]"},
    {"coarse.vtx[*] sheet.vtx[0:8]", "twin.vtx[*] sheet.vtx[3:9]"},
    {"coarse.vtx[0:3] sheet.vtx[1:8]", "twin.vtx[*]"}}; // its first points match different objects

TEST_P(PasteAcross, TopologiesAndObjectsFindTheNumbersOfTheirNearestCopiedPoints)
{
    buildBent(GetParam());
    for (const auto& [from, onto] : kAcross) {
        SCOPED_TRACE(std::string(from) + " onto " + onto);
        setState(randomState(6));
        pasteBothWays(rowOf(GetParam().mode), copy(rowOf(GetParam().mode), from), onto);
    }
}

TEST_P(PasteAcross, SoftSelectedPointsAreCopiedAndPastedWhole)
{
    buildBent(GetParam());
    mel("softSelect -sse 1 -ssd 3 -ssf 0");
    setState(randomState(11));
    const ModeRow& row = rowOf(GetParam().mode);
    const Copied copied = copy(row, "sheet.vtx[7]");
    ASSERT_GT(copied.pieces[0].vertices.size(), 1u);
    ASSERT_LT(copied.pieces[0].falloff[0], 1.0);
    pasteBothWays(row, copied, "twin.vtx[11]");
}

// Points beyond the reach of a match, after one that matched the first copied object, after one that matched
// the second, and before any.
TEST_P(PasteAcross, PointsOutOfReachTakeTheFirstNumberOfTheObjectThatTheOneBeforeMatched)
{
    beforeDeformers = "xform -os -t 5000 0 0 coarse.vtx[0] coarse.vtx[2] coarse.vtx[8];"
                      "xform -os -t 1003 0 -3 coarse.vtx[7]"; // 999 from the twin
    buildBent(GetParam());
    setState(randomState(10));
    const ModeRow& row = rowOf(GetParam().mode);
    pasteBothWays(row, copy(row, "sheet.vtx[2:9] twin.vtx[10:19]"), "coarse.vtx[*]");
    pasteBothWays(row, copy(row, "coarse.vtx[0:1]"), "twin.vtx[0:5]");
}

// Skins tell themselves where their points are before they are deformed, when no deformer is named or one
// that has nothing to do with them.
class SkinPaste : public PasteScene,
                  public ::testing::WithParamInterface<std::tuple<const char*, const char*>> {};

const char kStranger[] = "polyPlane -n stranger; cluster -n elsewhere stranger;"
                         "morvaneContext -e -weightMode default morvaneContext1;"
                         "morvaneContext -e -deformer elsewhere morvaneContext1";

INSTANTIATE_TEST_SUITE_P(Modes, SkinPaste,
                         ::testing::Combine(::testing::Values("skinCluster", "dualQuaternion"),
                                            ::testing::Values("delete lift", kStranger)));

TEST_P(SkinPaste, NeedsNoDeformerToBeNamed)
{
    const ModeRow& row = rowOf(std::get<0>(GetParam()));
    buildBent(row);
    mel(std::get<1>(GetParam()));
    edit(std::string("-weightMode ") + row.mode);
    select("sheet.vtx[*]");
    const Copied copied{&row, pieces(), {{row.arrayOf(0), edited(0)}}};
    edit("-copy true");
    select("twin.vtx[3:17]");
    const State old = {{row.arrayOf(1), edited(1)}};
    const Change change = pasted(row, copied, pieces(), old);
    edit("-paste true");
    expectState({{row.arrayOf(1), edited(1)}}, changed(old, change), "paste");
}

} // namespace
