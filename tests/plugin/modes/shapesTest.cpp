// Curves, lattices and surfaces: what of them is a hit, what is edited, and the falloff that their points
// get.
#include "graph/graph.h"
#include "selection/selectionState.h"
#include "support/toolFixture.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

#include <cmath>

using namespace testing_support;

namespace {

class ShapeStroke : public ToolTest {
public:
    void SetUp() override
    {
        ToolTest::SetUp();
        mel("setAttr persp.rotate -type double3 -35 25 0; selectPref -preSelectHilite false");
    }
    void sculpt(const std::string& deformed)
    {
        mel("select " + deformed +
            "; cluster -n clu; setAttr cluHandle.translateY 2; viewFit -all; select -cl");
        edit("-deformer clu -clampMin false -displayPrecision 6");
        toolOn();
        session.undo().flush();
    }
    /// By point index of the deformed geometry.
    std::vector<double> weights(int count) { return defaultWeights(session, "clu", count); }
    void fill(int count)
    {
        for (unsigned point = 0; point < static_cast<unsigned>(count); ++point)
            session.graph().plug("clu.weightList[0].weights").element(point).setNumber(0.25 + point / 64.0);
    }
    /// Drags a component up by enough to see, and returns how its weight changed; it stands at `index`.
    double pull(const std::string& component, int count, std::size_t index)
    {
        const double before = weights(count)[index];
        const Pixel from = pixelOf(component);
        press(from);
        drag({from.x, from.y + 25});
        const double offset = weights(count)[index] - before;
        return offset;
    }
    void letGo() { release({0, 0}); }
};

TEST_F(ShapeStroke, CurvePointsAreEditedWithTheirFalloff)
{
    mel("curve -n wire -d 1 -p -4 0 0 -p -3 0 1 -p -1 0 0 -p 0 0 2 -p 2 0 0 -p 4 0 1");
    sculpt("wire.cv[1:4]");
    fill(6);
    mel("softSelect -sse 1 -ssd 3 -ssf 0; select wire.cv[3]");
    const std::map<int, double> falloff = selectedFalloff(session, "wireShape");
    ASSERT_GT(falloff.size(), 2u);
    const std::vector<double> before = weights(6);
    const double offset = pull("wire.cv[3]", 6, 3);
    EXPECT_GT(offset, 0.01);
    const std::vector<double> after = weights(6);
    for (int cv = 0; cv < 6; ++cv) {
        const auto soft = falloff.find(cv);
        const bool member = cv >= 1 && cv <= 4;
        const double expected = soft == falloff.end() || !member ? 0 : offset * soft->second;
        const auto k = static_cast<std::size_t>(cv);
        EXPECT_NEAR(after[k] - before[k], expected, 1e-6) << "cv " << cv;
    }
    letGo();
}

// A lattice point's falloff is taken from the selection at the point's place among the deformer's members,
// not at its own place in the selection.
TEST_F(ShapeStroke, LatticePointsTakeTheFalloffOfTheirPlaceAmongTheMembers)
{
    mel("polyCube -n box -w 6 -h 2 -d 2; lattice -dv 4 2 2 -oc 1 -n cage box; setAttr box.visibility 0");
    sculpt("cageLattice.pt[1:3][0:1][1]");
    fill(16);
    mel("softSelect -sse 1 -ssd 3 -ssf 0; select cageLattice.pt[3][1][1]");
    const host::RichSelection rich = session.selection().rich();
    ASSERT_EQ(rich.selection.items.size(), 1u);
    const host::Component& selected = *rich.selection.items[0].component;
    const std::vector<double> before = weights(16);
    const double offset = pull("cageLattice.pt[3][1][1]", 16, 15);
    const std::vector<double> after = weights(16);
    ASSERT_NE(offset, 0);
    // Both lists count s fastest, then t, then u. Some members are not selected, some selected are no
    // members.
    std::size_t place = 0;
    std::vector<double> expected(16);
    for (std::size_t t = 0; t < 2; ++t)
        for (std::size_t s = 1; s < 4; ++s, ++place) {
            constexpr std::size_t u = 1;
            bool isSelected = false;
            for (std::size_t k = 0; k < selected.count(); ++k)
                isSelected = isSelected || (selected.elements[3 * k] == static_cast<int>(s) &&
                                            selected.elements[3 * k + 1] == static_cast<int>(t) &&
                                            selected.elements[3 * k + 2] == static_cast<int>(u));
            if (isSelected)
                expected[(u * 2 + t) * 4 + s] = static_cast<double>(selected.weights.at(place));
        }
    const double scale = offset / expected[15];
    for (std::size_t point = 0; point < 16; ++point)
        EXPECT_NEAR(after[point] - before[point], scale * expected[point], 1e-6) << "point " << point;
    letGo();
}

// The point under the cursor must agree in all its indices, and on the same lattice.
TEST_F(ShapeStroke, ALatticePressSelectsAnotherPointWhoseIndicesDifferInOne)
{
    mel("polyCube -n box -w 6 -h 3 -d 4; lattice -dv 2 2 2 -oc 1 -n cage box; setAttr box.visibility 0; "
        "setAttr cageLattice.translateX "
        "1");
    sculpt("cageLattice");
    mel("select cageLattice.pt[1][1][1] cageLattice.pt[0][1][0] cageLattice.pt[1][0][0]");
    const std::vector<std::string> selection = melStrings("ls -sl -fl");
    for (const std::string& point : selection) {
        press(pixelOf(point));
        EXPECT_EQ(melStrings("ls -sl -fl"), selection) << "a hit keeps the selection";
        letGo();
    }
    for (const char* other :
         {"cageLattice.pt[0][1][1]", "cageLattice.pt[1][1][0]", "cageLattice.pt[1][0][1]"}) {
        press(pixelOf(other));
        EXPECT_EQ(melStrings("ls -sl -fl"), std::vector<std::string>{other});
        letGo();
        mel("select " + selection[0] + " " + selection[1] + " " + selection[2]);
    }
}

// A click on a surface's point counts as one, and then there is nothing to edit.
TEST_F(ShapeStroke, SurfacesAreNotEdited)
{
    mel("nurbsPlane -n cloth -w 6 -lr 1 -u 2 -v 2");
    sculpt("cloth");
    mel("select cloth.cv[2][3] cloth.cv[1][1]");
    session.undo().flush();
    const std::string start = sceneText(session);
    const std::vector<std::string> selection = melStrings("ls -sl -fl");
    const Pixel from = pixelOf("cloth.cv[2][3]");
    expectWarning("Points of NURBS surfaces cannot be sculpted.");
    press(from);
    EXPECT_EQ(melStrings("ls -sl -fl"), selection) << "a hit";
    drag({from.x, from.y + 30});
    release({from.x, from.y + 30});
    EXPECT_EQ(sceneText(session), start);
    EXPECT_EQ(session.undo().undoCount(), 0u);
    press(pixelOf("cloth.cv[3][2]"));
    EXPECT_EQ(melStrings("ls -sl -fl"), std::vector<std::string>{"cloth.cv[3][2]"}) << "u and v must agree";
    letGo();
}

} // namespace
