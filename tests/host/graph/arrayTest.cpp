#include "graphFixture.h"

#include "graph/weightRows.h"

#include <algorithm>
#include <array>
#include <map>
#include <random>

using namespace host;

/// Against a plain map, with indices that lie densely, sparsely and far out.
TEST(NumericArrays, BehaveAsAMapWithADefault)
{
    std::mt19937 random(7);
    NumericArray array(1.0, true);
    std::map<std::uint32_t, double> model;
    for (int round = 0; round < 20000; ++round) {
        const std::uint32_t range = round % 3 == 0 ? 50u : round % 3 == 1 ? 6000u : 4000000u;
        const std::uint32_t index = random() % range;
        if (random() % 4 == 0) {
            array.erase(index);
            model.erase(index);
        } else {
            const double value = static_cast<double>(static_cast<float>(random() % 1000) / 7.0f);
            array.set(index, value);
            model[index] = value;
        }
    }
    ASSERT_EQ(array.size(), model.size());
    EXPECT_EQ(array.logicalEnd(), model.rbegin()->first + 1);
    const std::vector<std::uint32_t> indices = array.indices();
    std::size_t rank = 0;
    for (const auto& entry : model) {
        ASSERT_EQ(indices[rank], entry.first);
        ASSERT_EQ(array.get(entry.first), entry.second);
        if (rank % 101 == 0) {
            ASSERT_EQ(array.logicalOfPhysical(rank), entry.first);
        }
        ++rank;
    }
    EXPECT_EQ(array.get(4000001), 1.0);
    EXPECT_FALSE(array.has(4000001));

    const int ids[] = {3, 500, 90000000};
    const float written[] = {0.25f, 0.5f, 0.75f};
    array.scatter(ids, 3, written);
    double read[3];
    array.gather(ids, 3, read);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(read[i], static_cast<double>(written[i]));
}

/// Blocks are copied as such where the indices follow one another; nobody may notice.
TEST(NumericArrays, ManyElementsAtOnceAreAsOneByOne)
{
    const std::vector<std::vector<int>> lists = {{0, 1, 2, 3}, {40, 41, 42}, {98, 99, 100, 101}, {7},
                                                 {7, 6, 5},    {5, 5, 6},    {10, 11, 13, 12},   {}};
    for (const bool single : {true, false}) {
        NumericArray array(1.0, single), oneByOne(1.0, single);
        for (std::uint32_t index = 0; index < 100; index += 3) {
            array.set(index, 0.5);
            oneByOne.set(index, 0.5);
        }
        double next = 0.1;
        for (const std::vector<int>& list : lists) {
            std::vector<double> values;
            for (std::size_t k = 0; k < list.size(); ++k) {
                values.push_back(next += 0.1);
                oneByOne.set(static_cast<std::uint32_t>(list[k]), values.back());
            }
            array.scatter(list.data(), list.size(), values.data());
            ASSERT_EQ(array.indices(), oneByOne.indices());
            ASSERT_EQ(array.size(), oneByOne.size());
            std::vector<float> read(list.size());
            array.gather(list.data(), list.size(), read.data());
            for (std::size_t k = 0; k < list.size(); ++k)
                ASSERT_EQ(read[k], static_cast<float>(oneByOne.get(static_cast<std::uint32_t>(list[k]))));
            for (std::uint32_t index = 0; index < 110; ++index)
                ASSERT_EQ(array.get(index), oneByOne.get(index));
        }
    }
}

