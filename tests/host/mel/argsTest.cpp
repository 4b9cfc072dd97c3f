#include "mel/command.h"
#include "types/error.h"

#include <gtest/gtest.h>

using namespace host::mel;

namespace {

CommandSpec tool()
{
    return CommandSpec("tool")
        .flag("n", "name", {ArgType::kString})
        .flag("w", "weight", {ArgType::kString, ArgType::kFloat})
        .multi()
        .flag("p", "position", {ArgType::kFloat, ArgType::kFloat, ArgType::kFloat})
        .flag("v", "visible", {ArgType::kBool})
        .flag("c", "count", {ArgType::kInt})
        .flag("o", "of", {ArgType::kString})
        .queryArgs()
        .objects(1, 2)
        .query()
        .edit();
}

Word flag(const char* text)
{
    return {Value(text), Word::Kind::kFlag};
}

Word quoted(const char* text)
{
    return {Value(text), Word::Kind::kLiteral};
}

Word computed(Value value)
{
    return {std::move(value), Word::Kind::kComputed};
}

std::string failure(const std::vector<Word>& words)
{
    const CommandSpec spec = tool();
    try {
        parseArgs(spec, words);
    } catch (const host::Error& error) {
        return error.what();
    }
    return "nothing was refused";
}

TEST(Args, readFlagsByEitherNameBetweenTheObjects)
{
    const CommandSpec spec = tool();
    const Args args =
        parseArgs(spec, {quoted("a"), flag("-w"), quoted("j1"), computed(1), flag("-weight"), quoted("j2"),
                         quoted("0.25"), computed("b"), flag("-name"), quoted("-x"), flag("-v"),
                         quoted("off"), flag("-p"), computed(1), computed(2.5), computed(3)});
    EXPECT_EQ(args.objectNames(), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(args.uses("weight"), 2);
    EXPECT_EQ(args.texts("weight"), (std::vector<std::string>{"j1", "j2"}));
    EXPECT_EQ(args.number("weight", 1, 0), 1.0);
    EXPECT_EQ(args.number("weight", 1, 1), 0.25);
    EXPECT_EQ(args.text("name"), "-x");
    EXPECT_TRUE(args.isSet("visible"));
    EXPECT_FALSE(args.booleanOr("visible", true));
    EXPECT_EQ(args.vector("position"), Vector(1, 2.5, 3));
    EXPECT_EQ(args.integerOr("count", 9), 9);
    EXPECT_FALSE(args.query() || args.edit());
}

TEST(Args, flagsTakeNoArgumentsInQueryModeUnlessDeclaredSo)
{
    const CommandSpec spec = tool();
    const Args args =
        parseArgs(spec, {flag("-weight"), quoted("object"), flag("-of"), quoted("j1"), flag("-q")});
    EXPECT_TRUE(args.query());
    EXPECT_TRUE(args.isSet("weight"));
    EXPECT_EQ(args.text("of"), "j1");
    EXPECT_EQ(args.objectNames(), std::vector<std::string>{"object"});
    EXPECT_TRUE(parseArgs(spec, {flag("-edit"), flag("-n"), quoted("x"), quoted("object")}).edit());
}

TEST(Args, aComputedTextIsAFlagOnlyIfThereIsOne)
{
    const CommandSpec spec = tool();
    EXPECT_EQ(parseArgs(spec, {computed("-n"), computed("x"), computed("a")}).text("name"), "x");
    EXPECT_EQ(parseArgs(spec, {computed("-z")}).objectNames(), std::vector<std::string>{"-z"});
    EXPECT_EQ(parseArgs(spec, {quoted("-n")}).objectNames(), std::vector<std::string>{"-n"});
}

TEST(Args, refusalsNameFlagAndCommand)
{
    EXPECT_EQ(failure({flag("-zoom"), quoted("a")}), "Invalid flag '-zoom' (command \"tool\").");
    EXPECT_EQ(failure({quoted("a"), flag("-n")}),
              "Flag '-n' must be passed a string argument (command \"tool\").");
    EXPECT_EQ(failure({flag("-n"), flag("-v"), computed(1), quoted("a")}),
              "Flag '-n' must be passed a string argument (command \"tool\").");
    EXPECT_EQ(failure({flag("-count"), quoted("3x"), quoted("a")}),
              "Invalid arguments for flag '-count'. Expected int, got [ 3x ] (command \"tool\").");
    EXPECT_EQ(failure({quoted("a"), quoted("b"), quoted("c")}),
              "Too many objects or values (command \"tool\"): c");
    EXPECT_EQ(failure({}), "Not enough objects or values (command \"tool\").");
    EXPECT_EQ(failure({flag("-q"), flag("-e")}),
              "The flags -query and -edit exclude each other (command \"tool\").");
}

} // namespace
