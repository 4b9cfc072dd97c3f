// Pastes vertex by vertex between skins that do not have the same influences.
#include "plugin/history/historyScene.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

using namespace testing_support;

namespace {

/// A skin of the mesh "small", the row that is copied onto all of its points (hip, knee, toe of the sheet),
/// and what they get, influence by influence of that skin.
struct InfluenceRow {
    const char* name;
    const char* joints; ///< of the small mesh
    Numbers copied;
    Numbers pasted;     ///< empty: its points keep what they have
    const char* lacked; ///< names in the warning; empty: there is none
    bool refused;
};

std::ostream& operator<<(std::ostream& out, const InfluenceRow& row)
{
    return out << row.name;
}

const InfluenceRow kRows[] = {
    {"SameJointsInAnotherOrder", "toe hip knee", {0.25, 0.5, 0.25}, {0.25, 0.25, 0.5}, "", false},
    {"OneIsLacking", "knee hip", {0.25, 0.5, 0.25}, {0.5 / 0.75, 0.25 / 0.75}, "toe", false},
    {"TwoAreLacking", "knee", {0.25, 0.5, 0.25}, {1.0}, "hip, toe", false},
    {"OneWithoutWeightIsLacking", "knee hip", {0.25, 0.75, 0}, {0.75, 0.25}, "", false},
    {"RowsThatDoNotSumToOne",
     "knee hip",
     {0.25, 0.5, 0.5},
     {1.25 * 0.5 / 0.75, 1.25 * 0.25 / 0.75},
     "toe",
     false},
    {"TheSkinHasOneMore", "hip spare toe knee", {0.25, 0.5, 0.25}, {0.25, 0, 0.25, 0.5}, "", false},
    {"SameNamesElsewhere", "|rig|knee |rig|hip", {0.25, 0.75, 0}, {0.75, 0.25}, "", false},
    {"ThePathCountsBeforeTheName", "|rig|knee |hip |hip|knee", {0.25, 0.75, 0}, {0, 0.25, 0.75}, "", false},
    {"NothingInCommon", "spare", {0.25, 0.5, 0.25}, {}, "", true},
    {"AllOfItIsLacking", "hip", {0, 0.5, 0.5}, {}, "", true},
};

const char kNothing[] = "its skin has none of the influences that were copied; nothing was written for it.";

class PastePerVertex : public HistoryScene, public ::testing::WithParamInterface<InfluenceRow> {
public:
    void buildWith(const ModeRow& row)
    {
        build(row);
        const std::string joints = GetParam().joints;
        mel("select -cl; joint -n spare");
        if (joints.find("|rig|") != std::string::npos)
            mel("createNode transform -n rig; joint -n knee; select rig; joint -n hip");
        mel("polyPlane -ch 0 -n small -w 2 -h 2 -sx 1 -sy 1; parent small all;"
            "skinCluster -tsb -mi 4 -dr 2 -n smallSkin " +
            joints + " small; select -cl");
        startTool();
    }
    void copy()
    {
        select("sheet.vtx[7]");
        edit("-copy true");
        edit("-pastePerVertex true");
        // The influence that strokes edit must be one of the skin's.
        const std::string joints = GetParam().joints;
        edit("-influence " + joints.substr(0, joints.find(' ')));
        select("small.vtx[*]");
        session.undo().flush();
        const std::string object = "|all|small|smallShape: ";
        if (GetParam().refused)
            expectWarning(object + kNothing);
        else if (*GetParam().lacked)
            expectWarning(object + "its skin lacks " + GetParam().lacked +
                          "; what was copied of that goes to the others.");
    }
    static void expectNear(const std::vector<Numbers>& found, const std::vector<Numbers>& wanted)
    {
        ASSERT_EQ(found.size(), wanted.size());
        for (std::size_t point = 0; point < found.size(); ++point)
            for (std::size_t influence = 0; influence < found[point].size(); ++influence)
                EXPECT_NEAR(found[point][influence], wanted[point][influence], 1e-12) << point;
    }
};

INSTANTIATE_TEST_SUITE_P(Rows, PastePerVertex, ::testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(PastePerVertex, SkinRowsGoOverByPathThenByNameAndWhatIsLackingGoesToTheOthers)
{
    buildWith(rowOf("skinCluster"));
    State wanted = state();
    for (std::size_t j = 0; j < 3; ++j)
        wanted["skin 0"][7 * 3 + j] = GetParam().copied[j];
    setState(wanted);
    const std::size_t count = GetParam().pasted.size();
    const std::size_t influences = melStrings("skinCluster -q -inf smallSkin").size();
    const std::vector<Numbers> old = skinWeights(session, "smallSkin", 4, influences);
    copy();
    edit("-paste true");
    EXPECT_EQ(session.undo().undoCount(), count == 0 ? 0u : 1u);
    const std::vector<Numbers> done = skinWeights(session, "smallSkin", 4, influences);
    expectNear(done, count == 0 ? old : std::vector<Numbers>(4, GetParam().pasted));
    for (int round = 0; count != 0 && round < 2; ++round) {
        mel("undo");
        expectNear(skinWeights(session, "smallSkin", 4, influences), old);
        mel("redo");
        EXPECT_EQ(skinWeights(session, "smallSkin", 4, influences), done);
    }
}

TEST_P(PastePerVertex, InfluencesOfLayersGoOverTheSameWay)
{
    buildWith(rowOf("ngSkinToolsInfluence"));
    const std::string layer = "ngst2Layers -q -id 1 -paintTarget ", small = " |all|small|smallShape";
    mel("ngst2Layers -e -attach" + small + "; ngst2Layers -e -addLayer skinLayer" + small);
    const std::size_t influences = melStrings("skinCluster -q -inf smallSkin").size();
    for (std::size_t j = 0; j < influences; ++j)
        mel("ngst2Layers -e -id 1 -paintTarget " + std::to_string(j) +
            " -vertexWeights \"0.5,0.25,0.125,0.75\"" + small);
    State wanted = state();
    for (std::size_t j = 0; j < 3; ++j)
        wanted["layer " + std::to_string(j) + " 0"][7] = GetParam().copied[j];
    setState(wanted);
    const auto rows = [&] {
        std::vector<Numbers> found(4, Numbers(influences));
        for (std::size_t j = 0; j < influences; ++j) {
            const Numbers painted = melFloats(layer + std::to_string(j) + " -vertexWeights" + small);
            for (std::size_t point = 0; point < 4; ++point)
                found[point][j] = painted[point];
        }
        return found;
    };
    const std::vector<Numbers> old = rows();
    copy();
    edit("-paste true");
    const std::size_t count = GetParam().pasted.size();
    EXPECT_EQ(session.undo().undoCount(), count == 0 ? 0u : 1u);
    expectNear(rows(), count == 0 ? old : std::vector<Numbers>(4, GetParam().pasted));
    if (count == 0)
        return;
    mel("undo");
    EXPECT_EQ(rows(), old);
}

// A point of which nothing can go over keeps its row; the others get theirs.
TEST_F(HistoryScene, PastedVertexByVertexAPointWhoseInfluencesAreAllLackingKeepsItsRow)
{
    build(rowOf("skinCluster"));
    mel("polyPlane -ch 0 -n small -w 8 -h 6 -sx 1 -sy 1; parent small all;"
        "skinCluster -tsb -mi 2 -dr 2 -n smallSkin hip small");
    mel("skinPercent -tv hip 0.5 smallSkin small.vtx[*]");
    startTool();
    State wanted = state();
    for (const std::size_t vertex : {0u, 4u, 15u, 19u}) // the sheet's corners lie on those of the small one
        for (std::size_t j = 0; j < 3; ++j)
            wanted["skin 0"][vertex * 3 + j] = vertex == 4 ? (j == 0 ? 0.0 : 0.5) : (j == 0 ? 0.25 : 0.375);
    setState(wanted);
    const std::vector<Numbers> old = skinWeights(session, "smallSkin", 4, 1);
    select("sheet.vtx[*]");
    edit("-copy true");
    edit("-pastePerVertex true -influence hip");
    select("small.vtx[*]");
    expectWarning("|all|small|smallShape: its skin lacks knee, toe; what was copied of that goes to the "
                  "others.");
    edit("-paste true");
    const std::vector<Numbers> done = skinWeights(session, "smallSkin", 4, 1);
    for (const std::size_t point : {0u, 1u, 2u, 3u})
        EXPECT_NEAR(done[point][0], point == 1 ? old[1][0] : 1.0, 1e-12) << point;
}

} // namespace
