// How the other influences of a layer change when one is edited.
#include "kernels/redistribution.h"

#include <gtest/gtest.h>
#include <random>

namespace {

/// Three influences on one vertex, with the worked values 0.2, 0.3 and 0.5.
InfluenceTable threeInfluences()
{
    return {{{0.2}, {0.3}, {0.5}}, {0, 1, 2}};
}

double valueAfter(const InfluenceTable& table, const std::vector<std::vector<double>>& changed,
                  std::size_t row, std::size_t vertex)
{
    return changed[row].empty() ? table.rows[row][vertex] : changed[row][vertex];
}

} // namespace

TEST(Redistribution, ARiseBeyondOneLetsTheOthersGrowWhetherOrNotTheyAreToShare)
{
    const InfluenceTable table = threeInfluences();
    for (bool distribute : {false, true}) {
        const auto changed = redistribute(table, 2, {0.7}, distribute);
        EXPECT_DOUBLE_EQ(valueAfter(table, changed, 0, 0), 0.28);
        EXPECT_DOUBLE_EQ(valueAfter(table, changed, 1, 0), 0.42);
        EXPECT_TRUE(changed[2].empty()) << "the edited influence is the caller's";
    }
    const InfluenceTable light = {{{0.1}, {0.1}, {0.2}}, {0, 1, 2}};
    for (const auto& row : redistribute(light, 2, {0.6}, true))
        EXPECT_TRUE(row.empty()) << "the sum stays below one";
}

TEST(Redistribution, AFallIsHandedOnOnlyWhenAsked)
{
    const InfluenceTable table = threeInfluences();
    const auto handed = redistribute(table, 2, {0.3}, true);
    EXPECT_DOUBLE_EQ(valueAfter(table, handed, 0, 0), 0.28);
    EXPECT_DOUBLE_EQ(valueAfter(table, handed, 1, 0), 0.42);
    for (const auto& row : redistribute(table, 2, {0.3}, false))
        EXPECT_TRUE(row.empty());
    const InfluenceTable alone = {{{0.0}, {0.0}, {0.5}}, {0, 1, 2}};
    for (const auto& row : redistribute(alone, 2, {0.3}, true))
        EXPECT_TRUE(row.empty()) << "there is no share to go by";
}

TEST(Redistribution, FollowsTheRuleVertexByVertexOnRandomWeights)
{
    std::mt19937 random(4);
    std::uniform_real_distribution<double> weight(0.0, 1.0);
    constexpr std::size_t kInfluences = 5, kVertices = 400;
    for (unsigned int edited = 0; edited < kInfluences; ++edited) {
        InfluenceTable table;
        std::vector<double> newWeights(kVertices);
        for (std::size_t row = 0; row < kInfluences; ++row) {
            table.rows.emplace_back(kVertices);
            table.logicalIndices.push_back(static_cast<int>(row));
            for (double& value : table.rows[row])
                value = random() % 4 == 0 ? 0.0 : weight(random) / 2.0;
        }
        for (std::size_t v = 0; v < kVertices; ++v)
            newWeights[v] = v % 5 == 0 ? table.rows[edited][v] : weight(random);
        const bool distribute = edited % 2 == 0;
        const auto changed = redistribute(table, edited, newWeights, distribute);
        for (std::size_t v = 0; v < kVertices; ++v) {
            double others = -table.rows[edited][v];
            for (std::size_t row = 0; row < kInfluences; ++row)
                others += table.rows[row][v];
            // The common factor of all other influences at this vertex.
            double factor = 1.0;
            if (newWeights[v] > table.rows[edited][v] && others + newWeights[v] > 1.0)
                factor = 1.0 + (others + newWeights[v] - 1.0) / others;
            else if (newWeights[v] < table.rows[edited][v] && distribute && others > 1e-12)
                factor = 1.0 + (table.rows[edited][v] - newWeights[v]) / others;
            for (std::size_t row = 0; row < kInfluences; ++row) {
                if (row != edited) {
                    ASSERT_NEAR(valueAfter(table, changed, row, v), table.rows[row][v] * factor, 1e-12)
                        << "influence " << row << " vertex " << v;
                }
            }
        }
    }
}

TEST(Redistribution, RefusesLogicalIndicesThatAreNoPositions)
{
    InfluenceTable table = threeInfluences();
    EXPECT_TRUE(canRedistribute(table, 2, 1));
    EXPECT_FALSE(canRedistribute(table, 3, 1));
    EXPECT_FALSE(canRedistribute(table, 2, 2)) << "one value more than vertices";
    table.logicalIndices = {0, 1, 4};
    EXPECT_FALSE(canRedistribute(table, 1, 1));
    table.logicalIndices = {0, 1};
    EXPECT_FALSE(canRedistribute(table, 1, 1));
}
