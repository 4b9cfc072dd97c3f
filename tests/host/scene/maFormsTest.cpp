#include "host/scene/sceneFixture.h"

namespace {

using testing_support::SceneTest;
using Floats = std::vector<double>;
using Strings = std::vector<std::string>;

class MaForms : public SceneTest {};

TEST_F(MaForms, WeightsComeAsRowsOfPairsAsRunsAndOneByOne)
{
    open("createNode skinCluster -n \"s\";\n"
         "setAttr -s 4 \".wl\";\n"
         "setAttr \".wl[0:1].w\"  1 0 1 2 0 .5 1 .5;\n"
         "setAttr -s 2 \".wl[2].w[1:2]\"  .25 .75;\n"
         "setAttr -s 5 \".wl[3].w\";\n"
         "setAttr \".wl[3].w[4]\" 1;\n");
    EXPECT_EQ(melFloats("getAttr s.wl[1].w[0:2]"), (Floats{0.5, 0.5, 0}));
    EXPECT_EQ(melFloats("getAttr s.weightList[2].weights[0:2]"), (Floats{0, 0.25, 0.75}));
    EXPECT_EQ(mel("getAttr -mi s.wl[3].w").toIntArray(), (std::vector<int>{4}));
    EXPECT_NE(
        saveTwice().find("\".wl[0:3].w\"\n\t\t1 0 1\n\t\t2 0 0.5 1 0.5\n\t\t2 1 0.25 2 0.75\n\t\t1 4 1;"),
        std::string::npos);
}

TEST_F(MaForms, MeshesCurvesSurfacesAndLatticesKeepTheirGeometry)
{
    open(
        "createNode transform -n \"t\";\n"
        "createNode mesh -n \"m\" -p \"t\";\n"
        "setAttr -s 4 \".vt[0:3]\"  0 0 0 1 0 0 0 0 -1 1 0.1234567890123 -1;\n"
        "setAttr -s 5 \".ed[0:4]\"  0 1 0 0 2 0 1 3 0 2 3 1 1 2 0;\n"
        "setAttr -s 2 -ch 6 \".fc[0:1]\" -type \"polyFaces\" \n\tf 3 0 4 -2\n\tmu 0 3 0 1 2\n\tf 3 2 -4 -5;\n"
        "createNode transform -n \"c\";\n"
        "createNode nurbsCurve -n \"cs\" -p \"c\";\n"
        "setAttr \".cc\" -type \"nurbsCurve\" \n\t1 1 0 no 3\n\t2 0 1\n\t2\n\t1 2 3\n\t4 5 6\n\t;\n"
        "createNode transform -n \"u\";\n"
        "createNode nurbsSurface -n \"us\" -p \"u\";\n"
        "setAttr \".cc\" -type \"nurbsSurface\" 1 1 0 0 no 2 0 1 2 0 1 4 0 0 0 0 0 1 1 0 0 1 0 1;\n"
        "createNode transform -n \"l\";\n"
        "createNode lattice -n \"ls1\" -p \"l\";\n"
        "setAttr \".cc\" -type \"lattice\" 2 1 1 2 0 0 0 1 0 0 ;\n");
    const std::string text = saveTwice();
    for (const char* form :
         {"setAttr -s 4 \".vt[0:3]\"  0 0 0 1 0 0 0 0 -1 1 0.1234567890123 -1;",
          "setAttr -s 5 \".ed[0:4]\"  0 1 0 0 2 0 1 3 0 2 3 1\n\t\t 1 2 0;",
          "setAttr -s 2 -ch 6 \".fc[0:1]\" -type \"polyFaces\"\n\t\tf 3 0 4 -2\n\t\tmu 0 3 0 1 2\n\t\tf 3 2 "
          "-4 -5;",
          "\".cc\" -type \"nurbsCurve\" 1 1 0 no 3\n\t\t2 0 1\n\t\t2\n\t\t1 2 3\n\t\t4 5 6\n\t\t;",
          "\".cc\" -type \"lattice\" 2 1 1\n\t\t2\n\t\t0 0 0\n\t\t1 0 0\n\t\t;",
          "1 1 0 0 no\n\t\t2 0 1\n\t\t2 0 1"})
        EXPECT_NE(text.find(form), std::string::npos) << form << "\nin\n" << text;
}

TEST_F(MaForms, EveryOtherFormOfAValueIsUnderstood)
{
    open("createNode transform -n \"t\";\n"
         "setAttr \".t\" -type \"double3\" 1 2 3 ;\n"
         "setAttr -av -k off -cb on \".rx\" 45;\n"
         "setAttr -k off \".v\" no;\n"
         "setAttr -l on \".sx\" 2;\n"
         "createNode joint -n \"j\" -p \"t\";\n"
         "setAttr \".bps\" -type \"matrix\" 1 0 0 0 0 1 0 0 0 0 1 0 5 6 7 1;\n"
         "createNode blendShape -n \"b\";\n"
         "addAttr -ci true -h true -sn \"aal\" -ln \"attributeAliasList\" -dt \"attributeAlias\";\n"
         "setAttr -s 3 \".w[0:2]\"  0 .5 1;\n"
         "setAttr \".it[0].itg[0].iti[6000].ipt\" -type \"pointArray\" 2 1 0 0 1 0 2 0 1 ;\n"
         "setAttr \".it[0].itg[0].iti[6000].ict\" -type \"componentList\" 2 \"vtx[0]\" \"vtx[3:4]\";\n"
         "setAttr \".aal\" -type \"attributeAlias\" {\"smile\",\"weight[0]\",\"frown\",\"weight[2]\"\n} ;\n"
         "createNode script -n \"s\";\n"
         "addAttr -ci true -sn \"note\" -ln \"note\" -dt \"string\";\n"
         "setAttr \".note\" -type \"string\" (\n\t\"one\\n\"\n\t+ \"\\\"two\\\"\");\n");
    EXPECT_EQ(melFloats("getAttr t.t"), (Floats{1, 2, 3}));
    EXPECT_EQ(melFloat("getAttr t.rx"), 45);
    EXPECT_EQ(melInt("getAttr -k t.rx"), 0);
    EXPECT_EQ(melInt("getAttr -cb t.rx"), 1);
    EXPECT_EQ(melInt("getAttr t.v"), 0);
    EXPECT_EQ(melInt("getAttr -l t.sx"), 1);
    EXPECT_EQ(melFloat("getAttr t.sx"), 2);
    EXPECT_EQ(melFloats("getAttr j.bps")[13], 6);
    EXPECT_EQ(melFloat("getAttr b.frown"), 1);
    EXPECT_EQ(melStrings("aliasAttr -q b"), (Strings{"smile", "weight[0]", "frown", "weight[2]"}));
    EXPECT_EQ(melFloats("getAttr b.it[0].itg[0].iti[6000].ipt")[5], 2);
    EXPECT_EQ(melStrings("getAttr b.it[0].itg[0].iti[6000].ict"), (Strings{"vtx[0]", "vtx[3:4]"}));
    EXPECT_EQ(melString("getAttr s.note"), "one\n\"two\"");
    const std::string text = saveTwice();
    for (const char* form :
         {"setAttr -l on \".sx\"", "setAttr -k off -cb on \".rx\"", "setAttr -k off \".v\"",
          "{\"smile\",\"weight[0]\",\"frown\",\"weight[2]\"}", "\".rx\" 45"})
        EXPECT_NE(text.find(form), std::string::npos) << form << "\nin\n" << text;
}

TEST_F(MaForms, AddedAttributesOfEveryKindComeBack)
{
    const Strings attributes = {
        "addAttr -ci true -sn \"liw\" -ln \"lockInfluenceWeights\" -min 0 -max 1 -at \"bool\"",
        "addAttr -ci true -k true -sn \"d\" -ln \"dd\" -nn \"Nice\" -dv 2.5 -min -1 -smx 9 -at \"double\"",
        "addAttr -ci true -sn \"e\" -ln \"ee\" -dv 3 -en \"low=1:high:top=9\" -at \"enum\"",
        "addAttr -s false -ci true -m -im false -sn \"l\" -ln \"links\" -at \"message\"",
        "addAttr -ci true -uac -sn \"c\" -ln \"colour\" -at \"float3\" -nc 3",
        "addAttr -ci true -sn \"cr\" -ln \"colourR\" -at \"float\" -p \"colour\"",
        "addAttr -ci true -sn \"cg\" -ln \"colourG\" -at \"float\" -p \"colour\"",
        "addAttr -ci true -sn \"cb\" -ln \"colourB\" -at \"float\" -p \"colour\"",
        "addAttr -ci true -m -sn \"o\" -ln \"outer\" -at \"compound\" -nc 2",
        "addAttr -ci true -sn \"os\" -ln \"outerText\" -dt \"string\" -p \"outer\"",
        "addAttr -ci true -sn \"oi\" -ln \"outerInner\" -at \"long2\" -p \"outer\" -nc 2",
        "addAttr -ci true -sn \"oa\" -ln \"outerA\" -at \"long\" -p \"outerInner\"",
        "addAttr -ci true -sn \"ob\" -ln \"outerB\" -at \"long\" -p \"outerInner\"",
        "addAttr -ci true -sn \"a\" -ln \"angle\" -ct \"tag\" -at \"doubleAngle\"",
        "addAttr -ci true -sn \"fm\" -ln \"floats\" -at \"fltMatrix\"",
        "addAttr -ci true -sn \"sa\" -ln \"texts\" -dt \"stringArray\"",
        "addAttr -ci true -sn \"x\" -ln \"extra\" -is true -at \"bool\""}; // kept as text: -is is not known
    std::string statements = "createNode transform -n \"t\";\n";
    for (const std::string& attribute : attributes)
        statements += "\t" + attribute + ";\n";
    open(statements +
         "setAttr \".o[2].os\" -type \"string\" \"deep\";\nsetAttr \".o[2].oi\" -type \"long2\" 7 8 ;\n"
         "setAttr \".c\" -type \"float3\" 0.1 0.2 0.3 ;\nsetAttr \".x\" yes;\nsetAttr \".e\" 9;\n"
         "setAttr \".sa\" -type \"stringArray\" 2 \"p\" \"q r\" ;\n");
    EXPECT_EQ(melString("getAttr t.outer[2].outerText"), "deep");
    EXPECT_EQ(melInt("getAttr t.o[2].ob"), 8);
    EXPECT_EQ(melString("getAttr -asString t.ee"), "top");
    EXPECT_EQ(melStrings("getAttr t.texts"), (Strings{"p", "q r"}));
    const std::string text = saveTwice();
    for (const std::string& attribute : attributes)
        EXPECT_NE(text.find("\t" + attribute + ";\n"), std::string::npos) << attribute << "\nin\n" << text;
    EXPECT_NE(text.find("setAttr \".x\" yes;"), std::string::npos);
    EXPECT_NE(text.find("setAttr \".c\" -type \"float3\" 0.1 0.2 0.3 ;"), std::string::npos);
}

TEST_F(MaForms, WhatTheHostDoesNotKnowIsKeptAndWrittenBack)
{
    const Strings kept = {
        "file -r -ns \"r\" -dr 1 -rfn \"rRN\" -op \"v=0;p=17\" -typ \"mayaAscii\" \"rig.ma\";",
        "requires -nodeType \"oddNode\" \"oddPlugin\" \"1.0\";",
        "fileInfo \"product\" \"Maya 2022\";",
        "dataStructure -fmt \"raw\" -as \"name=faceConnect\";",
        "createNode oddNode -n \"odd\";",
        "setAttr -s 2 \".stuff[0:1]\" -type \"oddData\" 3 {\"a;b\"}\n\t\t5;",
        "createNode oddShape -n \"oddShape1\" -p \"t\";",
        "lockNode -l 1 ;",
        "select -ne :time1;",
        "select -ne :somethingNew1;",
        "setAttr \".o\" 7;",
        "createNode transform -n \"lost\" -p \"r:missing\";",
        "connectAttr \"odd.out\" \"t.tx\";",
        "connectAttr \"t.msg\" \"odd.deep[3].in\";",
        "connectAttr \"t.msg\" \"r:missing.in\";",
        "parent -s -nc -r -add \"|t|oddShape1\" \"u\";",
        "relationship \"link\" \":lightLinker1\" \":initialShadingGroup.message\" "
        "\":defaultLightSet.message\";"};
    open("file -r -ns \"r\" -dr 1 -rfn \"rRN\" -op \"v=0;p=17\" -typ \"mayaAscii\" \"rig.ma\";\n"
         "requires -nodeType \"oddNode\" \"oddPlugin\" \"1.0\";\nfileInfo \"product\" \"Maya 2022\";\n"
         "dataStructure -fmt \"raw\" -as \"name=faceConnect\";\n"
         "createNode transform -n \"t\";\ncreateNode transform -n \"u\";\n"
         "createNode oddNode -n \"odd\";\n\trename -uid \"11111111-2222-3333-4444-555555555555\";\n"
         "setAttr -s 2 \".stuff[0:1]\" -type \"oddData\" 3 {\"a;b\"}\n\t\t5 ;\n"
         "createNode oddShape -n \"oddShape1\" -p \"t\";\n\tlockNode -l 1 ;\n"
         "select -ne :time1;\n\tsetAttr \".o\" 7;\n\tsetAttr \".nobody\" 3;\n"
         "select -ne :somethingNew1;\n\tsetAttr \".o\" 7;\n"
         "parent -s -nc -r -add \"|t|oddShape1\" \"u\" ;\n"
         "connectAttr \"odd.out\" \"t.tx\";\nconnectAttr \"t.msg\" \"odd.deep[3].in\";\n"
         "createNode transform -n \"lost\" -p \"r:missing\";\n\tsetAttr \".tx\" 1;\n"
         "connectAttr \"t.msg\" \"r:missing.in\";\n"
         "relationship \"link\" \":lightLinker1\" \":initialShadingGroup.message\" "
         "\":defaultLightSet.message\";\n");
    EXPECT_EQ(melString("nodeType odd"), "oddNode");
    EXPECT_EQ(melStrings("listConnections -p true t.tx"), (Strings{"odd.out"}));
    const std::string text = save("once.ma");
    for (const std::string& statement : kept)
        EXPECT_NE(text.find(statement), std::string::npos) << statement << "\nin\n" << text;
    EXPECT_EQ(
        messages(),
        (Strings{"warning: scene.ma: the reference to \"rig.ma\" is kept but not loaded",
                 "warning: scene.ma: instances are not supported: parent -add is kept as text",
                 "warning: scene.ma: 2 statements name what is not in the scene (or is there twice) and are "
                 "kept as text; the first: line 23, r:missing"}));
    allowMessages();
    openFile(path("once.ma"));
    EXPECT_EQ(save("twice.ma"), text);
}

/// Statements in front of the node that they name, and texts that stand in front of an attribute they would
/// not fit.
TEST_F(MaForms, StatementsOutOfOrderComeBackAsTheyWereMeant)
{
    open("setAttr \"b.tx\" 3;\n"
         "connectAttr \"b.ty\" \"late.tz\";\n"
         "createNode transform -n \"c\" -p \"b\";\n\tsetAttr \".tx\" 4;\n"
         "disconnectAttr \"b.ry\" \"late.rz\";\n"
         "createNode mesh -n \"lost\" -p \"r:missing\";\n\tsetAttr \".one\" 1;\n"
         "connectAttr \"b.rx\" \"late.rx\";\n\tsetAttr \".two\" 2;\n"
         "createNode transform -n \"late\" -p \"c\";\n"
         "createNode transform -n \"b\";\n"
         "\tsetAttr \".foo\" -type \"string\" \"text\";\n"
         "\tsetAttr -ca on \".bar\" 1 2;\n"
         "\taddAttr -ln \"foo\" -sn \"foo\" -at \"double\";\n"
         "\taddAttr -ln \"bar\" -sn \"bar\" -at \"double\";\n"
         "\tsetAttr -ca on \".bar\" 7;\n"
         "\taddAttr -ln \"foo\" -sn \"foo\" -at \"compound\" -nc 1;\n"
         "\taddAttr -ln \"fooX\" -sn \"fooX\" -at \"double\" -p \"foo\";\n"
         "connectAttr \"b.ry\" \"late.rz\";\n");
    EXPECT_EQ(
        messages(),
        (Strings{
            "warning: scene.ma: 1 statements name what is not in the scene (or is there twice) and are kept "
            "as text; the first: line 8, r:missing"}));
    allowMessages();
    EXPECT_EQ(melFloat("getAttr b.tx"), 3);
    EXPECT_EQ(melFloat("getAttr \"|b|c.tx\""), 4);
    EXPECT_EQ(melFloat("getAttr b.bar"), 7);
    EXPECT_EQ(melFloat("getAttr b.foo"), 0); // such an attribute was not there yet
    EXPECT_EQ(melStrings("sort `listConnections -d 0 -s 1 -p 1 \"|b|c|late\"`"),
              (Strings{"b.rotateX", "b.rotateY", "b.translateY"}));
    const std::string text = saveTwice();
    EXPECT_NE(text.find("createNode mesh -n \"lost\" -p \"r:missing\";\nsetAttr \".one\" 1;\n"
                        "setAttr \".two\" 2;\n"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("setAttr \".foo\" -type \"string\" \"text\";\n"), std::string::npos) << text;
    EXPECT_EQ(melStrings("listConnections -d 0 -s 1 -p 1 \"|b|c|late\"").size(), 3u);
}

/// An element far out costs as much as any other, whatever its array.
TEST_F(MaForms, IndicesMayBeHuge)
{
    open("createNode blendShape -n \"b\";\n"
         "setAttr \".w[4095]\" .5;\nsetAttr \".w[16383]\" .5;\nsetAttr \".w[65535]\" .5;\n"
         "setAttr \".w[262143]\" .5;\nsetAttr \".w[999999999]\" .5;\n"
         "setAttr \".it[0].bw[4000000000]\" .25;\n"
         "createNode skinCluster -n \"s\";\n"
         "setAttr \".dpf[4000000000]\" 2;\n");
    EXPECT_EQ(melFloat("getAttr b.w[999999999]"), 0.5);
    EXPECT_NE(saveTwice().find("setAttr \".dpf[4000000000]\" 2;"), std::string::npos);
}

TEST_F(MaForms, FilesInOtherUnitsAreReadInCentimetresAndDegreesAndWrittenBackAsTheyCame)
{
    open("currentUnit -l meter -a radian -t ntsc;\n"
         "createNode transform -n \"t\";\n"
         "setAttr \".t\" -type \"double3\" 0.1 -2 0.30000000000000004 ;\n"
         "setAttr \".rx\" 1.5707963267948966;\n"
         "setAttr \".sx\" 3;\n");
    EXPECT_NEAR(melFloats("getAttr t.t")[1], -200, 1e-12);
    EXPECT_NEAR(melFloat("getAttr t.rx"), 90, 1e-12);
    EXPECT_EQ(melFloat("getAttr t.sx"), 3);
    const std::string text = saveTwice();
    EXPECT_NE(text.find("currentUnit -l meter -a radian -t ntsc;"), std::string::npos);
    EXPECT_NE(text.find("setAttr \".t\" -type \"double3\" 0.1 -2 0.3"), std::string::npos) << text;
}

TEST_F(MaForms, TheNodesOfEverySceneAreThoseThatAreThere)
{
    open("createNode transform -s -n \"persp\";\n\tsetAttr \".t\" -type \"double3\" 1 2 3 ;\n"
         "createNode camera -s -n \"perspShape\" -p \"persp\";\n\tsetAttr \".fl\" 50;\n");
    EXPECT_EQ(melStrings("ls -type camera").size(), 4u);
    EXPECT_EQ(melFloats("getAttr persp.t"), (Floats{1, 2, 3}));
    EXPECT_EQ(melFloats("getAttr persp.r"), (Floats{0, 0, 0})); // the file says nothing of it
    EXPECT_EQ(melFloat("getAttr perspShape.fl"), 50);
    EXPECT_EQ(melStrings("ls initialShadingGroup"), (Strings{"initialShadingGroup"}));
    EXPECT_EQ(saveTwice().find("select -ne"), std::string::npos); // nobody touched the others
}

/// Their names may be those of other nodes as well, below another parent, and they may get parents.
TEST_F(MaForms, NodesMayHaveTheNamesOfThoseOfEveryScene)
{
    mel("createNode transform -n rig; createNode camera -n perspShape -p rig; createNode transform -n top -p "
        "rig;"
        "setAttr \"|rig|perspShape.fl\" 12; connectAttr \"|rig|perspShape.fl\" rig.tx;"
        "setAttr \"|rig|top.ty\" 3; group -n lights side; setAttr \"|lights|side.tz\" 4; polyCube -n "
        "frontShape");
    for (int times = 0; times < 2; ++times) {
        EXPECT_EQ(melFloat("getAttr \"|rig|perspShape.fl\""), 12);
        EXPECT_NEAR(melFloat("getAttr \"|persp|perspShape.fl\""), 35, 1e-9);
        EXPECT_EQ(melFloat("getAttr rig.tx"), 12);
        EXPECT_EQ(melFloat("getAttr \"|rig|top.ty\""), 3);
        EXPECT_EQ(melFloat("getAttr \"|lights|side.tz\""), 4);
        EXPECT_EQ(melStrings("ls -type camera").size(), 5u);
        EXPECT_EQ(melStrings("ls side").size(), 1u);
        saveTwice();
    }
}

TEST_F(MaForms, ImportGivesTakenNamesNumbersAndMayPutANamespaceInFront)
{
    open("createNode transform -n \"a\";\ncreateNode transform -n \"b\" -p \"a\";\n"
         "createNode transform -s -n \"persp\";\nsetAttr \".tx\" 9;\nconnectAttr \"a.tx\" \"b.tx\";\n");
    mel("setAttr persp.tx 5");
    mel("file -import \"" + path("scene.ma") + "\"");
    EXPECT_EQ(melFloat("getAttr persp.tx"), 5);
    mel("file -import -namespace \"n\" \"" + path("scene.ma") + "\"");
    EXPECT_EQ(melStrings("listConnections -p true a1.tx").size(), 1u);
    EXPECT_EQ(melStrings("listConnections -p true n:a.tx"), (Strings{"n:b.translateX"}));
    EXPECT_EQ(melStrings("ls -type camera").size(), 4u);
}

} // namespace
