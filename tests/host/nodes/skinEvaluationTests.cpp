#include "graph/weightRows.h"
#include "reference.h"
#include "sceneParts.h"
#include "session.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace testing_support;

reference::Matrix exact(const Imath::M44d& matrix)
{
    reference::Matrix result;
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            result.m[i][j] = reference::Real(matrix[i][j]);
    return result;
}

reference::Vector exact(const Imath::V3d& v)
{
    return {reference::Real(v.x), reference::Real(v.y), reference::Real(v.z)};
}

class SkinEvaluation : public ::testing::Test {
public:
    SkinEvaluation() : parts(session.graph()) {}

    double number(double range) { return std::uniform_real_distribution<double>(-range, range)(engine); }
    Imath::V3d vector(double range) { return {number(range), number(range), number(range)}; }

    /// A tree of joints under a random parent, logical indices with gaps.
    void makeRig(std::size_t count)
    {
        joints.clear();
        logical.clear();
        unsigned next = 0;
        for (std::size_t i = 0; i < count; ++i) {
            host::DagNode* parent = joints.empty() ? nullptr : joints[engine() % joints.size()];
            joints.push_back(&parts.dag("joint", "", parent));
            pose(*joints.back());
            next += 1 + static_cast<unsigned>(engine() % 3);
            logical.push_back(next);
        }
    }

    void pose(host::DagNode& joint)
    {
        parts.set(joint, "t", vector(3));
        parts.set(joint, "r", vector(150));
        parts.set(joint, "s", Imath::V3d(1.0) + vector(0.3));
        parts.set(joint, "jo", vector(90));
    }

    host::Points randomPoints(std::size_t count)
    {
        host::Points points(count);
        for (Imath::V3d& point : points)
            point = vector(10);
        return points;
    }

    /// Rows of one to six influences that sum to 1; every seventh point has none.
    void paint(host::Node& skin, std::size_t points)
    {
        host::WeightRows& rows = skin.plug("weightList").makeRows();
        for (std::uint32_t point = 0; point < points; ++point) {
            if (point % 7 == 3)
                continue;
            std::map<unsigned, double> row;
            double sum = 0.0;
            for (std::size_t i = 0; i < 1 + engine() % 6; ++i)
                row[logical[engine() % logical.size()]] = 0.1 + std::abs(number(1));
            for (const auto& entry : row)
                sum += entry.second;
            for (const auto& entry : row)
                rows.set(point, entry.first, entry.second / sum);
        }
        skin.plug("weightList").changed();
    }

    /// Object space: v * G * sum of w * (B * M) * G^-1 in long double.
    reference::Vector closedForm(host::Node& skin, const Imath::V3d& point, std::uint32_t id)
    {
        const reference::Matrix geometry = exact(skin.plug("geomMatrix").matrix());
        const reference::Vector world = exact(point) * geometry;
        reference::Vector sum{};
        bool any = false;
        for (std::size_t i = 0; i < joints.size(); ++i) {
            const double weight = skin.plug("weightList").rows()->get(id, logical[i]);
            any = any || weight != 0.0;
            const reference::Matrix motion = exact(skin.plug("bindPreMatrix").element(logical[i]).matrix()) *
                                             exact(host::worldMatrix(*joints[i]));
            const reference::Vector moved = world * motion;
            for (std::size_t axis = 0; axis < 3; ++axis)
                sum[axis] += static_cast<reference::Real>(weight) * moved[axis];
        }
        return any ? sum * reference::inverse(geometry) : exact(point);
    }

    host::Session session;
    SceneParts parts;
    std::mt19937 engine{7};
    std::vector<host::DagNode*> joints;
    std::vector<unsigned> logical;
};

TEST_F(SkinEvaluation, LinearSkinningIsTheWeightedSumOfTheInfluencesMotions)
{
    for (const std::size_t count : {1u, 3u, 17u, 50u}) {
        makeRig(count);
        const host::Points points = randomPoints(3000);
        host::DagNode& shape = parts.mesh(points);
        parts.set(*shape.parent(), "t", vector(5));
        parts.set(*shape.parent(), "r", vector(90));
        parts.set(*shape.parent(), "s", {2.0, 0.5, 1.5});
        host::Node& skin = parts.skin(shape, joints, logical);
        paint(skin, points.size());
        const host::GeometryRef bound = host::shapeGeometry(shape);
        for (std::size_t i = 0; i < points.size(); ++i)
            ASSERT_LT((bound->points()[i] - points[i]).length(), 1e-9) << "moved in the bind pose";

        for (host::DagNode* joint : joints)
            pose(*joint);
        const host::GeometryRef posed = host::shapeGeometry(shape);
        double moved = 0.0;
        for (std::uint32_t i = 0; i < points.size(); ++i) {
            const reference::Vector expected = closedForm(skin, points[i], i);
            const double size = std::max(1.0, reference::distance({0, 0, 0}, expected));
            ASSERT_LT(reference::distance(posed->points()[i], expected) / size, 1e-9) << count << " joints";
            moved = std::max(moved, (posed->points()[i] - points[i]).length());
        }
        EXPECT_GT(moved, 1.0);
    }
}

