#include "graph/weightRows.h"
#include "sceneParts.h"
#include "selection/component.h"
#include "session.h"
#include "types/api.h"

#include <maya/MDagPath.h>
#include <maya/MDagPathArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MFloatArray.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MFnWeightGeometryFilter.h>
#include <maya/MIntArray.h>
#include <maya/MItGeometry.h>
#include <maya/MObjectArray.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

namespace {

using namespace testing_support;
using host::Api;

std::vector<double> plain(const MDoubleArray& array)
{
    std::vector<double> values;
    for (unsigned i = 0; i < array.length(); ++i)
        values.push_back(array[i]);
    return values;
}

class Weights : public ::testing::Test {
public:
    Weights() : parts(session.graph()), shape(parts.mesh({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}})) {}

    MObject points(const std::vector<int>& ids) { return Api::wrap(host::pointComponent(shape, ids).get()); }
    MDagPath path() { return Api::path(&shape); }

    host::Session session;
    SceneParts parts;
    host::DagNode& shape;
};

/// Three influences at the logical indices 1, 4 and 6.
class SkinWeights : public Weights {
public:
    SkinWeights()
    {
        for (const char* name : {"a", "b", "c"})
            joints.push_back(&parts.dag("joint", name));
        node = &parts.skin(shape, joints, {1, 4, 6});
        skin.setObject(Api::wrap(node));
        const double rows[4][3] = {{0.5, 0.25, 0.25}, {1, 0, 0}, {0.2, 0.2, 0.6}, {0, 0, 0}};
        for (std::uint32_t point = 0; point < 4; ++point)
            for (std::size_t i = 0; i < 3; ++i)
                if (rows[point][i] != 0.0)
                    node->plug("weightList").makeRows().set(point, logical[i], rows[point][i]);
        node->plug("weightList").changed();
    }

    std::vector<double> row(int point)
    {
        MDoubleArray weights;
        unsigned count = 0;
        EXPECT_TRUE(skin.getWeights(path(), points({point}), weights, count));
        EXPECT_EQ(count, 3u);
        return plain(weights);
    }

    void lock(unsigned logicalIndex) { node->plug("lockWeights").element(logicalIndex).setNumber(1.0); }

    MStatus write(const std::vector<int>& ids, std::vector<int> influences, std::vector<double> values,
                  bool normalize = true, MDoubleArray* old = nullptr)
    {
        MIntArray which(influences.data(), static_cast<unsigned>(influences.size()));
        MDoubleArray what(values.data(), static_cast<unsigned>(values.size()));
        return skin.setWeights(path(), points(ids), which, what, normalize, old);
    }

    std::vector<host::DagNode*> joints;
    const unsigned logical[3] = {1, 4, 6};
    host::Node* node = nullptr;
    MFnSkinCluster skin;
};

using Row = std::vector<double>;

void expectRow(const Row& got, const Row& wanted)
{
    ASSERT_EQ(got.size(), wanted.size());
    for (std::size_t i = 0; i < got.size(); ++i)
        EXPECT_NEAR(got[i], wanted[i], 1e-15) << i;
}

TEST_F(SkinWeights, InfluencesArePhysicalInWeightsAndLogicalOnlyWhenAskedFor)
{
    MDagPathArray influences;
    EXPECT_EQ(skin.influenceObjects(influences), 3u);
    EXPECT_EQ(Api::node(influences[1]), joints[1]);
    MStatus status;
    EXPECT_EQ(skin.indexForInfluenceObject(influences[2], &status), 6u);
    EXPECT_TRUE(status);
    skin.indexForInfluenceObject(path(), &status);
    EXPECT_EQ(status, MStatus::kFailure);

    MDoubleArray weights;
    unsigned count = 0;
    ASSERT_TRUE(skin.getWeights(path(), points({2, 0}), weights, count)); // component order
    EXPECT_EQ(plain(weights), (Row{0.2, 0.2, 0.6, 0.5, 0.25, 0.25}));
    MIntArray some;
    some.append(2);
    some.append(0);
    ASSERT_TRUE(skin.getWeights(path(), points({0, 1}), some, weights));
    EXPECT_EQ(plain(weights), (Row{0.25, 0.5, 0, 1}));
    ASSERT_TRUE(skin.getWeights(path(), MObject(), 1u, weights)); // all points
    EXPECT_EQ(plain(weights), (Row{0.25, 0, 0.2, 0}));
    EXPECT_EQ(skin.getWeights(path(), MObject(), 3u, weights), MStatus::kFailure);

    session.graph().disconnect(joints[1]->plug("worldMatrix").element(0), node->plug("matrix").element(4));
    EXPECT_EQ(skin.influenceObjects(influences), 2u);
    ASSERT_TRUE(skin.getWeights(path(), points({2}), weights, count));
    EXPECT_EQ(plain(weights), (Row{0.2, 0.6}));
}

