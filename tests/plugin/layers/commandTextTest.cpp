// What the tool asks of ngst2Layers, character for character: texts, their order and their number.
#include "plugin/layers/layerFixture.h"

#include <algorithm>

using namespace testing_support;

namespace {

using Texts = std::vector<std::string>;

const char* const kExists = "exists ngst2Layers";
const char* const kList = "ngst2Layers -q -ll |sheet|sheetShape";

/// Mask and dual-quaternion weights: mode name, paint target, and whether groups are asked for.
struct LayerMode {
    const char* mode;
    const char* target;
    bool asksForChildren;
};

void PrintTo(const LayerMode& mode, std::ostream* out)
{
    *out << mode.mode;
}

class LayerWeightTexts : public LayerTest, public ::testing::WithParamInterface<LayerMode> {
public:
    void SetUp() override
    {
        LayerTest::SetUp();
        paint(1, "0", {0.75, 0.75, 0.75, 0.75, 0.75, 0.75});
        paint(1, "1", {0.25, 0.25, 0.25, 0.25, 0.25, 0.25});
        paint(1, GetParam().target, {0.5, 0.25, 0.125, 0.5, 1, 0});
        edit(std::string("-weightMode ") + GetParam().mode);
    }
    std::string read() const { return call() + "-q -vertexWeights |sheet|sheetShape"; }
    std::string write(const std::string& values) const
    {
        return call() + "-e -vertexWeights \"" + values + "\" |sheet|sheetShape";
    }
    /// What the selection is analysed and read with.
    Texts reading(Texts texts) const
    {
        texts.push_back(kList);
        if (GetParam().asksForChildren)
            texts.push_back(kList);
        texts.push_back(read());
        return texts;
    }

private:
    static std::string call()
    {
        return std::string("ngst2Layers -id 1 -paintTarget ") + GetParam().target + " ";
    }
};

INSTANTIATE_TEST_SUITE_P(Modes, LayerWeightTexts,
                         ::testing::Values(LayerMode{"ngSkinToolsMask", "mask", false},
                                           LayerMode{"ngSkinToolsDualQuaternion", "dq", true}));

TEST_P(LayerWeightTexts, PressDragUndoRedo)
{
    const std::string old = "0.5,0.25,0.125,0.5,1,0", stroked = "0.5,1,0.125,0.5,1,0";
    const Pixel to = farAway(GetParam().target, 1);
    const Pixel from = at(1);
    trace.clear();
    press(from);
    Texts expected = reading({kExists});
    expected.push_back(write("0.5,0.245,0.125,0.5,1,0"));
    expected.push_back(write("0.5,0.255,0.125,0.5,1,0"));
    expected.push_back(write(old));
    EXPECT_EQ(layerCommands(), expected);

    trace.clear();
    drag(to);
    EXPECT_EQ(layerCommands(), Texts{write(stroked)});
    trace.clear();
    drag(from);
    EXPECT_EQ(layerCommands(), Texts{write(old)}) << "back at the press point";
    drag(to);
    trace.clear();
    release(to);
    EXPECT_EQ(layerCommands(), Texts{});

    mel("undo");
    EXPECT_EQ(layerCommands(), Texts{}) << "the layer keeps the stroke";
    EXPECT_EQ(painted(1, GetParam().target)[1], 1.0);
    trace.clear();
    mel("redo");
    EXPECT_EQ(layerCommands(), Texts{write(stroked)});
}

TEST_P(LayerWeightTexts, CopyAndPasteAndTheirUndo)
{
    press(at(1)); // the tool learns at a press that layers are there
    release(at(1));
    trace.clear();
    edit("-copy true");
    EXPECT_EQ(layerCommands(), reading({kExists}));

    mel("select sheet.vtx[2]");
    trace.clear();
    edit("-paste true");
    Texts expected = reading({kExists});
    expected.push_back(write("0.5,0.25,0.25,0.5,1,0"));
    EXPECT_EQ(layerCommands(), expected);
    for (int round = 0; round < 2; ++round) {
        trace.clear();
        mel("undo");
        EXPECT_EQ(layerCommands(), Texts{write("0.5,0.25,0.125,0.5,1,0")});
        trace.clear();
        mel("redo");
        EXPECT_EQ(layerCommands(), Texts{write("0.5,0.25,0.25,0.5,1,0")});
    }
}

class InfluenceTexts : public LayerTest {
public:
    void SetUp() override
    {
        LayerTest::SetUp();
        paint(1, "0", {0.25, 0.25, 0.25, 0.25, 0.25, 0.25});
        paint(1, "1", {0.5, 0.5, 0.25, 0.5, 1, 0});
        paint(1, "2", {0, 0, 0, 0, 0, 0});
        edit("-weightMode ngSkinToolsInfluence");
    }
    static std::string read(int influence) { return call(influence) + "-q -vertexWeights |sheet|sheetShape"; }
    static std::string write(int influence, const std::string& values)
    {
        return call(influence) + "-e -vertexWeights \"" + values + "\" |sheet|sheetShape";
    }
    static Texts reading() { return {kExists, kList, kList, read(0), read(1), read(2)}; }

