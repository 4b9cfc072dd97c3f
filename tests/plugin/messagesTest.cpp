// What the tool says when it cannot edit, word for word: a press once, with its drags, as a warning and in
// the help line; a copy where people can do something about it. In both cases the scene stays as it was.
#include "support/toolFixture.h"
#include "support/weights.h"
#include "tools/tools.h"
#include "undo/undoQueue.h"

#include <algorithm>
#include <ostream>

using namespace testing_support;

namespace {

struct Refusal {
    const char* name;
    const char* setUp; ///< MEL, before the flags
    const char* flags;
    const char* warning; ///< of a copy; empty: none
    const char* reason;  ///< of a press
    const char* select = "sheet.vtx[29]";
    const char* pressed = nullptr; ///< another place
};

std::ostream& operator<<(std::ostream& out, const Refusal& refusal)
{
    return out << refusal.name;
}

const char kNoDeformer[] = "No valid deformer has been specified.";
const char kGone[] = "There is no deformer named clu in the scene.";
const char kInvalidPlug[] = "The weights plug is invalid.";
const char kNoBlendShape[] = "The current deformer is not a blendShape";
const char kSkinMode[] = "-weightMode skinCluster -influence knee";
const char kNoSkin[] = "sheet has no skin cluster.";
const char kLocked[] = "The weight of sheet.vtx[29] cannot be changed: it is locked or connected.";
// Above the others, which the cluster lowers.
const char kLeftOut[] = "sets -rm cluSet sheet.vtx[29]; setAttr cluHandle.translateY -2; viewFit sheet";
const char kStill[] = "sheet.vtx[29] does not move with clu.weights in this pose. Pose it, or turn the "
                      "deformer on, so that the weight shows.";

// One cluster with an attribute that can be sculpted, one whose attributes of that name cannot.
const Refusal kRefusals[] = {
    {"NoDeformerInModeDefault", "delete clu", "-weightMode default", kNoDeformer, kGone},
    {"NoDeformerInModePlug", "delete clu", "-weightMode plug", kNoDeformer, kGone},
    {"NoDeformerForATarget", "delete clu", "-weightMode blendShapeTarget", kNoDeformer, kGone},
    {"NoDeformerForBaseWeights", "delete clu", "-weightMode blendShapeBase", kNoDeformer, kGone},
    {"NameOfAnotherNode", "rename clu away; rename sheet clu", "-weightMode default", kNoDeformer,
     "clu is not a deformer.", "clu.vtx[29]"},
    {"ASkinInModeDefault", "", "-deformer skin -weightMode default", "",
     "skin is a skin cluster: use the mode skinCluster or dualQuaternion for its weights."},
    {"ASkinInModePlug", "", "-deformer skin -weightMode plug", "",
     "skin is a skin cluster: use the mode skinCluster or dualQuaternion for its weights."},
    {"BaseWeightsOfACluster", "", "-weightMode blendShapeBase", kNoBlendShape, kNoBlendShape},
    {"TargetOfACluster", "", "-weightMode blendShapeTarget", "Target: is not a valid target on clu",
     "Target: is not a valid target on clu"},
    {"PlugOfAnotherNode", "morvaneContext -e -plug map morvaneContext1; cluster -n other sheet; select -cl",
     "-deformer other -weightMode plug", kInvalidPlug, kInvalidPlug},
    {"NumberAsPlug", "addAttr -ln odd -at \"double\" clu", "", kInvalidPlug, kInvalidPlug},
    {"TopLevelArrayAsPlug", "addAttr -ln odd -at \"double\" -m clu", "", kInvalidPlug, kInvalidPlug},
    {"ArrayOfCompoundsAsPlug",
     "addAttr -ln top -at compound -nc 1 -m clu; addAttr -ln odd -at compound -nc 1 -m -p top clu;"
     "addAttr -ln leaf -at \"float\" -p odd clu",
     "", kInvalidPlug, kInvalidPlug},
    {"ArrayInASingleCompoundAsPlug",
     "addAttr -ln top -at compound -nc 1 clu; addAttr -ln odd -at \"float\" -m -p top clu", "", kInvalidPlug,
     kInvalidPlug},
    {"ArrayTwoCompoundsDeepAsPlug",
     "addAttr -ln outer -at compound -nc 1 -m clu; addAttr -ln inner -at compound -nc 1 -m -p outer clu;"
     "addAttr -ln odd -at \"float\" -m -p inner clu",
     "", kInvalidPlug, kInvalidPlug},
    {"NoInfluence", "", "-weightMode skinCluster", "",
     "No influence has been chosen: name one with the flag -influence."},
    {"InfluenceOfNoSkin", "select -cl; joint -n stray; select -cl",
     "-weightMode skinCluster -influence stray", "", "stray is not an influence of skin."},
    {"NoSkin", "delete skin", kSkinMode, "", kNoSkin},
    {"NoSkinForDualQuaternion", "delete skin", "-weightMode dualQuaternion", "", kNoSkin},
    {"MeshThatIsNotDeformed",
     "polyPlane -n bystander; setAttr bystander.translateY 4; select -cl; viewFit -all",
     "-weightMode default", "", "clu does not deform bystander.", "bystander.vtx[7]"},
    {"NoMember", kLeftOut, "-weightMode default", "", "sheet.vtx[29] is not a member of clu."},
};

// Where a copy has nothing to say: the weights are there.
const Refusal kHindrances[] = {
    {"NoDeformerForDualQuaternion", "delete clu", "-weightMode dualQuaternion", "", kGone},
    {"NoMemberAmongOthersThatAre", kLeftOut, "-weightMode default", "",
     "sheet.vtx[29] is not a member of clu.", "sheet.vtx[28:30]", "sheet.vtx[29]"},
    {"NoMotionInThisPose", "setAttr cluHandle.translateY 0", "-weightMode default", "", kStill},
    {"NoOtherInfluenceHasWeight",
     "skinPercent -tv knee 1 skin sheet.vtx[29]; setAttr skin.normalizeWeights 2", kSkinMode, "",
     "knee has all the weight of sheet.vtx[29]: there is no other influence to take from or to give to."},
    {"LockedMap", "setAttr -lock 1 clu.weightList[0].weights", "-weightMode default", "", kLocked},
    {"LockedSkin", "setAttr -lock 1 skin.weightList", kSkinMode, "", kLocked},
};

class Messages : public ToolTest, public ::testing::WithParamInterface<Refusal> {
public:
    void SetUp() override
    {
        ToolTest::SetUp();
        mel("polyPlane -n sheet -w 10 -h 5 -sx 10 -sy 5; setAttr persp.rotate -type double3 -55 12 0;"
            "cluster -n clu sheet; setAttr cluHandle.translateY 2; setAttr clu.weightList[0].weights[29] 1;"
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

class CopyMessages : public Messages {};

INSTANTIATE_TEST_SUITE_P(Refusals, Messages, ::testing::ValuesIn(kRefusals),
                         [](const auto& row) { return std::string(row.param.name); });
INSTANTIATE_TEST_SUITE_P(Hindrances, Messages, ::testing::ValuesIn(kHindrances),
                         [](const auto& row) { return std::string(row.param.name); });
INSTANTIATE_TEST_SUITE_P(Refusals, CopyMessages, ::testing::ValuesIn(kRefusals),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(CopyMessages, ACopySaysSoAndAPasteDoesNothing)
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

TEST_P(Messages, APressSaysSoOnceAndItsDragsChangeNothing)
{
    const std::string start = sceneText(session), help = session.tools().helpText;
    session.undo().flush();
    expectWarning(GetParam().reason);
    testing::internal::CaptureStderr();
    const Pixel at = pixelOf(GetParam().pressed ? GetParam().pressed : GetParam().select);
    press(at);
    drag({at.x + 20, at.y + 40});
    drag({at.x + 21, at.y + 40});
    EXPECT_EQ(session.tools().helpText, GetParam().reason);
    EXPECT_EQ(sceneText(session), start);
    drag(at);
    release(at);
    EXPECT_EQ(sceneText(session), start);
    // At most two reports of a press that fails, the nudge and its undoing, and one of its drags.
    const std::string reports = testing::internal::GetCapturedStderr();
    EXPECT_LE(std::count(reports.begin(), reports.end(), '\n'), 9) << reports;
    press({2, 2});
    release({2, 2});
    EXPECT_EQ(session.tools().helpText, help) << "a press that has nothing to explain";
}

// The row then misses its sum, so people are told although something moves.
TEST_F(ToolTest, APressWhereEveryOtherInfluenceIsLockedSaysSo)
{
    mel("polyPlane -n sheet -sx 4 -sy 4; select -cl; joint -n hip -p -1 0 0; joint -n knee -p 0.1 0 0.2;"
        "skinCluster -tsb -mi 2 -n skin hip knee sheet; setAttr hip.liw 1; viewFit sheet");
    edit("-weightMode skinCluster -influence knee");
    toolOn();
    mel("select sheet.vtx[12]");
    const Pixel at = pixelOf("sheet.vtx[12]");
    expectWarning(
        "Every other influence that has weight on sheet.vtx[12] is locked: none can make room for knee.");
    press(at);
    drag({at.x, at.y + 1});
    release(at);
    mel("setAttr skin.normalizeWeights 0");
    expectWarning("sheet.vtx[12] does not move with skinCluster.knee in this pose. Pose it, or turn the "
                  "deformer on, so that the weight shows.");
    testing::internal::CaptureStderr();
    press(at);
    drag({at.x, at.y + 1});
    release(at);
    testing::internal::GetCapturedStderr();
}

} // namespace
