#include "scene/maTokenizer.h"
#include "types/error.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using host::MaStatement;
using host::MaTokenizer;

/// The words of all statements, each statement in [ ], with the line on which it begins.
std::string words(const std::string& text)
{
    std::istringstream input(text);
    MaTokenizer tokens(input, "a.ma");
    MaStatement statement;
    std::string out;
    try {
        while (tokens.next(statement)) {
            out += std::to_string(statement.line) + "[";
            for (const host::MaWord& word : statement.words)
                out += (&word == &statement.words.front() ? "" : "|") + std::string(word.text);
            out += "]";
        }
    } catch (const host::Error& error) {
        return error.what();
    }
    return out;
}

TEST(MaTokenizer, SplitsStatementsIntoWordsAndKnowsTheirLines)
{
    EXPECT_EQ(words("//Maya\ncreateNode mesh -n \"b\";\n\tsetAttr \".t\"\n 1 -2.5e-3;"),
              "2[createNode|mesh|-n|b]3[setAttr|.t|1|-2.5e-3]");
    EXPECT_EQ(words("a \"x;y\" /* ; \n */ b; // c;\n;;d;"), "1[a|x;y|b]3[d]");
    EXPECT_EQ(words("a {\"p\",\"q\"} ;"), "1[a|{|p|,|q|}]");
    EXPECT_EQ(words("a \"\\\"\\\\\\n\\t\" ;"), "1[a|\"\\\n\t]");
    EXPECT_EQ(words("a (\n\"one\" // why\n + \"\\ttwo\"\n) b;\nc;"), "1[a|one\ttwo|b]5[c]");
}

TEST(MaTokenizer, NamesFileAndLineOfWhatIsBroken)
{
    EXPECT_EQ(words("a;\nb \"open;\nc;"), "a.ma: line 2: the text that begins here is not closed");
    EXPECT_EQ(words("a;\n\nb 1 2\n3"), "a.ma: line 3: the file ends in the statement that begins here");
    EXPECT_EQ(words("a; /* never\n"), "a.ma: line 1: the comment that begins here is not closed");
    EXPECT_EQ(words("a\n(\"x\" + ;"), "a.ma: line 2: the bracket that opens here is not closed");
    EXPECT_EQ(words("a (\"x\" \"y\");"), "a.ma: line 1: only texts joined by + may stand in brackets");
    EXPECT_EQ(words("\"a\" b;"), "a.ma: line 1: a statement must begin with a command");
}

TEST(MaTokenizer, ReadsStatementsThatLieAcrossTheEdgesOfWhatIsReadAtOnce)
{
    std::string text, expected;
    for (int line = 1; line <= 60000; ++line) {
        text += "setAttr \"t\\\\" + std::to_string(line) + "\" // c ;\n -1.5 yes;\n";
        expected += std::to_string(2 * line - 1) + "[setAttr|t\\" + std::to_string(line) + "|-1.5|yes]";
    }
    ASSERT_GT(text.size(), std::size_t{2} << 20);
    EXPECT_TRUE(words(text) == expected);
}

} // namespace
