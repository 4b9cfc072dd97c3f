#include "support/hostFixture.h"

namespace {

using testing_support::HostTest;
using Floats = std::vector<double>;
using Strings = std::vector<std::string>;

class NodeCommands : public HostTest {
public:
    /// Runs a command that must change what `look` shows, and takes it back and again.
    void expectChange(const std::string& command, const std::string& look)
    {
        const auto before = mel(look).printed();
        mel(command);
        const auto after = mel(look).printed();
        EXPECT_NE(after, before) << command;
        mel("undo");
        EXPECT_EQ(mel(look).printed(), before) << "undo of " << command;
        mel("redo");
        EXPECT_EQ(mel(look).printed(), after) << "redo of " << command;
    }
};

TEST_F(NodeCommands, EveryChangeCanBeTakenBackAndMadeAgain)
{
    mel("createNode transform -n a; createNode transform -n b -p a; createNode joint -n j; createNode "
        "skinCluster -n s;"
        "createNode objectSet -n n");
    const struct {
        const char* command;
        const char* look;
    } rows[] = {
        {"createNode transform -n new", "ls new"},
        {"createNode mesh", "ls -type mesh"},
        {"setAttr a.tx 3", "getAttr a.tx"},
        {"setAttr a.t 4 5 6", "getAttr a.t"},
        {"setAttr -type \"double3\" a.r 10 20 30", "getAttr a.r"},
        {"setAttr j.bps -type \"matrix\" 2 0 0 0 0 1 0 0 0 0 1 0 5 6 7 1", "getAttr j.bps"},
        {"setAttr s.weightList[0].weights[1] 0.25", "getAttr s.wl[0].w[0:2]"},
        {"setAttr s.wl[1:2].w 1 0 1 2 0 .5 1 .5", "getAttr s.wl[2].w[0:1]"},
        {"setAttr -s 3 s.dpf[0:2] 7 8 9", "getAttr s.dpf"},
        {"removeMultiInstance s.dpf[1]", "getAttr -mi s.dpf"},
        {"setAttr -lock on a.ty", "getAttr -lock a.ty"},
        {"setAttr -keyable off a.tz", "getAttr -keyable a.tz"},
        {"setAttr -cb on a.rx", "getAttr -cb a.rx"},
        {"addAttr -ln weightOf -sn wo -at double -min 0 -max 1 -dv 0.5 -k 1 a", "listAttr -ud a"},
        {"addAttr -ln words -dt \"string\" a", "listAttr -ud a"},
        {"setAttr -type \"string\" a.words \"two words\"", "getAttr a.words"},
        {"aliasAttr power s.dpf[0]", "aliasAttr -q s"},
        {"aliasAttr -rm s.dpf[0]", "aliasAttr -q s"},
        {"connectAttr a.tx b.ty", "listConnections -p 1 b.ty"},
        {"disconnectAttr a.tx b.ty", "listConnections -p 1 b"},
        {"deleteAttr a.words", "listAttr -ud a"},
        {"rename a root", "ls root a"},
        {"lockNode root", "lockNode -q root"},
        {"lockNode -l off root", "lockNode -q root"},
        {"parent -w b", "ls -l b"},
        {"parent b j", "ls -l b"},
        {"duplicate root", "ls -assemblies"},
        {"delete j", "ls j b"},
        {"lockNode root", "lockNode -q root"},
        {"duplicate root", "ls -assemblies"},
    };
    for (const auto& row : rows)
        expectChange(row.command, row.look);
}

TEST_F(NodeCommands, RefuseWhatCannotBeAndChangeNothing)
{
    mel("createNode transform -n a; createNode transform -n b; addAttr -ln lim -at double -min 0 -max 1 a;"
        "setAttr -lock 1 a.tz; connectAttr a.tx b.tx");
    const struct {
        const char* command;
        const char* error;
    } rows[] = {
        {"createNode nonsense", "Unknown object type: nonsense"},
        {"setAttr a.nothing 1", "No object matches name: a.nothing"},
        {"setAttr nobody.tx 1", "No object matches name: nobody"},
        {"setAttr a.lim 2", "setAttr: Cannot set the attribute 'a.lim' past its maximum value of 1."},
        {"setAttr a.tz 2", "The attribute 'a.translateZ' is locked or connected and cannot be modified."},
        {"setAttr b.tx 2", "The attribute 'b.translateX' is locked or connected and cannot be modified."},
        {"setAttr a.t 1 2", "setAttr: setAttr ends too early"},
        {"setAttr a.r 1 2 3 4", "setAttr: unexpected \"4\" at the end of setAttr"},
        {"addAttr -ln lim -at double a", "Found an attribute with the same name 'lim' on a."},
        {"addAttr -ln odd -at nonsense a",
         "The attribute \"odd\" has an unknown attribute type \"nonsense\"."},
        {"addAttr -ln kid -at double -p nobody a",
         "The attribute \"nobody\" of a is no compound that waits for the child \"kid\"."},
        {"deleteAttr a.tx", "'a.translateX' is no added attribute and cannot be deleted."},
        {"disconnectAttr a.ty b.ty",
         "There is no connection from 'a.translateY' to 'b.translateY' to disconnect."},
        {"parent a a.tx", "No object matches name: a.tx"},
        {"removeMultiInstance a.tx", "removeMultiInstance: 'a.translateX' is no element of an array."},
        {"file -save -type \"mayaBinary\"", "file: the type 'mayaBinary' is not supported (mayaAscii is)."},
    };
    const auto before = mel("getAttr a.t").printed() + mel("ls").printed();
    for (const auto& row : rows)
        EXPECT_EQ(melError(row.command), std::string("line 1: ") + row.error) << row.command;
    EXPECT_EQ(mel("getAttr a.t").printed() + mel("ls").printed(), before);
    EXPECT_EQ(melError("delete persp").empty(), false);
    EXPECT_EQ(melError("setAttr -ca on a.tx 1").find("-ca") == std::string::npos, false);
}

TEST_F(NodeCommands, ANewParentLeavesThingsWhereTheyAreUnlessToldOtherwise)
{
    mel("createNode transform -n a; setAttr a.t 1 2 3; setAttr a.r 10 20 30; setAttr a.s 2 2 2;"
        "createNode joint -n j; setAttr j.t 5 0 -1; setAttr j.jo 0 45 90; setAttr j.ro 3; setAttr j.r 3 4 5");
    const Floats before = melFloats("getAttr j.worldMatrix[0]");
    mel("parent j a");
    const Floats after = melFloats("getAttr j.worldMatrix[0]");
    for (std::size_t k = 0; k < 16; ++k)
        EXPECT_NEAR(after[k], before[k], 1e-12) << k;
    EXPECT_EQ(melFloats("getAttr j.jo"), (Floats{0, 45, 90}));
    const Floats local = melFloats("getAttr j.t");
    mel("parent -r -w j");
    EXPECT_EQ(melFloats("getAttr j.t"), local);
    mel("createNode joint -n k; parent k j");
    EXPECT_EQ(melStrings("listConnections -p 1 k.inverseScale"), (Strings{"j.scale"}));
}

TEST_F(NodeCommands, ACopyHasTheValuesAndAddedAttributesButNoHistory)
{
    mel("createNode transform -n body; createNode mesh -n bodyShape -p body; createNode polyCube -n cube;"
        "connectAttr cube.out bodyShape.i; addAttr -ln tag -dt \"string\" body; setAttr -type \"string\" "
        "body.tag \"x\";"
        "setAttr body.tx 7; createNode transform -n child -p body; setAttr child.ty 2");
    EXPECT_EQ(melStrings("duplicate -rr -n copy body"), (Strings{"copy"}));
    EXPECT_EQ(melFloat("getAttr copy.tx"), 7);
    EXPECT_EQ(melString("getAttr copy.tag"), "x");
    EXPECT_EQ(melStrings("listRelatives copy").size(), 2u);
    EXPECT_EQ(melStrings("listConnections copy copyShape").size(), 0u);
    mel("delete cube");
    const std::string shape = melStrings("listRelatives -s -f copy").at(0);
    EXPECT_EQ(melStrings("ls -fl \"" + shape + ".vtx[*]\"").size(), 8u);
}

TEST_F(NodeCommands, DeletingADeformerHandsItsInputOn)
{
    mel("createNode transform -n body; createNode mesh -n bodyShape -p body; createNode polyCube -n cube;"
        "createNode skinCluster -n skin; connectAttr cube.out skin.ip[0].ig; connectAttr skin.og[0] "
        "bodyShape.i");
    mel("delete skin");
    EXPECT_EQ(melStrings("listConnections -p 1 bodyShape.i"), (Strings{"cube.output"}));
    mel("undo");
    EXPECT_EQ(melStrings("listConnections -p 1 bodyShape.i"), (Strings{"skin.outputGeometry[0]"}));
    EXPECT_EQ(melStrings("listConnections -p 1 skin.ip[0].ig"), (Strings{"cube.output"}));
}

TEST_F(NodeCommands, RenamingATransformRenamesItsShape)
{
    mel("createNode transform -n body; createNode mesh -n bodyShape -p body");
    EXPECT_EQ(melString("rename body arm2"), "arm2");
    EXPECT_EQ(melStrings("listRelatives -s arm2"), (Strings{"armShape2"}));
    mel("undo");
    EXPECT_EQ(melStrings("listRelatives -s body"), (Strings{"bodyShape"}));
}

} // namespace
