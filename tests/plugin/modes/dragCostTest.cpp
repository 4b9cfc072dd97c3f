// What a drag event costs beside its arithmetic: nothing is allocated for every vertex. What presses leave
// behind.
#include "plugin/modes/modeScene.h"

#include "undo/undoQueue.h"

#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::atomic<long> allocations{0};
std::atomic<long> heldBytes{0};

void* allocated(std::size_t size) noexcept
{
    ++allocations;
    void* const memory = std::malloc(size ? size : 1);
    heldBytes += static_cast<long>(malloc_usable_size(memory));
    return memory;
}

void* counted(std::size_t size)
{
    if (void* memory = allocated(size))
        return memory;
    throw std::bad_alloc();
}

void freed(void* memory) noexcept
{
    heldBytes -= static_cast<long>(malloc_usable_size(memory));
    std::free(memory);
}

} // namespace

// These serve the host and the plug-in as well.
void* operator new(std::size_t size)
{
    return counted(size);
}
void* operator new[](std::size_t size)
{
    return counted(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return allocated(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return allocated(size);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    freed(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept
{
    freed(memory);
}
void operator delete(void* memory) noexcept
{
    freed(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    freed(memory);
}
void operator delete[](void* memory) noexcept
{
    freed(memory);
}
void operator delete[](void* memory, std::size_t) noexcept
{
    freed(memory);
}

using namespace testing_support;

namespace {

struct CostRow {
    const char* mode;
    const char* flags;
};

void PrintTo(const CostRow& row, std::ostream* out)
{
    *out << row.mode;
}

class DragCost : public ToolTest, public ::testing::WithParamInterface<CostRow> {
public:
    /// Allocations of the third drag event of a stroke on all vertices of a sheet of n x n squares.
    long allocationsFor(int squares)
    {
        const std::string n = std::to_string(squares);
        mel("file -f -new; polyPlane -n sheet -w 10 -h 10 -sx " + n + " -sy " + n +
            " -ch 0; polyPlane -n smile -w 10 -h 10 -sx " + n + " -sy " + n +
            " -ch 0; move -r 0 2 0 smile.vtx[*]; blendShape -n face -w 0 1 smile sheet; delete smile;"
            "maskedOffset -n lift -o 0 2 0 sheet; select -cl; joint -n hip -p -3 0 0; joint -n knee -p 1 0 0;"
            "skinCluster -tsb -mi 2 -n skin hip knee sheet; setAttr skin.skinningMethod 2;"
            "setAttr knee.translateY 2; setAttr knee.rotateX 70;"
            "viewFit sheet; selectPref -preSelectHilite false; select sheet.vtx[*]");
        edit(std::string("-displayWeights false -clampMin false -weightMode ") + GetParam().mode + " " +
             GetParam().flags);
        toolOn();
        const Pixel from = pixelOf("sheet.vtx[0]");
        press(from);
        drag({from.x + 3, from.y + 8});
        drag({from.x + 4, from.y + 9});
        const long before = allocations;
        drag({from.x + 5, from.y + 10});
        const long spent = allocations - before;
        release({from.x + 5, from.y + 10});
        EXPECT_EQ(melString("undoInfo -q -undoName").find("morvaneToolCmd sculpt "), 0u);
        return spent;
    }
};

INSTANTIATE_TEST_SUITE_P(Modes, DragCost,
                         ::testing::Values(CostRow{"default", "-deformer lift"},
                                           CostRow{"plug", "-deformer lift -plug mask"},
                                           CostRow{"skinCluster", "-influence knee"},
                                           CostRow{"dualQuaternion", "-deformer skin"},
                                           CostRow{"blendShapeTarget", "-deformer face -target smile"},
                                           CostRow{"blendShapeBase", "-deformer face"}));

TEST_P(DragCost, DoesNotGrowByAllocationsPerVertex)
{
    const long few = allocationsFor(6), many = allocationsFor(60);
    // Thousands more vertices may take a few more blocks, none each.
    EXPECT_LE(many, few + 40) << few << " for 49 vertices";
    EXPECT_GT(few, 0);
}

// Who deletes a tool command that is never finalised is the platform's affair: it must be empty.
TEST_F(ToolTest, PressesWithoutAStrokeKeepNoMemory)
{
    mel("polyPlane -n sheet -w 10 -h 10 -sx 60 -sy 60 -ch 0; maskedOffset -n lift -o 0 2 0 sheet; viewFit "
        "sheet");
    edit("-deformer lift");
    toolOn();
    mel("select sheet.vtx[*]");
    const Pixel at = pixelOf("sheet.vtx[1800]");
    const auto presses = [&](int count) {
        for (int k = 0; k < count; ++k) {
            press(at);
            release(at);
            trace.clear();
        }
    };
    presses(100);
    const long before = heldBytes;
    presses(2000);
    // What a press knows of 3,721 selected points takes more than ten times that.
    EXPECT_LT(heldBytes - before, 2000 * 4000);
    EXPECT_EQ(melString("undoInfo -q -undoName"), "select \"sheet.vtx[*]\"");
}

} // namespace