    const std::string hip = "0.25,0.25,0.25,0.25,0.25,0.25";
    const std::string knee = "0.5,0.5,0.25,0.5,1,0";
    const std::string toe = "0,0,0,0,0,0";

private:
    static std::string call(int influence)
    {
        return "ngst2Layers -id 1 -paintTarget " + std::to_string(influence) + " ";
    }
};

TEST_F(InfluenceTexts, PressDragUndoRedo)
{
    const Pixel more = farAway("1", 1), less = farAway("1", 1, true);
    const Pixel from = at(1);
    trace.clear();
    press(from);
    Texts expected = reading();
    for (const char* nudged : {"0.5,0.495,0.25,0.5,1,0", "0.5,0.505,0.25,0.5,1,0"})
        expected.push_back(write(1, nudged));
    expected.insert(expected.end(), {write(0, hip), write(1, knee), write(2, toe)});
    EXPECT_EQ(layerCommands(), expected);

    // All that is taken goes to the others; of what is added beyond one in sum, the others get the excess
    // too.
    trace.clear();
    drag(less);
    EXPECT_EQ(layerCommands(), (Texts{write(0, "0.25,0.75,0.25,0.25,0.25,0.25"), write(2, toe),
                                      write(1, "0.5,0,0.25,0.5,1,0")}));
    const Texts raised = {write(0, "0.25,0.5,0.25,0.25,0.25,0.25"), write(2, toe),
                          write(1, "0.5,1,0.25,0.5,1,0")};
    trace.clear();
    drag(more);
    EXPECT_EQ(layerCommands(), raised);
    release(more);

    trace.clear();
    mel("undo");
    EXPECT_EQ(layerCommands(), Texts{write(1, knee)}) << "what redistribution did to the others stays";
    trace.clear();
    mel("redo");
    EXPECT_EQ(layerCommands(), raised);
}

TEST_F(InfluenceTexts, CopyAndPasteAndTheirUndo)
{
    press(at(1));
    release(at(1));
    trace.clear();
    edit("-copy true");
    EXPECT_EQ(layerCommands(), reading());

    mel("select sheet.vtx[2]");
    trace.clear();
    edit("-paste true");
    const Texts pasted = {write(0, hip), write(2, toe), write(1, "0.5,0.5,0.5,0.5,1,0")};
    Texts expected = reading();
    expected.insert(expected.end(), pasted.begin(), pasted.end());
    EXPECT_EQ(layerCommands(), expected);
    trace.clear();
    mel("undo");
    EXPECT_EQ(layerCommands(), (Texts{write(0, hip), write(1, knee), write(2, toe)}));
    trace.clear();
    mel("redo");
    EXPECT_EQ(layerCommands(), pasted);
}

/// Two sheets with a layer each, the second one's vertices all selected beside one of the first.
class TwoObjects : public LayerTest, public ::testing::WithParamInterface<LayerMode> {
public:
    void SetUp() override
    {
        LayerTest::SetUp();
        mel("polyPlane -n other -w 10 -h 5 -sx 2 -sy 1; move 0 -30 -40 other; select -cl; joint -n left; "
            "joint -n right -p 4 0 0;"
            "skinCluster -tsb -mi 2 -dr 4 -n otherSkin left right other; skinCluster -e -ai knee -wt 0 "
            "otherSkin;"
            "ngst2Layers -e -attach |other|otherShape; ngst2Layers -e -addLayer skinLayer |other|otherShape;"
            "select sheet.vtx[1] other.vtx[*]");
        for (const char* target : {"0", "1", "2", "mask", "dq"}) {
            paint(1, target, {0.25, 0.25, 0.25, 0.25, 0.25, 0.25});
            mel(std::string("ngst2Layers -e -id 1 -paintTarget ") + target +
                " -vertexWeights \"0.125,0.125,0.125,0.125,0.125,0.125\" |other|otherShape");
        }
        edit(std::string("-weightMode ") + GetParam().mode);
    }
    /// How many of the commands that were asked begin and end with these texts.
    int asked(const std::string& beginning, const std::string& path) const
    {
        const Texts commands = layerCommands();
        return static_cast<int>(
            std::count_if(commands.begin(), commands.end(), [&](const std::string& command) {
                return command.compare(0, beginning.size(), beginning) == 0 &&
                       command.compare(command.size() - path.size(), path.size(), path) == 0;
            }));
    }
};

INSTANTIATE_TEST_SUITE_P(Modes, TwoObjects,
                         ::testing::Values(LayerMode{"ngSkinToolsMask", "mask", false},
                                           LayerMode{"ngSkinToolsDualQuaternion", "dq", true},
                                           LayerMode{"ngSkinToolsInfluence", "1", true}));

TEST_P(TwoObjects, AreReadOnceAndWrittenOncePerEvent)
{
    const bool hasInfluences = std::string(GetParam().target) == "1";
    const int arrays = hasInfluences ? 3 : 1;
    const Pixel from = at(1);
    trace.clear();
    press(from);
    for (const char* path : {" |sheet|sheetShape", " |other|otherShape"}) {
        EXPECT_EQ(asked("ngst2Layers -q -ll", path), GetParam().asksForChildren ? 2 : 1) << path;
        EXPECT_EQ(asked("ngst2Layers -q -vertexCount", path), 0) << path;
        int reads = 0;
        for (const char* target : {"mask", "dq", "0", "1", "2"})
            reads +=
                asked(std::string("ngst2Layers -id 1 -paintTarget ") + target + " -q -vertexWeights", path);
        EXPECT_EQ(reads, arrays) << path;
    }
    for (const Pixel to :
         {Pixel{from.x, from.y + 9}, Pixel{from.x + 4, from.y - 20}, Pixel{from.x, from.y + 2}}) {
        trace.clear();
        drag(to);
        EXPECT_EQ(layerCommands().size(), static_cast<std::size_t>(2 * arrays));
        for (const char* target : {"mask", "dq", "0", "1", "2"}) {
            const bool isWritten =
                hasInfluences ? target[1] == '\0' : target == std::string(GetParam().target);
            for (const char* path : {" |sheet|sheetShape", " |other|otherShape"})
                EXPECT_EQ(asked(std::string("ngst2Layers -id 1 -paintTarget ") + target + " -e", path),
                          isWritten ? 1 : 0)
                    << target << path;
        }
    }
    release(from);
}

} // namespace