TEST(SkinWeightRows, BehaveAsAMapOfMaps)
{
    std::mt19937 random(3);
    WeightRows rows;
    std::map<std::uint32_t, std::map<std::uint32_t, double>> model;
    for (int round = 0; round < 20000; ++round) {
        const std::uint32_t row = random() % 40;
        const std::uint32_t column = random() % 60;
        const double value = random() % 100 / 10.0;
        switch (random() % 8) {
        case 0:
            rows.erase(row, column);
            if (model.count(row))
                model[row].erase(column);
            break;
        case 1:
            if (random() % 10 == 0) {
                rows.eraseRow(row);
                model.erase(row);
            }
            break;
        case 2: {
            std::map<std::uint32_t, double> entries;
            for (std::uint32_t count = random() % 40; count > 0; --count)
                entries[random() % 60] = value;
            std::vector<double> weights;
            std::vector<std::uint32_t> columns;
            for (const auto& [entryColumn, weight] : entries) {
                columns.push_back(entryColumn);
                weights.push_back(weight);
            }
            rows.assign(row, {weights.data(), columns.data(), columns.size()});
            model[row] = entries;
            break;
        }
        default:
            rows.set(row, column, value);
            model[row][column] = value;
        }
    }
    const WeightRows copy(rows);
    rows.clear();
    ASSERT_EQ(copy.rowCount(), model.size());
    for (std::uint32_t row = 0; row < 41; ++row) {
        ASSERT_EQ(copy.hasRow(row), model.count(row) != 0);
        const WeightRows::Span span = copy.row(row);
        ASSERT_EQ(span.count, model[row].size());
        auto expected = model[row].begin();
        for (const WeightRows::Entry entry : span) {
            EXPECT_EQ(entry.column, expected->first);
            EXPECT_EQ((expected++)->second, entry.weight);
        }
    }
}

TEST_F(GraphTest, MissingElementsReadTheDefaultAndReadingInsideTheHostMakesNone)
{
    make("holder", "h");
    EXPECT_EQ(number("h.weightList[3].weights[100]"), 1);
    EXPECT_EQ(number("h.skin[3].skinWeights[2]"), 0);
    EXPECT_EQ(plug("h.weightList").numElements(), 0u);
    set("h.weightList[3].weights[100]", 0.25);
    EXPECT_EQ(plug("h.weightList").existingIndices(), std::vector<std::uint32_t>{3});
    EXPECT_EQ(plug("h.weightList[3].weights").existingIndices(), std::vector<std::uint32_t>{100});
    EXPECT_EQ(plug("h.weightList[3].weights").numbers()->get(100), 0.25);
    plug("h.weightList[3].weights[7]").touch();
    EXPECT_TRUE(plug("h.weightList[3].weights[7]").exists());
    EXPECT_EQ(number("h.weightList[3].weights[7]"), 1);
    plug("h.weightList[3].weights[100]").unset();
    EXPECT_EQ(number("h.weightList[3].weights[100]"), 1);
    EXPECT_EQ(plug("h.weightList[3].weights").numElements(), 1u);

    set("h.skin[5].skinWeights[2]", 0.75);
    set("h.skin[5].skinWeights[0]", 0.25);
    EXPECT_EQ(plug("h.skin").existingIndices(), std::vector<std::uint32_t>{5});
    EXPECT_EQ(plug("h.skin[5].skinWeights").existingIndices(), (std::vector<std::uint32_t>{0, 2}));
    EXPECT_EQ(plug("h.skin").rows()->get(5, 2), 0.75);
    plug("h.skin[5]").unset();
    EXPECT_EQ(number("h.skin[5].skinWeights[2]"), 0);

    set("h.deep[4].group[2].id", 6);
    EXPECT_EQ(plug("h.deep[4].group").existingIndices(), std::vector<std::uint32_t>{2});
    plug("h.deep[4].group[2]").unset();
    EXPECT_FALSE(plug("h.deep[4].group[2]").exists());
    EXPECT_EQ(number("h.deep[4].group[2].id"), 0);
}

TEST_F(GraphTest, AWholeArrayMayBeReadThroughAConnection)
{
    make("holder", "h");
    make("holder", "k");
    set("h.weightList[1].weights[9]", 0.5);
    connect("h.weightList", "k.weightList");
    EXPECT_EQ(number("k.weightList[1].weights[9]"), 0.5);
    EXPECT_THROW(set("k.weightList[1].weights[9]", 1), Error);
    Imath::M44d moved;
    moved[3][0] = 4;
    plug("h.frame[2]").setMatrix(moved);
    connect("h.frame[2]", "k.frame[0]");
    EXPECT_EQ(plug("k.frame[0]").matrix(), moved);
}
