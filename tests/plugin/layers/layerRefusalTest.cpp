// When ngst2Layers does not keep its word: an error that names the shape, nothing written, and a tool that
// works again as soon as the command does.
#include "plugin/layers/layerFixture.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

using namespace testing_support;

namespace {

using Weights = std::vector<double>;

struct Fault {
    const char* kind;
    const char* mode;
    const char* target;
};

void PrintTo(const Fault& fault, std::ostream* out)
{
    *out << fault.kind << " in " << fault.mode;
}

class LayerFault : public LayerTest, public ::testing::WithParamInterface<Fault> {
public:
    void SetUp() override
    {
        LayerTest::SetUp();
        paint(1, "0", Weights(kVertices, 0.75));
        for (const char* target : {"1", "mask", "dq"})
            paint(1, target, Weights(kVertices, 0.25));
        edit(std::string("-weightMode ") + GetParam().mode);
        press(at(1));
        release(at(1));
    }
    std::vector<Weights> everything()
    {
        std::vector<Weights> all;
        for (const char* target : {"mask", "dq", "0", "1", "2"})
            all.push_back(painted(1, target));
        return all;
    }
};

const char* const kMask = "ngSkinToolsMask";
const char* const kDual = "ngSkinToolsDualQuaternion";
const char* const kInfluence = "ngSkinToolsInfluence";

INSTANTIATE_TEST_SUITE_P(
    Kinds, LayerFault,
    ::testing::Values(Fault{"failingList", kMask, "mask"}, Fault{"failingRead", kMask, "mask"},
                      Fault{"failingRead", kInfluence, "1"}, Fault{"failingCount", kDual, "dq"},
                      Fault{"brokenList", kMask, "mask"}, Fault{"brokenList", kInfluence, "1"},
                      Fault{"listIsObject", kMask, "mask"}, Fault{"listOfNumbers", kMask, "mask"},
                      Fault{"nameIsNumber", kDual, "dq"}, Fault{"idIsText", kMask, "mask"},
                      Fault{"idIsFraction", kMask, "mask"}, Fault{"noChildren", kDual, "dq"},
                      Fault{"noChildren", kInfluence, "1"}, Fault{"childrenIsText", kInfluence, "1"},
                      Fault{"tooFewWeights", kMask, "mask"}, Fault{"tooFewWeights", kInfluence, "1"},
                      Fault{"tooManyWeights", kDual, "dq"}, Fault{"tooManyWeights", kInfluence, "1"},
                      Fault{"vanishedId", kMask, "mask"}, Fault{"vanishedId", kInfluence, "1"}));

TEST_P(LayerFault, EndsThePressInAnErrorThatNamesTheShapeAndWritesNothing)
{
    allowMessages();
    const std::vector<Weights> before = everything();
    const std::string start = sceneText(session);
    const std::size_t entries = session.undo().undoCount();
    const Pixel to = farAway(GetParam().target, 1);
    edit("-copy true");
    misbehave(GetParam().kind);
    trace.clear();
    press(at(1));
    EXPECT_TRUE(sawMessage("error", shape)) << "the error names the shape";
    drag(to);
    release(to);
    edit("-paste true");
    edit("-copy true");
    for (const std::string& text : layerCommands())
        EXPECT_EQ(text.find(" -e "), std::string::npos) << text;
    EXPECT_EQ(session.undo().undoCount(), entries);
    misbehave("none");
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(sceneText(session), start);
    strokeToClamp(GetParam().target, 1);
    EXPECT_EQ(painted(1, GetParam().target)[1], 1.0) << "the tool works again";
}

class LayerRefusal : public LayerTest {
public:
    void SetUp() override
    {
        LayerTest::SetUp();
        paint(1, "0", Weights(kVertices, 0.75));
        for (const char* target : {"1", "mask"})
            paint(1, target, Weights(kVertices, 0.5));
        edit("-weightMode ngSkinToolsMask");
    }
};

TEST_F(LayerRefusal, EntriesWithoutAnIdOrANameArePassedOver)
{
    for (const char* kind : {"noId", "noName"}) {
        misbehave(kind);
        expectWarning("sheet has no layer named skinLayer.");
        strokeToClamp("mask", 1);
        misbehave("none");
        EXPECT_EQ(painted(1, "mask"), Weights(kVertices, 0.5)) << kind;
    }
}

TEST_F(LayerRefusal, AWriteThatFailsLeavesTheLayerAsItWas)
{
    allowMessages();
    const Pixel to = farAway("mask", 1);
    press(at(1));
    misbehave("failingWrite");
    drag(to);
    EXPECT_TRUE(sawMessage("error", shape));
    misbehave("none");
    EXPECT_EQ(painted(1, "mask"), Weights(kVertices, 0.5));
    drag(to);
    release(to);
    EXPECT_EQ(painted(1, "mask")[1], 1.0);
}

TEST_F(LayerRefusal, TheLayerMayVanishDuringAStroke)
{
    allowMessages();
    const Pixel to = farAway("mask", 1);
    press(at(1));
    editLayers("-id 1 -removeLayer");
    drag(to);
    release(to);
    mel("undo");
    mel("redo");
    EXPECT_TRUE(sawMessage("error", "there is no layer 1"));
    const int again = addLayer("skinLayer");
    paint(again, "1", Weights(kVertices, 0.5));
    paint(again, "mask", Weights(kVertices, 0.5));
    stroke("sheet.vtx[1]", 5, 120);
    EXPECT_NE(painted(again, "mask")[1], 0.5);
}

TEST_F(LayerRefusal, InfluencesWithGapsInTheirIndicesAreRefusedBeforeAnythingIsWritten)
{
    // hip 0, knee 1, tip 3: taking toe out leaves a hole, and the logical index 3 is no position among three.
    mel("select -cl; joint -n tip -p 5 1 0; skinCluster -e -ai tip -wt 0 skin; skinCluster -e -ri toe skin;"
        "select sheet.vtx[1]");
    paint(1, "3", Weights(kVertices, 0.25));
    edit("-weightMode ngSkinToolsInfluence -influence tip");
    for (const char* influence : {"tip", "knee"}) {
        SCOPED_TRACE(influence);
        edit(std::string("-influence ") + influence);
        const std::string start = sceneText(session);
        const std::size_t entries = session.undo().undoCount();
        trace.clear();
        expectWarning(shape + ": the logical indices of its influences have gaps, which layer weights cannot "
                              "address; nothing was written for it.");
        press(at(1));
        drag({at(1).x + 5, at(1).y + 150});
        release({at(1).x + 5, at(1).y + 150});
        edit("-copy true");
        expectWarning(shape + ": the logical indices of its influences have gaps, which layer weights cannot "
                              "address; nothing was written for it.");
        edit("-paste true");
        for (const std::string& text : layerCommands())
            EXPECT_EQ(text.find(" -e "), std::string::npos) << text;
        EXPECT_EQ(sceneText(session), start);
        EXPECT_EQ(session.undo().undoCount(), entries) << "there is nothing to undo";
    }
    // The other targets do not use influences as positions.
    edit("-weightMode ngSkinToolsMask");
    strokeToClamp("mask", 1);
    EXPECT_EQ(painted(1, "mask")[1], 1.0);
}

} // namespace
