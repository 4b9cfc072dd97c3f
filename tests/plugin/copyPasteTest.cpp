// Copy and paste: the match by position, deformers that are not named, refusals. What each mode writes is
// with the histories.
#include "graph/graph.h"
#include "support/toolFixture.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

#include <cmath>

using namespace testing_support;

namespace {

constexpr int kVertices = 5 * 4;
using Rows = std::vector<std::vector<double>>;

std::string exact(double number)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.17g", number);
    return text;
}

double narrowed(double number)
{
    return static_cast<double>(static_cast<float>(number));
}

// Two sheets of the same points, "coarse" of other points; one cluster and one skin each deform them. The
// weights are all different.
class CopyPaste : public ToolTest {
public:
    void SetUp() override
    {
        ToolTest::SetUp();
        mel("polyPlane -n sheet -w 8 -h 6 -sx 4 -sy 3 -ch 0; duplicate -n twin sheet;"
            "polyPlane -n coarse -w 9 -h 5 -sx 2 -sy 2 -ch 0;"
            "setAttr twin.translateZ -9; setAttr coarse.translateZ 8;"
            "xform -os -t 5000 0 0 coarse.vtx[4]");
        for (const int geometry : {0, 1, 2})
            restPoints.push_back(pointsOf(geometry));
        mel("cluster -n clu sheet twin coarse; setAttr cluHandle.translateY 1;"
            "select -cl; joint -n hip -p -4 0 0; joint -n knee -p 0 0 0; joint -n toe -p 3 0 0");
        for (const char* mesh : {"sheet", "twin", "coarse"})
            mel(std::string("skinCluster -tsb -mi 3 -dr 3 -n ") + mesh + "Skin hip knee toe " + mesh +
                "; setAttr " + mesh + "Skin.skinningMethod 2");
        mel("setAttr knee.rotateZ 30; addAttr -ln maps -at compound -nc 1 -m clu;"
            "addAttr -ln map -at \"float\" -m -p maps clu; viewFit -all; select -cl");
        int step = 0;
        for (int geometry = 0; geometry < 3; ++geometry)
            for (int vertex = 0; vertex < sizes[geometry]; ++vertex, ++step) {
                const std::string at = "[" + std::to_string(geometry) + "]", v = std::to_string(vertex);
                mel("setAttr clu.weightList" + at + ".weights[" + v + "] " + exact(fraction(step, 0.618)) +
                    "; setAttr clu.maps" + at + ".map[" + v + "] " + exact(fraction(step, 0.414)) +
                    "; setAttr " + meshes[geometry] + "Skin.blendWeights[" + v + "] " +
                    exact(fraction(step, 0.732)));
            }
        edit("-deformer clu -plug map");
        toolOn();
        session.undo().flush();
    }
    static double fraction(int step, double by) { return std::fmod(0.1 + by * step, 1.0); }

    /// The one number per vertex that a mode edits.
    std::vector<double> values(const std::string& mode, int geometry)
    {
        if (mode == "default")
            return defaultWeights(session, "clu", sizes[geometry], geometry);
        std::vector<double> found;
        const std::string array = mode == "plug" ? "clu.maps[" + std::to_string(geometry) + "].map"
                                                 : meshes[geometry] + "Skin.blendWeights";
        if (mode != "skinCluster")
            for (int vertex = 0; vertex < sizes[geometry]; ++vertex)
                found.push_back(session.graph().plug(array).element(static_cast<unsigned>(vertex)).number());
        else
            for (const std::vector<double>& row : skin(geometry))
                found.push_back(row[1]);
        return found;
    }
    Rows skin(int geometry) { return skinWeights(session, meshes[geometry] + "Skin", sizes[geometry], 3); }
    /// Local points of a mesh, read before it is deformed.
    Rows pointsOf(int geometry)
    {
        Rows points;
        for (int vertex = 0; vertex < sizes[geometry]; ++vertex)
            points.push_back(
                melFloats("pointPosition -l " + meshes[geometry] + ".vtx[" + std::to_string(vertex) + "]"));
        return points;
    }
    /// The exhaustive search, as copies are matched: per target vertex the copied object (by its place in the
    /// list) and vertex.
    std::vector<std::pair<int, int>> matches(int target, const std::vector<int>& copied)
    {
        std::vector<Rows> sources;
        for (const int geometry : copied)
            sources.push_back(restPoints[static_cast<std::size_t>(geometry)]);
        std::vector<std::pair<int, int>> found;
        int object = 0;
        for (const std::vector<double>& point : restPoints[static_cast<std::size_t>(target)]) {
            double best = 1000.0;
            int vertex = 0;
            for (std::size_t c = 0; c < sources.size(); ++c)
                for (std::size_t v = 0; v < sources[c].size(); ++v) {
                    const std::vector<double>& other = sources[c][v];
                    const double x = point[0] - other[0], y = point[1] - other[1], z = point[2] - other[2];
                    const double distance = std::sqrt(x * x + y * y + z * z);
                    if (distance < best) {
                        best = distance;
                        object = static_cast<int>(c);
                        vertex = static_cast<int>(v);
                    }
                }
            found.emplace_back(object, vertex);
        }
        return found;
    }

    void copy(const std::string& selection) { mel("select " + selection), edit("-copy true"); }
    void paste(const std::string& selection) { mel("select " + selection), edit("-paste true"); }
    void mode(const std::string& name)
    {
        edit("-weightMode " + name + (name == "skinCluster" ? " -influence knee" : ""));
    }

    const std::vector<std::string> meshes = {"sheet", "twin", "coarse"};
    const int sizes[3] = {kVertices, kVertices, 9};
    std::vector<Rows> restPoints;
};

