// The scene as triangles, lines and points: shading, splines, weight colours.
#include "support/toolFixture.h"

#include "render/nurbsBasis.h"
#include "render/overlay.h"
#include "render/sceneView.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

using namespace testing_support;
using workbench::Color;
using workbench::DrawVertex;
using workbench::SceneView;

namespace {

class ViewTest : public ToolTest {
public:
    SceneView view() { return workbench::viewOf(session); }
    /// The colours that are drawn where a point is.
    std::set<Color> colorsAt(const std::string& point)
    {
        const std::vector<double> at = melFloats("pointPosition -w " + point);
        std::set<Color> colors;
        const SceneView drawn = view();
        const auto add = [&](const DrawVertex& vertex) {
            double away = 0;
            for (std::size_t axis = 0; axis < 3; ++axis)
                away = std::max(away, std::abs(static_cast<double>(vertex.position[axis]) - at.at(axis)));
            if (away < 1e-4)
                colors.insert({vertex.color[0], vertex.color[1], vertex.color[2], vertex.color[3]});
        };
        std::for_each(drawn.surfaces.vertices.begin(), drawn.surfaces.vertices.end(), add);
        return colors;
    }
};

using Normal = std::array<int, 3>;

/// Normals to a tenth, each once.
std::set<Normal> normalsOf(const SceneView& view)
{
    std::set<Normal> normals;
    for (const DrawVertex& vertex : view.surfaces.vertices)
        normals.insert({static_cast<int>(std::lround(vertex.normal[0] * 10)),
                        static_cast<int>(std::lround(vertex.normal[1] * 10)),
                        static_cast<int>(std::lround(vertex.normal[2] * 10))});
    return normals;
}

TEST_F(ViewTest, HardEdgesShadeHardAndSoftOnesSoft)
{
    mel("polyCube -sx 2 -sy 2 -sz 2 -n shape");
    EXPECT_EQ(normalsOf(view()),
              (std::set<Normal>{{10, 0, 0}, {-10, 0, 0}, {0, 10, 0}, {0, -10, 0}, {0, 0, 10}, {0, 0, -10}}));
    mel("delete shape; polySphere -sx 12 -sy 8 -n shape");
    EXPECT_EQ(view().surfaces.vertices.size(), static_cast<std::size_t>(melInt("polyEvaluate -v shape")));
    mel("delete shape; polyCylinder -sx 12 -sy 1 -sz 1 -n shape");
    // The rims are drawn once for the side and once for the cap.
    EXPECT_EQ(view().surfaces.vertices.size(), 12U * 4 + 2);
    EXPECT_EQ(normalsOf(view()).count({0, 10, 0}), 1U);
}

TEST_F(ViewTest, CurvesAndSurfacesAreDrawnWhereTheyRun)
{
    mel("curve -n wire -d 3 -p 0 0 0 -p 1 3 0 -p 4 3 1 -p 6 0 2");
    const SceneView drawn = view();
    ASSERT_EQ(drawn.curves.vertices.size(), 17U);
    const double xs[] = {0, 1, 4, 6}, ys[] = {0, 3, 3, 0};
    for (int sample = 0; sample <= 16; ++sample) {
        const double t = sample / 16.0, s = 1 - t;
        const double shares[] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
        double x = 0, y = 0;
        for (int k = 0; k < 4; ++k) {
            x += shares[k] * xs[k];
            y += shares[k] * ys[k];
        }
        const DrawVertex& vertex = drawn.curves.vertices[static_cast<std::size_t>(sample)];
        EXPECT_NEAR(static_cast<double>(vertex.position[0]), x, 1e-5);
        EXPECT_NEAR(static_cast<double>(vertex.position[1]), y, 1e-5);
    }
    mel("delete wire; nurbsPlane -n patch -w 4 -lr 1 -d 3 -u 2 -v 3 -ax 0 1 0");
    const SceneView plane = view();
    ASSERT_FALSE(plane.surfaces.indices.empty());
    double area = 0;
    const std::vector<DrawVertex>& corners = plane.surfaces.vertices;
    for (std::size_t k = 0; k + 2 < plane.surfaces.indices.size(); k += 3) {
        const float* a = corners[plane.surfaces.indices[k]].position;
        const float* b = corners[plane.surfaces.indices[k + 1]].position;
        const float* c = corners[plane.surfaces.indices[k + 2]].position;
        area +=
            std::abs(static_cast<double>((b[0] - a[0]) * (c[2] - a[2]) - (c[0] - a[0]) * (b[2] - a[2]))) / 2;
    }
    EXPECT_NEAR(area, 16.0, 1e-3);
    for (const DrawVertex& corner : corners)
        EXPECT_NEAR(std::abs(corner.normal[1]), 1.0F, 1e-5F);
}

TEST(SplineBasis, SharesAddUpAndSlopesAreThoseOfTheShares)
{
    const std::vector<double> knots = {0, 0, 0, 1, 1.5, 4, 4, 4};
    const auto samples = workbench::basisSamples(3, knots, 6, 64);
    ASSERT_EQ(samples.size(), 3U * 64 + 1);
    EXPECT_EQ(std::count_if(samples.begin(), samples.end(), [](const auto& each) { return each.atKnot; }), 4);
    for (std::size_t k = 0; k < samples.size(); ++k) {
        double sum = 0, slopes = 0;
        for (std::size_t j = 0; j < 4; ++j) {
            sum += samples[k].values[j];
            slopes += samples[k].slopes[j];
        }
        EXPECT_NEAR(sum, 1, 1e-12);
        EXPECT_NEAR(slopes, 0, 1e-12);
        if (k == 0 || k + 1 >= 64)
            continue;
        const double step = 1.0 / 64; // of the first span
        for (std::size_t j = 0; j < 4; ++j)
            EXPECT_NEAR(samples[k].slopes[j],
                        (samples[k + 1].values[j] - samples[k - 1].values[j]) / (2 * step), 2e-2);
    }
    EXPECT_TRUE(workbench::basisSamples(3, {0, 1, 2}, 6, 4).empty()) << "numbers that make no spline";
}

/// How a mode's weight of one vertex is set by script: 0.25, then 1.
struct ModeColor {
    const char* name;
    const char* flags;
    const char* scene;
    const char* point;
    const char* set; ///< %s is the value
};
std::ostream& operator<<(std::ostream& out, const ModeColor& mode)
{
    return out << mode.name;
}

class ModeColors : public ViewTest, public ::testing::WithParamInterface<ModeColor> {};

constexpr const char* kLayered = "arm.ma layers";

TEST_P(ModeColors, WeightsAreColoursWithALegend)
{
    const ModeColor& mode = GetParam();
    const std::string scene = mode.scene, folder = sourceDir() + "/scenes/";
    mel("file -f -o \"" + folder + scene.substr(0, scene.find(' ')) + "\"");
    if (scene == kLayered)
        mel("loadPlugin \"" + libraryPath("layerStandIn") + "\"; source \"" + folder + "addLayers.mel\"");
    EXPECT_FALSE(view().showsWeights) << "another tool is current";
    edit(mode.flags);
    toolOn();
    for (const double weight : {0.25, 1.0}) {
        std::string command = mode.set;
        for (std::size_t at = 0; (at = command.find("%s")) != std::string::npos;)
            command.replace(at, 2, std::to_string(weight));
        mel(command);
        EXPECT_EQ(colorsAt(mode.point), std::set<Color>{workbench::weightColor(static_cast<float>(weight))});
    }
    const SceneView drawn = view();
    EXPECT_TRUE(drawn.showsWeights);
    EXPECT_FALSE(drawn.showsOutsiders);
    int numbers = 0;
    for (const workbench::PlacedText& text : workbench::overlayTexts(session, drawn, {}))
        numbers += text.kind == workbench::PlacedText::Kind::kLegend ? 1 : 0;
    EXPECT_EQ(numbers, 3) << "0, 0.5 and 1";
}

constexpr const char* kArm = "arm.ma";

INSTANTIATE_TEST_SUITE_P(
    Modes, ModeColors,
    ::testing::Values(
        ModeColor{"skin", "-weightMode skinCluster -influence elbow", kArm, "arm.vtx[300]",
                  "skinPercent -tv elbow %s armSkin arm.vtx[300]"},
        ModeColor{"dualQuaternion", "-weightMode dualQuaternion", kArm, "arm.vtx[300]",
                  "setAttr armSkin.blendWeights[300] %s"},
        ModeColor{"default", "-deformer lift", "clusterSheet.ma", "sheet.vtx[77]",
                  "percent -v %s lift sheet.vtx[77]"},
        ModeColor{"plug", "-weightMode plug -deformer ripple -plug mask", "ripple.ma", "pond.vtx[77]",
                  "setAttr ripple.maskList[0].mask[77] %s"},
        ModeColor{"target", "-weightMode blendShapeTarget -deformer blendShape1 -target smile", "smile.ma",
                  "face.vtx[900]",
                  "setAttr blendShape1.inputTarget[0].inputTargetGroup[0].targetWeights[900] %s"},
        ModeColor{"base", "-weightMode blendShapeBase -deformer blendShape1", "smile.ma", "face.vtx[900]",
                  "setAttr blendShape1.inputTarget[0].baseWeights[900] %s"},
        ModeColor{
            "mask", "-weightMode ngSkinToolsMask -ngLayer wrinkles", kLayered, "arm.vtx[0]",
            "ngst2Layers -id 2 -paintTarget mask -e -vertexWeights (armValues(%s, %s)) \"|arm|armShape\""},
        ModeColor{
            "layer dq", "-weightMode ngSkinToolsDualQuaternion -ngLayer wrinkles", kLayered, "arm.vtx[0]",
            "ngst2Layers -id 2 -paintTarget dq -e -vertexWeights (armValues(%s, %s)) \"|arm|armShape\""},
        ModeColor{
            "layer influence", "-weightMode ngSkinToolsInfluence -ngLayer wrinkles -influence elbow",
            kLayered, "arm.vtx[0]",
            "ngst2Layers -id 2 -paintTarget 1 -e -vertexWeights (armValues(%s, %s)) \"|arm|armShape\""}));

TEST_F(ViewTest, PointsThatTheDeformerLeavesAloneAreGrey)
{
    mel("polyPlane -n sheet -sx 4 -sy 4; cluster -n lift sheet.vtx[0:9]; polySphere -n other; setAttr "
        "other.tx 9");
    edit("-deformer lift");
    toolOn();
    EXPECT_EQ(colorsAt("sheet.vtx[3]"), std::set<Color>{workbench::weightColor(1)});
    EXPECT_EQ(colorsAt("sheet.vtx[20]"), std::set<Color>{workbench::kOutsiderColor});
    EXPECT_EQ(colorsAt("other.vtx[20]"), std::set<Color>{workbench::kBodyColor});
    EXPECT_TRUE(view().showsOutsiders);
}

} // namespace
