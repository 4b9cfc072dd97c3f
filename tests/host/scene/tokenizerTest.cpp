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

/// One rule says where comments begin, wherever they stand.
TEST(MaTokenizer, CommentsEndWordsAndHideWhatTheyHold)
{
    const std::pair<const char*, const char*> cases[] = {
        {"a 5//was 4; now 5\n;b;", "1[a|5]2[b]"},
        {"a 3// the 3\" cube\n 4;", "1[a|3|4]"},
        {"a b/*;\"*/c;", "1[a|b|c]"},
        {"a b/c /d e/;", "1[a|b/c|/d|e/]"},
        {"a \"x//y\" \"/*\";", "1[a|x//y|/*]"},
        {"a (\"x\"// ;)\n+/* \n */\"y\") z;b;", "1[a|xy|z]3[b]"},
        {"a \"x\\\ny\" z;b;", "1[a|x\ny|z]2[b]"},
        {"a 5//was 4; now 5", "a.ma: line 1: the file ends in the statement that begins here"},
        {"a 3// the 3\" cube", "a.ma: line 1: the file ends in the statement that begins here"},
        {"a (\"x\" // )", "a.ma: line 1: the bracket that opens here is not closed"},
        {"a;\nb\n/*", "a.ma: line 3: the comment that begins here is not closed"},
        {"a \"x\\", "a.ma: line 1: the text that begins here is not closed"}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(words(text), expected) << text;
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
