#include "types/api.h"
#include "types/commandResult.h"

#include <maya/MCommandResult.h>
#include <maya/MEvent.h>
#include <maya/MFnSet.h>
#include <maya/MIntArray.h>
#include <maya/MIOStream.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MItGeometry.h>
#include <maya/MObjectHandle.h>
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

TEST(HandleTest, aKeptHandleTellsWhatBecameOfItsObject)
{
    MObjectHandle kept;
    EXPECT_FALSE(kept.isAlive() || kept.isValid());
    EXPECT_EQ(0U, kept.hashCode());
    {
        const MObject thing = host::Api::wrap(new Thing);
        const MObject other = host::Api::wrap(new Thing);
        kept = thing;
        const MObjectHandle& itself = kept;
        kept = itself;
        kept = kept.objectRef();
        MObjectHandle second(kept), third(other);
        EXPECT_TRUE(second.isAlive() && second.isValid());
        EXPECT_TRUE(second == kept && second == thing && second.object() == thing);
        EXPECT_TRUE(second != third && second != other);
        EXPECT_EQ(kept.hashCode(), MObjectHandle::objectHashCode(thing));
        EXPECT_NE(kept.hashCode(), third.hashCode());
        second = third;
        EXPECT_TRUE(second == other);
    }
    EXPECT_FALSE(kept.isAlive()) << "handles of this class do not keep an object alive";
    EXPECT_FALSE(kept.isValid());
    EXPECT_TRUE(kept.object().isNull() && kept.objectRef().isNull());
    EXPECT_NE(0U, kept.hashCode());
    kept = MObjectHandle();
    EXPECT_EQ(0, livingThings);
}

MStatus checked(const MStatus& status, int& calls)
{
    ++calls;
    return status;
}

MStatus chain(const MStatus& first, int& calls)
{
    CHECK_MSTATUS(checked(first, calls));
    CHECK_MSTATUS_AND_RETURN(checked(first, calls), MS::kNotFound);
    CHECK_MSTATUS_AND_RETURN_IT(checked(MS::kInvalidParameter, calls));
    return MS::kSuccess;
}

TEST(HandleTest, statusMacrosReportAndReturn)
{
    testing::internal::CaptureStderr();
    int calls = 0;
    EXPECT_EQ(chain(MS::kFailure, calls), MS::kNotFound);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(chain(MS::kSuccess, calls), MS::kInvalidParameter);
    EXPECT_TRUE(MFAIL(MStatus(MS::kFailure)));
    EXPECT_FALSE(MFAIL(MStatus(MS::kSuccess)));
    cerr << flush;
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find("handleTest.cpp at line "), std::string::npos) << said;
    EXPECT_NE(said.find("(kFailure)"), std::string::npos) << said;
    EXPECT_NE(said.find("(kInvalidParameter)"), std::string::npos) << said;
}

} // namespace
