// Cameras and pixels.
#include "graph/graph.h"
#include "support/hostFixture.h"
#include "view/viewport.h"

#include <maya/M3dView.h>
#include <maya/MDagPath.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>

#include <cmath>
#include <random>

using namespace testing_support;
using Imath::V3d;

namespace {

class Projection : public HostTest {
public:
    host::Viewport& view() { return session.viewport(); }
    V3d pixels(const V3d& world)
    {
        V3d at;
        EXPECT_TRUE(view().project(world, at));
        return at;
    }
};

/// A camera at a known place that looks down its negative z axis, and points at a known angle.
TEST_F(Projection, PixelsFollowTheLensAndTheFilm)
{
    mel("setAttr persp.translate 0 0 10; setAttr persp.rotate 0 0 0; setAttr perspShape.focalLength 35;"
        "setAttr perspShape.horizontalFilmAperture 1.5; setAttr perspShape.verticalFilmAperture 1");
    const double tanHorizontal = 1.5 * 25.4 / 70, tanVertical = 25.4 / 70;
    const struct {
        int filmFit, width, height;
        bool horizontal; // the film's width fills the port's width; else its height fills the height
    } rows[] = {{0, 960, 540, true},  {0, 600, 540, false}, {1, 600, 540, true},
                {2, 960, 540, false}, {3, 960, 540, false}, {3, 600, 540, true}};
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.filmFit) + " " + std::to_string(row.width));
        mel("setAttr perspShape.filmFit " + std::to_string(row.filmFit));
        view().width = row.width;
        view().height = row.height;
        const double perUnit =
            row.horizontal ? row.width / 2.0 / (10 * tanHorizontal) : row.height / 2.0 / (10 * tanVertical);
        const V3d at = pixels({1.25, -0.5, 0});
        EXPECT_NEAR(at.x, row.width / 2.0 + 1.25 * perUnit, 1e-9);
        EXPECT_NEAR(at.y, row.height / 2.0 - 0.5 * perUnit, 1e-9) << "from the lower left";
    }
    view().width = 960;
    view().height = 540;
    mel("setAttr perspShape.orthographic 1; setAttr perspShape.orthographicWidth 12");
    for (const double depth : {0.0, -20.0})
        EXPECT_NEAR(pixels({3, 1, depth}).x, 480 + 3 * 80, 1e-9) << "no perspective";
}

TEST_F(Projection, PixelsAndWorldRoundTripForAnyCamera)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> any(-1, 1);
    for (int round = 0; round < 40; ++round) {
        const auto number = [&](double scale) { return std::to_string(any(random) * scale) + " "; };
        mel("setAttr persp.translate " + number(30) + number(30) + number(30) + "; setAttr persp.rotate " +
            number(180) + number(180) + number(180) +
            "; setAttr persp.scale 1 2 3; setAttr perspShape.orthographic " + std::to_string(round % 2) +
            "; setAttr perspShape.focalLength " + std::to_string(40 + 20 * any(random)));
        const double x = 480 + 470 * any(random), y = 270 + 260 * any(random);
        V3d nearPoint, farPoint;
        view().viewToWorld(x, y, nearPoint, farPoint);
        for (const double along : {0.0, 0.001, 0.3, 1.0}) {
            const V3d at = pixels(nearPoint + (farPoint - nearPoint) * along);
            EXPECT_NEAR(at.x, x, 1e-5);
            EXPECT_NEAR(at.y, y, 1e-5);
        }
        EXPECT_NEAR(pixels(nearPoint).z, 0, 1e-7);
        EXPECT_NEAR(pixels(farPoint).z, 1, 1e-7);
        const V3d eye = V3d(0.0) * view().viewMatrix().inverse();
        if (round % 2 == 0) {
            EXPECT_LT((nearPoint - eye).normalized().cross((farPoint - eye).normalized()).length(), 1e-7);
        }
    }
}

