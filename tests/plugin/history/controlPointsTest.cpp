// Points that are not vertices: control points of curves and of lattices, under strokes, copies and pastes.
#include "graph/graph.h"
#include "support/toolFixture.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

using namespace testing_support;

namespace {

double narrowed(double number)
{
    // Through memory: optimising, g++ 12 drops the narrowing of two numbers that end up side by side.
    const volatile float narrow = static_cast<float>(number);
    return static_cast<double>(narrow);
}

/// A shape of 12 points and its duplicate, and how its points are named.
struct PointsRow {
    const char* name;
    const char* build; ///< makes `one`; `two` has the same points at other numbers of the deformer
    const char* all;   ///< every point, after the object's name
    const char* some;  ///< the points 4 to 7
};

std::ostream& operator<<(std::ostream& out, const PointsRow& row)
{
    return out << row.name;
}

const PointsRow kShapes[] = {
    {"curve",
     "curve -n one -d 3 -p 0 0 0 -p 1 1 0 -p 2 1 1 -p 3 0 1 -p 4 0 0 -p 5 1 0 -p 6 1 1 -p 7 0 1 -p 8 0 0 -p "
     "9 "
     "1 0 -p 10 1 1 -p 11 0 1; curve -n two -d 3 -p 0 0 0 -p 1 1 0 -p 2 1 1 -p 3 0 1 -p 4 0 0 -p 5 1 0 -p 6 "
     "1 1 -p 7 0 1 -p 8 0 0 -p 9 1 0 -p 10 1 1 -p 11 0 1",
     ".cv[*]", ".cv[4:7]"},
    {"lattice",
     "polyCube -n inside -w 4 -h 4 -d 4; lattice -n cage -dv 2 3 2 inside; rename cageLattice one;"
     "polyCube -n within -w 4 -h 4 -d 4; lattice -n coop -dv 2 3 2 within; rename coopLattice two",
     ".pt[*][*][*]", ".pt[0:1][2][0] two.pt[0:1][0][1]"},
};

class ControlPoints : public ToolTest, public ::testing::WithParamInterface<PointsRow> {
public:
    void SetUp() override
    {
        ToolTest::SetUp();
        mel(GetParam().build);
        mel("maskedOffset -n lift -o 0 3 0 one two; setAttr two.translateX 20; select -cl;"
            "joint -n hip -p 0 0 0; joint -n knee -p 3 0 0; select -cl");
        for (const std::string object : {"one", "two"})
            mel("skinCluster -tsb -mi 2 -dr 2 -n " + object + "Skin hip knee " + object + "; setAttr " +
                object + "Skin.skinningMethod 2");
        for (const int object : {0, 1})
            for (unsigned point = 0; point < 12; ++point)
                for (const std::string mode : {"default", "plug", "dualQuaternion"})
                    element(mode, object, point)
                        .setNumber((point + 1) * (object ? 0.03 : 0.07) + 0.001 * mode.size());
        edit("-deformer lift -plug mask -influence knee");
        toolOn();
        session.undo().flush();
    }
    host::Plug element(const std::string& mode, int object, unsigned point)
    {
        const std::string place = "[" + std::to_string(object) + "].";
        const std::string plug = mode == "plug" ? "lift.maskList" + place + "mask"
                                 : mode == "default"
                                     ? "lift.weightList" + place + "weights"
                                     : std::string(object ? "two" : "one") + "Skin.blendWeights";
        return session.graph().plug(plug).element(point);
    }
    std::vector<double> numbers(const std::string& mode, int object)
    {
        std::vector<double> found;
        if (mode == "skinCluster") {
            for (const std::vector<double>& row : skinWeights(session, object ? "twoSkin" : "oneSkin", 12, 2))
                found.push_back(row[1]);
            return found;
        }
        for (unsigned point = 0; point < 12; ++point)
            found.push_back(element(mode, object, point).number());
        return found;
    }
};

INSTANTIATE_TEST_SUITE_P(Shapes, ControlPoints, ::testing::ValuesIn(kShapes),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(ControlPoints, AreCopiedAndPastedByPosition)
{
    for (const std::string from : {"default", "plug", "skinCluster", "dualQuaternion"})
        for (const std::string to : {"default", "plug", "dualQuaternion"}) {
            SCOPED_TRACE(from + " to " + to);
            edit("-weightMode " + from);
            mel(std::string("select one") + GetParam().all);
            edit("-copy true");
            edit("-weightMode " + to);
            mel(std::string("select two") + GetParam().some);
            session.undo().flush();
            std::vector<double> expected = numbers(to, 1);
            const std::vector<double> old = expected, copied = numbers(from, 0), kept = numbers(to, 0);
            for (std::size_t point = 4; point < 8; ++point)
                expected[point] = narrowed(copied[point]);
            edit("-paste true");
            EXPECT_EQ(numbers(to, 1), expected);
            EXPECT_EQ(numbers(to, 0), kept);
            mel("undo");
            EXPECT_EQ(numbers(to, 1), old);
            mel("redo");
            EXPECT_EQ(numbers(to, 1), expected);
            mel("undo");
        }
}

TEST_P(ControlPoints, TakeTheOneRowOfASkinPaste)
{
    edit("-weightMode skinCluster");
    mel(std::string("select one") + GetParam().all);
    edit("-copy true");
    mel(std::string("select two") + GetParam().some);
    const auto source = skinWeights(session, "oneSkin", 12, 2), old = skinWeights(session, "twoSkin", 12, 2);
    auto expected = old;
    for (std::size_t point = 4; point < 8; ++point)
        expected[point] = {narrowed(source[4][0]), narrowed(source[5][1])};
    edit("-paste true");
    EXPECT_EQ(skinWeights(session, "twoSkin", 12, 2), expected);
    mel("undo");
    EXPECT_EQ(skinWeights(session, "twoSkin", 12, 2), old);
}

using Surfaces = ToolTest;

// Surfaces are not edited by their deformer's weights: nothing is copied, and nothing is pasted onto them.
TEST_F(Surfaces, OfSurfacesAreLeftAloneWithoutAWord)
{
    mel("nurbsPlane -n leaf; polyPlane -ch 0 -n sheet -sx 2 -sy 2; select leaf sheet; maskedOffset -n lift "
        "-o 0 3 0;"
        "select -cl");
    edit("-deformer lift -plug mask");
    toolOn();
    for (const char* mode : {"default", "plug"}) {
        edit(std::string("-weightMode ") + mode);
        for (const auto& [from, onto] : {std::pair<std::string, std::string>{"leaf.cv[*][*]", "sheet.vtx[*]"},
                                         {"sheet.vtx[*]", "leaf.cv[*][*]"}}) {
            mel("setAttr \"lift.weightList[1].weights[0:3]\" .1 .2 .3 .4; select " + from);
            edit("-copy true");
            mel("select " + onto);
            session.undo().flush();
            const std::string scene = sceneText(session);
            edit("-paste true");
            EXPECT_EQ(sceneText(session), scene) << from;
            EXPECT_EQ(session.undo().undoCount(), 0u) << from;
        }
    }
}

} // namespace