TEST_F(SkinWeights, WritingMakesRoomAmongTheUnlockedOthers)
{
    MDoubleArray old;
    ASSERT_TRUE(write({0, 2}, {0}, {0.8}, true, &old));
    EXPECT_EQ(plain(old), (Row{0.5, 0.25, 0.25, 0.2, 0.2, 0.6}));
    expectRow(row(0), {0.8, 0.1, 0.1});
    expectRow(row(2), {0.8, 0.05, 0.15});

    lock(4);
    ASSERT_TRUE(write({2}, {0}, {0.2}));
    expectRow(row(2), {0.2, 0.05, 0.75});
    ASSERT_TRUE(write({2}, {1}, {0.3})); // a locked influence itself may be written
    expectRow(row(2), {0.2 * 0.7 / 0.95, 0.3, 0.75 * 0.7 / 0.95});
    ASSERT_TRUE(write({2}, {0}, {2.0})); // nothing is left for the others, the locked one stays
    expectRow(row(2), {2.0, 0.3, 0.0});
    ASSERT_TRUE(write({1}, {0}, {0.4})); // nobody there to take the rest
    expectRow(row(1), {0.4, 0, 0});
}

TEST_F(SkinWeights, ListedInfluencesGetExactlyWhatWasAskedPerPointAndZeroIsNotStored)
{
    ASSERT_TRUE(write({0, 1}, {0, 2}, {0.1, 0.3, 0.0, 0.7}));
    expectRow(row(0), {0.1, 0.6, 0.3});
    expectRow(row(1), {0.0, 0.0, 0.7});
    EXPECT_FALSE(node->plug("weightList").rows()->has(1, 1));

    node->plug("normalizeWeights").setNumber(0.0);
    ASSERT_TRUE(write({0}, {0}, {0.9}));
    expectRow(row(0), {0.9, 0.6, 0.3});
    node->plug("normalizeWeights").setNumber(1.0);
    ASSERT_TRUE(write({0}, {0}, {0.2}, false));
    expectRow(row(0), {0.2, 0.6, 0.3});
}

TEST_F(SkinWeights, WrongCallsWriteNothing)
{
    const auto unchanged = [&] { return row(0) == Row{0.5, 0.25, 0.25} && row(1) == Row{1, 0, 0}; };
    EXPECT_EQ(write({0, 1}, {0, 1}, {0.5, 0.5, 0.5}), MStatus::kFailure);
    EXPECT_EQ(write({0, 1}, {3}, {0.5}), MStatus::kFailure);
    EXPECT_EQ(write({0, 1}, {-1}, {0.5}), MStatus::kFailure);
    EXPECT_TRUE(unchanged());
    node->plug("weightList").setLocked(true);
    EXPECT_EQ(write({0}, {0}, {0.5}), MStatus::kFailure);
    node->plug("weightList").setLocked(false);
    EXPECT_TRUE(unchanged());

    MDagPath elsewhere = Api::path(&parts.mesh({{0, 0, 0}}, "other"));
    MDoubleArray weights;
    unsigned count = 0;
    EXPECT_EQ(skin.getWeights(elsewhere, MObject(), weights, count), MStatus::kFailure);
    EXPECT_EQ(skin.getWeights(MDagPath(), MObject(), weights, count), MStatus::kFailure);
    session.graph().remove(*node);
    EXPECT_EQ(skin.getWeights(path(), MObject(), weights, count), MStatus::kFailure);
    EXPECT_EQ(write({0}, {0}, {0.5}), MStatus::kFailure);
}

TEST_F(SkinWeights, BlendWeightsUseAsManyAsBothSidesHave)
{
    MDoubleArray values;
    values.append(0.5);
    values.append(0.75);
    ASSERT_TRUE(skin.setBlendWeights(path(), points({3, 1, 0}), values));
    MDoubleArray got;
    ASSERT_TRUE(skin.getBlendWeights(path(), points({0, 1, 2, 3}), got));
    EXPECT_EQ(plain(got), (Row{0, 0.75, 0, 0.5}));
}

