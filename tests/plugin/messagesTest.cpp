// What the tool says when it cannot edit, word for word, and where it refuses without a word. In both cases
// the scene stays as it was.
#include "support/toolFixture.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

#include <ostream>

using namespace testing_support;

namespace {

struct Refusal {
    const char* name;
    const char* setUp; ///< MEL, before the flags
    const char* flags;
    const char* warning; ///< empty: none
    int times;           ///< how often a press says it; without a deformer a press selects, silently
    const char* select = "sheet.vtx[29]";
};

std::ostream& operator<<(std::ostream& out, const Refusal& refusal)
{
    return out << refusal.name;
}

const char kNoDeformer[] = "No valid deformer has been specified.";
const char kInvalidPlug[] = "The weights plug is invalid.";
const char kNoBlendShape[] = "The current deformer is not a blendShape";

// One cluster with an attribute that can be sculpted, one whose attributes of that name cannot.
const Refusal kRefusals[] = {
    {"NoDeformerInModeDefault", "delete clu", "-weightMode default", kNoDeformer, 0},
    {"NoDeformerInModePlug", "delete clu", "-weightMode plug", kNoDeformer, 0},
    {"NoDeformerForATarget", "delete clu", "-weightMode blendShapeTarget", kNoDeformer, 0},
    {"NoDeformerForBaseWeights", "delete clu", "-weightMode blendShapeBase", kNoDeformer, 0},
    // The second warning of a press comes from looking for the direction.
    {"BaseWeightsOfACluster", "", "-weightMode blendShapeBase", kNoBlendShape, 2},
    {"TargetOfACluster", "", "-weightMode blendShapeTarget", "Target: is not a valid target on clu", 1},
    {"PlugOfAnotherNode", "morvaneContext -e -plug map morvaneContext1; cluster -n other sheet; select -cl",
     "-deformer other -weightMode plug", kInvalidPlug, 1},
    {"NumberAsPlug", "addAttr -ln odd -at \"double\" clu", "", kInvalidPlug, 1},
    {"TopLevelArrayAsPlug", "addAttr -ln odd -at \"double\" -m clu", "", kInvalidPlug, 1},
    {"ArrayOfCompoundsAsPlug",
     "addAttr -ln top -at compound -nc 1 -m clu; addAttr -ln odd -at compound -nc 1 -m -p top clu;"
     "addAttr -ln leaf -at \"float\" -p odd clu",
     "", kInvalidPlug, 1},
    {"ArrayInASingleCompoundAsPlug",
     "addAttr -ln top -at compound -nc 1 clu; addAttr -ln odd -at \"float\" -m -p top clu", "", kInvalidPlug,
     1},
    {"ArrayTwoCompoundsDeepAsPlug",
     "addAttr -ln outer -at compound -nc 1 -m clu; addAttr -ln inner -at compound -nc 1 -m -p outer clu;"
     "addAttr -ln odd -at \"float\" -m -p inner clu",
     "", kInvalidPlug, 1},
    {"NoInfluence", "", "-weightMode skinCluster", "", 0},
    {"InfluenceOfNoSkin", "select -cl; joint -n stray; select -cl",
     "-weightMode skinCluster -influence stray", "", 0},
    {"NoSkin", "delete skin", "-weightMode skinCluster -influence knee", "", 0},
    {"NoSkinForDualQuaternion", "delete skin", "-weightMode dualQuaternion", "", 0},
    {"MeshThatIsNotDeformed", "polyPlane -n bystander; select -cl; viewFit -all", "-weightMode default", "",
     0, "bystander.vtx[7]"},
};

class Messages : public ToolTest, public ::testing::WithParamInterface<Refusal> {
public:
    void SetUp() override
    {
        ToolTest::SetUp();
        mel("polyPlane -n sheet -w 10 -h 5 -sx 10 -sy 5; setAttr persp.rotate -type double3 -55 12 0;"
            "cluster -n clu sheet; setAttr cluHandle.translateY 2;"
            "addAttr -ln maps -at compound -nc 1 -m clu; addAttr -ln map -at \"float\" -m -p maps clu;"
            "select -cl; joint -n hip -p -5 0 0; joint -n knee -p 0 0 0;"
            "skinCluster -tsb -mi 2 -n skin hip knee sheet; setAttr knee.rotateZ 30; viewFit sheet; select "
            "-cl");
        edit("-deformer clu");
        if (*GetParam().setUp)
            mel(GetParam().setUp);
        if (*GetParam().flags) {
            edit(GetParam().flags);
        } else {
            // An attribute of a wrong shape is not even taken: the tool keeps the name it had.
            edit("-weightMode plug");
            testing::internal::CaptureStderr();
            editFails("-plug odd");
            EXPECT_NE(testing::internal::GetCapturedStderr().find(" at line 241\n"), std::string::npos);
            EXPECT_EQ(query("plug").toString(), "");
        }
        toolOn();
        mel(std::string("select ") + GetParam().select);
    }
};

INSTANTIATE_TEST_SUITE_P(Refusals, Messages, ::testing::ValuesIn(kRefusals),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(Messages, ACopySaysSoAndAPasteDoesNothing)
{
    const std::string start = sceneText(session);
    session.undo().flush();
    const std::string warning = GetParam().warning, flags = GetParam().flags;
    if (!warning.empty())
        expectWarning(warning);
    // Reading the weights says so once more where the deformer is of another kind.
    if (flags.find("blendShape") != std::string::npos && warning != kNoBlendShape)
        expectWarning(kNoBlendShape);
    edit("-copy true");
    edit("-paste true"); // nothing was copied, so nothing more is said
    EXPECT_EQ(sceneText(session), start);
    EXPECT_EQ(session.undo().undoCount(), 0u);
}

TEST_P(Messages, APressSaysSoAndADragChangesNothing)
{
    const std::string start = sceneText(session);
    session.undo().flush();
    for (int time = 0; time < GetParam().times; ++time)
        expectWarning(GetParam().warning);
    testing::internal::CaptureStderr();
    const Pixel at = pixelOf(GetParam().select);
    press(at);
    drag({at.x + 20, at.y + 40});
    EXPECT_EQ(sceneText(session), start);
    drag(at);
    release(at);
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(sceneText(session), start);
}

} // namespace
