#include <maya/MColor.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

/// A quarter turn about z, then a move by (10, 20, 30).
MMatrix turnAndMove()
{
    const double cells[4][4] = {{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {10, 20, 30, 1}};
    return MMatrix(cells);
}

TEST(MathTest, matricesApplyToRowVectorsFromTheRight)
{
    EXPECT_EQ(MPoint(10, 21, 30), MPoint(1, 0, 0) * turnAndMove());
    EXPECT_EQ(MVector(0, 1, 0), MVector(1, 0, 0) * turnAndMove());
    // First turn and move, then double: the product reads in the order of application.
    const MMatrix twice = MMatrix() * 2.0;
    EXPECT_EQ(MPoint(20, 42, 60, 2), MPoint(1, 0, 0) * (turnAndMove() * twice));
}

TEST(MathTest, inverseTakesBack)
{
    const MPoint point(3, -4, 5);
    EXPECT_TRUE((point * turnAndMove() * turnAndMove().inverse()).isEquivalent(point));
    EXPECT_TRUE((turnAndMove() * turnAndMove().inverse()).isEquivalent(MMatrix()));
    const MMatrix flat = MMatrix() * 0.0;
    EXPECT_TRUE(flat.isSingular());
    EXPECT_EQ(MMatrix(), flat.inverse());
}

TEST(MathTest, pointsAndVectorsDiffer)
{
    EXPECT_DOUBLE_EQ(1.0, MPoint().w);
    const MVector difference = MPoint(4, 6, 3) - MPoint(1, 2, 3);
    EXPECT_DOUBLE_EQ(5.0, difference.length());
    EXPECT_DOUBLE_EQ(5.0, MPoint(1, 2, 3).distanceTo(MPoint(4, 6, 3)));
    EXPECT_EQ(MPoint(1, 2, 0), MPoint(2, 4, 0, 2).cartesianize());
    EXPECT_FLOAT_EQ(1.0F, MColor().a);
}

TEST(MathTest, productsAnglesAndUnitLength)
{
    const MVector x(1, 0, 0);
    const MVector y(0, 1, 0);
    EXPECT_EQ(MVector(0, 0, 1), x ^ y);
    EXPECT_DOUBLE_EQ(0.0, x * y);
    EXPECT_DOUBLE_EQ(M_PI / 2, x.angle(y));
    // The arc cosine of the dot product would give 0 here.
    EXPECT_NEAR(1e-9, x.angle(MVector(1, 1e-9, 0)), 1e-18);
    MVector none;
    EXPECT_FALSE(none.normalize());
    EXPECT_EQ(MVector(), none);
    EXPECT_DOUBLE_EQ(1.0, MVector(3, 4, 12).normal().length());
    EXPECT_TRUE(x.isParallel(x * -3));
}

TEST(MathTest, constantsHaveNames)
{
    EXPECT_EQ(MPoint(0, 0, 0, 1), MPoint::origin);
    EXPECT_EQ(MVector(0, 0, 0), MVector::zero);
    EXPECT_EQ(MVector(1, 1, 1), MVector::one);
    EXPECT_EQ(MVector::zAxis, MVector::xAxis ^ MVector::yAxis);
    EXPECT_EQ(MVector::zero, MVector::xAxis + MVector::xNegAxis);
    EXPECT_EQ(MVector::zero, MVector::yAxis + MVector::yNegAxis);
    EXPECT_EQ(MVector::zero, MVector::zAxis + MVector::zNegAxis);
    EXPECT_EQ(turnAndMove(), turnAndMove() * MMatrix::identity);
}

} // namespace