/// The rule for one row, whatever way the host goes.
Row written(Row row, const std::vector<int>& influences, const double* values, bool normalize,
            const std::vector<bool>& locked)
{
    std::vector<bool> listed(row.size(), false);
    for (std::size_t i = 0; i < influences.size(); ++i) {
        row[static_cast<std::size_t>(influences[i])] = values[i];
        listed[static_cast<std::size_t>(influences[i])] = true;
    }
    double fixed[2] = {0, 0}, others = 0;
    for (std::size_t k = 0; k < row.size(); ++k)
        (listed[k] ? fixed[0] : locked[k] ? fixed[1] : others) += row[k];
    for (std::size_t k = 0; normalize && others > 0 && k < row.size(); ++k)
        if (!listed[k] && !locked[k])
            row[k] *= std::max(0.0, 1.0 - fixed[0] - fixed[1]) / others;
    return row;
}

/// Rows are full, sparse, and change between these.
TEST_F(Weights, RandomWritesToSkinsOfAnySizeFollowTheRuleToTheLastBit)
{
    constexpr std::size_t kPoints = 160;
    std::mt19937 random(11);
    for (const std::uint32_t size : {1u, 2u, 3u, 5u, 9u, 40u}) {
        std::vector<host::DagNode*> joints;
        std::vector<std::uint32_t> logical;
        for (std::uint32_t k = 0; k < size; ++k) {
            joints.push_back(&parts.dag("joint", "joint" + std::to_string(size) + std::to_string(k)));
            logical.push_back(2 * k + 1);
        }
        host::DagNode& mesh = parts.mesh(host::Points(kPoints, {0, 0, 0}), "mesh" + std::to_string(size));
        host::Node& node = parts.skin(mesh, joints, logical);
        MFnSkinCluster skin(Api::wrap(&node));
        std::vector<Row> model(kPoints, Row(size, 0.0));
        std::vector<int> every(kPoints);
        std::iota(every.begin(), every.end(), 0);
        std::vector<bool> locked(size, false);
        for (int round = 0; round < 200; ++round) {
            if (random() % 40 == 0) {
                const std::uint32_t which = random() % size;
                locked[which] = !locked[which];
                node.plug("lockWeights").element(logical[which]).setNumber(locked[which] ? 1.0 : 0.0);
            }
            std::vector<int> influences(size);
            std::iota(influences.begin(), influences.end(), 0);
            if (random() % 3 != 0) {
                std::shuffle(influences.begin(), influences.end(), random);
                influences.resize(random() % 2 == 0 ? 1 : 1 + random() % size);
            }
            const std::vector<int> ids = random() % 3 != 0 ? every : std::vector<int>{7, 0, 150, 151};
            const bool each = random() % 3 != 0, normalize = random() % 4 != 0, zeros = random() % 3 == 0;
            std::vector<double> values(influences.size() * (each ? ids.size() : 1));
            for (double& value : values)
                value = zeros && random() % 6 == 0 ? static_cast<double>(random() % 2)
                                                   : (1 + random() % 999) / 1000.0;
            for (std::size_t i = 0; i < ids.size(); ++i) {
                Row& row = model[static_cast<std::size_t>(ids[i])];
                row = written(row, influences, &values[each ? i * influences.size() : 0], normalize, locked);
            }
            MIntArray which(influences.data(), static_cast<unsigned>(influences.size()));
            MDoubleArray what(values.data(), static_cast<unsigned>(values.size()));
            ASSERT_TRUE(skin.setWeights(Api::path(&mesh), Api::wrap(host::pointComponent(mesh, ids).get()),
                                        which, what, normalize));
            MDoubleArray read;
            unsigned count = 0;
            ASSERT_TRUE(skin.getWeights(Api::path(&mesh), MObject(), read, count));
            const host::WeightRows& rows = *node.plug("weightList").rows();
            for (std::uint32_t point = 0; point < kPoints; ++point)
                for (std::uint32_t k = 0; k < size; ++k) {
                    const double weight = model[point][k];
                    ASSERT_EQ(read[point * size + k], weight) << size << " " << round;
                    ASSERT_EQ(rows.has(point, logical[k]), weight != 0.0);
                }
        }
    }
}

class ClusterWeights : public Weights {
public:
    ClusterWeights() : node(parts.node("cluster")), made(parts.deform(shape, node, 2))
    {
        filter.setObject(Api::wrap(&node));
    }

    host::Node& node;
    SceneParts::Deformed made;
    MFnWeightGeometryFilter filter;
};