TEST_F(Projection, TheInterfaceRoundsToWholePixelsAndTellsWhatIsClipped)
{
    mel("setAttr persp.translate 0 0 10; setAttr persp.rotate 0 0 0");
    MStatus status;
    M3dView active = M3dView::active3dView(&status);
    ASSERT_EQ(status, MS::kSuccess);
    EXPECT_EQ(active.portWidth(), 960);
    EXPECT_EQ(active.portHeight(), 540);
    short x = -1, y = -1;
    EXPECT_TRUE(active.worldToView(MPoint(0, 0, 0), x, y));
    EXPECT_EQ(x, 480);
    EXPECT_EQ(y, 270);
    EXPECT_TRUE(active.worldToView(MPoint(0.03, 0, 0), x, y));
    EXPECT_EQ(x, std::lround(pixels({0.03, 0, 0}).x));
    const struct {
        MPoint point;
        const char* why;
    } clipped[] = {{{0, 0, 20}, "behind the camera"},
                   {{0, 0, 9.95}, "before the near plane"},
                   {{0, 0, -20000}, "beyond the far plane"},
                   {{50, 0, 0}, "right of the port"},
                   {{0, -50, 0}, "below the port"}};
    for (const auto& row : clipped)
        EXPECT_FALSE(active.worldToView(row.point, x, y)) << row.why;
    MPoint nearPoint, farPoint;
    EXPECT_EQ(active.viewToWorld(480, 270, nearPoint, farPoint), MS::kSuccess);
    EXPECT_NEAR(nearPoint.z, 9.9, 1e-6);
    MVector direction;
    EXPECT_EQ(active.viewToWorld(480, 270, nearPoint, direction), MS::kSuccess);
    EXPECT_NEAR(direction.z, -1, 1e-9);
    MDagPath camera;
    EXPECT_EQ(active.getCamera(camera), MS::kSuccess);
    EXPECT_STREQ(camera.partialPathName().asChar(), "perspShape");
}

TEST_F(Projection, AViewWithoutItsCameraFailsPolitely)
{
    mel("polyPlane; createNode transform -n cam; createNode camera -n camShape -p cam; lookThru cam; delete "
        "cam");
    MStatus status;
    M3dView active = M3dView::active3dView(&status);
    EXPECT_EQ(status, MS::kFailure);
    short x = 0, y = 0;
    EXPECT_FALSE(active.worldToView(MPoint(), x, y, &status));
    EXPECT_EQ(status, MS::kFailure);
    MPoint nearPoint, farPoint;
    EXPECT_EQ(active.viewToWorld(1, 1, nearPoint, farPoint), MS::kFailure);
    EXPECT_FALSE(melError("viewFit -all").empty());
    mel("lookThru persp");
    EXPECT_TRUE(active.worldToView(MPoint(), x, y));
}

TEST_F(Projection, ViewFitShowsEverythingAndViewportProjectTellsWhere)
{
    mel("polySphere -n ball -r 3; setAttr ball.translate 40 -7 12; polyPlane -n sheet; select -cl");
    const int count = static_cast<int>(melStrings("ls -fl ball.vtx[*]").size());
    ASSERT_GT(count, 300);
    for (const char* rotation : {"0 0 0", "-30 45 0", "80 120 30"}) {
        mel("setAttr persp.rotate " + std::string(rotation) + "; viewFit ball");
        double low = 1e9, high = -1e9;
        for (int vertex = 0; vertex < count; ++vertex) {
            const std::vector<int> at =
                mel("viewportProject \"ball.vtx[" + std::to_string(vertex) + "]\"").toIntArray();
            ASSERT_EQ(at.size(), 2u);
            EXPECT_TRUE(at[0] >= 0 && at[0] <= 960 && at[1] >= 0 && at[1] <= 540)
                << rotation << " " << vertex;
            low = std::min(low, static_cast<double>(at[1]));
            high = std::max(high, static_cast<double>(at[1]));
        }
        EXPECT_GT(high - low, 250) << "and fills the view";
    }
    const std::vector<double> position = melFloats("pointPosition -w ball.vtx[17]");
    const V3d wanted = pixels({position[0], position[1], position[2]});
    EXPECT_EQ(
        mel("viewportProject \"ball.vtx[17]\"").toIntArray(),
        (std::vector<int>{static_cast<int>(std::lround(wanted.x)), static_cast<int>(std::lround(wanted.y))}));
    for (const char* text : {"ball.vtx[9999]", "nobody", "initialShadingGroup"})
        EXPECT_FALSE(melError("viewportProject \"" + std::string(text) + "\"").empty()) << text;
    EXPECT_EQ(melString("lookThru -q"), "persp");
    mel("lookThru modelPanel4 top");
    EXPECT_EQ(melString("lookThru -q"), "top");
    EXPECT_FALSE(melError("lookThru ball").empty());
}

} // namespace