// One vertex of the coarse sheet is farther than any match reaches.
TEST_F(CopyPaste, TheNearestCopiedVertexOfAllObjectsWins)
{
    for (const auto& [target, copied] : {std::pair<int, std::vector<int>>{2, {0}}, {0, {2}}, {2, {0, 1}}}) {
        SCOPED_TRACE("onto " + meshes[static_cast<std::size_t>(target)]);
        const std::vector<std::pair<int, int>> match = matches(target, copied);
        std::string selection;
        for (const int geometry : copied)
            selection += meshes[static_cast<std::size_t>(geometry)] + ".vtx[*] ";
        copy(selection);
        std::vector<double> expected;
        for (const auto& [object, vertex] : match)
            expected.push_back(values(
                "default", copied[static_cast<std::size_t>(object)])[static_cast<std::size_t>(vertex)]);
        paste(meshes[static_cast<std::size_t>(target)] + ".vtx[*]");
        EXPECT_EQ(values("default", target), expected);
        mel("undo");
    }
}

// Then the skins themselves tell where the points are before they are deformed.
TEST_F(CopyPaste, ASkinPasteNeedsNoDeformerToBeNamed)
{
    mel("delete clu");
    mode("skinCluster");
    copy("sheet.vtx[*]");
    const std::vector<double> row = {narrowed(skin(0)[0][0]), narrowed(skin(0)[1][1]),
                                     narrowed(skin(0)[2][2])};
    paste("twin.vtx[*]");
    EXPECT_EQ(skin(1), Rows(kVertices, row));
    const std::vector<double> blend = values("dualQuaternion", 0);
    mode("dualQuaternion");
    copy("sheet.vtx[*]");
    paste("twin.vtx[*]");
    for (std::size_t v = 0; v < blend.size(); ++v)
        EXPECT_EQ(values("dualQuaternion", 1)[v], narrowed(blend[v]));
}

TEST_F(CopyPaste, ASkinPasteBeyondTheCopiedRecordsIsRefusedObjectByObject)
{
    mode("skinCluster");
    copy("sheet.vtx[*]");
    const Rows coarse = skin(2);
    const std::vector<double> row = {narrowed(skin(0)[0][0]), narrowed(skin(0)[1][1]),
                                     narrowed(skin(0)[2][2])};
    expectWarning("|coarse|coarseShape: more objects are selected than were copied; nothing was written for "
                  "it.");
    paste("twin.vtx[*] coarse.vtx[*]");
    EXPECT_EQ(skin(1)[7], row) << "the rest goes on";
    EXPECT_EQ(skin(2), coarse);
    mel("undo");

    copy("sheet.vtx[*] coarse.vtx[*]");
    const Rows twin = skin(1);
    expectWarning("|twin|twinShape: it has fewer selected points than influences were copied; nothing was "
                  "written for it.");
    paste("twin.vtx[1:2] coarse.vtx[*]");
    EXPECT_EQ(skin(1), twin);
    EXPECT_NE(skin(2), coarse) << "the rest goes on";
    mel("undo");
    EXPECT_EQ(skin(1), twin);
    EXPECT_EQ(skin(2), coarse);
}

TEST_F(CopyPaste, ASkinTakesOnlyCopiesOfSkinsAndSaysSo)
{
    copy("sheet.vtx[*]");
    mode("skinCluster");
    mel("select twin.vtx[*] coarse.vtx[*]");
    session.undo().flush();
    const std::string start = sceneText(session);
    for (int object = 0; object < 2; ++object)
        expectWarning("Weights were copied in an incompatible weight mode");
    testing::internal::CaptureStderr();
    edit("-paste true");
    EXPECT_NE(testing::internal::GetCapturedStderr().find(
                  "\nAPI error detected in src/morvaneToolCommand at line "),
              std::string::npos);
    EXPECT_EQ(sceneText(session), start);
    EXPECT_EQ(session.undo().undoCount(), 1u) << "the paste is recorded all the same";
    mel("undo");
    EXPECT_EQ(sceneText(session), start);
}

TEST_F(CopyPaste, NothingToPasteOrNothingToPasteOnIsSilent)
{
    const std::string start = sceneText(session);
    const auto expectNothing = [&](const std::string& selection) {
        mel("select " + selection);
        session.undo().flush();
        edit("-paste true");
        EXPECT_EQ(sceneText(session), start) << selection;
        EXPECT_EQ(session.undo().undoCount(), 0u) << selection;
    };
    expectNothing("sheet.vtx[*]");
    copy("sheet.vtx[*]");
    expectNothing("-cl");
    mel("polyPlane -n bystander; select -cl");
    mel("undo; undo");
    // A copy that fails leaves nothing to paste.
    edit("-weightMode blendShapeBase");
    expectWarning("The current deformer is not a blendShape");
    testing::internal::CaptureStderr();
    copy("sheet.vtx[*]");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "\n");
    edit("-weightMode default");
    expectNothing("twin.vtx[*]");
}

TEST_F(CopyPaste, ACopyFromWhatTheDeformerDoesNotDeformIsNotPasted)
{
    mel("polyPlane -n other -w 8 -h 6 -sx 4 -sy 3 -ch 0; cluster -n second other");
    edit("-deformer second");
    copy("other.vtx[*]");
    edit("-deformer clu");
    const std::string start = sceneText(session);
    expectWarning(
        "|other|otherShape: weights were copied from it, but the deformer does not deform it; nothing "
        "was pasted.");
    paste("twin.vtx[*]");
    EXPECT_EQ(sceneText(session), start);
    mel("delete other");
    const std::string without = sceneText(session);
    expectWarning(
        "An edited object: weights were copied from it, but it is no longer there; nothing was pasted.");
    paste("twin.vtx[*]");
    EXPECT_EQ(sceneText(session), without);
}

} // namespace
