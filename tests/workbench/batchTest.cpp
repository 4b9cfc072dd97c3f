#include "runWorkbench.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include <sys/wait.h>

using namespace testing_support;

namespace {

bool contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

TEST(Batch, RunsScriptsAndCommandsInTheOrderGiven)
{
    const Folder folder;
    const std::string a = folder.write("a.mel", "print \"a\\n\";");
    const std::string b = folder.write("b.mel", "print \"b\\n\";");
    const RunResult run =
        runWorkbench({"--batch", "--no-plug-in", "-c", "print \"1\\n\"", "--script", a, "--command",
                      "print \"2\\n\"; warning \"careful\"", "--script", b, "--script", a});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "1\na\n2\nb\na\n");
    EXPECT_TRUE(contains(run.err, "// Warning: careful //")) << run.err;
}

TEST(Batch, AScriptMayComeFromStandardInput)
{
    const Folder folder;
    const std::string input = folder.write("input", "int $x = 3;\nprint ($x + 1);\n");
    const RunResult run =
        runWorkbench({"--batch", "--no-plug-in", "--script", "-", "-c", "print \" after\""}, {}, input);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "4 after");
    const RunResult bad = runWorkbench({"--batch", "--no-plug-in", "--script", "-"}, {},
                                       folder.write("bad", "print 1;\nnonsense;\n"));
    EXPECT_EQ(bad.status, 1);
    EXPECT_TRUE(contains(bad.err, "standard input") && contains(bad.err, "line 2")) << bad.err;
}

TEST(Batch, WrongUsageEndsWithTwo)
{
    const std::vector<std::vector<std::string>> wrong = {
        {"--batch", "--colour"},
        {"--batch", "--size", "960"},
        {"--batch", "--size", "0x540"},
        {"--batch", "--size", "960x540x2"},
        {"--batch", "--script"},
        {"--batch", "--plug-in", "x.so", "--no-plug-in"},
        {"--batch", "--seconds", "3"},
        {"--batch", "one.ma", "two.ma"},
        {"--batch", "--scale", "0"},
        {"--batch", "--size", "8192x1000", "--scale", "4"},
        {"--batch", "--image", "view.jpg"},
        {"--batch", "--save", "scene.mb"},
        {"--batch", "--save", "ma"},
        {"--batch", "--save", ""},
        {"--batch", "--image", ""},
        {"--batch", "--save="},
        {}, // no window in this build
    };
    for (const std::vector<std::string>& arguments : wrong) {
        const RunResult run = runWorkbench(arguments);
        EXPECT_EQ(run.status, 2) << ::testing::PrintToString(arguments);
        EXPECT_EQ(run.out, "") << ::testing::PrintToString(arguments);
        EXPECT_NE(run.err, "") << ::testing::PrintToString(arguments);
    }
    EXPECT_TRUE(contains(runWorkbench({"--batch", "--save", "scene.mb"}).err, ".ma"));
    EXPECT_TRUE(contains(runWorkbench({"--batch", "--image", "view.jpg"}).err, ".png"));
    EXPECT_EQ(runWorkbench({"--help"}).status, 0);
    EXPECT_TRUE(contains(runWorkbench({"--version"}).out, "morvane-workbench 4"));
}

TEST(Batch, AFailedScriptNamesFileAndLineAndEndsTheRun)
{
    const Folder folder;
    const std::string script =
        folder.write("bad.mel", "print \"begun\\n\";\nint $x = 1;\nsetAttr nothing.tx 3;\n");
    const std::string picture = folder.write("old.png", "old picture");
    const std::string scene = folder.write("old.ma", "old scene");
    const RunResult run = runWorkbench({"--batch", "--no-plug-in", "--script", script, "-c",
                                        "print \"after\\n\"", "--image", picture, "--save", scene});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "begun\n");
    EXPECT_TRUE(contains(run.err, "bad.mel") && contains(run.err, "line 3")) << run.err;
    EXPECT_EQ(contentsOf(picture), "old picture");
    EXPECT_EQ(contentsOf(scene), "old scene");

    for (const char* text : {"error \"stop here\"", "print (", "nonsense 3"})
        EXPECT_EQ(runWorkbench({"--batch", "--no-plug-in", "-c", text}).status, 1) << text;
    EXPECT_EQ(runWorkbench({"--batch", "--no-plug-in", "-c", "catch(`error \"seen\"`)"}).status, 0);
}

TEST(Batch, FilesThatCannotBeReadEndWithOne)
{
    const Folder folder;
    const std::string cut =
        folder.write("cut.ma", "//Maya ASCII 2019 scene\ncreateNode transform -n \"a\";\nsetAttr \".t");
    const std::string text = folder.write("text.so", "no library");
    const std::vector<std::vector<std::string>> cases = {
        {"--batch", "--no-plug-in", folder.file("missing.ma")},
        {"--batch", "--no-plug-in", cut},
        {"--batch", "--no-plug-in", "--script", folder.file("missing.mel")},
        {"--batch", "--plug-in", folder.file("missing.so")},
        {"--batch", "--plug-in", text},
        {"--batch", "--no-plug-in", "--trace", folder.file("no/such/folder")},
        {"--batch", "--no-plug-in", folder.path},
    };
    for (const std::vector<std::string>& arguments : cases) {
        const RunResult run = runWorkbench(arguments);
        EXPECT_EQ(run.status, 1) << ::testing::PrintToString(arguments);
        const std::string file = std::filesystem::path(arguments.back()).filename().string();
        EXPECT_TRUE(contains(run.err, "// Error: ") && contains(run.err, file)) << run.err;
    }
}

