// The stroke that run.sh plays, on any scene.
#include "runWorkbench.h"
#include "support/paths.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <regex>
#include <sstream>

using namespace testing_support;

namespace {

struct DemoCase {
    std::string name;
    std::vector<std::string> arguments; ///< the scene, or what makes one
    std::string says;                   ///< what it chose, as far as that is plain
};
std::ostream& operator<<(std::ostream& out, const DemoCase& scene)
{
    return out << scene.name;
}

std::vector<DemoCase> demoCases()
{
    const std::string shipped = sourceDir() + "/scenes/";
    std::vector<DemoCase> cases = {
        {"creature", {shipped + "creature.ma"}, "skin weights"},
        {"small", {"--size", "400x225", shipped + "creature.ma"}, "skin weights"},
        {"large", {"--size", "3840x2160", shipped + "arm.ma"}, "skin weights"},
        {"cluster", {shipped + "clusterSheet.ma"}, "weight map of lift"},
        {"target", {shipped + "smile.ma"}, "target smile"},
        {"named map", {shipped + "ripple.ma"}, "weight map of ripple"},
        {"bind pose",
         {"-c", "polyCylinder -n c -h 6 -sx 8 -sy 8 -ax 0 1 0; select -cl; joint -n low -p 0 -3 0; "
                "joint -n high -p 0 0 0; skinCluster -tsb low high c; select -cl"},
         "rotateZ is set to"},
        {"target off",
         {"-c", "polySphere -n s; polySphere -n big -r 2; blendShape -n bs big s; setAttr big.tx 40"},
         "bs.big is set to"},
        {"curve",
         {"-c", "curve -n w -d 3 -p 0 0 0 -p 2 3 0 -p 4 0 0 -p 6 3 0 -p 8 0 0; cluster -n k w; "
                "setAttr kHandle.ty 3; select -cl"},
         "weight map of k"},
    };
    if (mayaScenesDir().empty())
        return cases;
    const std::string maya = mayaScenesDir() + "/";
    cases.push_back({"planes", {maya + "gt_plane_skinned.ma"}, "skin weights"});
    cases.push_back({"tongue", {maya + "omtk_test_tongue.ma"}, "skin weights"});
    cases.push_back({"cube", {maya + "gltf_CubeTwoTargets.ma"}, "weights of target"});
    return cases;
}

/// The numbers of the pressed point's line in the table: before, after, undone, redone.
std::vector<double> rowOf(const std::string& out)
{
    std::smatch found;
    if (!std::regex_search(out, found, std::regex("pressed on (\\S+), ")))
        return {};
    std::istringstream lines(out);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string point;
        words >> point;
        if (point != found[1])
            continue;
        std::vector<double> numbers;
        for (double number = 0; words >> number;)
            numbers.push_back(number);
        return numbers;
    }
    return {};
}

class Demo : public ::testing::TestWithParam<DemoCase> {};

TEST_P(Demo, FindsSomethingToSculptAndSaysWhat)
{
    std::vector<std::string> arguments = {"--batch"};
    arguments.insert(arguments.end(), GetParam().arguments.begin(), GetParam().arguments.end());
    arguments.insert(arguments.end(), {"--script", sourceDir() + "/scenes/strokeDemo.mel"});
    const RunResult run = runWorkbench(arguments);
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    EXPECT_NE(run.out.find(GetParam().says), std::string::npos) << run.out;
    const std::vector<double> row = rowOf(run.out);
    ASSERT_EQ(row.size(), 4U) << run.out;
    EXPECT_GT(std::abs(row[1] - row[0]), 0.1) << "the stroke is worth showing";
    EXPECT_EQ(row[2], row[0]);
    EXPECT_EQ(row[3], row[1]);
}

INSTANTIATE_TEST_SUITE_P(Scenes, Demo, ::testing::ValuesIn(demoCases()));

TEST(Demo, SaysPlainlyWhenThereIsNothingToSculpt)
{
    const Folder folder;
    for (const char* scene : {"", "polySphere", "polySphere -n s; cluster s; setAttr s.visibility 0"}) {
        const RunResult run =
            runWorkbench({"--batch", "-c", scene, "--script", sourceDir() + "/scenes/strokeDemo.mel",
                          "--save", folder.file("same.ma")});
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.out.compare(0, 18, "Nothing to sculpt:"), 0) << run.out;
    }
}

} // namespace