TEST_F(SkinEvaluation, EnvelopeBlendsAndRowsAreNormalizedOnlyAfterwardsWhenAsked)
{
    makeRig(1);
    host::DagNode& shape = parts.mesh({{1, 2, 3}});
    host::Node& skin = parts.skin(shape, joints, logical);
    const Imath::V3d before = host::worldMatrix(*joints[0]).translation();
    skin.plug("weightList").makeRows().set(0, logical[0], 0.5);
    skin.plug("weightList").changed();
    parts.set(*joints[0], "t", before + Imath::V3d(4, 0, 0));
    const auto point = [&] { return host::shapeGeometry(shape)->points()[0]; };
    EXPECT_NEAR((point() - 0.5 * Imath::V3d(5, 2, 3)).length(), 0.0, 1e-12);

    skin.plug("normalizeWeights").setNumber(2.0);
    EXPECT_NEAR((point() - Imath::V3d(5, 2, 3)).length(), 0.0, 1e-12);
    skin.plug("envelope").setNumber(0.25);
    EXPECT_NEAR((point() - Imath::V3d(2, 2, 3)).length(), 0.0, 1e-12);
    skin.plug("envelope").setNumber(0.0);
    EXPECT_EQ(point(), Imath::V3d(1, 2, 3));
    skin.plug("envelope").setNumber(1.0);
    skin.plug("nodeState").setNumber(1.0);
    EXPECT_EQ(point(), Imath::V3d(1, 2, 3));
}

TEST_F(SkinEvaluation, DualQuaternionsKeepTheDistanceFromTheAxisAndBlendWithLinearPerPoint)
{
    joints = {&parts.dag("joint"), &parts.dag("joint")};
    logical = {0, 1};
    host::DagNode& shape = parts.mesh({{1, 0, 0}, {1, 0, 0}, {1, 0, 0}});
    host::Node& skin = parts.skin(shape, joints, logical);
    for (std::uint32_t point = 0; point < 3; ++point)
        for (const unsigned joint : logical)
            skin.plug("weightList").makeRows().set(point, joint, 0.5);
    skin.plug("weightList").changed();
    parts.set(*joints[1], "r", {0, 0, 120});
    const auto point = [&](std::size_t i) { return host::shapeGeometry(shape)->points()[i]; };
    const Imath::V3d linear(0.25, 0.5 * std::sqrt(0.75), 0.0); // half way between 0 and 120 degrees
    const Imath::V3d dual(0.5, std::sqrt(0.75), 0.0);          // at 60 degrees
    EXPECT_NEAR((point(0) - linear).length(), 0.0, 1e-12);

    skin.plug("skinningMethod").setNumber(1.0);
    EXPECT_NEAR((point(0) - dual).length(), 0.0, 1e-12);

    // The far side of the sphere of rotations: 300 degrees is 60 degrees the other way.
    parts.set(*joints[1], "r", {0, 0, 300});
    EXPECT_NEAR((point(0) - Imath::V3d(std::sqrt(0.75), -0.5, 0.0)).length(), 0.0, 1e-12);
    parts.set(*joints[1], "r", {0, 0, 120});

    skin.plug("skinningMethod").setNumber(2.0);
    skin.plug("blendWeights").element(1).setNumber(0.5);
    skin.plug("blendWeights").element(2).setNumber(1.0);
    EXPECT_NEAR((point(0) - linear).length(), 0.0, 1e-12);
    EXPECT_NEAR((point(1) - 0.5 * (linear + dual)).length(), 0.0, 1e-12);
    EXPECT_NEAR((point(2) - dual).length(), 0.0, 1e-12);
}

TEST_F(SkinEvaluation, InfluencesThatAreGoneNoLongerCount)
{
    makeRig(3);
    host::DagNode& shape = parts.mesh(randomPoints(20));
    host::Node& skin = parts.skin(shape, joints, logical);
    paint(skin, 20);
    session.graph().remove(*joints[0]); // the root: takes children along
    const host::GeometryRef left = host::shapeGeometry(shape);
    ASSERT_TRUE(left);
    EXPECT_EQ(left->count(), 20u);
    session.graph().remove(skin);
    EXPECT_EQ(host::shapeGeometry(shape)->count(), 20u);
}

} // namespace
