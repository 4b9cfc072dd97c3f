// Offsetting weights: the live rule, the redo rule, and where they part.
#include "kernels/clamp.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

// More than one block, and not a multiple of it.
constexpr std::size_t kCount = 1000;

struct Weights {
    std::vector<float> old = std::vector<float>(kCount);
    std::vector<float> soft = std::vector<float>(kCount);

    explicit Weights(unsigned seed)
    {
        std::mt19937 random(seed);
        std::uniform_real_distribution<float> weight(-0.5F, 1.5F), falloff(0.0F, 1.0F);
        for (std::size_t k = 0; k < kCount; ++k) {
            old[k] = weight(random);
            soft[k] = falloff(random);
        }
    }
};

std::vector<float> live(const Weights& weights, double offset, const ClampSettings& clamps)
{
    std::vector<float> result(kCount);
    offsetLive(weights.old.data(), weights.soft.data(), kCount, offset, clamps, result.data());
    return result;
}

std::vector<float> redone(const Weights& weights, double offset, const ClampSettings& clamps)
{
    std::vector<float> result(kCount);
    offsetRedo(weights.old.data(), weights.soft.data(), kCount, offset, clamps, result.data());
    return result;
}

/// A rule written step by step, one weight at a time, on plain values.
float liveRule(float old, float soft, double offset, const ClampSettings& clamps)
{
    double value = static_cast<double>(old) + offset * static_cast<double>(soft);
    if (clamps.clampedMin)
        value = std::max(value, clamps.weightMin);
    if (clamps.clampedMax)
        value = std::min(value, clamps.weightMax);
    return static_cast<float>(value);
}

float redoRule(float old, float soft, double offset, const ClampSettings& clamps)
{
    auto value = static_cast<float>(static_cast<double>(old) + offset * static_cast<double>(soft));
    if (clamps.clampedMax)
        value = static_cast<float>(std::min(static_cast<double>(value), clamps.weightMax));
    if (clamps.clampedMin)
        value = static_cast<float>(std::max(static_cast<double>(value), clamps.weightMin));
    return value;
}

} // namespace

TEST(Clamp, LiveAndRedoFollowTheirRulesBitForBit)
{
    const ClampSettings settings[] = {{false, false, 0, 1}, {true, false, 0, 1},    {false, true, 0, 1},
                                      {true, true, 0, 1},   {true, true, 0.8, 0.2}, {true, true, 0.1, 0.7}};
    for (unsigned seed = 1; seed <= 20; ++seed) {
        const Weights weights(seed);
        for (const ClampSettings& clamps : settings) {
            for (double offset : {0.0, 0.3, -0.7, 5.0}) {
                const std::vector<float> now = live(weights, offset, clamps);
                const std::vector<float> again = redone(weights, offset, clamps);
                for (std::size_t k = 0; k < kCount; ++k) {
                    ASSERT_EQ(now[k], liveRule(weights.old[k], weights.soft[k], offset, clamps))
                        << seed << ' ' << k;
                    ASSERT_EQ(again[k], redoRule(weights.old[k], weights.soft[k], offset, clamps))
                        << seed << ' ' << k;
                }
            }
        }
    }
}

TEST(Clamp, RedoReproducesTheLiveStrokeUnlessTheBoundsAreCrossed)
{
    const Weights weights(7);
    for (const ClampSettings& clamps :
         {ClampSettings{true, true, 0.1, 0.7}, ClampSettings{true, false, 0.3, 0.1},
          ClampSettings{false, true, 0.9, 1.0 / 3.0}})
        EXPECT_EQ(live(weights, 0.25, clamps), redone(weights, 0.25, clamps));

    const ClampSettings crossed = {true, true, 0.8, 0.2};
    EXPECT_EQ(live(weights, 0.25, crossed), std::vector<float>(kCount, 0.2F))
        << "live ends at the upper bound";
    EXPECT_EQ(redone(weights, 0.25, crossed), std::vector<float>(kCount, 0.8F))
        << "redo ends at the lower bound";
}

TEST(Clamp, LabelsShowTheWeightBeforeItIsNarrowed)
{
    const Weights weights(3);
    std::vector<double> shown(kCount);
    const ClampSettings clamps = {true, true, 0.1, 0.7};
    offsetLive(weights.old.data(), weights.soft.data(), kCount, 0.4, clamps, shown.data());
    const std::vector<float> written = live(weights, 0.4, clamps);
    for (std::size_t k = 0; k < kCount; ++k)
        ASSERT_EQ(static_cast<float>(shown[k]), written[k]);
    EXPECT_NE(std::count(shown.begin(), shown.end(), 0.7), 0) << "the bound itself, not its nearest float";
}

TEST(Clamp, DoublesMayBeOffsetInPlaceAndLayerWeightsStayBetweenZeroAndOne)
{
    std::vector<double> values = {0.0, 0.25, 0.75, 1.0};
    const std::vector<float> soft = {1.0F, 0.0F, 0.5F, 1.0F};
    offsetLive(values.data(), soft.data(), values.size(), 0.5, unitClamp(), values.data());
    EXPECT_EQ(values, (std::vector<double>{0.5, 0.25, 1.0, 1.0}));
    EXPECT_EQ(offsetUnit(0.5, 1.0, 5.0), 1.0);
    EXPECT_EQ(offsetUnit(0.5, 0.5, -5.0), 0.0);
    EXPECT_EQ(offsetUnit(0.25, 0.5, 0.5), 0.5);
}
