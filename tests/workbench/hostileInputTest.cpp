#include "runWorkbench.h"

#include <gtest/gtest.h>

#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace testing_support;

// Whatever a file or script of a few hundred characters says, it costs no more than what it holds.

namespace {

struct Cost {
    int status = -1;
    double seconds = 0.0; ///< of the processor: a busy machine says nothing about the program
    long kilobytes = 0;   ///< at the highest
    std::string errors;
};

/// Runs the program in a process of its own, so that its memory can be told from everybody else's.
Cost costOf(const Folder& folder, const std::vector<std::string>& given)
{
    std::vector<std::string> words = {WORKBENCH_PROGRAM, "--batch", "--no-plug-in"};
    words.insert(words.end(), given.begin(), given.end());
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const std::string errors = folder.file("errors");
    const pid_t child = fork();
    if (child == 0) {
        const int file = open(errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        dup2(file, 2);
        dup2(file, 1);
        execv(arguments[0], arguments.data());
        _exit(127);
    }
    int status = 0;
    rusage used = {};
    wait4(child, &status, 0, &used);
    const auto seconds = [](const timeval& value) {
        return static_cast<double>(value.tv_sec) + static_cast<double>(value.tv_usec) * 1e-6;
    };
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, seconds(used.ru_utime) + seconds(used.ru_stime),
            used.ru_maxrss, contentsOf(errors)};
}

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kSanitized = true;
#elif defined(__has_feature)
constexpr bool kSanitized = __has_feature(address_sanitizer);
#else
constexpr bool kSanitized = false;
#endif

std::string repeated(const std::string& text, int times)
{
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

/// A skinned sheet; the joint `far` stands at the logical index 3,000,000 too.
const std::string kSkin = "polyPlane -n sheet -sx 9 -sy 9; joint -n near; joint -n far -p 1 0 0; skinCluster "
                          "-n skin -tsb near far sheet;";

struct Input {
    const char* what;
    std::string script;
    int status;             ///< of the program: 0, or 1 for a refusal
    const char* error = ""; ///< part of what is said
};

const Input kScripts[] = {
    {"a range far longer than the values",
     "polyPlane -n a; cluster -n c a; setAttr \"c.wl[0].w[0:2147483647]\" 1 2;", 1, "too many elements"},
    {"flags of such a range", "polyPlane -n a; cluster -n c a; setAttr -lock on \"c.wl[0].w[0:2147483647]\";",
     1, "too many elements"},
    {"a range longer than the values",
     "polyPlane -n a; cluster -n c a; setAttr \"c.wl[0].w[0:4000000]\" 1 2;", 1, "fewer values"},
    {"many values that nobody stored", "polyPlane -n a; cluster -n c a; getAttr \"c.wl[0].w[0:4000000000]\";",
     1, "too many elements"},
    {"text in text in text", repeated("eval ", 10000) + "print 1", 1, "recursion"},
    {"an element far away", "int $a[]; $a[999999999] = 1;", 1, "too far"},
    {"a large declaration", "proc f() { string $a[16000000]; } f;", 1, "cannot have"},
    {"a text doubled", "string $s = \"x\"; while (true) $s += $s;", 1, "too long"},
    {"a product of thin matrices", "matrix $a[60000][1]; matrix $b[1][60000]; matrix $c[1][1]; $c = $a * $b;",
     1, "too large"},
    {"a plane of many points", "polyPlane -sx 100000 -sy 100000", 1, "points at most"},
    {"a plane whose node has many points",
     "createNode polyPlane -n p; createNode mesh -n m;"
     "setAttr p.sw 100000; setAttr p.sh 100000; connectAttr p.out m.i; pointPosition m.vtx[0];",
     1, ""},
    {"a lattice of many points",
     "createNode lattice -n l; setAttr l.sDivisions 30000; setAttr l.tDivisions 30000;"
     "pointPosition l.pt[0][0][0];",
     1, ""},
    {"stars", "gmatch \"" + repeated("a", 200) + "\" \"" + repeated("*a", 100) + "b\"", 0},
    {"stars in stars", "match \"(a*)*b\" \"" + repeated("a", 500) + "\"", 0},
    {"an influence at a large index",
     kSkin + "connectAttr far.wm skin.matrix[3000000]; setAttr \"skin.wl[0].w[3000000]\" .5; move 0 1 0 far;"
             "pointPosition sheet.vtx[0]; skinPercent -tv near 1 skin sheet.vtx[0]; undo; setAttr "
             "skin.skinningMethod 1;"
             "pointPosition sheet.vtx[0];",
     0},
    {"a row at a large index",
     kSkin + "setAttr \"skin.wl[999999999].w[0]\" 1; pointPosition sheet.vtx[0];"
             "skinCluster -e -ri far skin; undo; undo; redo; redo;",
     0},
    {"a pose member at a large index",
     kSkin + "createNode dagPose -n p; connectAttr near.message p.members[4000000000];"
             "dagPose -q -members p;",
     0},
    {"6,000 points weighted one by one",
     "polyPlane -n sheet -sx 99 -sy 59; joint -n near; joint -n far -p 1 0 0; skinCluster -n skin -tsb near "
     "far sheet;"
     "int $i; for ($i = 0; $i < 6000; $i++) skinPercent -tv near .25 skin (\"sheet.vtx[\" + $i + \"]\");"
     "for ($i = 0; $i < 6000; $i++) setAttr (\"skin.wl[\" + $i + \"].w[0:1]\") .5 .5;"
     "for ($i = 0; $i < 12000; $i++) undo;",
     0},
};

void expectCheap(const Cost& cost, const Cost& nothing, int status)
{
    EXPECT_EQ(cost.status, status) << cost.errors;
    if (kSanitized)
        return;
    EXPECT_LT(cost.seconds - nothing.seconds, 2.0);
    EXPECT_LT(cost.kilobytes - nothing.kilobytes, 64 * 1024);
}

TEST(HostileInput, ScriptsCostWhatTheyHold)
{
    const Folder folder;
    const Cost nothing = costOf(folder, {"-c", "print 1"});
    for (const Input& input : kScripts) {
        SCOPED_TRACE(input.what);
        const Cost cost = costOf(folder, {"--script", folder.write("input.mel", input.script)});
        expectCheap(cost, nothing, input.status);
        EXPECT_NE(cost.errors.find(input.error), std::string::npos) << cost.errors;
    }
}

TEST(HostileInput, ScenesCostWhatTheyHold)
{
    const Folder folder;
    const Cost nothing = costOf(folder, {"-c", "print 1"});
    const Input scenes[] = {
        {"a vertex far away", "createNode mesh -n m;\nsetAttr \".vt[999999999]\" 0 0 0;\n", 1,
         "do not come in order"},
        {"an edge far away", "createNode mesh -n m;\nsetAttr \".ed[999999999]\" 0 0 0;\n", 1,
         "do not come in order"},
        {"a face with the lowest edge",
         "createNode mesh -n m;\nsetAttr -s 3 \".vt[0:2]\" 0 0 0 1 0 0 0 1 0;\nsetAttr -s 3 \".ed[0:2]\" 0 1 "
         "0 1 2 0 2 0 0;\n"
         "setAttr -s 1 \".fc[0]\" -type \"polyFaces\" f 3 0 1 -2147483648;\n",
         1, "does not exist"},
        {"a weight row far away", "createNode skinCluster -n s;\nsetAttr \".wl[999999999].w[0]\" 1;\n", 0},
        {"enumerations at the end of numbers",
         "createNode transform -n t;\naddAttr -ln \"e\" -at \"enum\" -en "
         "\"a=4294967295:b:c=2147483647:d\";\n",
         0},
    };
    for (const Input& input : scenes) {
        SCOPED_TRACE(input.what);
        const std::string file =
            folder.write("input.ma", "//Maya ASCII 2019 scene\nrequires maya \"2019\";\n" + input.script);
        const Cost cost = costOf(folder, {file, "--save", folder.file("saved.ma")});
        expectCheap(cost, nothing, input.status);
        EXPECT_NE(cost.errors.find(input.error), std::string::npos) << cost.errors;
    }
}

} // namespace
