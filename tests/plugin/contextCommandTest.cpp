// The context command: every flag in edit and query mode, the fixed order, and what an early return leaves.
#include "support/toolFixture.h"

using namespace testing_support;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace {

class ContextCommand : public ToolTest {
public:
    void SetUp() override
    {
        ToolTest::SetUp();
        mel("polyPlane -n sheet; polyPlane -n other; select -cl; joint -n bone; cluster -n clu sheet; select "
            "-cl");
    }
    std::string text(const std::string& flag) { return query(flag).toString(); }
    double number(const std::string& flag) { return query(flag).toFloat(); }
    /// Edits, expecting failure, and returns what reached the error stream.
    std::string failure(const std::string& flags)
    {
        CaptureStderr();
        editFails(flags);
        return GetCapturedStderr();
    }
};

const std::string kApiError = "\nAPI error detected in src/morvaneContextCommand at line ";
const std::string kModes =
    "Invalid value for -weightMode/-wtm flag, choose default, plug, skinCluster, dualQuaternion, "
    "blendShapeTarget, blendShapeBase.";

TEST_F(ContextCommand, AFreshToolReportsItsDefaults)
{
    const struct {
        const char* flag;
        host::mel::Value value;
    } rows[] = {
        {"deformer", ""},      {"clampMin", 1},           {"clampMax", 0},
        {"weightMin", 0.0},    {"weightMax", 1.0},        {"displayPrecision", 2},
        {"target", ""},        {"displayWeights", 1},     {"fontSize", 12},
        {"fontOpacity", 1.0},  {"fontColorR", 1.0},       {"fontColorG", 1.0},
        {"fontColorB", 1.0},   {"weightMode", "default"}, {"plug", ""},
        {"influence", ""},     {"ngLayer", ""},           {"ngDistributeWeights", 1},
        {"pastePerVertex", 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(query(row.flag), row.value) << row.flag << " gives " << query(row.flag).toString();
}

TEST_F(ContextCommand, EveryFlagIsEditedAndQueriedByEitherName)
{
    const struct {
        const char* edit;
        const char* query;
        host::mel::Value value;
    } rows[] = {
        {"-dfm clu", "deformer", "clu"},
        {"-deformer clu", "dfm", "clu"},
        {"-cmn false", "clampMin", 0},
        {"-clampMax true", "cmx", 1},
        {"-dw off", "displayWeights", 0},
        {"-wmn 0.25", "weightMin", 1.0}, // any number but zero is stored as 1
        {"-weightMin -3", "wmn", 1.0},
        {"-weightMin 0", "weightMin", 0.0},
        {"-wmx 0.25", "weightMax", 0.25},
        {"-weightMax -2.5", "wmx", -2.5},
        {"-dp 5", "displayPrecision", 5},
        {"-displayPrecision 0", "dp", 0},
        {"-fs 31", "fontSize", 31},
        {"-fop 0.5", "fontOpacity", 0.5},
        {"-fcr 0.25", "fontColorR", 0.25},
        {"-fcg 0.5", "fontColorG", 0.5},
        {"-fcb 0.75", "fontColorB", 0.75},
        {"-fontColorB 0.1", "fcb", static_cast<double>(0.1f)}, // kept in single precision
        {"-wtm plug", "weightMode", "plug"},
        {"-wtm skinCluster", "wtm", "skinCluster"},
        {"-weightMode dualQuaternion", "wtm", "dualQuaternion"},
        {"-weightMode blendShapeTarget", "weightMode", "blendShapeTarget"},
        {"-weightMode blendShapeBase", "weightMode", "blendShapeBase"},
        {"-weightMode default", "weightMode", "default"},
        {"-plg weights", "plug", "weights"},
        {"-inf bone", "influence", "|bone"},
        {"-t smile", "target", "smile"},
        {"-ngl \"a layer\"", "ngLayer", "a layer"},
        {"-dis false", "ngDistributeWeights", 0},
        {"-ppv true", "pastePerVertex", 1},
        {"-pastePerVertex off", "ppv", 0},
    };
    for (const auto& row : rows) {
        edit(row.edit);
        EXPECT_EQ(query(row.query), row.value) << row.edit << " gives " << query(row.query).toString();
    }
    EXPECT_EQ(query("fontSize -fontColorR"), host::mel::Value(0.25)) << "the last flag of the table wins";
    EXPECT_TRUE(query("copy").isVoid());
}

TEST_F(ContextCommand, AnEarlyReturnKeepsWhatCameBeforeAndSkipsWhatComesAfter)
{
    expectWarning("displayPrecision cannot be negative.");
    editFails("-fontSize 20 -displayPrecision -1 -weightMax 3");
    EXPECT_EQ(number("weightMax"), 3.0) << "applied before the failing flag";
    EXPECT_EQ(query("fontSize").toInt(), 12);
    EXPECT_EQ(query("displayPrecision").toInt(), 2);

    expectWarning("fontSize cannot be negative.");
    edit("-displayWeights false -fontSize -4 -displayPrecision 3");
    EXPECT_EQ(query("displayPrecision").toInt(), 3);
    EXPECT_EQ(query("displayWeights").toInt(), 1) << "skipped, although the edit succeeded";
    EXPECT_EQ(query("fontSize").toInt(), 12);

    expectWarning("smile is not a valid target.");
    editFails("-target smile -weightMax 7 -fontOpacity 0.5");
    EXPECT_EQ(text("target"), "");
    EXPECT_EQ(number("weightMax"), 7.0);
    EXPECT_EQ(number("fontOpacity"), 1.0);

    edit("-target smile -deformer clu"); // the deformer is set first, whatever the order
    EXPECT_EQ(text("target"), "smile");

    expectError(kModes);
    editFails("-weightMode Default -influence bone -displayWeights false");
    EXPECT_EQ(query("displayWeights").toInt(), 0);
    EXPECT_EQ(text("influence"), "");
}

TEST_F(ContextCommand, AModeThatDoesNotExistOrIsNotThereIsRefusedByName)
{
    for (const char* name : {"ngMask", "ngSkinToolsMask", "ngSkinToolsInfluence", "ngSkinToolsDualQuaternion",
                             "DEFAULT", "skincluster", "\"\""}) {
        expectError(kModes);
        editFails(std::string("-weightMode ") + name);
    }
    EXPECT_EQ(text("weightMode"), "default");
}

TEST_F(ContextCommand, AFailedDeformerKeepsTheOldOneAndIsReported)
{
    edit("-deformer clu");
    EXPECT_NE(failure("-deformer nothing -weightMax 4").find(kApiError + "81\n"), std::string::npos);
    EXPECT_EQ(text("deformer"), "clu");
    EXPECT_EQ(number("weightMax"), 1.0);
    // A node that is no deformer is refused without a look-up error.
    const std::string report = failure("-deformer sheetShape");
    EXPECT_NE(report.find(kApiError + "81\n"), std::string::npos);
    EXPECT_EQ(report.find("src/morvaneContext at"), std::string::npos);
    EXPECT_EQ(text("deformer"), "clu");
    // In skinCluster mode any name is taken without a look-up.
    edit("-weightMode skinCluster");
    edit("-deformer nothing");
    EXPECT_EQ(text("deformer"), "nothing");
}

// In skinCluster mode the name is taken without a look-up; whatever uses the deformer later looks it up.
TEST_F(ContextCommand, TheDeformerThatIsNamedIsTheOneThatIsEdited)
{
    mel("maskedOffset -n two sheet; cluster -n one sheet; duplicate -n up sheet; blendShape -n face up sheet;"
        "setAttr \"one.weightList[0].weights[0:1]\" .1 .2; setAttr \"two.weightList[0].weights[0:1]\" .3 .4;"
        "select sheet.vtx[0]");
    edit("-deformer one");
    edit("-copy true");
    const auto byName = [this](const char* name, const std::string& then) {
        edit("-weightMode default");
        edit("-deformer one");
        edit("-weightMode skinCluster");
        edit(std::string("-deformer ") + name);
        edit(then);
    };
    mel("select sheet.vtx[1]");
    byName("two", "-weightMode default");
    edit("-paste true");
    EXPECT_EQ(melFloat("getAttr two.weightList[0].weights[1]"), static_cast<double>(0.1f));
    EXPECT_EQ(melFloat("getAttr one.weightList[0].weights[1]"), static_cast<double>(0.2f));
    byName("two", "-plug mask"); // an attribute that the first one lacks
    EXPECT_EQ(text("plug"), "mask");
    byName("face", "-target up");
    edit("-weightMode blendShapeTarget");
    mel("setToolTo morvaneContext1");
    EXPECT_EQ(melString("headsUpDisplay -q -label morvaneHUD"), "Sculpting On:face : up");
    // Copies of the first one under a name of the second.
    mel("select sheet.vtx[0]");
    byName("two", "-weightMode default");
    edit("-copy true");
    mel("select sheet.vtx[1]");
    edit("-paste true");
    EXPECT_EQ(melFloat("getAttr two.weightList[0].weights[1]"), static_cast<double>(0.3f));
    // A name that has come to nothing.
    byName("other", "-weightMode default");
    expectWarning("No valid deformer has been specified.");
    edit("-paste true");
    expectWarning("smile is not a valid target.");
    editFails("-target smile");
    EXPECT_NE(failure("-plug mask"), "");
    EXPECT_EQ(melFloat("getAttr one.weightList[0].weights[1]"), static_cast<double>(0.2f));
}

TEST_F(ContextCommand, AFailedDeformerLeavesTheEarlierOneInForce)
{
    mel("maskedOffset -n two sheet");
    edit("-deformer two");
    failure("-deformer nothing");
    edit("-plug mask");
    mel("setAttr \"two.weightList[0].weights[0:1]\" .3 .4; select sheet.vtx[0]");
    failure("-deformer sheetShape");
    edit("-copy true");
    mel("select sheet.vtx[1]");
    failure("-deformer nothing");
    edit("-paste true");
    EXPECT_EQ(melFloat("getAttr two.weightList[0].weights[1]"), static_cast<double>(0.3f));
}

// Its skins are found object by object.
TEST_F(ContextCommand, DualQuaternionNeedsNoDeformerButNoWrongOneEither)
{
    edit("-weightMode dualQuaternion");
    edit("-deformer \"\"");
    EXPECT_EQ(text("deformer"), "");
    failure("-deformer nothing");
    EXPECT_EQ(text("deformer"), "");
}

TEST_F(ContextCommand, AFailedPlugKeepsTheOldOneAndIsReported)
{
    EXPECT_NE(failure("-plug weights").find(kApiError + "241\n"), std::string::npos) << "no deformer yet";
    edit("-deformer clu -plug weights");
    EXPECT_NE(failure("-plug nothing").find("\nAPI error detected in src/morvaneContext at line 138\n"),
              std::string::npos);
    for (const char* wrong : {"envelope", "weightList", "input", "groupId"})
        EXPECT_NE(failure(std::string("-plug ") + wrong).find(kApiError + "241\n"), std::string::npos)
            << wrong;
    EXPECT_EQ(text("plug"), "weights");
}

TEST_F(ContextCommand, AnInfluenceIsClearedBeforeItIsLookedUp)
{
    edit("-influence bone");
    EXPECT_EQ(text("influence"), "|bone");
    EXPECT_NE(failure("-influence nothing -ngLayer x").find(kApiError + "251\n"), std::string::npos);
    EXPECT_EQ(text("influence"), "");
    EXPECT_EQ(text("ngLayer"), "");
    edit("-influence bone");
    EXPECT_NE(failure("-influence clu").find(kApiError + "254\n"), std::string::npos) << "not in the DAG";
    EXPECT_EQ(text("influence"), "");
}

TEST_F(ContextCommand, CopyAndPasteIgnoreTheirArgumentAndTheirResult)
{
    edit("-paste true"); // nothing copied: nothing happens
    mel("select sheet.vtx[0:3]");
    edit("-deformer clu");
    edit("-copy false");
    mel("setAttr \"clu.weightList[0].weights[0:3]\" .1 .2 .3 .4; select other.vtx[0]");
    edit("-paste false"); // `other` is not deformed: nothing to paste onto
    mel("select sheet.vtx[0:3]");
    edit("-paste false");
    EXPECT_EQ(melFloats("getAttr \"clu.weightList[0].weights[0:3]\""), (std::vector<double>{1, 1, 1, 1}));
}

TEST_F(ContextCommand, WrongArgumentsAndFlagsNeverReachTheTool)
{
    EXPECT_NE(melError("morvaneContext -e -noSuchFlag 1 morvaneContext1"), "");
    EXPECT_NE(melError("morvaneContext -e -fontSize large morvaneContext1"), "");
    EXPECT_NE(melError("morvaneContext -e -weightMax morvaneContext1"), "");
    EXPECT_NE(melError("morvaneContext -e -fontSize 3 noSuchContext"), "");
    EXPECT_EQ(query("fontSize").toInt(), 12);
}

TEST_F(ContextCommand, EachContextHasItsOwnSettings)
{
    EXPECT_EQ(melString("morvaneContext"), "morvaneContext2");
    EXPECT_EQ(melString("morvaneContext -fontSize 30 mine"), "mine");
    edit("-fontSize 40");
    EXPECT_EQ(melInt("morvaneContext -q -fontSize morvaneContext2"), 12);
    EXPECT_EQ(melInt("morvaneContext -q -fontSize mine"), 30);
}

TEST_F(ContextCommand, ADeletedToolIsLeftFirstAndItsNameIsFree)
{
    mel("morvaneContext -fontSize 30 mine; setToolTo mine");
    mel("deleteUI mine");
    EXPECT_EQ(melString("currentCtx"), "selectSuperContext");
    EXPECT_EQ(melInt("hotkeySet -q -exists morvaneTemp"), 0);
    EXPECT_EQ(melError("morvaneContext -q -fontSize mine"),
              "line 1: morvaneContext: tool 'mine' does not exist.");
    mel("morvaneContext mine");
    EXPECT_EQ(melInt("morvaneContext -q -fontSize mine"), 12);
}

} // namespace
