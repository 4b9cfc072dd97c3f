#include "types/api.h"
#include "types/commandResult.h"

#include <maya/MCommandResult.h>
#include <maya/MEvent.h>
#include <maya/MFnSet.h>
#include <maya/MIntArray.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MItGeometry.h>
#include <maya/MRichSelection.h>
#include <maya/MStringArray.h>

#include "types/commandResult.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

int livingThings = 0;

class Thing final : public host::Object {
public:
    Thing() { ++livingThings; }
    MFn::Type apiType() const override { return MFn::kMesh; }
    bool hasFn(MFn::Type type) const override { return type == MFn::kMesh || type == MFn::kDependencyNode; }

protected:
    ~Thing() override { --livingThings; }
};

TEST(HandleTest, copiesMovesAndAssignmentsCountTheObject)
{
    {
        MObject first = host::Api::wrap(new Thing);
        MObject second(first);
        MObject third;
        third = second;
        third = *&third;
        MObject moved(std::move(second));
        first = MObject();
        EXPECT_EQ(1, livingThings);
        EXPECT_EQ(moved, third);
        EXPECT_TRUE(first.isNull());
        EXPECT_STREQ("kMesh", moved.apiTypeStr());
        EXPECT_TRUE(moved.hasFn(MFn::kDependencyNode));
        EXPECT_FALSE(moved.hasFn(MFn::kSet));
        third = host::Api::wrap(new Thing);
        EXPECT_EQ(2, livingThings);
    }
    EXPECT_EQ(0, livingThings);
}

TEST(HandleTest, aSetOnTheWrongObjectFails)
{
    MStatus status;
    const MFnSet onNothing(MObject::kNullObj, &status);
    EXPECT_EQ(MStatus::kFailure, status.statusCode());
    EXPECT_TRUE(onNothing.object(&status).isNull());
    EXPECT_EQ(MStatus::kFailure, status.statusCode());
    const MObject mesh = host::Api::wrap(new Thing);
    const MFnSet onMesh(mesh, &status);
    EXPECT_EQ(MStatus::kInvalidParameter, status.statusCode());
}

TEST(HandleTest, whatThePlatformCannotCopyCannotBeCopiedHere)
{
    EXPECT_TRUE(std::is_copy_constructible<MRichSelection>::value);
    EXPECT_FALSE(std::is_copy_assignable<MRichSelection>::value);
    EXPECT_FALSE(std::is_copy_constructible<MCommandResult>::value);
    EXPECT_FALSE(std::is_copy_constructible<MEvent>::value);
    EXPECT_FALSE(std::is_copy_constructible<MItGeometry>::value);
    EXPECT_FALSE(std::is_copy_constructible<MItDependencyGraph>::value);
    EXPECT_FALSE(std::is_copy_constructible<MFnSet>::value);
}

TEST(HandleTest, aResultOfAnotherTypeLeavesTheTargetAlone)
{
    MCommandResult result;
    int number = 5;
    EXPECT_FALSE(result.getResult(number));
    EXPECT_EQ(MCommandResult::kInvalid, result.resultType());
    host::Api::result(result).value = host::mel::StringArray{"a", "b"};
    EXPECT_FALSE(result.getResult(number));
    EXPECT_EQ(5, number);
    MStringArray names;
    EXPECT_TRUE(result.getResult(names));
    EXPECT_EQ(2U, names.length());
    host::Api::result(result).value = 3;
    EXPECT_TRUE(result.getResult(number));
    EXPECT_EQ(3, number);
    EXPECT_EQ(MCommandResult::kInt, result.resultType());
}

} // namespace
