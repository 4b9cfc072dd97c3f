#include "reference.h"
#include "sceneParts.h"
#include "session.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace testing_support;
using reference::Vector;

struct Parts {
    Vector t, r, s, sh, rp, rpt, sp, spt, ra, jo;
    int order = 0;
};

constexpr const char* kOrders[] = {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"};

class Matrices : public ::testing::Test {
public:
    Matrices() : parts(session.graph()) {}

    Vector random(double range, double from = 0.0)
    {
        std::uniform_real_distribution<double> number(-range, range);
        const auto next = [&] { return reference::Real(from) + reference::Real(number(engine)); };
        const reference::Real x = next(), y = next();
        return {x, y, next()};
    }

    Parts randomParts(int order)
    {
        Parts p;
        p.t = random(5), p.r = random(200), p.s = random(0.6, 1.2), p.sh = random(0.5);
        p.rp = random(2), p.rpt = random(2), p.sp = random(2), p.spt = random(2), p.ra = random(90);
        p.jo = random(180), p.order = order;
        return p;
    }

    static Imath::V3d plain(const Vector& v)
    {
        return {static_cast<double>(v[0]), static_cast<double>(v[1]), static_cast<double>(v[2])};
    }

    void apply(host::Node& node, const Parts& p)
    {
        parts.set(node, "t", plain(p.t));
        parts.set(node, "r", plain(p.r));
        parts.set(node, "s", plain(p.s));
        parts.set(node, "sh", plain(p.sh));
        parts.set(node, "rp", plain(p.rp));
        parts.set(node, "rpt", plain(p.rpt));
        parts.set(node, "sp", plain(p.sp));
        parts.set(node, "spt", plain(p.spt));
        parts.set(node, "ra", plain(p.ra));
        node.plug("rotateOrder").setNumber(p.order);
        if (node.type().name == "joint")
            parts.set(node, "jo", plain(p.jo));
    }

    static Vector negative(Vector v) { return {-v[0], -v[1], -v[2]}; }

    /// `parentScale` is what the joint takes out again.
    static reference::Matrix product(const Parts& p, bool joint, const Vector& parentScale)
    {
        using namespace reference;
        Matrix shear;
        shear.m[1][0] = p.sh[0], shear.m[2][0] = p.sh[1], shear.m[2][1] = p.sh[2];
        const Matrix orient = joint ? euler(p.jo, "xyz") : Matrix();
        const Matrix without = joint ? inverse(scaling(parentScale)) : Matrix();
        return translation(negative(p.sp)) * scaling(p.s) * shear * translation(p.sp) * translation(p.spt) *
               translation(negative(p.rp)) * euler(p.ra, "xyz") * euler(p.r, kOrders[p.order]) * orient *
               without * translation(p.rp) * translation(p.rpt) * translation(p.t);
    }

    host::Session session;
    SceneParts parts;
    std::mt19937 engine{20};
};

TEST_F(Matrices, TransformsAndJointsMultiplyTheirPartsInTheDocumentedOrder)
{
    for (int order = 0; order < 6; ++order)
        for (const bool joint : {false, true}) {
            host::DagNode& node = parts.dag(joint ? "joint" : "transform");
            const Parts p = randomParts(order);
            apply(node, p);
            const reference::Matrix expected = product(p, joint, {1, 1, 1});
            EXPECT_LT(reference::largestDifference(node.plug("matrix").matrix(), expected), 1e-11)
                << kOrders[order] << (joint ? " joint" : " transform");
            EXPECT_LT(reference::largestDifference(node.plug("inverseMatrix").matrix(),
                                                   reference::inverse(expected)),
                      1e-9);
        }
}

TEST_F(Matrices, ChainOfJointsCompensatesForTheParentsScaleOnlyWhereAsked)
{
    host::DagNode* parent = nullptr;
    reference::Matrix world;
    Vector parentScale{1, 1, 1};
    for (int depth = 0; depth < 8; ++depth) {
        host::DagNode& joint = parts.dag("joint", "", parent);
        const Parts p = randomParts(depth % 6);
        apply(joint, p);
        if (parent)
            session.graph().connect(parent->plug("scale"), joint.plug("inverseScale"));
        const bool compensates = depth % 3 != 2;
        joint.plug("segmentScaleCompensate").setNumber(compensates ? 1.0 : 0.0);
        const Vector ones{1, 1, 1};
        world = product(p, true, compensates ? parentScale : ones) * world;
        EXPECT_LT(reference::largestDifference(host::worldMatrix(joint), world), 1e-9 * (depth + 1));
        parentScale = p.s;
        parent = &joint;
    }
}

TEST_F(Matrices, WorldMatrixFollowsParentsOffsetsAndTheInheritSwitch)
{
    host::DagNode& top = parts.dag("transform", "top");
    host::DagNode& child = parts.dag("transform", "child", &top);
    parts.set(top, "t", {1, 2, 3});
    parts.set(child, "t", {10, 0, 0});
    const auto at = [&] { return host::worldMatrix(child).translation(); };
    EXPECT_EQ(at(), Imath::V3d(11, 2, 3));

    parts.set(top, "r", {0, 0, 90}); // seen through the child's cached matrix
    EXPECT_NEAR((at() - Imath::V3d(1, 12, 3)).length(), 0.0, 1e-12);

    Imath::M44d offset;
    offset.setTranslation(Imath::V3d(0, 5, 0));
    child.plug("offsetParentMatrix").setMatrix(offset);
    EXPECT_NEAR((at() - Imath::V3d(-4, 12, 3)).length(), 0.0, 1e-12);
    EXPECT_EQ(child.plug("matrix").matrix().translation(), Imath::V3d(10, 0, 0));

    child.plug("inheritsTransform").setNumber(0.0);
    EXPECT_EQ(at(), Imath::V3d(10, 5, 0));
    EXPECT_NEAR((host::parentMatrix(child).translation() - Imath::V3d(1, 2, 3)).length(), 0.0, 1e-12);

    child.plug("inheritsTransform").setNumber(1.0);
    session.graph().reparent(child, nullptr);
    EXPECT_EQ(at(), Imath::V3d(10, 5, 0));
}

TEST_F(Matrices, VisibilityIsThatOfAllAncestors)
{
    host::DagNode& shape = parts.mesh({{0, 0, 0}});
    EXPECT_TRUE(host::isVisible(shape));
    shape.parent()->plug("visibility").setNumber(0.0);
    EXPECT_FALSE(host::isVisible(shape));
    shape.parent()->plug("visibility").setNumber(1.0);
    shape.plug("intermediateObject").setNumber(1.0);
    EXPECT_FALSE(host::isVisible(shape));
}

} // namespace
