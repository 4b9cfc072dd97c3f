#include "runWorkbench.h"
#include "support/hostFixture.h"

#include "render/picture.h"
#include "render/sceneView.h"
#include "view/drawRecord.h"
#include "view/viewport.h"

#include <algorithm>
#include <cstdlib>

using namespace testing_support;
using workbench::Picture;

namespace {

struct Rgb {
    int red, green, blue;
    int brightness() const { return red + green + blue; }
};

class PictureTest : public HostTest {
public:
    void SetUp() override
    {
        session.viewport().width = 320;
        session.viewport().height = 200;
    }
    /// Pixels count from the lower left corner, as events do.
    static Rgb at(const Picture& picture, int x, int y)
    {
        const auto row = static_cast<std::size_t>(picture.height - 1 - y);
        const std::size_t byte =
            (row * static_cast<std::size_t>(picture.width) + static_cast<std::size_t>(x)) * 4;
        return {picture.pixels.at(byte), picture.pixels.at(byte + 1), picture.pixels.at(byte + 2)};
    }
    /// How many pixels differ plainly, inside a rectangle of port pixels.
    static int changed(const Picture& a, const Picture& b, int left, int bottom, int right, int top)
    {
        int count = 0;
        for (int y = bottom; y < top; ++y) {
            for (int x = left; x < right; ++x)
                count += std::abs(at(a, x, y).brightness() - at(b, x, y).brightness()) > 60 ? 1 : 0;
        }
        return count;
    }
};

TEST_F(PictureTest, MeshSelectionAndLabelsShowWhereTheyAre)
{
    const Picture empty = workbench::renderPicture(session);
    ASSERT_EQ(empty.width, 320);
    ASSERT_EQ(empty.pixels.size(), 320U * 200U * 4U);

    mel("polySphere -r 3 -sx 24 -sy 16 -name \"ball\"; select -cl; viewFit -all; selectMode -component");
    const Picture ball = workbench::renderPicture(session);
    EXPECT_GT(at(ball, 160, 100).brightness(), at(ball, 20, 150).brightness() + 60) << "the ball is lit";

    const std::vector<int> pixel = mel("viewportProject \"ball.vtx[190]\"").toIntArray();
    mel("select -r \"ball.vtx[190]\"");
    const Picture selected = workbench::renderPicture(session);
    const Rgb point = at(selected, pixel.at(0), pixel.at(1));
    EXPECT_TRUE(point.red > 200 && point.green > 180 && point.blue < 120)
        << point.red << " " << point.green << " " << point.blue;

    host::DrawRecord::Text label;
    label.text = "0.75";
    label.position = {60, 150, 0};
    label.screenSpace = true;
    std::fill(std::begin(label.color), std::end(label.color), 1.0F);
    session.drawing().texts.push_back(label);
    const Picture labelled = workbench::renderPicture(session);
    EXPECT_GT(changed(selected, labelled, 55, 145, 100, 170), 25);
    EXPECT_EQ(changed(selected, labelled, 120, 30, 320, 200), 0) << "the label changed something far away";
}

TEST_F(PictureTest, HeadsUpDisplaysStandInTheirSections)
{
    const Picture before = workbench::renderPicture(session);
    mel("headsUpDisplay -s 7 -b 0 -label \"Bottom middle\" low; headsUpDisplay -s 0 -b 0 -label \"Top\" "
        "high; "
        "headsUpDisplay -vis 0 -s 4 -b 0 -label \"Hidden\" hidden");
    const Picture after = workbench::renderPicture(session);
    EXPECT_GT(changed(before, after, 110, 24, 210, 70), 60);
    EXPECT_GT(changed(before, after, 5, 165, 80, 200), 20);
    EXPECT_EQ(changed(before, after, 220, 100, 320, 200), 0);
}

TEST_F(PictureTest, WhatIsHiddenIsNotInTheView)
{
    mel("polyCube -name \"box\"; createNode joint -name \"root\"; createNode joint -name \"tip\" -parent "
        "root");
    EXPECT_EQ(workbench::viewOf(session).surfaces.vertices.size(), 24U) << "four corners a side";
    EXPECT_EQ(workbench::viewOf(session).bones.size(), 2U);
    mel("setAttr box.visibility 0");
    EXPECT_EQ(workbench::viewOf(session).surfaces.vertices.size(), 0U);
}

TEST_F(PictureTest, LinesAreAsWideAsTheDensitySays)
{
    mel("setAttr persp.translate 0 0 10; setAttr persp.rotate 0 0 0; curve -d 1 -p 0 -2 0 -p 0 2 0; select "
        "-cl");
    // Pixels of the curve's colour across it.
    const auto width = [&](double density, double y) {
        const Picture picture = workbench::renderPicture(session, density);
        int count = 0;
        for (int x = 0; x < picture.width; ++x)
            count += at(picture, x, static_cast<int>(y * picture.height)).blue > 150 ? 1 : 0;
        return count;
    };
    const int plain = width(1, 0.6);
    EXPECT_TRUE(plain >= 1 && plain <= 3) << plain;
    EXPECT_NEAR(width(4, 0.6), 4 * 1.8, 2);
    EXPECT_EQ(workbench::renderPicture(session, 4).height, 800);
}

TEST(PictureFile, IsAPngOfTheViewportsSizeAndNeedsADriver)
{
    const Folder folder;
    const std::string file = folder.file("view.png");
    const RunResult run = runWorkbench({"--batch", "--no-plug-in", "--size", "200x120", "-c",
                                        "polySphere -r 2; viewFit -all", "--image", file});
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string bytes = contentsOf(file);
    ASSERT_GT(bytes.size(), 24U);
    EXPECT_EQ(bytes.substr(1, 3), "PNG");
    EXPECT_EQ(static_cast<unsigned char>(bytes[19]), 200);
    EXPECT_EQ(static_cast<unsigned char>(bytes[23]), 120);
    const std::string twice = folder.file("twice.png");
    EXPECT_EQ(runWorkbench({"--batch", "--no-plug-in", "--size", "100x60", "--scale", "2", "--image", twice})
                  .status,
              0);
    EXPECT_EQ(static_cast<unsigned char>(contentsOf(twice)[19]), 200);

    const RunResult none =
        runWorkbench({"--batch", "--no-plug-in", "--image", file}, "__EGL_VENDOR_LIBRARY_DIRS=/nonexistent");
    EXPECT_EQ(none.status, 1);
    EXPECT_NE(none.err.find("Cannot draw a picture"), std::string::npos) << none.err;
    EXPECT_EQ(contentsOf(file), bytes) << "the old picture was touched";
}

} // namespace
