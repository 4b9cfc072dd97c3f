// Component texts: ranges in, runs out, for every kind of shape.
#include "selectionFixture.h"

#include "types/error.h"

using namespace testing_support;

namespace {

class ComponentText : public SelectionTest {
public:
    ComponentText()
    {
        mel("polyPlane -n sheet -sx 3 -sy 2;"                        // 12 vertices
            "curve -n bow -d 1 -p 0 0 0 -p 1 0 0 -p 2 0 0 -p 3 0 0;" // 4 CVs
            "nurbsPlane -n patch -d 1 -u 2 -v 3;"                    // 3 x 4 CVs
            "createNode transform -n cage; createNode lattice -n cageShape -p cage;"
            "setAttr cageShape.sDivisions 2; setAttr cageShape.tDivisions 3; setAttr cageShape.uDivisions 4");
    }
};

TEST_F(ComponentText, RangesAreReadAndWrittenBackAsRuns)
{
    const struct {
        const char *object, *text;
        std::size_t count;
        Names written;
    } rows[] = {
        {"sheet", "vtx[3]", 1, {"vtx[3]"}},
        {"sheet", "vtx[3:7]", 5, {"vtx[3:7]"}},
        {"sheet", "vtx[*]", 12, {"vtx[0:11]"}},
        {"sheet", "vtx[:]", 12, {"vtx[0:11]"}},
        {"sheet", "vtx[9:2]", 8, {"vtx[2:9]"}},
        {"sheet", "vtx[10:99]", 2, {"vtx[10:11]"}}, // cut at the end of the shape
        {"sheet", "e[0:16]", 17, {"e[0:16]"}},
        {"sheet", "f[1:4]", 4, {"f[1:4]"}},
        {"bow", "cv[1:2]", 2, {"cv[1:2]"}},
        {"patch", "cv[2][0:3]", 4, {"cv[2][0:3]"}},
        {"patch", "cv[*][*]", 12, {"cv[0:2][0:3]"}},
        {"patch", "cv[0:1][1]", 2, {"cv[0:1][1]"}},
        {"patch", "cv[1]", 4, {"cv[1][0:3]"}}, // what is not named means all
        {"cage", "pt[0][1][*]", 4, {"pt[0][1][0:3]"}},
        {"cage", "pt[0:1][0:2][1]", 6, {"pt[0:1][0:2][1]"}},
        {"cage", "pt[*][*][*]", 24, {"pt[0:1][0:2][0:3]"}},
    };
    for (const auto& row : rows) {
        host::DagNode& node = shape(row.object);
        const host::Ref<host::Component> component = host::parseComponent(node, row.text);
        EXPECT_EQ(component->count(), row.count) << row.object << "." << row.text;
        EXPECT_EQ(host::componentTexts(node, *component), row.written) << row.object << "." << row.text;
        EXPECT_EQ(host::elementTexts(node, *component).size(), row.count);
    }
}

TEST_F(ComponentText, WhatIsMalformedOrOutsideIsRefusedByName)
{
    for (const char* text :
         {"sheet.vtx[12]", "sheet.vtx[12:20]", "sheet.vtx[]", "sheet.vtx[1", "sheet.vtx[1]x", "sheet.vtx[a]",
          "sheet.vtx[-1]", "sheet.vtx[0][0]", "sheet.f[6]", "sheet.cv[0]", "patch.cv[3][0]", "patch.cv[0][4]",
          "cage.pt[0][3][0]", "bow.vtx[0]", "nobody.vtx[0]", "sheet.vtx[99999999999999]"}) {
        host::SelectionList list;
        EXPECT_THROW(list.addPattern(session.graph(), text), host::Error) << text;
        EXPECT_TRUE(list.items.empty()) << text;
    }
}

/// Point order: surface u * numV + v; lattice u * S * T + t * S + s.
TEST_F(ComponentText, PointIndicesFollowTheOrderOfTheGeometry)
{
    const struct {
        const char *object, *text;
        std::vector<int> points;
    } rows[] = {
        {"patch", "cv[1][2]", {6}},
        {"patch", "cv[0:1][3]", {3, 7}},
        {"cage", "pt[1][2][3]", {3 * 6 + 2 * 2 + 1}},
        {"cage", "pt[0:1][1][0]", {2, 3}},
        {"sheet", "vtx[4:5]", {4, 5}},
    };
    for (const auto& row : rows) {
        host::DagNode& node = shape(row.object);
        const host::Ref<host::Component> component = host::parseComponent(node, row.text);
        EXPECT_EQ(host::pointIndices(node, component.get()), row.points) << row.text;
        EXPECT_EQ(host::pointComponent(node, row.points)->elements, component->elements) << row.text;
    }
    for (const char* object : {"sheet", "bow", "patch", "cage"}) {
        const std::vector<int> all = host::pointIndices(shape(object), nullptr);
        ASSERT_EQ(all.size(), host::shapeGeometry(shape(object))->count());
        for (std::size_t k = 0; k < all.size(); ++k)
            EXPECT_EQ(all[k], static_cast<int>(k)) << object;
    }
}

TEST_F(ComponentText, AListNamesTheTransformForScriptsAndTheShapeForTheInterface)
{
    const host::SelectionList list =
        named({"sheetShape.vtx[0:1]", "sheet.vtx[3]", "bow", "sheet.translateX"});
    EXPECT_EQ(texts(list), (Names{"sheet.vtx[0:1]", "sheet.vtx[3]", "bow", "sheet.translateX"}));
    EXPECT_EQ(list.texts(0, host::SelectionList::Owner::kShape),
              (Names{"sheetShape.vtx[0:1]", "sheetShape.vtx[3]"}));
    EXPECT_EQ(texts(named({"s*t.vtx[2]"})), Names{"sheet.vtx[2]"}) << "wild cards in the node's name";
}

} // namespace
