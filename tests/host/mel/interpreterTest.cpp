#include "mel/interpreter.h"
#include "mel/command.h"
#include "support/hostFixture.h"
#include "types/error.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

using host::mel::Type;
using host::mel::Value;

namespace {

class Interpreter : public testing_support::HostTest {
protected:
    /// A folder of scripts that goes away with the test.
    Interpreter()
    {
        std::string name = (std::filesystem::temp_directory_path() / "melXXXXXX").string();
        if (!mkdtemp(name.data()))
            throw host::Error("no temporary folder");
        folder = name;
        session.mel().scriptPath = {name};
    }
    ~Interpreter() override { std::filesystem::remove_all(folder); }

    void write(const std::string& name, const std::string& text) const
    {
        std::ofstream(folder / name) << text;
    }

    std::filesystem::path folder;
};

TEST_F(Interpreter, namesTheLineOfTextThatDoesNotParseAndRunsNothingOfIt)
{
    const std::pair<const char*, const char*> cases[] = {
        {"$ran = 1;\nprint (1;", "line 2: Syntax error: unexpected \";\"."},
        {"$ran = 1;\n\n}", "line 3: Syntax error: unexpected \"}\"."},
        {"$ran = 1; if (1) {", "line 1: Syntax error: unexpected end of the text."},
        {"$ran = 1;\nprint \"abc", "line 2: Unterminated string."},
        {"$ran = 1;\n\n/* abc\n\n", "line 3: Unterminated comment."},
        {"$ran = 1; break;", "line 1: Syntax error: unexpected \"break\"."},
        {"$ran = 1; {print 1}", "line 1: Syntax error: unexpected \"}\"."},
        {"$ran = 1; print `size \"a\";", "line 1: Syntax error: unexpected \";\"."},
        {"$ran = 1;\nproc f() {\n  print $unknown; }", "line 3: \"$unknown\" is an undeclared variable."},
        {"$ran = 1; vector $v = <<1, 2, 3>>; $v.x = 2;",
         "line 1: A component of a vector cannot be assigned; assign the whole vector."},
        {"$ran = 1; { proc inner() {} }", "line 1: A procedure cannot be declared inside a block."},
    };
    for (const auto& [text, error] : cases) {
        EXPECT_EQ(melError(text), error) << text;
        EXPECT_EQ(session.mel().global("$ran"), nullptr) << text;
    }
}

TEST_F(Interpreter, readsTextsByTheirEscapesHoweverLongTheyAre)
{
    EXPECT_EQ(melString(R"($t = "a\"b\\";)"), R"(a"b\)");
    EXPECT_EQ(melString("$t = \"a\\\nb\\\r\nc\\\\\";"), "abc\\") << "a backslash joins lines";
    EXPECT_EQ(melError("$t = \"a\\\\\nb\";"), "line 1: Unterminated string.");
    EXPECT_EQ(melError("$t = \"a\\\""), "line 1: Unterminated string.");
    std::string written, meant;
    for (int k = 0; k < 200000; ++k) {
        written += k % 3 == 0 ? R"(\")" : k % 3 == 1 ? R"(\\)" : ",0.5";
        meant += k % 3 == 0 ? "\"" : k % 3 == 1 ? "\\" : ",0.5";
    }
    EXPECT_EQ(melString("$t = \"" + written + "\";"), meant);
}

TEST_F(Interpreter, refusesConversionsThatTheLanguageDoesNotHave)
{
    const std::pair<const char*, const char*> cases[] = {
        {"string $s[] = \"a\"", "line 1: Cannot convert data of type string to type string[]."},
        {"string $t = {\"a\"}", "line 1: Cannot convert data of type string[] to type string."},
        {"int $i = {1, 2}", "line 1: Cannot convert data of type int[] to type int."},
        {"vector $v = {1.0, 2.0}", "line 1: Cannot convert data of type float[] to type vector."},
        {"int $n = `clear $gone`", "line 1: \"$gone\" is an undeclared variable."},
        {"string $none[]; string $x = `clear $none`",
         "line 1: Nothing to assign to \"$x\": the command has no result."},
        {"\"a\" * 2", "line 1: The operator * does not take string and int."},
        {"size({1, 2}) + {1}", "line 1: The operator + does not take int and int[]."},
        {"print 1 2", "line 1: Wrong number of arguments on call to print."},
        {"noSuchThing -flag 3", "line 1: Cannot find procedure \"noSuchThing\"."},
    };
    for (const auto& [text, error] : cases)
        EXPECT_EQ(melError(text), error) << text;
}

TEST_F(Interpreter, turnsRunAwayRecursionIntoAnErrorAndGoesOn)
{
    const std::string many(100000, '(');
    EXPECT_NE(melError("global proc f() { f; } f;").find("Maximum recursion depth"), std::string::npos);
    EXPECT_NE(melError("global proc g() { eval \"g\"; } g;").find("Maximum recursion depth"),
              std::string::npos);
    EXPECT_NE(melError(many).find("Maximum recursion depth"), std::string::npos);
    std::string sum = "1";
    for (int i = 0; i < 100000; ++i)
        sum += "+1";
    EXPECT_NE(melError(sum).find("nested too deeply"), std::string::npos);
    EXPECT_EQ(melInt("2 + 3"), 5);
}

TEST_F(Interpreter, keepsGlobalsAndProceduresBetweenExecutionsAndResultsOfTheLastStatement)
{
    mel("int $kept = 4; global proc int twice(int $x) { return $x * 2; }");
    EXPECT_EQ(mel("twice($kept)"), Value(8));
    EXPECT_EQ(mel("$kept + 0.5"), Value(4.5));
    EXPECT_EQ(mel("string $s[] = {\"a\"}"), Value(host::mel::StringArray{"a"}));
    EXPECT_TRUE(mel("1 + 1; if (1) $kept = 5;").isVoid());
    ASSERT_NE(session.mel().global("$kept"), nullptr);
    EXPECT_EQ(*session.mel().global("$kept"), Value(5));
    EXPECT_EQ(session.mel().call("twice", {Value(21)}), Value(42));
    EXPECT_EQ(melError("string $kept = \"x\""),
              "line 1: Invalid redeclaration of variable \"$kept\" as a different type.");
}

TEST_F(Interpreter, findsProceduresByTheNameOfTheirFile)
{
    write("askedFor.mel", "proc string local() { return \"local \"; }\n"
                          "global proc string askedFor(string $x) { return local() + $x; }\n");
    EXPECT_EQ(melInt("exists askedFor"), 1);
    EXPECT_EQ(melString("whatIs askedFor"), "Script found in: " + (folder / "askedFor.mel").string());
    EXPECT_EQ(melString("askedFor(\"proc\")"), "local proc");
    EXPECT_EQ(melString("whatIs askedFor"), "Mel procedure found in: " + (folder / "askedFor.mel").string());
    EXPECT_EQ(melError("local()"), "line 1: Cannot find procedure \"local\".");
}

TEST_F(Interpreter, namesTheFileInErrorsOfSourcedScripts)
{
    write("broken.mel", "int $before = 1;\n\nerror \"not today\";\n");
    const std::string place = "file: " + (folder / "broken.mel").string() + " line 3: ";
    EXPECT_EQ(melError("source broken"), place + "not today");
    EXPECT_EQ(melInt("$before"), 1) << "what ran before the error stays done";
    EXPECT_EQ(melError("source \"broken.mel\""), place + "not today");
    EXPECT_EQ(melError("source \"absent.mel\""),
              "line 1: Cannot find file \"absent.mel\" for source statement.");
}

TEST_F(Interpreter, aCommandMayRemoveItselfWhileItRuns)
{
    session.commands().addRaw("once", [](host::Session& owner, const std::vector<Value>& words) {
        owner.commands().remove("once");
        return Value(static_cast<int>(words.size()));
    });
    EXPECT_EQ(melInt("once -flag {1, 2} <<1, 2, 3>> \"x\""), 6);
    EXPECT_EQ(melError("once"), "line 1: Cannot find procedure \"once\".");
}

TEST_F(Interpreter, randomNumbersStayInTheirRangeAndFollowTheSeed)
{
    mel("seed 7; float $a = rand(5); float $b = rand(-2, -1); seed 7; float $c = rand(5);");
    EXPECT_EQ(*session.mel().global("$a"), *session.mel().global("$c"));
    for (int i = 0; i < 100; ++i) {
        EXPECT_LT(melFloat("rand(5)"), 5.0);
        EXPECT_LT(melFloat("rand(-2, -1)"), -1.0);
        EXPECT_GE(melFloat("rand(-2, -1)"), -2.0);
    }
}

} // namespace
