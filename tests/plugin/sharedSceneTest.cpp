// Strokes on whole scenes, those that ship and those that Maya itself has written: every selected vertex gets
// offset times falloff, nothing else changes, and undo and redo are exact.
#include "graph/graph.h"
#include "selection/picking.h"
#include "support/toolFixture.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <ostream>

using namespace testing_support;

namespace {

struct SceneCase {
    const char* name;
    std::string file;
    const char* mesh;
    const char* deformer;
    const char* influence;                        ///< null: no skin, one number per vertex
    const char* setUp;                            ///< MEL: a pose in which the influence shows
    double radius;                                ///< of the soft selection
    const char* flags = "-weightMode default";    ///< where there is no influence: the mode
    const char* array = ".weightList[0].weights"; ///< and where it keeps its weights
};

std::ostream& operator<<(std::ostream& out, const SceneCase& scene)
{
    return out << scene.name;
}

std::vector<SceneCase> sceneCases()
{
    const std::string shipped = testing_support::sourceDir() + "/scenes/";
    std::vector<SceneCase> cases = {
        {"creature", shipped + "creature.ma", "dragon", "", "head", "", 1.5},
        {"clusterSheet", shipped + "clusterSheet.ma", "sheet", "lift", nullptr, "", 2.0},
    };
    if (testing_support::mayaScenesDir().empty())
        return cases;
    const std::string maya = testing_support::mayaScenesDir() + "/";
    cases.push_back({"planes", maya + "gt_plane_skinned.ma", "plane_two", "skinCluster2", "mid_two_jnt",
                     "setAttr mid_two_jnt.rotate -type double3 35 20 -15", 1.2});
    cases.push_back({"tongue", maya + "omtk_test_tongue.ma", "geo_tongue", "skinCluster2", "jnt_out_09",
                     "setAttr jnt_out_09.rotate -type double3 25 15 -20;"
                     "setAttr jnt_out_09.translateY 3",
                     4.0});
    cases.push_back(
        {"target", maya + "gltf_CubeTwoTargets.ma", "pCube1", "blendShape1", nullptr,
         "int $v; for ($v = 0; $v < 8; ++$v)"
         " setAttr (\"blendShape1.inputTarget[0].inputTargetGroup[1].targetWeights[\" + $v + \"]\") 0.5",
         1.5, "-weightMode blendShapeTarget -target pCube2",
         ".inputTarget[0].inputTargetGroup[1].targetWeights"});
    cases.push_back({"base", maya + "gltf_CubeTwoTargets.ma", "pCube1", "blendShape1", nullptr,
                     "int $v; for ($v = 0; $v < 8; ++$v)"
                     " setAttr (\"blendShape1.inputTarget[0].baseWeights[\" + $v + \"]\") 0.5",
                     1.5, "-weightMode blendShapeBase", ".inputTarget[0].baseWeights"});
    return cases;
}

std::string exact(double number)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.17g", number);
    return text;
}

using Rows = std::vector<std::vector<double>>;

class StrokeOnScene : public ToolTest, public ::testing::WithParamInterface<SceneCase> {
public:
    void SetUp() override
    {
        ToolTest::SetUp();
        mel("file -f -o \"" + scene.file + "\"; selectPref -preSelectHilite false");
        if (*scene.setUp)
            mel(scene.setUp);
        mel(std::string("viewFit ") + scene.mesh + "; select -cl");
        shape = melStrings(std::string("listRelatives -s -ni ") + scene.mesh).at(0);
        count = melInt(std::string("polyEvaluate -v ") + scene.mesh);
        deformer = *scene.deformer ? scene.deformer : melStrings("ls -type \"skinCluster\"").at(0);
        if (scene.influence) {
            const std::vector<std::string> influences = melStrings("skinCluster -q -inf " + deformer);
            columns = static_cast<int>(influences.size());
            edited = static_cast<std::size_t>(
                std::find(influences.begin(), influences.end(), scene.influence) - influences.begin());
            ASSERT_LT(edited, influences.size());
            edit(std::string("-weightMode skinCluster -influence ") + scene.influence);
        } else {
            edit("-deformer " + deformer);
            edit(scene.flags);
        }
        // A redo is clamped as the settings say, a live stroke on a skin always to 0..1: here both agree.
        edit("-clampMin true -clampMax true -weightMin 0 -weightMax 1");
        toolOn();
    }

    /// One row per vertex; a cluster has one column.
    Rows weights()
    {
        if (scene.influence)
            return skinWeights(session, deformer, count, columns);
        Rows rows;
        const host::Plug array = session.graph().plug(deformer + scene.array);
        for (int vertex = 0; vertex < count; ++vertex)
            rows.push_back({array.element(static_cast<unsigned>(vertex)).number()});
        return rows;
    }
    std::string component(int vertex)
    {
        return std::string(scene.mesh) + ".vtx[" + std::to_string(vertex) + "]";
    }
    void setEdited(int vertex, double value)
    {
        if (scene.influence)
            mel(std::string("skinPercent -tv ") + scene.influence + " " + exact(value) + " " + deformer +
                " " + component(vertex));
        else
            mel("setAttr " + deformer + scene.array + "[" + std::to_string(vertex) + "] " + exact(value));
    }

