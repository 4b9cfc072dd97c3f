// Symmetry: what mirrors what, and the two parts of the rich selection.
#include "selection/symmetry.h"
#include "selectionFixture.h"

#include "types/error.h"
#include "undo/undoQueue.h"

using namespace testing_support;
using host::SymmetryOptions;

namespace {

/// A sheet of 5 x 5 vertices about the origin: vertex row * 5 + column, x grows with the column.
class Symmetry : public SelectionTest {
public:
    Symmetry() { mel("polyPlane -n sheet -w 4 -h 4 -sx 4 -sy 4 -ax 0 1 0; select -cl"); }
    void symmetry(const std::string& flags) { mel("symmetricModelling -symmetry 1 " + flags); }
    Names mirrored(const Names& names) { return texts(host::symmetrized(session, named(names))); }
};

TEST_F(Symmetry, ThePartnerIsTheVertexAtTheMirroredPosition)
{
    const struct {
        const char *scene, *options, *selected;
        Names expected;
    } rows[] = {
        {"", "-about object -axis x", "sheet.vtx[11]", {"sheet.vtx[11]", "sheet.vtx[13]"}},
        {"", "-about object -axis z", "sheet.vtx[11]", {"sheet.vtx[11]"}}, // on the seam
        {"", "-about object -axis z", "sheet.vtx[6]", {"sheet.vtx[6]", "sheet.vtx[16]"}},
        {"", "-about object -axis y", "sheet.vtx[6]", {"sheet.vtx[6]"}},
        // Moved by one column: the world's plane now runs through the second column.
        {"setAttr sheet.translateX 1",
         "-about world -axis x",
         "sheet.vtx[10]",
         {"sheet.vtx[10]", "sheet.vtx[12]"}},
        {"setAttr sheet.translateX 1",
         "-about object -axis x",
         "sheet.vtx[10]",
         {"sheet.vtx[10]", "sheet.vtx[14]"}},
        {"setAttr sheet.translateX 1",
         "-about world -axis x",
         "sheet.vtx[14]",
         {"sheet.vtx[14]"}}, // nothing there
        // Turned about y: the object's x axis is the world's z axis.
        {"setAttr sheet.rotateY 90",
         "-about world -axis z",
         "sheet.vtx[11]",
         {"sheet.vtx[11]", "sheet.vtx[13]"}},
        // Edges and faces follow their corners.
        {"", "-about object -axis x", "sheet.f[4]", {"sheet.f[4]", "sheet.f[7]"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.scene) + " " + row.options + " " + row.selected);
        mel("setAttr sheet.translateX 0; setAttr sheet.rotateY 0; " + std::string(row.scene));
        symmetry(row.options);
        EXPECT_EQ(mirrored({row.selected}), row.expected);
    }
    mel("setAttr sheet.translateX 0; setAttr sheet.rotateY 0");
    symmetry("-about object -axis x");
    host::Ref<host::Component> edges(new host::Component(MFn::kMeshEdgeComponent));
    const auto geometry = host::shapeGeometry(shape("sheet"));
    const auto& topology = *static_cast<const host::MeshData&>(*geometry).topology;
    for (int edge = 0; edge < static_cast<int>(topology.edges.size()); ++edge) {
        const auto& ends = topology.edges[static_cast<std::size_t>(edge)];
        const host::SelectionList both =
            host::symmetrized(session, named({"sheet.e[" + std::to_string(edge) + "]"}));
        const auto mirror = [](int vertex) { return vertex / 5 * 5 + 4 - vertex % 5; };
        const bool own = std::minmax(mirror(ends[0]), mirror(ends[1])) == std::minmax(ends[0], ends[1]);
        EXPECT_EQ(both.items[0].component->count(), own ? 1u : 2u) << "edge " << edge;
    }
}

TEST_F(Symmetry, TheToleranceDecidesWhetherAMovedVertexStillHasAPartner)
{
    mel("setAttr sheetShape.pnts[13] 0.05 0 0");
    symmetry("-about object -axis x -tolerance 0.01");
    EXPECT_EQ(mirrored({"sheet.vtx[11]"}), Names{"sheet.vtx[11]"});
    symmetry("-about object -axis x -tolerance 0.06");
    EXPECT_EQ(mirrored({"sheet.vtx[11]"}), (Names{"sheet.vtx[11]", "sheet.vtx[13]"}));
}

TEST_F(Symmetry, TheRichSelectionKeepsTheMirroredPartApart)
{
    symmetry("-about object -axis x");
    const struct {
        Names selected, primary, symmetry;
    } rows[] = {
        {{"sheet.vtx[11]"}, {"sheet.vtx[11]"}, {"sheet.vtx[13]"}}, // one side: that side leads
        {{"sheet.vtx[11]", "sheet.vtx[13]"}, {"sheet.vtx[13]"}, {"sheet.vtx[11]"}}, // both: the positive side
        {{"sheet.vtx[12]"}, {"sheet.vtx[12]"}, {}},                                 // the seam
        {{"sheet.vtx[10:14]"}, {"sheet.vtx[12:14]"}, {"sheet.vtx[10:11]"}},
        {{"sheet"}, {"sheet"}, {}},
    };
    for (const auto& row : rows) {
        state().setActive(named(row.selected));
        const host::RichSelection rich = state().rich();
        EXPECT_EQ(texts(rich.selection), row.primary);
        EXPECT_EQ(texts(rich.symmetry), row.symmetry);
    }
    mel("symmetricModelling -symmetry 0");
    state().setActive(named({"sheet.vtx[11]"}));
    EXPECT_TRUE(state().rich().symmetry.items.empty());
}

TEST_F(Symmetry, SoftFalloffSpreadsOnBothSidesAndMeetsAtTheSeam)
{
    symmetry("-about object -axis x");
    state().soft = {true, host::SoftSelectOptions::kVolume, 2.5, {{1, 0, 1}, {0, 1, 1}}};
    state().setActive(named({"sheet.vtx[11]"}));
    const host::RichSelection rich = state().rich();
    const std::map<int, double> primary = weights(rich.selection, "sheet"),
                                other = weights(rich.symmetry, "sheet");
    const std::vector<Imath::V3d> points = world("sheet");
    std::size_t inReach = 0;
    for (int vertex = 0; vertex < 25; ++vertex) {
        const Imath::V3d& at = points[static_cast<std::size_t>(vertex)];
        const double distance = std::min((at - points[11]).length(), (at - points[13]).length());
        const double wanted = 1.0 - distance / 2.5;
        if (wanted <= 1e-6)
            continue;
        ++inReach;
        const auto& side = at.x > 1e-6 ? other : primary;
        const auto found = side.find(vertex);
        ASSERT_NE(found, side.end()) << "vertex " << vertex << " is not on its side";
        EXPECT_NEAR(found->second, wanted, 1e-6) << vertex;
    }
    EXPECT_EQ(primary.size() + other.size(), inReach) << "no vertex is on both sides";
}

TEST_F(Symmetry, SymmetrizeSelectionIsAnUndoStepOnlyWhenItAddsSomething)
{
    symmetry("-about object -axis x");
    mel("select sheet.vtx[6]");
    const std::size_t before = session.undo().undoCount();
    mel("SymmetrizeSelection");
    EXPECT_EQ(selected(), (Names{"sheet.vtx[6]", "sheet.vtx[8]"}));
    mel("SymmetrizeSelection");
    EXPECT_EQ(session.undo().undoCount(), before + 1);
    mel("undo");
    EXPECT_EQ(selected(), Names{"sheet.vtx[6]"});
    EXPECT_NE(melError("symmetricModelling -about topo").find("topological symmetry"), std::string::npos);
    EXPECT_EQ(melString("symmetricModelling -q -about"), "object");
}

} // namespace
