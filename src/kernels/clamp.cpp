#include "kernels/clamp.h"

#include <algorithm>
#include <limits>

namespace {

/// Values per block: doubles are worked out for a whole block and narrowed afterwards. A loop that does both
/// at once is compiled to branches, which mispredict on weights.
constexpr std::size_t kBlock = 256;

struct Bounds {
    double lower;
    double upper;
};

/// A clamp that is off becomes an infinite bound, so that the loops have no condition inside.
Bounds boundsOf(const ClampSettings& clamps)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    return {clamps.clampedMin ? clamps.weightMin : -kInfinity,
            clamps.clampedMax ? clamps.weightMax : kInfinity};
}

double atLeast(double value, double lower)
{
    return value < lower ? lower : value;
}

double atMost(double value, double upper)
{
    return upper < value ? upper : value;
}

template <typename Weight>
void offsetBlock(const Weight* old, const float* soft, std::size_t count, double offset, double* block)
{
    for (std::size_t k = 0; k < count; ++k)
        block[k] = static_cast<double>(old[k]) + offset * static_cast<double>(soft[k]);
}

void liveClampBlock(std::size_t count, Bounds bounds, double* block)
{
    for (std::size_t k = 0; k < count; ++k)
        block[k] = atMost(atLeast(block[k], bounds.lower), bounds.upper);
}

/// Redo keeps narrowed values between its steps. Narrowing never swaps two values and twice is once, so that
/// narrowing the last step alone gives the same to the bit.
void redoClampBlock(std::size_t count, Bounds bounds, double* block)
{
    for (std::size_t k = 0; k < count; ++k)
        block[k] = atLeast(atMost(block[k], bounds.upper), bounds.lower);
}

template <typename Weight>
void storeBlock(const double* block, std::size_t count, Weight* result)
{
    for (std::size_t k = 0; k < count; ++k)
        result[k] = static_cast<Weight>(block[k]);
}

template <typename Old, typename Weight, typename ClampBlock>
void offsetBlocks(const Old* old, const float* soft, std::size_t count, double offset,
                  const ClampSettings& clamps, ClampBlock clampBlock, Weight* result)
{
    const Bounds bounds = boundsOf(clamps);
    double block[kBlock];
    for (std::size_t first = 0; first < count; first += kBlock) {
        const std::size_t length = std::min(kBlock, count - first);
        offsetBlock(old + first, soft + first, length, offset, block);
        clampBlock(length, bounds, block);
        storeBlock(block, length, result + first);
    }
}

/// Doubles are worked out where they belong.
template <typename Old, typename ClampBlock>
void offsetBlocks(const Old* old, const float* soft, std::size_t count, double offset,
                  const ClampSettings& clamps, ClampBlock clampBlock, double* result)
{
    const Bounds bounds = boundsOf(clamps);
    for (std::size_t first = 0; first < count; first += kBlock) {
        const std::size_t length = std::min(kBlock, count - first);
        offsetBlock(old + first, soft + first, length, offset, result + first);
        clampBlock(length, bounds, result + first);
    }
}

} // namespace

ClampSettings unitClamp()
{
    return {true, true, 0.0, 1.0};
}

void offsetLive(const float* old, const float* soft, std::size_t count, double offset,
                const ClampSettings& clamps, float* result)
{
    offsetBlocks(old, soft, count, offset, clamps, liveClampBlock, result);
}

void offsetLive(const double* old, const float* soft, std::size_t count, double offset,
                const ClampSettings& clamps, double* result)
{
    offsetBlocks(old, soft, count, offset, clamps, liveClampBlock, result);
}

void offsetLive(const float* old, const float* soft, std::size_t count, double offset,
                const ClampSettings& clamps, double* result)
{
    offsetBlocks(old, soft, count, offset, clamps, liveClampBlock, result);
}

void offsetRedo(const float* old, const float* soft, std::size_t count, double offset,
                const ClampSettings& clamps, float* result)
{
    offsetBlocks(old, soft, count, offset, clamps, redoClampBlock, result);
}

void offsetRedo(const double* old, const float* soft, std::size_t count, double offset,
                const ClampSettings& clamps, double* result)
{
    offsetBlocks(old, soft, count, offset, clamps, redoClampBlock, result);
}

double offsetUnit(double old, double soft, double offset)
{
    return atMost(atLeast(old + offset * soft, 0.0), 1.0);
}
