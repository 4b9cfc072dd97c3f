// Picking on the screen: what a click or a marquee takes, and what a surface hides.
#include "selection/picking.h"
#include "selectionFixture.h"
#include "view/viewport.h"

#include <maya/MGlobal.h>

#include <cmath>
#include <set>

using namespace testing_support;
using Imath::V3d;

namespace {

struct Triangle {
    V3d a, b, c;
};

class Picking : public SelectionTest {
public:
    Picking() { mel("selectMode -component"); }

    Names click(double x, double y, bool visibleOnly = true)
    {
        return texts(host::pickPoint(session, x, y, visibleOnly));
    }
    Names marquee(double x1, double y1, double x2, double y2, bool visibleOnly = true)
    {
        return texts(host::pickRectangle(session, {x1, y1, x2, y2}, visibleOnly));
    }
    V3d pixel(const std::string& object, int point)
    {
        V3d at;
        EXPECT_TRUE(session.viewport().project(world(object)[static_cast<std::size_t>(point)], at));
        return at;
    }
    void lookAlong(const std::string& rotation)
    {
        mel("setAttr persp.rotate " + rotation + "; viewFit -all");
    }

    std::vector<Triangle> triangles(const std::string& object)
    {
        const std::vector<V3d> points = world(object);
        const auto geometry = host::shapeGeometry(shape(object));
        const auto& topology = *static_cast<const host::MeshData&>(*geometry).topology;
        std::vector<Triangle> out;
        std::size_t corner = 0;
        const auto at = [&](std::size_t k) {
            return points[static_cast<std::size_t>(topology.faceVertices[corner + k])];
        };
        for (const int count : topology.faceCounts) {
            for (std::size_t k = 2; k < static_cast<std::size_t>(count); ++k)
                out.push_back({at(0), at(k - 1), at(k)});
            corner += static_cast<std::size_t>(count);
        }
        return out;
    }
    /// Whether the way from the eye to a point is cut by a triangle, well before the point.
    static bool cut(const V3d& eye, const V3d& to, const Triangle& t)
    {
        const V3d way = to - eye, side1 = t.b - t.a, side2 = t.c - t.a, p = way.cross(side2);
        const double det = side1.dot(p);
        if (std::abs(det) < 1e-12)
            return false;
        const V3d offset = eye - t.a, q = offset.cross(side1);
        const double u = offset.dot(p) / det, v = way.dot(q) / det, distance = side2.dot(q) / det;
        return u > -1e-9 && v > -1e-9 && u + v < 1 + 1e-9 && distance > 1e-6 && distance < 1 - 1e-6;
    }
};

TEST_F(Picking, SurfacePickingTakesExactlyWhatARayFromTheEyeReaches)
{
    mel("polySphere -n ball -r 2 -sx 16 -sy 10; polyCube -n box -w 2 -h 2 -d 2; setAttr box.translate 1.6 "
        "0.4 1.9;"
        "polyPlane -n floor -w 8 -h 8 -sx 9 -sy 9; setAttr floor.translateY -1.1");
    const Names objects = {"ball", "box", "floor"};
    for (const char* rotation : {"-20 35 0", "15 -70 0", "-85 10 0", "0 0 0"}) {
        SCOPED_TRACE(rotation);
        lookAlong(rotation);
        const V3d eye = V3d(0.0) * session.viewport().viewMatrix().inverse();
        std::vector<Triangle> all;
        for (const std::string& object : objects)
            for (const Triangle& triangle : triangles(object))
                all.push_back(triangle);
        const host::SelectionList picked = host::pickRectangle(session, {0, 0, 960, 540}, true);
        const host::SelectionList wire = host::pickRectangle(session, {0, 0, 960, 540}, false);
        std::size_t hidden = 0;
        for (const std::string& object : objects) {
            std::set<int> taken;
            for (const host::SelectionItem& item : picked.items)
                if (item.node.get() == &shape(object))
                    taken.insert(item.component->elements.begin(), item.component->elements.end());
            const std::vector<V3d> points = world(object);
            for (std::size_t vertex = 0; vertex < points.size(); ++vertex) {
                bool visible = true;
                for (const Triangle& triangle : all)
                    visible = visible && !cut(eye, points[vertex], triangle);
                hidden += visible ? 0 : 1;
                EXPECT_EQ(taken.count(static_cast<int>(vertex)), visible ? 1u : 0u)
                    << object << " " << vertex;
            }
        }
        EXPECT_GT(hidden, 50u);
        EXPECT_EQ(texts(wire), (Names{"ball.vtx[0:145]", "box.vtx[0:7]", "floor.vtx[0:99]"}))
            << "the wireframe method takes all";
    }
}

TEST_F(Picking, AClickTakesTheNearestVisibleVertexWithinTheTolerance)
{
    mel("polyCube -n box -w 4 -h 4 -d 4");
    lookAlong("0 0 0");
    // Straight from the front, vertices of the back lie behind those of the front.
    const std::vector<V3d> points = world("box");
    for (int vertex = 0; vertex < 8; ++vertex) {
        const V3d at = pixel("box", vertex);
        const bool front = points[static_cast<std::size_t>(vertex)].z > 0;
        const Names wanted = {"box.vtx[" + std::to_string(vertex) + "]"};
        if (front) {
            EXPECT_EQ(click(at.x, at.y), wanted);
            EXPECT_EQ(click(at.x + 6, at.y - 6), wanted) << "within ten pixels";
            EXPECT_EQ(click(at.x + 30, at.y), Names{});
        } else {
            EXPECT_EQ(click(at.x, at.y), Names{}) << "hidden";
            EXPECT_EQ(click(at.x, at.y, false), wanted) << "by its wireframe";
        }
    }
    const V3d corner = pixel("box", 0);
    mel("selectPref -clickBoxSize 3");
    EXPECT_EQ(click(corner.x + 2, corner.y), Names{"box.vtx[0]"});
    EXPECT_EQ(click(corner.x + 4, corner.y), Names{});
}

TEST_F(Picking, CornersOfAMarqueeMayComeInAnyOrderAndItsBorderCounts)
{
    mel("polyPlane -n sheet -w 4 -h 4 -sx 4 -sy 4");
    lookAlong("-90 0 0");
    const V3d low = pixel("sheet", 6), high = pixel("sheet", 18);
    const Names wanted = {"sheet.vtx[6:8]", "sheet.vtx[11:13]", "sheet.vtx[16:18]"};
    EXPECT_EQ(marquee(low.x - 1, low.y - 1, high.x + 1, high.y + 1), wanted);
    EXPECT_EQ(marquee(high.x + 1, high.y + 1, low.x - 1, low.y - 1), wanted);
    EXPECT_EQ(marquee(high.x + 1, low.y - 1, low.x - 1, high.y + 1), wanted);
    EXPECT_EQ(marquee(low.x - 1, high.y + 1, high.x + 1, low.y - 1), wanted);
    EXPECT_EQ(marquee(low.x, low.y, high.x, high.y), wanted);
    EXPECT_EQ(marquee(low.x + 1, low.y + 1, high.x - 1, high.y - 1), Names{"sheet.vtx[12]"});
}

TEST_F(Picking, WhatIsHiddenOrBehindTheCameraIsNotPicked)
{
    mel("polyPlane -n sheet -w 4 -h 4 -sx 2 -sy 2");
    lookAlong("-90 0 0");
    const V3d middle = pixel("sheet", 4);
    // A wall that starts behind the camera and ends in front of the sheet: cut by the near plane.
    mel("polyPlane -n wall -w 60 -h 60 -sx 1 -sy 1; setAttr wall.rotateZ 60; setAttr wall.translate 20 3 0");
    EXPECT_EQ(click(middle.x, middle.y), Names{"sheet.vtx[4]"});
    mel("setAttr wall.translateX 0");
    EXPECT_EQ(click(middle.x, middle.y), Names{});
    EXPECT_EQ(click(middle.x, middle.y, false), Names{"sheet.vtx[4]"});
    mel("setAttr wall.visibility 0");
    EXPECT_EQ(click(middle.x, middle.y), Names{"sheet.vtx[4]"});
    mel("setAttr persp.translateY -10");
    EXPECT_EQ(marquee(0, 0, 960, 540, false), Names{}) << "behind the camera";
}

TEST_F(Picking, TemplatesAndReferencesOfDrawingOverridesAreSeenButNotPicked)
{
    mel("polyPlane -n sheet -w 4 -h 4 -sx 2 -sy 2; group -n above sheet");
    lookAlong("-90 0 0");
    const V3d middle = pixel("sheet", 4);
    const std::string box = "setAttr above.overrideEnabled 1; setAttr above.overrideDisplayType ";
    for (const char* type : {"1", "2"}) {
        mel(box + type);
        EXPECT_EQ(click(middle.x, middle.y), Names{}) << type;
    }
    mel("setAttr sheetShape.overrideEnabled 1"); // its own override is nearer
    EXPECT_EQ(click(middle.x, middle.y), Names{"sheet.vtx[4]"});
    mel("setAttr sheetShape.overrideEnabled 0; setAttr above.overrideEnabled 0; selectMode -object");
    EXPECT_EQ(click(middle.x, middle.y), Names{"sheet"});
    mel("setAttr above.overrideEnabled 1");
    EXPECT_EQ(click(middle.x, middle.y), Names{});
}

TEST_F(Picking, CurvesSurfacesAndLatticesArePickedByTheirPoints)
{
    mel("curve -n bow -d 1 -p -3 0 0 -p -1 0 0 -p 1 0 0; nurbsPlane -n patch -d 1 -u 1 -v 1 -w 2;"
        "setAttr patch.translate 4 0 0");
    lookAlong("-90 0 0");
    const V3d cv = pixel("bow", 1), corner = pixel("patch", 2);
    EXPECT_EQ(click(cv.x, cv.y), Names{"bow.cv[1]"});
    EXPECT_EQ(click(corner.x, corner.y), Names{"patch.cv[1][0]"});
    EXPECT_EQ(marquee(0, 0, 960, 540), (Names{"bow.cv[0:2]", "patch.cv[0:1][0:1]"}));
}

TEST_F(Picking, ObjectModePicksTransforms)
{
    mel("polyPlane -n sheet -w 4 -h 4 -sx 1 -sy 1; polyPlane -n low -w 8 -h 8 -sx 1 -sy 1; setAttr "
        "low.translateY -2;"
        "select -cl; joint -n bone -p 0 1 0; select -cl; curve -n bow -d 1 -p -8 0 0 -p -6 0 0; selectMode "
        "-object");
    lookAlong("-90 0 0");
    const V3d sheet = pixel("sheet", 0), low = pixel("low", 0), bow = pixel("bow", 0);
    EXPECT_EQ(click(sheet.x + 12, sheet.y + 12), Names{"sheet"}) << "the face in front";
    EXPECT_EQ(click(low.x + 12, low.y + 12), Names{"low"});
    const auto clickBone = [&] {
        const std::vector<int> at = mel("viewportProject bone").toIntArray();
        return click(at[0], at[1]);
    };
    EXPECT_EQ(clickBone(), Names{"bone"}) << "a joint before the sheet";
    mel("setAttr bone.translateY -1");
    EXPECT_EQ(clickBone(), Names{"sheet"}) << "hidden below the sheet";
    EXPECT_EQ(click((bow.x + pixel("bow", 1).x) / 2, bow.y), Names{"bow"}) << "between the CVs";
    EXPECT_EQ(click(2, 2), Names{});
    EXPECT_EQ(marquee(0, 0, 960, 540), (Names{"sheet", "low", "bow"}));
    EXPECT_EQ(marquee(0, 0, 960, 540, false), (Names{"sheet", "low", "bone", "bow"}));
    EXPECT_EQ(marquee(sheet.x + 12, sheet.y + 12, sheet.x + 16, sheet.y + 14), Names{"sheet"})
        << "inside a face";
}

TEST_F(Picking, ThePreselectionHighlightFollowsThePointerOnPolygonsOnly)
{
    mel("polyPlane -n sheet -w 4 -h 4 -sx 2 -sy 2; curve -n bow -d 1 -p -5 0 0 -p -4 0 0");
    lookAlong("-90 0 0");
    const V3d middle = pixel("sheet", 4), cv = pixel("bow", 0);
    const auto highlight = [&](const V3d& at) {
        host::updatePreselection(session, at.x, at.y);
        MSelectionList list;
        MGlobal::getPreselectionHiliteList(list);
        return list.length();
    };
    EXPECT_EQ(highlight(middle), 0u) << "the preference is off";
    mel("selectPref -preSelectHilite 1");
    EXPECT_EQ(highlight(middle), 1u);
    EXPECT_EQ(texts(state().preselection), Names{"sheet.vtx[4]"});
    EXPECT_EQ(highlight(cv), 0u);
    EXPECT_EQ(highlight(middle + V3d(40, 0, 0)), 0u);
    highlight(middle);
    mel("selectPref -preSelectHilite 0");
    MSelectionList list;
    MGlobal::getPreselectionHiliteList(list);
    EXPECT_TRUE(list.isEmpty());
}

TEST_F(Picking, TheInterfacePicksWithAdjustmentAndMethod)
{
    mel("polyCube -n box -w 4 -h 4 -d 4");
    lookAlong("0 0 0");
    MGlobal::selectFromScreen(0, 0, 960, 540, MGlobal::kReplaceList, MGlobal::kWireframeSelectMethod);
    EXPECT_EQ(selected(), Names{"box.vtx[0:7]"});
    MGlobal::selectFromScreen(960, 540, 0, 0, MGlobal::kRemoveFromList, MGlobal::kSurfaceSelectMethod);
    ASSERT_EQ(state().active().items.size(), 1u);
    for (const int vertex : state().active().items[0].component->elements)
        EXPECT_LT(world("box")[static_cast<std::size_t>(vertex)].z, 0) << "only the back is left";
    const V3d at = pixel("box", 0);
    const short x = static_cast<short>(std::lround(at.x)), y = static_cast<short>(std::lround(at.y));
    MGlobal::selectFromScreen(x, y, MGlobal::kReplaceList, MGlobal::kSurfaceSelectMethod);
    EXPECT_EQ(selected(), Names{"box.vtx[0]"});
    MGlobal::selectFromScreen(short(1), short(1), MGlobal::kAddToList, MGlobal::kSurfaceSelectMethod);
    EXPECT_EQ(selected(), Names{"box.vtx[0]"});
    MGlobal::selectFromScreen(x, y, MGlobal::kXORWithList, MGlobal::kSurfaceSelectMethod);
    EXPECT_EQ(selected(), Names{});
}

} // namespace
