// Selection lists, components and the session's selection through the interface.
#include "selectionFixture.h"

#include <maya/MFnDoubleIndexedComponent.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnTripleIndexedComponent.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MItSelectionList.h>
#include <maya/MRichSelection.h>
#include <maya/MStringArray.h>

using namespace testing_support;

namespace {

class ListApi : public SelectionTest {
public:
    ListApi()
    {
        mel("polyPlane -n sheet -sx 4 -sy 4; polyPlane -n other -sx 2 -sy 2; createNode transform -n pair;"
            "createNode transform -n pairs; select -cl");
    }
    static Names strings(const MSelectionList& list)
    {
        MStringArray array;
        EXPECT_EQ(list.getSelectionStrings(array), MS::kSuccess);
        Names out;
        for (unsigned int at = 0; at < array.length(); ++at)
            out.push_back(array[at].asChar());
        return out;
    }
    static MSelectionList listOf(const Names& names)
    {
        MSelectionList list;
        for (const std::string& name : names)
            EXPECT_EQ(list.add(MString(name.c_str())), MS::kSuccess) << name;
        return list;
    }
    static MDagPath pathOf(const std::string& name)
    {
        MDagPath path;
        EXPECT_EQ(listOf({name}).getDagPath(0, path), MS::kSuccess);
        return path;
    }
    static MObject vertices(std::initializer_list<int> ids)
    {
        MFnSingleIndexedComponent set;
        const MObject component = set.create(MFn::kMeshVertComponent);
        for (const int id : ids)
            set.addElement(id);
        return component;
    }
    static std::vector<int> elements(const MObject& component)
    {
        MIntArray ids;
        EXPECT_EQ(MFnSingleIndexedComponent(component).getElements(ids), MS::kSuccess);
        std::vector<int> out;
        for (unsigned int at = 0; at < ids.length(); ++at)
            out.push_back(ids[at]);
        return out;
    }
    static Names active()
    {
        MSelectionList list;
        EXPECT_EQ(MGlobal::getActiveSelectionList(list), MS::kSuccess);
        return strings(list);
    }
};

TEST_F(ListApi, NamesAreAddedOrRefusedWithoutATrace)
{
    MSelectionList list = listOf({"sheet", "pair*", "sheet.vtx[3:4]", "sheet.translateX"});
    EXPECT_EQ(strings(list), (Names{"sheet", "pair", "pairs", "sheetShape.vtx[3:4]", "sheet.translateX"}));
    mel("createNode transform -n twin -p pair; createNode transform -n twin -p pairs");
    for (const char* name : {"nobody", "no*body", "twin", "sheet.vtx[999]", "sheet.nothing", ""})
        EXPECT_NE(list.add(MString(name)), MS::kSuccess) << name;
    EXPECT_EQ(list.length(), 5u);
    EXPECT_EQ(list.add("pair|twin"), MS::kSuccess);
}

TEST_F(ListApi, ComponentsOfAPathUniteOnlyWhenAsked)
{
    MSelectionList list;
    const MDagPath sheet = pathOf("sheetShape");
    EXPECT_EQ(list.add(sheet, vertices({7, 2})), MS::kSuccess);
    EXPECT_EQ(list.add(sheet, vertices({2, 3})), MS::kSuccess);
    EXPECT_EQ(list.length(), 2u) << "appended as items of their own";
    MDagPath path;
    MObject component;
    ASSERT_EQ(list.getDagPath(0, path, component), MS::kSuccess);
    EXPECT_EQ(elements(component), (std::vector<int>{7, 2})) << "elements keep their order";
    EXPECT_EQ(list.add(sheet, vertices({3, 1}), true), MS::kSuccess);
    EXPECT_EQ(list.length(), 2u);
    ASSERT_EQ(list.getDagPath(0, path, component), MS::kSuccess);
    EXPECT_EQ(elements(component), (std::vector<int>{1, 2, 3, 7})) << "united ascending";
    EXPECT_TRUE(path == sheet);
    EXPECT_EQ(list.add(sheet), MS::kSuccess);
    ASSERT_EQ(list.getDagPath(2, path, component), MS::kSuccess);
    EXPECT_TRUE(component.isNull()) << "the whole node";
    EXPECT_NE(list.add(MDagPath()), MS::kSuccess);
    EXPECT_NE(list.add(pathOf("pair"), vertices({0})), MS::kSuccess) << "no shape, no components";
}

TEST_F(ListApi, ListsAreValues)
{
    MSelectionList list = listOf({"sheet.vtx[1:2]"});
    const MSelectionList copy = list;
    MDagPath path;
    MObject component;
    list.getDagPath(0, path, component);
    MFnSingleIndexedComponent(component).addElement(9);
    EXPECT_EQ(strings(list), Names{"sheetShape.vtx[1:2]"}) << "a handle on a component changes no list";
    list.clear();
    EXPECT_EQ(strings(copy), Names{"sheetShape.vtx[1:2]"});
    EXPECT_NE(copy.getDagPath(1, path, component), MS::kSuccess);
    mel("delete other");
    MObject node;
    MSelectionList dead = listOf({"sheet"});
    mel("delete sheet");
    EXPECT_NE(dead.getDependNode(0, node), MS::kSuccess) << "the node is gone";
    EXPECT_NE(dead.getDagPath(0, path), MS::kSuccess);
}

TEST_F(ListApi, MergingAddsTogglesAndRemoves)
{
    const struct {
        MSelectionList::MergeStrategy how;
        Names expected;
    } rows[] = {
        {MSelectionList::kMergeNormal, {"sheetShape.vtx[1:5]", "pair", "pairs"}},
        {MSelectionList::kXORWithList, {"sheetShape.vtx[1:2]", "sheetShape.vtx[5]", "pairs"}},
        {MSelectionList::kRemoveFromList, {"sheetShape.vtx[1:2]"}},
    };
    for (const auto& row : rows) {
        MSelectionList list = listOf({"sheet.vtx[1:4]", "pair"});
        EXPECT_EQ(list.merge(listOf({"sheet.vtx[3:5]", "pair", "pairs"}), row.how), MS::kSuccess);
        EXPECT_EQ(strings(list), row.expected);
    }
    MSelectionList list = listOf({"sheet.vtx[1:4]"});
    list.merge(pathOf("sheetShape"), vertices({1, 2, 3, 4}), MSelectionList::kRemoveFromList);
    EXPECT_TRUE(list.isEmpty()) << "an item without elements goes";
    list = listOf({"sheet.vtx[1:4]", "pair"});
    EXPECT_TRUE(list.hasItem(pathOf("sheetShape"), vertices({4, 2})));
    EXPECT_FALSE(list.hasItem(pathOf("sheetShape"), vertices({4, 5})));
    EXPECT_TRUE(list.hasItem(pathOf("pair")));
    EXPECT_FALSE(list.hasItem(pathOf("pairs")));
}

TEST_F(ListApi, ComponentsKeepElementsAndWeightsInStep)
{
    MFnSingleIndexedComponent set;
    MStatus status;
    EXPECT_TRUE(set.create(MFn::kLatticeComponent, &status).isNull()) << "three indices, not one";
    EXPECT_EQ(status, MS::kInvalidParameter);
    MObject component = set.create(MFn::kMeshVertComponent);
    MIntArray ids;
    for (const int id : {5, 1, 8})
        ids.append(id);
    set.addElements(ids);
    EXPECT_FALSE(set.hasWeights());
    EXPECT_EQ(set.weight(1).influence(), 1.0F);
    MWeight half;
    half.setInfluence(0.5F);
    EXPECT_EQ(set.setWeight(1, half), MS::kSuccess);
    set.addElement(9);
    EXPECT_TRUE(set.hasWeights());
    EXPECT_EQ(set.weight(0).influence(), 1.0F);
    EXPECT_EQ(set.weight(1).influence(), 0.5F);
    EXPECT_EQ(set.weight(3).influence(), 1.0F);
    set.weight(4, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);
    EXPECT_EQ(set.elementMax(), 9);
    EXPECT_EQ(set.element(2), 8);
    EXPECT_FALSE(set.isComplete());
    EXPECT_EQ(set.setCompleteData(3), MS::kSuccess);
    EXPECT_EQ(elements(component), (std::vector<int>{0, 1, 2}));
    int size = 0;
    EXPECT_EQ(set.getCompleteData(size), MS::kSuccess);
    EXPECT_EQ(size, 3);
    MObject same = vertices({2, 1, 0});
    EXPECT_TRUE(set.isEqual(same));
}

TEST_F(ListApi, ComponentsOfSeveralIndicesKeepTheirOrder)
{
    MFnTripleIndexedComponent lattice;
    lattice.create(MFn::kLatticeComponent);
    lattice.setCompleteData(2, 1, 2);
    MIntArray s, t, u;
    lattice.getElements(s, t, u);
    const int order[4][3] = {{0, 0, 0}, {1, 0, 0}, {0, 0, 1}, {1, 0, 1}}; // s fastest
    ASSERT_EQ(s.length(), 4u);
    for (unsigned int at = 0; at < 4; ++at) {
        EXPECT_EQ(s[at], order[at][0]);
        EXPECT_EQ(u[at], order[at][2]);
    }
    MFnDoubleIndexedComponent surface;
    EXPECT_EQ(surface.addElement(1, 2), MS::kFailure) << "attached to nothing";
    surface.create(MFn::kSurfaceCVComponent);
    surface.addElement(1, 2);
    int first = 0, second = 0;
    EXPECT_EQ(surface.getElement(0, first, second), MS::kSuccess);
    EXPECT_EQ(first * 10 + second, 12);
    EXPECT_EQ(surface.getElement(1, first, second), MS::kInvalidParameter);
    MStatus status;
    EXPECT_EQ(MFnSingleIndexedComponent(surface.object(), &status).elementCount(), 0);
    EXPECT_NE(status, MS::kSuccess);
}

TEST_F(ListApi, AdjustmentsOfTheActiveSelection)
{
    const struct {
        MGlobal::ListAdjustment how;
        Names expected;
    } rows[] = {
        {MGlobal::kReplaceList, {"sheetShape.vtx[3:5]", "pairs"}},
        {MGlobal::kXORWithList, {"pair", "sheetShape.vtx[1:2]", "sheetShape.vtx[5]", "pairs"}},
        {MGlobal::kAddToList, {"pair", "sheetShape.vtx[1:5]", "pairs"}},
        {MGlobal::kRemoveFromList, {"pair", "sheetShape.vtx[1:2]"}},
        {MGlobal::kAddToHeadOfList, {"sheetShape.vtx[1:5]", "pairs", "pair"}},
    };
    for (const auto& row : rows) {
        MGlobal::setActiveSelectionList(listOf({"pair", "sheet.vtx[1:4]"}));
        EXPECT_EQ(MGlobal::setActiveSelectionList(listOf({"sheet.vtx[3:5]", "pairs"}), row.how),
                  MS::kSuccess);
        EXPECT_EQ(active(), row.expected) << row.how;
    }
    MSelectionList unsorted;
    unsorted.add(pathOf("sheetShape"), vertices({8, 2, 2}));
    unsorted.add(pathOf("sheetShape"), vertices({}));
    MGlobal::setActiveSelectionList(unsorted);
    EXPECT_EQ(active(), (Names{"sheetShape.vtx[2]", "sheetShape.vtx[8]"})) << "ascending, each once";
}

TEST_F(ListApi, ARichSelectionThatWasSetHoldsUntilTheSelectionChanges)
{
    MGlobal::setActiveSelectionList(listOf({"sheet.vtx[3]"}));
    MRichSelection rich;
    EXPECT_NE(MGlobal::getRichSelection(rich, false), MS::kSuccess) << "there is none, and no falling back";
    ASSERT_EQ(MGlobal::getRichSelection(rich, true), MS::kSuccess);
    MSelectionList list;
    rich.getSelection(list);
    EXPECT_EQ(strings(list), Names{"sheetShape.vtx[3]"});
    rich.getSymmetry(list);
    EXPECT_TRUE(list.isEmpty());

    mel("softSelect -sse 1 -ssd 0.3");
    ASSERT_EQ(MGlobal::getRichSelection(rich, false), MS::kSuccess);
    rich.getSelection(list);
    MDagPath path;
    MObject component;
    list.getDagPath(0, path, component);
    EXPECT_TRUE(MFnComponent(component).hasWeights());
    const MRichSelection kept(rich);
    const Names soft = strings(list);
    EXPECT_GT(elements(component).size(), 1u);

    MGlobal::setActiveSelectionList(listOf({"other"}));
    ASSERT_EQ(MGlobal::setRichSelection(kept), MS::kSuccess);
    MGlobal::getRichSelection(rich);
    rich.getSelection(list);
    EXPECT_EQ(strings(list), soft);
    EXPECT_EQ(active(), Names{"other"}) << "the active selection is another matter";
    EXPECT_EQ(MGlobal::setRichSelection(MRichSelection()), MS::kSuccess) << "empty: back to what is selected";
    MGlobal::getRichSelection(rich);
    rich.getSelection(list);
    EXPECT_EQ(strings(list), Names{"other"});
    MGlobal::setRichSelection(kept);
    MGlobal::setActiveSelectionList(listOf({"pair"}));
    MGlobal::getRichSelection(rich);
    rich.getSelection(list);
    EXPECT_EQ(strings(list), Names{"pair"});
}

TEST_F(ListApi, AWalkTakesWhatItsFilterLetsPass)
{
    mel("cluster -n clu sheet");
    const MSelectionList list = listOf({"pair", "sheet.vtx[2]", "other", "clu", "sheet.translateX"});
    const struct {
        MFn::Type filter;
        Names expected;
    } rows[] = {
        {MFn::kInvalid, {"pair", "sheetShape.vtx[2]", "other", "clu", "sheet.translateX"}},
        {MFn::kMesh, {"sheetShape.vtx[2]", "other"}},
        {MFn::kMeshVertComponent, {"sheetShape.vtx[2]"}},
        {MFn::kGeometryFilt, {"clu"}},
        {MFn::kLattice, {}},
    };
    for (const auto& row : rows) {
        Names walked;
        MItSelectionList walk(list, row.filter);
        for (; !walk.isDone(); walk.next()) {
            MStringArray texts;
            EXPECT_TRUE(walk.getStrings(texts));
            walked.push_back(texts[0].asChar());
        }
        EXPECT_EQ(walked, row.expected) << row.filter;
        EXPECT_FALSE(walk.next());
    }
    std::vector<int> types, components;
    MItSelectionList walk(list);
    for (; !walk.isDone(); walk.next()) {
        types.push_back(walk.itemType());
        components.push_back(walk.hasComponents());
        MDagPath path;
        MPlug plug;
        EXPECT_EQ(walk.getPlug(plug) == MS::kSuccess,
                  walk.itemType() == MItSelectionList::kPlugSelectionItem);
        EXPECT_EQ(walk.getDagPath(path) == MS::kSuccess,
                  walk.itemType() == MItSelectionList::kDagSelectionItem);
    }
    EXPECT_EQ(types, (std::vector<int>{0, 0, 0, 2, 3}));
    EXPECT_EQ(components, (std::vector<int>{0, 1, 0, 0, 0}));
    walk.setFilter(MFn::kGeometryFilt);
    MObject node;
    EXPECT_TRUE(walk.getDependNode(node));
    EXPECT_TRUE(node.hasFn(MFn::kClusterFilter));
}

TEST_F(ListApi, SelectingByNameAddsAndByCommandCanBeUndone)
{
    EXPECT_TRUE(MGlobal::selectByName("pair*"));
    EXPECT_TRUE(MGlobal::selectByName("sheet"));
    EXPECT_EQ(active(), (Names{"pair", "pairs", "sheet"}));
    EXPECT_TRUE(MGlobal::unselectByName("pairs"));
    EXPECT_FALSE(MGlobal::selectByName("nobody"));
    EXPECT_EQ(active(), (Names{"pair", "sheet"}));
    EXPECT_TRUE(MGlobal::selectCommand(listOf({"other"}), MGlobal::kAddToList));
    EXPECT_TRUE(MGlobal::selectCommand(listOf({"pairs"})));
    EXPECT_EQ(active(), Names{"pairs"});
    mel("undo");
    EXPECT_EQ(active(), (Names{"pair", "sheet", "other"}));
    mel("undo");
    EXPECT_EQ(active(), (Names{"pair", "sheet"}));
    mel("redo");
    EXPECT_EQ(active(), (Names{"pair", "sheet", "other"}));
}

} // namespace
