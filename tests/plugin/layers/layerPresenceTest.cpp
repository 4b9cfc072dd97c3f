// Layers that come and go: the plug-in behind ngst2Layers, its data on a skin, and the layer by its name.
#include "plugin/layers/layerFixture.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

using namespace testing_support;

namespace {

using Weights = std::vector<double>;

const char kNoLayers[] = "ngSkinTools2 is not loaded, and this mode edits its layers.";

class LayerPresence : public LayerTest {
public:
    void SetUp() override
    {
        LayerTest::SetUp();
        paint(1, "1", Weights(kVertices, 0.5));
        paint(1, "mask", Weights(kVertices, 0.5));
        edit("-weightMode ngSkinToolsMask");
    }
    /// A stroke that would show if it did anything.
    void strokeUp() { stroke("sheet.vtx[1]", 5, 120, {}, 2); }
    std::size_t entries() { return session.undo().undoCount(); }
};

class LayerAbsence : public LayerPresence, public ::testing::WithParamInterface<const char*> {};

INSTANTIATE_TEST_SUITE_P(Modes, LayerAbsence,
                         ::testing::Values("ngSkinToolsMask", "ngSkinToolsDualQuaternion",
                                           "ngSkinToolsInfluence"));

TEST_P(LayerAbsence, IsSaidAtAPressAndHarmless)
{
    edit(std::string("-weightMode ") + GetParam());
    press(at(1));
    release(at(1));
    edit("-copy true");
    unloadLayers();
    const std::string start = sceneText(session);
    const std::size_t before = entries();
    trace.clear();
    expectWarning(kNoLayers);
    strokeUp();
    edit("-copy true");
    edit("-paste true");
    EXPECT_EQ(sceneText(session), start);
    EXPECT_EQ(entries(), before);
    for (const std::string& text : layerCommands())
        EXPECT_EQ(text, "exists ngst2Layers") << "nothing but the question whether they are there";
}

TEST_F(LayerPresence, IsNoticedAtTheNextPress)
{
    strokeToClamp("mask", 1);
    EXPECT_EQ(painted(1, "mask")[1], 1.0);
    unloadLayers();
    const std::string start = sceneText(session);
    expectWarning(kNoLayers);
    strokeUp();
    EXPECT_EQ(sceneText(session), start);

    loadLayers();
    editLayers("-attach");
    addLayer("skinLayer");
    paint(1, "1", Weights(kVertices, 0.5));
    paint(1, "mask", Weights(kVertices, 0.5));
    strokeToClamp("mask", 1);
    EXPECT_EQ(painted(1, "mask")[1], 1.0);
}

TEST_F(LayerPresence, AModeOfLayersCanBeChosenOnlyWhileTheyAreThere)
{
    edit("-weightMode default");
    unloadLayers();
    expectError("Invalid value for -weightMode/-wtm flag, choose default, plug, skinCluster, dualQuaternion, "
                "blendShapeTarget, blendShapeBase.");
    editFails("-weightMode ngSkinToolsMask");
    EXPECT_EQ(query("weightMode").toString(), "default");
    loadLayers();
    edit("-weightMode ngSkinToolsMask");
    EXPECT_EQ(query("weightMode").toString(), "ngMask");
    expectError("Invalid value for -weightMode/-wtm flag, choose default, plug, skinCluster, dualQuaternion, "
                "blendShapeTarget, blendShapeBase, ngSkinToolsMask, ngSkinToolsInfluence, "
                "ngSkinToolsDualQuaternion.");
    editFails("-weightMode ngMask");
}

TEST_F(LayerPresence, ASkinWithoutLayerDataIsLeftAlone)
{
    mel("delete `ls -type ngst2SkinLayerData`");
    trace.clear();
    const Weights before = painted(1, "mask");
    expectWarning("sheet has no ngSkinTools2 layers.");
    strokeUp();
    EXPECT_EQ(painted(1, "mask"), before);
    for (const std::string& text : layerCommands())
        EXPECT_EQ(text, "exists ngst2Layers");
}

TEST_F(LayerPresence, TheFirstLayerOfTheNameIsTheOne)
{
    const int second = addLayer("skinLayer");
    const int other = addLayer("other");
    paint(second, "mask", Weights(kVertices, 0.25));
    paint(other, "1", Weights(kVertices, 0.5));
    strokeToClamp("mask", 1);
    EXPECT_EQ(painted(1, "mask")[1], 1.0);
    EXPECT_EQ(painted(second, "mask"), Weights(kVertices, 0.25));
    // Names are compared whole and with their case.
    for (const char* name : {"skin", "SkinLayer", "\"\"", "skinLayer2"}) {
        edit(std::string("-ngLayer ") + name);
        expectWarning(*name == '"' ? "No layer has been chosen: name one with the flag -ngLayer."
                                   : "sheet has no layer named " + std::string(name) + ".");
        const Weights before = painted(1, "mask");
        strokeUp();
        EXPECT_EQ(painted(1, "mask"), before) << name;
    }
}

TEST_F(LayerPresence, NamesMayHoldQuotesBackslashesAndAnyLetter)
{
    // As MEL literals, in the layer's name and in the setting alike.
    for (const char* name : {"\"say \\\"ja\\\"\"", "\"back\\\\slash\"", "\"Größe 肌 \\t\"",
                             "\"two\\nlines\\r\"", "\"[1,{}]\""}) {
        SCOPED_TRACE(name);
        const int id = addLayer(name);
        paint(id, "1", Weights(kVertices, 0.5));
        paint(id, "mask", Weights(kVertices, 0.5));
        edit(std::string("-ngLayer ") + name);
        strokeUp();
        EXPECT_NE(painted(id, "mask")[1], 0.5);
    }
    EXPECT_EQ(painted(1, "mask"), Weights(kVertices, 0.5));
}

TEST_F(LayerPresence, AGroupHasAMaskButNoWeightsOfItsOwn)
{
    const int inner = addLayer("inner", 1);
    paint(inner, "0", Weights(kVertices, 1.0));
    edit("-weightMode ngSkinToolsInfluence");
    Weights before = painted(1, "1");
    const char kGroup[] = "The layer skinLayer of sheet is a group of layers: it has no weights of its own.";
    expectWarning(kGroup);
    strokeUp();
    EXPECT_EQ(painted(1, "1"), before);
    edit("-weightMode ngSkinToolsDualQuaternion");
    expectWarning(kGroup);
    strokeUp();
    EXPECT_TRUE(painted(1, "dq").empty());
    edit("-weightMode ngSkinToolsMask");
    strokeToClamp("mask", 1);
    EXPECT_EQ(painted(1, "mask")[1], 1.0);
    // Once its last child is gone it is a layer again.
    editLayers("-id " + std::to_string(inner) + " -removeLayer");
    edit("-weightMode ngSkinToolsInfluence");
    before = painted(1, "1");
    strokeToClamp("1", 1);
    EXPECT_NE(painted(1, "1"), before);
}

} // namespace