TEST(Batch, WhatFailsLaterOrCannotBePrintedEndsWithOneToo)
{
    const RunResult deferred =
        runWorkbench({"--batch", "--no-plug-in", "-c",
                      "evalDeferred \"error \\\"late\\\"\"; print \"first\\n\"", "-c", "print \"never\\n\""});
    EXPECT_EQ(deferred.status, 1);
    EXPECT_EQ(deferred.out, "first\n");
    EXPECT_TRUE(contains(deferred.err, "late")) << deferred.err;

    const std::string printing =
        std::string(WORKBENCH_PROGRAM) + " --batch --no-plug-in -c 'print \"lost\"' >/dev/full 2>/dev/null";
    EXPECT_EQ(WEXITSTATUS(std::system(printing.c_str())), 1);

    const Folder folder;
    EXPECT_TRUE(contains(runWorkbench({"--batch", "--no-plug-in", folder.path}).err, "is a folder"));
}

TEST(Batch, ThePlugInIsFoundByNameBesideTheProgramAndInTheCurrentFolder)
{
    EXPECT_EQ(
        runWorkbench({"--batch", "--no-plug-in", "-c", "loadPlugin morvane; morvaneContext mine"}).status, 0);
    const std::string elsewhere = "cd '" + std::filesystem::path(WORKBENCH_PROGRAM).parent_path().string() +
                                  "/../test-plug-ins' && " + WORKBENCH_PROGRAM +
                                  " --batch --no-plug-in -c 'loadPlugin counter; counter' 2>/dev/null";
    EXPECT_EQ(WEXITSTATUS(std::system(elsewhere.c_str())), 0);
}

TEST(Batch, UnwritableResultsLeaveTheOldFileIntact)
{
    const Folder folder;
    std::filesystem::create_directory(folder.file("folder.png"));
    std::filesystem::create_directory(folder.file("folder.ma"));
    const std::pair<const char*, const char*> endings[] = {{"--image", ".png"}, {"--save", ".MA"}};
    for (const auto& [option, ending] : endings) {
        const std::string missing = std::string("no/such/file") + ending;
        const RunResult noFolder = runWorkbench({"--batch", "--no-plug-in", option, folder.file(missing)});
        EXPECT_EQ(noFolder.status, 1) << option;
        EXPECT_TRUE(contains(noFolder.err, missing)) << noFolder.err;
    }
    EXPECT_EQ(runWorkbench({"--batch", "--no-plug-in", "--image", folder.file("folder.png")}).status, 1);
    EXPECT_EQ(runWorkbench({"--batch", "--no-plug-in", "--save", folder.file("folder.ma")}).status, 1);
    for (const auto& [option, ending] : endings) {
        const std::string kept = folder.write(std::string("kept") + ending, "old");
        std::filesystem::permissions(kept, std::filesystem::perms::owner_read);
        const RunResult run = runWorkbench({"--batch", "--no-plug-in", option, kept});
        EXPECT_EQ(run.status, 1) << option;
        EXPECT_TRUE(contains(run.err, kept + " cannot be written: it is write-protected")) << run.err;
        EXPECT_EQ(contentsOf(kept), "old") << option;
    }
    EXPECT_EQ(folder.names().size(), 4U) << "half-written files were left behind";
    EXPECT_EQ(runWorkbench({"--batch", "--no-plug-in", "--save", "/dev/full/x.ma"}).status, 1);
}

TEST(Batch, SavedSceneOpensAgainAndTheTraceIsWritten)
{
    const Folder folder;
    const std::string scene = folder.file("made.ma");
    const std::string trace = folder.file("trace.txt");
    const RunResult make =
        runWorkbench({"--batch", "--no-plug-in", "-c", "polyCube -name \"box\"; setAttr box.tx 2.5;", "-c",
                      "evalDeferred \"print \\\"idle ran\\\"\"", "--save", scene, "--trace", trace});
    ASSERT_EQ(make.status, 0) << make.err;
    EXPECT_EQ(make.out, "idle ran");
    EXPECT_TRUE(contains(contentsOf(trace), "idle\tdisplay=0\tprint \"idle ran\"\n")) << contentsOf(trace);
    const RunResult open = runWorkbench({"--batch", "--no-plug-in", scene, "-c", "print `getAttr box.tx`"});
    EXPECT_EQ(open.status, 0) << open.err;
    EXPECT_EQ(open.out, "2.5");
}

} // namespace