TEST_F(ClusterWeights, MissingWeightsAreOneAndOrderIsThatOfTheComponent)
{
    MFloatArray weights;
    const MObject some = points({3, 0});
    ASSERT_TRUE(filter.getWeights(path(), some, weights));
    ASSERT_EQ(weights.length(), 2u);
    EXPECT_EQ(weights[0], 1.0f);
    EXPECT_EQ(node.plugByPath("weightList[2].weights").numElements(), 0u);

    MFloatArray values;
    values.append(0.25f);
    values.append(0.5f);
    ASSERT_TRUE(filter.setWeight(path(), some, values));
    EXPECT_EQ(node.plugByPath("weightList[2].weights[3]").number(), 0.25);
    MFloatArray old;
    ASSERT_TRUE(filter.setWeight(path(), 2u, points({0, 1}), 0.125f, &old));
    EXPECT_EQ(old[0], 0.5f);
    EXPECT_EQ(old[1], 1.0f);
    ASSERT_TRUE(filter.getWeights(2u, MObject(), weights));
    EXPECT_EQ(weights[0], 0.125f);
    EXPECT_EQ(weights[2], 1.0f);

    values.append(1.0f);
    EXPECT_EQ(filter.setWeight(path(), some, values), MStatus::kFailure);
    EXPECT_EQ(filter.getWeights(0u, MObject(), weights), MStatus::kFailure);
}

TEST_F(ClusterWeights, ShapesAreFoundThroughHistory)
{
    MFnGeometryFilter geometry(Api::wrap(&node));
    MObjectArray shapes;
    ASSERT_TRUE(geometry.getOutputGeometry(shapes));
    ASSERT_EQ(shapes.length(), 1u);
    EXPECT_EQ(Api::node(shapes[0]), &shape);
    MStatus status;
    EXPECT_EQ(Api::node(geometry.inputShapeAtIndex(2, &status)), &made.original);
    EXPECT_EQ(geometry.indexForOutputShape(Api::wrap(&shape), &status), 2u);
    EXPECT_TRUE(status);
    geometry.indexForOutputShape(Api::wrap(&made.original), &status);
    EXPECT_EQ(status, MStatus::kFailure);
    geometry.indexForOutputShape(Api::wrap(shape.parent()), &status);
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    EXPECT_TRUE(geometry.outputShapeAtIndex(0, &status).isNull());
    EXPECT_EQ(status, MStatus::kFailure);
    EXPECT_TRUE(geometry.deformerSet(&status).isNull());
    EXPECT_EQ(status, MStatus::kFailure);
    const MObject all = geometry.getComponentAtIndex(2, &status);
    EXPECT_TRUE(status);
    EXPECT_EQ(dynamic_cast<const host::Component*>(Api::object(all))->count(), 4u);

    MFnSkinCluster wrong(Api::wrap(&node), &status);
    EXPECT_FALSE(status);
    EXPECT_FALSE(Api::wrap(parts.dag("joint").asDag()).hasFn(MFn::kGeometryFilt));
}

TEST_F(ClusterWeights, IteratorGivesDeformedPointsAndMovesThemByTweaks)
{
    parts.set(*shape.parent(), "t", {0, 0, 10});
    Imath::M44d up;
    up.setTranslation(Imath::V3d(0, 5, 0));
    node.plug("matrix").setMatrix(up);
    MObject some = points({3, 1});
    MItGeometry walk(path(), some);
    ASSERT_EQ(walk.count(), 2);
    EXPECT_EQ(walk.index(), 3);
    EXPECT_TRUE(walk.position().isEquivalent(MPoint(3, 5, 0)));
    EXPECT_TRUE(walk.position(MSpace::kWorld).isEquivalent(MPoint(3, 5, 10)));
    walk.next();
    EXPECT_EQ(walk.index(), 1);
    ASSERT_TRUE(walk.setPosition(MPoint(1, 6, 12), MSpace::kWorld));
    EXPECT_TRUE(walk.position().isEquivalent(MPoint(1, 6, 2)));
    walk.next();
    EXPECT_TRUE(walk.isDone());
    MStatus status;
    walk.position(MSpace::kObject, &status);
    EXPECT_EQ(status, MStatus::kFailure);

    MObject handle = Api::wrap(&shape);
    MItGeometry loose(handle);
    EXPECT_EQ(loose.count(), 4);
    loose.position(MSpace::kWorld, &status);
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    session.graph().remove(*shape.parent());
    EXPECT_FALSE(loose.setPosition(MPoint()));
}

} // namespace
