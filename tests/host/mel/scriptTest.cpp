#include "mel/interpreter.h"
#include "support/hostFixture.h"
#include "support/paths.h"
#include "types/error.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>

// Every file in scripts/ is a test. Comments in the script say what must happen:
//   expect: TEXT      the next line of output
//   message: KIND: TEXT  the next warning or error shown while the script runs
//   error: TEXT       the script ends with this error in the line of the comment (error@N: in line N)

namespace {

namespace fs = std::filesystem;

struct Expectations {
    std::string text; ///< of the script
    std::string output;
    std::vector<std::string> messages;
    std::string error;
};

std::string withoutTrailingBlanks(const std::string& text)
{
    return std::regex_replace(text, std::regex("[ \t]+\n"), "\n");
}

Expectations expectationsOf(const fs::path& path)
{
    const std::regex comment("// (expect|message|error(@[0-9]+)?): (.*)$");
    Expectations result;
    std::ifstream stream(path);
    int number = 0;
    for (std::string line; std::getline(stream, line);) {
        ++number;
        result.text += line + "\n";
        std::smatch found;
        if (!std::regex_search(line, found, comment))
            continue;
        if (found[1] == "expect")
            result.output += found[3].str() + "\n";
        else if (found[1] == "message")
            result.messages.push_back(found[3]);
        else
            result.error = "file: " + path.filename().string() + " line " +
                           (found[2].matched ? found[2].str().substr(1) : std::to_string(number)) + ": " +
                           found[3].str();
    }
    return result;
}

std::vector<std::string> scriptNames()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(testing_support::sourceDir() + "/tests/host/mel/scripts"))
        names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

class MelScript : public testing_support::HostTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(MelScript, doesWhatItsCommentsSay)
{
    const fs::path path =
        fs::path(testing_support::sourceDir() + "/tests/host/mel/scripts") / (GetParam() + ".mel");
    const Expectations expected = expectationsOf(path);
    ASSERT_FALSE(expected.text.empty()) << path;
    allowMessages();
    std::string output;
    session.messages().setPrintSink([&output](const std::string& text) { output += text; });
    std::string error;
    try {
        session.mel().execute(expected.text, path.filename().string());
    } catch (const host::Error& failure) {
        error = failure.what();
    }
    EXPECT_EQ(withoutTrailingBlanks(output), withoutTrailingBlanks(expected.output));
    EXPECT_EQ(messages(), expected.messages);
    EXPECT_EQ(error, expected.error);
}

INSTANTIATE_TEST_SUITE_P(Scripts, MelScript, ::testing::ValuesIn(scriptNames()),
                         [](const auto& script) { return script.param; });

} // namespace
