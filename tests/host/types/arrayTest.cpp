#include <maya/MDoubleArray.h>
#include <maya/MFloatArray.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>
#include <maya/MStringArray.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

TEST(ArrayTest, copiesAreDeep)
{
    MIntArray first(3, 7);
    MIntArray second(first);
    MIntArray third;
    third = first;
    first[0] = 1;
    second.append(9);
    EXPECT_EQ(7, second[0]);
    EXPECT_EQ(7, third[0]);
    EXPECT_EQ(3U, first.length());
}

TEST(ArrayTest, anElementOfTheArrayItselfMayBeAdded)
{
    MStringArray names(1, "a");
    for (int i = 0; i < 20; ++i)
        names.append(names[0]);
    names.insert(names[20], 0);
    EXPECT_EQ(22U, names.length());
    EXPECT_STREQ("a", names[21].asChar());
    MPointArray points(1, MPoint(1, 2, 3));
    for (int i = 0; i < 20; ++i)
        points.append(points[0]);
    EXPECT_EQ(MPoint(1, 2, 3), points[20]);
}

TEST(ArrayTest, indicesBeyondTheEndAreRefusedWhereAStatusTells)
{
    MDoubleArray values(2, 0.5);
    EXPECT_FALSE(values.set(1.0, 2));
    EXPECT_FALSE(values.remove(2));
    EXPECT_FALSE(values.insert(1.0, 3));
    EXPECT_TRUE(values.insert(1.0, 2));
    EXPECT_EQ(3U, values.length());
    EXPECT_DEBUG_DEATH(static_cast<void>(values[3]), "");
}

TEST(ArrayTest, numbersConvertBetweenSingleAndDouble)
{
    const double source[] = {0.25, 0.5};
    const MFloatArray values(source, 2);
    double copy[2] = {};
    values.get(copy);
    EXPECT_DOUBLE_EQ(0.5, copy[1]);
    const MPointArray points(2, MPoint());
    double flat[2][4] = {};
    points.get(flat);
    EXPECT_DOUBLE_EQ(1.0, flat[1][3]);
}

TEST(ArrayTest, elementsLieInOneBlock)
{
    MPointArray points;
    points.append(1, 2);
    points.append(4, 5, 6);
    EXPECT_EQ(&points[0] + 1, &points[1]);
    EXPECT_DOUBLE_EQ(0.0, points[0].z);
}

} // namespace