    /// Object-space points of a vertex with its weight a little lower and a little higher.
    std::array<std::vector<double>, 2> swept(int vertex, double weight)
    {
        std::array<std::vector<double>, 2> points;
        for (const int side : {0, 1}) {
            setEdited(vertex, weight + (side == 0 ? -kStep : kStep));
            points[static_cast<std::size_t>(side)] = melFloats("pointPosition -l " + component(vertex));
            mel("undo");
        }
        return points;
    }
    std::vector<int> pixel(const std::vector<double>& at)
    {
        std::string words;
        for (const double number : at)
            words += " " + exact(number);
        mel("curve -n probe -d 1 -p" + words + " -p 0 0 0");
        const std::vector<int> found = mel("viewportProject \"probe.cv[0]\"").toIntArray();
        mel("undo");
        return found;
    }
    /// Pixels per unit of weight, worked out from the scene alone. Object-space points are taken as world
    /// points.
    std::array<double, 2> direction(int vertex, double weight)
    {
        const auto [low, high] = swept(vertex, weight);
        const std::vector<int> from = pixel(low), to = pixel(high);
        const double x = to[0] - from[0], y = to[1] - from[1];
        if (std::hypot(x, y) >= 1)
            return {x / (2 * kStep), y / (2 * kStep)};
        std::vector<double> far(3);
        for (std::size_t k = 0; k < 3; ++k)
            far[k] = low[k] + (high[k] - low[k]) / (2 * kStep);
        const std::vector<int> unit = pixel(far);
        return {static_cast<double>(unit[0] - from[0]), static_cast<double>(unit[1] - from[1])};
    }

    /// A vertex that a click on its pixel picks, that moves with its weight, and that has room both ways.
    int findVertex()
    {
        const Rows rows = weights();
        std::vector<int> order;
        for (int vertex = 0; vertex < count; ++vertex)
            order.push_back(vertex);
        const auto room = [&](int vertex) {
            const double weight = rows[static_cast<std::size_t>(vertex)][edited];
            return weight * (1 - weight);
        };
        std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return room(a) > room(b); });
        for (const int vertex : order) {
            if (room(vertex) < 0.01)
                break;
            const std::vector<int> at = mel("viewportProject \"" + component(vertex) + "\"").toIntArray();
            if (at.size() != 2)
                continue;
            const host::SelectionList under = host::pickPoint(session, at[0], at[1], true);
            const bool hit = under.items.size() == 1 && under.items[0].component &&
                             under.items[0].node.get() == &session.graph().get(shape) &&
                             under.items[0].component->elements == std::vector<int>{vertex};
            if (!hit)
                continue;
            const auto [x, y] = direction(vertex, rows[static_cast<std::size_t>(vertex)][edited]);
            if (std::hypot(x, y) > 20)
                return vertex;
        }
        ADD_FAILURE() << "no vertex of " << scene.mesh << " is in view and moves";
        return 0;
    }

    /// Checks one row after a stroke against the row of the press.
    void expectRow(const std::vector<double>& before, const std::vector<double>& after, double change)
    {
        if (!scene.influence) {
            const double wanted =
                std::clamp(static_cast<double>(static_cast<float>(before[0])) + change, 0.0, 1.0);
            EXPECT_EQ(after[0], static_cast<double>(static_cast<float>(wanted)));
            return;
        }
        const double wanted = std::clamp(before[edited] + change, 0.0, 1.0);
        EXPECT_EQ(after[edited], wanted);
        double others = 0, sum = 0;
        for (std::size_t column = 0; column < before.size(); ++column) {
            others += column == edited ? 0 : before[column];
            sum += after[column];
        }
        // Where no other influence has a share, there is nobody to make room or to take over.
        const double factor = others > 0 ? (1 - wanted) / others : 1;
        for (std::size_t column = 0; column < before.size(); ++column)
            if (column != edited) {
                EXPECT_NEAR(after[column], before[column] * factor, 1e-12);
            }
        if (others > 0) {
            EXPECT_NEAR(sum, 1.0, 1e-12);
        }
    }

    static constexpr double kStep = 0.005;
    const SceneCase scene = GetParam();
    std::string shape, deformer;
    int count = 0, columns = 1;
    std::size_t edited = 0;
};

INSTANTIATE_TEST_SUITE_P(Scenes, StrokeOnScene, ::testing::ValuesIn(sceneCases()),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(StrokeOnScene, ChangesWhatIsSelectedByOffsetTimesFalloffAndUndoIsExact)
{
    const int vertex = findVertex();
    mel("softSelect -sse 1 -ssd " + exact(scene.radius) + " -ssf 0; select " + component(vertex));
    const std::map<int, double> falloff = selectedFalloff(session, shape);
    ASSERT_GT(falloff.size(), 1u);
    const Rows before = weights();
    const auto [x, y] = direction(vertex, before[static_cast<std::size_t>(vertex)][edited]);
    const double length = std::hypot(x, y);
    const std::size_t entries = session.undo().undoCount();
    // Changes of about a quarter either way, and one that goes far into the clamps.
    for (const double part : {0.25, -0.25, 3.0}) {
        SCOPED_TRACE(part);
        const int dx = static_cast<int>(std::lround(part * x)), dy = static_cast<int>(std::lround(part * y));
        const double offset = (x * dx + y * dy) / length / length;
        stroke(component(vertex), dx, dy, {}, 4);
        const Rows after = weights();
        for (int v = 0; v < count; ++v) {
            const auto k = static_cast<std::size_t>(v);
            SCOPED_TRACE("vertex " + std::to_string(v));
            const auto soft = falloff.find(v);
            if (soft == falloff.end())
                EXPECT_EQ(after[k], before[k]);
            else
                expectRow(before[k], after[k], offset * soft->second);
        }
        ASSERT_EQ(session.undo().undoCount(), entries + 1);
        mel("undo");
        EXPECT_EQ(weights(), before);
        mel("redo");
        EXPECT_EQ(weights(), after);
        mel("undo");
        EXPECT_EQ(weights(), before);
    }
}

} // namespace
