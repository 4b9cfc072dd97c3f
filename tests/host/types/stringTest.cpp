#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <type_traits>

namespace {

TEST(StringTest, numbersAppendAsTheShortestTextThatReadsBackAsTheSame)
{
    const struct {
        double number;
        const char* text;
    } cases[] = {
        {0.0, "0"},
        {3.0, "3"},
        {-2.0, "-2"},
        {0.1, "0.1"},
        {1e6, "1000000"},
        {0.00125, "0.00125"},
        {1.0 / 3, "0.3333333333333333"},
        {1e21, "1e+21"},
    };
    for (const auto& example : cases) {
        MString text("x=");
        text += example.number;
        EXPECT_EQ(std::string("x=") + example.text, text.asChar());
    }
    for (const double number : {M_PI, 5e-324, std::numeric_limits<double>::max(), 123456789.123456789}) {
        MString text;
        text += number;
        EXPECT_EQ(number, text.asDouble()) << text.asChar();
    }
    MString single;
    single += 0.1F;
    EXPECT_STREQ("0.1", single.asChar());
    single.set(0.5, 3);
    EXPECT_STREQ("0.500", single.asChar());
}

TEST(StringTest, overloadsAreThoseOfThePlatform)
{
    EXPECT_FALSE((std::is_constructible<MString, int>::value));
    EXPECT_FALSE((std::is_constructible<MString, double>::value));
    EXPECT_STREQ("w1", (MString("w") + 1).asChar());
    EXPECT_STREQ("ab", ("a" + MString("b")).asChar());
    const MString wide(L"h\u00e9");
    EXPECT_EQ(3U, wide.length());
    EXPECT_EQ(2U, wide.numChars());
}

TEST(StringTest, substringTakesBothEnds)
{
    const MString text("weightList[12]");
    EXPECT_STREQ("weight", text.substring(0, 5).asChar());
    EXPECT_STREQ("12]", text.substring(11, -1).asChar());
    EXPECT_STREQ("12]", text.substring(11, 99).asChar());
    EXPECT_STREQ("", text.substring(5, 4).asChar());
    EXPECT_STREQ("", MString().substring(0, -1).asChar());
    EXPECT_EQ(10, text.index('['));
    EXPECT_EQ(-1, text.rindex('?'));
}

TEST(StringTest, readsNumbersAndTellsWhatIsNone)
{
    EXPECT_TRUE(MString("-12").isInt());
    EXPECT_FALSE(MString("3]").isInt());
    EXPECT_FALSE(MString("1.5").isInt());
    EXPECT_FALSE(MString("99999999999").isInt());
    EXPECT_FALSE(MString("-1").isUnsigned());
    EXPECT_FALSE(MString("").isDouble());
    EXPECT_TRUE(MString("1e-3").isDouble());
    EXPECT_EQ(3, MString("3]").asInt());
    EXPECT_EQ(std::numeric_limits<int>::max(), MString("99999999999").asInt());
    EXPECT_DOUBLE_EQ(-0.25, MString(" -0.25").asDouble());
}

TEST(StringTest, splitsAndSubstitutes)
{
    MStringArray pieces;
    MString("|a||b|c").split('|', pieces);
    ASSERT_EQ(3U, pieces.length());
    EXPECT_STREQ("c", pieces[2].asChar());

    MString text("aXbX");
    text.substitute("X", "XX");
    EXPECT_STREQ("aXXbXX", text.asChar());
    text.substituteFirst("XX", "");
    EXPECT_STREQ("abXX", text.asChar());
    EXPECT_TRUE(text.format("^2s.^1s", pieces));
    EXPECT_STREQ("b.a", text.asChar());
    EXPECT_FALSE(text.format("^7s", pieces));
    EXPECT_STREQ("b.a", text.asChar());
}

} // namespace
