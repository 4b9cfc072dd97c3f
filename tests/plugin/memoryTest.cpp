// What strokes keep for undo. A working day is hundreds of them.
#include "support/toolFixture.h"
#include "undo/undoQueue.h"

#include <malloc.h>

#include <cmath>
#include <string>

using namespace testing_support;

namespace {

double heapBytes()
{
    return static_cast<double>(mallinfo2().uordblks + mallinfo2().hblkhd);
}

/// One mode, and what a stroke in it may keep per selected vertex.
struct Mode {
    const char* name;
    const char* deformer; ///< MEL; deforms `sheet`
    const char* flags;
    double mostBytes;
};

const Mode kModes[] = {
    {"skinCluster",
     "string $js[]; int $i; for ($i = 0; $i < 120; ++$i) { select -cl;"
     "$js[$i] = `joint -n (\"j\" + $i) -p ($i % 12 - 5.5) 0 ($i / 12 * 0.5 - 2.5)`; }"
     "skinCluster -tsb -mi 4 -dr 4 -n skin $js sheet; setAttr j11.translateY 8",
     "-weightMode skinCluster -influence j11", 64},
    {"dualQuaternion",
     "select -cl; joint -n hip -p -5 0 0; joint -n knee -p 0 0 0; skinCluster -tsb -mi 2 -n skin hip knee "
     "sheet;"
     "setAttr skin.skinningMethod 2; setAttr knee.rotateX 100",
     "-weightMode dualQuaternion", 16},
    {"default", "cluster -n clu sheet; setAttr cluHandle.translateY 3", "-deformer clu -weightMode default",
     16},
};

class StrokeMemory : public ToolTest, public ::testing::WithParamInterface<Mode> {
public:
    /// Strokes, undo of all, a new scene. `columns` by half as many vertices, all selected.
    void expectModest(int columns, int most)
    {
        const int count = columns * columns / 2;
        makeScene(columns);
        strokes(count, 4);
        anotherScene(columns); // what a tool holds of the scene before is there from here on
        const double before = heapBytes();
        if (before == 0.0)
            GTEST_SKIP() << "the allocator does not count";
        strokes(count, 4); // what is made once
        const double begun = heapBytes();
        const std::size_t entries = session.undo().undoCount();
        strokes(count, most);
        ASSERT_EQ(session.undo().undoCount(), entries + static_cast<std::size_t>(most));
        const double kept = (heapBytes() - begun) / most / count;
        RecordProperty("bytesPerVertex", std::to_string(kept));
        EXPECT_LT(kept, GetParam().mostBytes) << "bytes per vertex and stroke";
        for (int k = 0; k < most + 4; ++k)
            mel("undo");
        anotherScene(columns);
        EXPECT_LT(heapBytes(), before * 1.05);
    }

private:
    void strokes(int count, int number)
    {
        const int columns = static_cast<int>(std::lround(std::sqrt(2.0 * count)));
        const Pixel at = pixelOf("sheet.vtx[" + std::to_string(count / 2 + columns / 2) + "]");
        for (int k = 0; k < number; ++k) {
            const int dy = k % 2 == 0 ? 3 : -3;
            press(at);
            drag({at.x, at.y + dy});
            drag({at.x, at.y + 2 * dy});
            release({at.x, at.y + 2 * dy});
        }
        trace = {};
    }
    void anotherScene(int columns)
    {
        mel("file -f -new");
        makeScene(columns);
        trace = {};
    }
    void makeScene(int columns)
    {
        mel("undoInfo -state on -infinity on");
        mel("polyPlane -n sheet -w 10 -h 5 -ch 0 -sx " + std::to_string(columns - 1) + " -sy " +
            std::to_string(columns / 2 - 1) + "; setAttr persp.rotate -type double3 -55 12 0");
        mel(GetParam().deformer);
        mel("viewFit sheet");
        edit(std::string(GetParam().flags) + " -displayWeights false");
        toolOn();
        mel("select sheet.vtx[*]");
    }
};

INSTANTIATE_TEST_SUITE_P(Modes, StrokeMemory, ::testing::ValuesIn(kModes),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(StrokeMemory, IsWhatUndoNeedsAndComesBack)
{
    expectModest(80, 20);
}

/// Run by hand: --gtest_also_run_disabled_tests.
TEST_P(StrokeMemory, DISABLED_OfAWorkingDay)
{
    expectModest(200, 1000);
}

} // namespace
