#include "plugins/syntax.h"
#include "types/api.h"
#include "types/argList.h"
#include "types/error.h"

#include <maya/MArgList.h>
#include <maya/MArgParser.h>
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MPoint.h>
#include <maya/MStringArray.h>
#include <maya/MSyntax.h>
#include <maya/MVector.h>

#include <gtest/gtest.h>

namespace {

using host::mel::Value;

MArgList listOf(std::vector<Value> values)
{
    MArgList list;
    host::Api::arguments(list).values = std::move(values);
    return list;
}

/// Flags of every kind: -size <double>, -count <unsigned>, -lock <bool>, -move <double, double>,
/// -text <string> many times.
MSyntax exampleSyntax()
{
    MSyntax syntax;
    syntax.addFlag("-s", "-size", MSyntax::kDouble);
    syntax.addFlag("-c", "-count", MSyntax::kUnsigned);
    syntax.addFlag("-l", "-lock", MSyntax::kBoolean);
    syntax.addFlag("-m", "-move", MSyntax::kDouble, MSyntax::kDouble);
    syntax.addFlag("-t", "-text", MSyntax::kString);
    syntax.makeFlagMultiUse("-text");
    syntax.enableQuery();
    syntax.enableEdit();
    return syntax;
}

TEST(ArgumentTest, aLiteralIsABoolAndATextMustBeAString)
{
    MArgList list;
    list.addArg("text");
    list.addArg(MString("text"));
    list.addArg(MString("2.5"));
    EXPECT_EQ(1, list.asInt(0));
    EXPECT_STREQ("text", list.asString(1).asChar());
    MStatus status;
    list.asInt(1, &status);
    EXPECT_FALSE(status);
    EXPECT_DOUBLE_EQ(2.5, list.asDouble(2));
    list.asDouble(3, &status);
    EXPECT_FALSE(status);

    MArgList copy(list);
    copy.addArg(1);
    EXPECT_EQ(3U, list.length());
}

TEST(ArgumentTest, arraysRunFromTheIndexToTheFirstOtherValue)
{
    const MArgList list = listOf({"-ids", 4, 5, 6, "-x"});
    unsigned int index = list.flagIndex("ids") + 1;
    const MIntArray ids = list.asIntArray(index);
    EXPECT_EQ(3U, ids.length());
    EXPECT_EQ(4U, index);
    EXPECT_EQ(MArgList::kInvalidArgIndex, list.flagIndex("q", "query"));
    EXPECT_EQ("-ids 4 5 6 \"two words\" 0.1", host::argumentLine({"-ids", 4, 5, 6, "two words", 0.1}));
}

TEST(ArgumentTest, anArrayIsOneArgumentWithThatManyValues)
{
    using namespace host::mel;
    const MArgList list = listOf(
        {"-ids", IntArray{4, 5}, 6, StringArray{"7", "two words"}, VectorArray{{1, 2, 3}}, FloatArray{}});
    EXPECT_EQ(6U, list.length());
    unsigned int index = 1;
    EXPECT_EQ(2U, list.asIntArray(index).length());
    EXPECT_EQ(2U, index);
    MIntArray single;
    EXPECT_TRUE(list.get(index, single)); // stops where an array begins
    EXPECT_EQ(1U, single.length());
    EXPECT_EQ(3U, index);
    EXPECT_FALSE(list.get(index, single)); // "two words" is no number
    EXPECT_EQ(3U, index);
    EXPECT_EQ(2U, list.asStringArray(index).length());
    EXPECT_EQ(3U, list.asDoubleArray(index).length());
    EXPECT_TRUE(list.get(index, single));
    EXPECT_EQ(0U, single.length());
    double number = 0.0;
    EXPECT_FALSE(list.get(1, number)) << "an array is no single value";
    EXPECT_EQ("-ids 4 5 6 7 \"two words\" 1 2 3", host::argumentLine(host::Api::arguments(list).values));
    EXPECT_EQ("brush -ids 4 ...", host::callLine("brush", host::Api::arguments(list).values, 13));
}

TEST(ArgumentTest, aDeclaredCallTakesTheElementsOfArrays)
{
    using namespace host::mel;
    MStatus status;
    const MArgParser parser(exampleSyntax(), listOf({FloatArray{}, "-move", FloatArray{1, 2}, "-size", 3}),
                            &status);
    ASSERT_TRUE(status);
    EXPECT_DOUBLE_EQ(2.0, parser.flagArgumentDouble("-move", 1));
    unsigned int position = 0;
    EXPECT_TRUE(parser.getFlagArgumentPosition("-size", 0, position));
    EXPECT_EQ(3U, position);
}

TEST(ArgumentTest, syntaxRefusesFlagsThatThePlatformRefuses)
{
    MSyntax syntax = exampleSyntax();
    EXPECT_FALSE(syntax.addFlag("-size", "-big"));
    EXPECT_FALSE(syntax.addFlag("-s", "-scale"));
    EXPECT_FALSE(syntax.makeFlagMultiUse("-none"));
    // Copies are deep.
    MSyntax copy(syntax);
    EXPECT_TRUE(copy.addFlag("-n", "-name", MSyntax::kString));
    EXPECT_TRUE(syntax.addFlag("-n", "-name", MSyntax::kString));
}

TEST(ArgumentTest, aHandleOnTheOwnSyntaxAddsToIt)
{
    const auto own = std::make_shared<host::Syntax>();
    MSyntax handle = host::Api::wrap(own);
    handle.addFlag("-s", "-size", MSyntax::kDouble);
    EXPECT_EQ(1U, own->flags.size());
    MSyntax copy(handle);
    copy.addFlag("-c", "-count", MSyntax::kLong);
    EXPECT_EQ(1U, own->flags.size());
}

TEST(ArgumentTest, flagsAreFoundByEitherNameAndKeepTheirTypes)
{
    MStatus status;
    const MArgParser parser(
        exampleSyntax(),
        listOf({"-e", "-s", "2.5", "-move", 1, -2, "-t", "-odd", "-text", "b", "-lock", "off", "-c", -3}),
        &status);
    ASSERT_TRUE(status);
    EXPECT_TRUE(parser.isEdit());
    EXPECT_DOUBLE_EQ(2.5, parser.flagArgumentDouble("-size", 0));
    EXPECT_DOUBLE_EQ(-2.0, parser.flagArgumentDouble("m", 1));
    EXPECT_EQ(2U, parser.numberOfFlagUses("-t"));
    MArgList second;
    ASSERT_TRUE(parser.getFlagArgumentList("-text", 1, second));
    EXPECT_STREQ("b", second.asString(0).asChar());
    bool locked = true;
    EXPECT_TRUE(parser.getFlagArgument("-l", 0, locked));
    EXPECT_FALSE(locked);
    // A negative number reaches the command, which judges it.
    EXPECT_EQ(-3, parser.flagArgumentInt("-count", 0));
    EXPECT_FALSE(parser.isFlagSet("-nothing", &status));
    EXPECT_EQ(MStatus::kInvalidParameter, status.statusCode());
}

TEST(ArgumentTest, flagsOfAQueryTakeNoArgumentsAndEditWins)
{
    MStatus status;
    const MArgParser query(exampleSyntax(), listOf({"-size", "-move", "-q"}), &status);
    ASSERT_TRUE(status);
    EXPECT_TRUE(query.isQuery());
    EXPECT_TRUE(query.isFlagSet("-size") && query.isFlagSet("-m"));
    double size = 7.0;
    EXPECT_FALSE(query.getFlagArgument("-size", 0, size));
    EXPECT_DOUBLE_EQ(7.0, size);

    const MArgParser both(exampleSyntax(), listOf({"-q", "-edit", "-size", 3}), &status);
    EXPECT_TRUE(both.isEdit() && !both.isQuery());
}

TEST(ArgumentTest, whatDoesNotFitIsAnErrorThatNamesCommandAndFlag)
{
    const struct {
        std::vector<Value> arguments;
        const char* error;
    } cases[] = {
        {{"-x", 1}, "brush: Invalid flag '-x'."},
        {{"-size"}, "brush: No argument for flag '-size'. Expected float."},
        {{"-s", "big"}, "brush: Invalid argument for flag '-size'. Expected float, got big."},
        {{"-move", 1, "-s"}, "brush: Invalid argument for flag '-move'. Expected float, got -s."},
        {{"-lock", "maybe"}, "brush: Invalid argument for flag '-lock'. Expected boolean, got maybe."},
        {{"-size", 1, "extra"}, "brush: Too many arguments: 'extra'."},
    };
    const MSyntax syntax = exampleSyntax();
    for (const auto& example : cases) {
        try {
            host::parseArguments(host::Api::syntax(syntax), {example.arguments}, "brush");
            ADD_FAILURE() << "no error: " << example.error;
        } catch (const host::Error& error) {
            EXPECT_STREQ(example.error, error.what());
        }
    }
    const MSyntax plain;
    EXPECT_THROW(host::parseArguments(host::Api::syntax(plain), {{"-q"}}, "brush"), host::Error);
}

TEST(ArgumentTest, argumentsComeBeforeObjects)
{
    MSyntax syntax;
    syntax.addArg(MSyntax::kLong);
    syntax.setObjectType(MSyntax::kStringObjects, 1, 2);
    const auto parsed = host::parseArguments(host::Api::syntax(syntax), {{3, "a", "b"}}, "brush");
    EXPECT_EQ(1U, parsed->arguments.size());
    EXPECT_EQ((std::vector<std::string>{"a", "b"}), parsed->objects);
    EXPECT_THROW(host::parseArguments(host::Api::syntax(syntax), {{3}}, "brush"), host::Error);
    EXPECT_THROW(host::parseArguments(host::Api::syntax(syntax), {{"x", "a"}}, "brush"), host::Error);
    EXPECT_THROW(host::parseArguments(host::Api::syntax(syntax), {{3, "a", "b", "c"}}, "brush"), host::Error);
}

TEST(ArgumentTest, pointsAndVectorsAreRunsOfNumbers)
{
    MArgList list = listOf({"-move", 1, 2.5, "3", 4});
    unsigned int index = 1;
    MStatus status;
    EXPECT_EQ(MVector(1, 2.5, 3), list.asVector(index, 3, &status));
    EXPECT_TRUE(status);
    EXPECT_EQ(4U, index);
    EXPECT_EQ(MPoint(4, 0, 0), list.asPoint(index, 1, &status));
    EXPECT_EQ(5U, index);
    const struct {
        unsigned int from, count;
    } refused[] = {{3, 3}, {0, 1}, {1, 5}, {5, 1}, {99, 3}};
    for (const auto& example : refused) {
        index = example.from;
        MPoint kept(7, 8, 9);
        EXPECT_FALSE(list.get(index, kept, example.count)) << example.from;
        EXPECT_EQ(example.from, index);
        EXPECT_EQ(MPoint(7, 8, 9), kept);
    }
    list.addArg(MPoint(5, 6, 7));
    index = 5;
    EXPECT_EQ(MPoint(5, 6, 7), list.asPoint(index));
}

} // namespace
