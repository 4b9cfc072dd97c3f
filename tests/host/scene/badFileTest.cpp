#include "host/scene/sceneFixture.h"

#include "graph/graph.h"

#include <sys/stat.h>
#include <unistd.h>

namespace {

using testing_support::SceneTest;

class BadFile : public SceneTest {};

/// What is wrong with a file and how the error must end.
struct Broken {
    const char* name;
    const char* text;
    const char* error;
};

constexpr Broken kBroken[] = {
    {"noMaya", "createNode transform;\n",
     "line 1: this is no Maya ASCII file (it does not begin with //Maya)"},
    {"empty", "", "line 1: this is no Maya ASCII file (it does not begin with //Maya)"},
    {"cutInText", "//Maya\ncreateNode transform -n \"a", "line 2: the text that begins here is not closed"},
    {"cutInStatement", "//Maya\ncreateNode transform -n \"a\";\nsetAttr \".t\" -type \"double3\" 1 2",
     "line 3: the file ends in the statement that begins here"},
    {"noSemicolon", "//Maya\ncreateNode transform -n \"a\"\ncreateNode transform -n \"b\";",
     "line 3: createNode has no flag \"createNode\""},
    {"tooFew", "//Maya\ncreateNode transform -n \"a\";\n\n\tsetAttr \".t\" -type \"double3\" 1 2 ;",
     "line 4: setAttr ends too early"},
    {"tooMany", "//Maya\ncreateNode transform -n \"a\";\n\tsetAttr \".tx\" 1 2;",
     "line 3: unexpected \"2\" at the end of setAttr"},
    {"rangeTooShort", "//Maya\ncreateNode skinCluster -n \"a\";\n\tsetAttr \".dpf[0:4]\" 1 2 3 4;",
     "line 3: there are fewer values than elements"},
    {"noNumber", "//Maya\ncreateNode transform -n \"a\";\n\tsetAttr \".t\" -type \"double3\" 1\n\ttwo 3;",
     "line 4: a number is expected, not \"two\""},
    {"flag", "//Maya\ncreateNode transform -n \"a\";\n\tsetAttr -zap on \".tx\" 1;",
     "line 3: setAttr has no flag \"-zap\""},
    {"notAnArray", "//Maya\ncreateNode transform -n \"a\";\n\tsetAttr \".tx[3]\" 1;",
     "line 3: the attribute path \"tx[3]\" of a indexes translateX, which is no array"},
    {"badRange", "//Maya\ncreateNode skinCluster -n \"a\";\n\tsetAttr \".dpf[4:1]\" 1;",
     "line 3: the attribute path \"dpf[4:1]\" of a has a bad index"},
    {"hugeCount",
     "//Maya\ncreateNode groupParts -n \"a\";\n\tsetAttr \".ic\" -type \"componentList\" 99 \"vtx[0]\";",
     "line 3: the count 99 does not fit what follows"},
    {"meshEdge",
     "//Maya\ncreateNode transform -n \"t\";\ncreateNode mesh -n \"a\" -p \"t\";\n\tsetAttr \".vt[0]\" 0 0 "
     "0;\n"
     "\tsetAttr \".ed[0]\" 0 5 0;\n",
     "line 5: mesh a: an edge names the vertex 5, which does not exist"},
    {"knots",
     "//Maya\ncreateNode transform -n \"t\";\ncreateNode nurbsCurve -n \"a\" -p \"t\";\n"
     "\tsetAttr \".cc\" -type \"nurbsCurve\" 3 1 0 no 3 2 0 1 2 0 0 0 1 1 1;",
     "line 4: the knots of the curve do not fit its degree and CVs"},
    {"unit", "//Maya\ncurrentUnit -l furlong;", "line 2: \"furlong\" is no unit of length"},
    {"compound",
     "//Maya\ncreateNode transform -n \"a\";\naddAttr -ln \"c\" -at \"double3\" -nc 3;\n"
     "addAttr -ln \"cx\" -at \"double\" -p \"c\";\ncreateNode transform -n \"b\";",
     "line 5: the compound attribute a.c lacks children"},
    {"cutBetween", "//Maya ASCII 2022 scene\n//Name: a.ma\ncreateNode transform -n \"a\";\n",
     "line 4: the file is cut off (its last line, \"// End of ...\", is missing)"},
    {"vertexFarOut",
     "//Maya\ncreateNode transform -n \"t\";\ncreateNode mesh -n \"a\" -p \"t\";\n"
     "setAttr \".vt[999999999]\" 0 0 0;",
     "line 4: the vertices do not come in order"},
    {"edgesFarOut",
     "//Maya\ncreateNode transform -n \"t\";\ncreateNode mesh -n \"a\" -p \"t\";\n"
     "setAttr \".ed[18446744073709551615]\" 0 0 0;",
     "line 4: the edges do not come in order"},
    {"rangeOfEverything",
     "//Maya\ncreateNode transform -n \"t\";\ncreateNode mesh -n \"a\" -p \"t\";\n"
     "setAttr \".vt[0:18446744073709551615]\" 0 0 0;",
     "line 4: there are fewer values than elements"},
    {"locksOfEverything", "//Maya\ncreateNode blendShape -n \"a\";\nsetAttr -l on \".w[0:4294967293]\";",
     "line 3: too many elements are locked or made keyable at once"},
    {"textTooEarly", "//Maya\nsetAttr \"b.t\" 5 5;\n\ncreateNode transform -n \"b\";",
     "line 2: setAttr ends too early"},
    {"noNode", "//Maya\nsetAttr \".tx\" 1;", "line 2: there is no node to which \".tx\" could belong"}};

TEST_F(BadFile, IsAnErrorWithFileAndLineAndLeavesTheOpenSceneAsItWas)
{
    open("createNode transform -n \"old\";\n\tsetAttr \".tx\" 3;\ncreateNode transform -n \"below\" -p "
         "\"old\";\n"
         "connectAttr \"old.tx\" \"below.ty\";\n");
    const std::string name = melString("file -q -sceneName");
    mel("setAttr old.tx 4; select below");
    const std::string before = save("before.ma");
    mel("file -rename \"" + name + "\"; setAttr old.tx 5");
    for (const Broken& broken : kBroken) {
        const std::string file = write(std::string(broken.name) + ".ma", broken.text);
        EXPECT_EQ(openError(file), file + ": " + broken.error) << broken.name;
    }
    EXPECT_EQ(openError(path("nowhere.ma")), "File not found: " + path("nowhere.ma"));
    EXPECT_EQ(melString("file -q -sceneName"), name);
    EXPECT_EQ(melStrings("ls -sl"), (std::vector<std::string>{"below"}));
    EXPECT_EQ(melFloat("getAttr below.ty"), 5);
    mel("undo");
    EXPECT_EQ(melFloat("getAttr below.ty"), 4); // the undo queue is the one of the scene that stayed
    EXPECT_EQ(save("after.ma"), before);
}

TEST_F(BadFile, ThatIsImportedAddsNothing)
{
    open("createNode transform -n \"a\";\n");
    const std::string before = save("before.ma");
    const std::string file =
        write("bad.ma", "//Maya\ncreateNode transform -n \"b\";\nconnectAttr \"b.tx\" \"b.ty\";\n"
                        "createNode transform -n \"c\" -p \"b\";\nsetAttr \".t\" 1;\n");
    EXPECT_EQ(refusal("file -import \"" + file + "\""), file + ": line 5: setAttr ends too early");
    EXPECT_EQ(save("after.ma"), before);
}

TEST_F(BadFile, ThatCannotBeWrittenLeavesTheOldOneAlone)
{
    open("createNode transform -n \"a\";\n");
    const std::string before = save("kept.ma");
    mel("setAttr a.tx 3");
    const std::string missing = path("no/such/folder.ma");
    mel("file -rename \"" + missing + "\"");
    EXPECT_EQ(refusal("file -save"), "The file " + missing + " cannot be written: No such file or directory");
    // A folder stands where the file should go: only the last step can fail.
    std::filesystem::create_directories(path("folder.ma/inside"));
    EXPECT_NE(refusal("file -rename \"" + path("folder.ma") + "\"; file -save").find("cannot be written"),
              std::string::npos);
    // The disk is full.
    EXPECT_NE(refusal("file -exportAll \"/dev/full/x.ma\"").find("cannot be written"), std::string::npos);
    EXPECT_EQ(read(path("kept.ma")), before);
    EXPECT_EQ(melInt("file -q -modified"), 1);
    std::size_t left = 0;
    for (const auto& entry : std::filesystem::directory_iterator(path("")))
        left += entry.path().extension() == ".part" ? 1 : 0;
    EXPECT_EQ(left, 0u);
}

TEST_F(BadFile, NothingIsLostWithoutForce)
{
    open("createNode transform -n \"a\";\n");
    mel("setAttr a.tx 1");
    EXPECT_EQ(refusal("file -new"), "Unsaved changes.");
    EXPECT_EQ(refusal("file -open \"" + path("scene.ma") + "\""), "Unsaved changes.");
    EXPECT_EQ(melFloat("getAttr a.tx"), 1);
    mel("file -modified 0; file -new");
    EXPECT_EQ(melInt("objExists a"), 0);
    EXPECT_EQ(melInt("undoInfo -q -undoQueueEmpty"), 1);
    EXPECT_EQ(refusal("file -save"), "file: the scene has no name yet (file -rename).");
}

} // namespace
