// What people read when ngst2Layers does not keep its word, word for word: on the error stream, with the
// lines of the report, and as errors.
#include "plugin/layers/layerFixture.h"
#include "support/weights.h"
#include "undo/undoQueue.h"

#include <ostream>

using namespace testing_support;

namespace {

const char kMask[] = "ngSkinToolsMask";
const char kDual[] = "ngSkinToolsDualQuaternion";
const char kInfluence[] = "ngSkinToolsInfluence";

struct MessageRow {
    const char* name;
    const char* kind; ///< how the command misbehaves
    const char* mode;
    std::vector<std::string> reports; ///< source and line of each, in order
    const char* error;                ///< its beginning where the rest is the parser's; empty: none
    bool whole = true;
};

std::ostream& operator<<(std::ostream& out, const MessageRow& row)
{
    return out << row.name;
}

const char kHelper[] = "src/helperFunctions at line ";
const char kContext[] = "src/morvaneContext at line ";
const char kList[] = "The ngSkinTools2 layer list of |sheet|sheetShape cannot be read: ";

std::vector<std::string> lines(int helper, int context)
{
    std::vector<std::string> all;
    if (helper != 0)
        all.push_back(kHelper + std::to_string(helper));
    all.push_back(kContext + std::to_string(context));
    return all;
}

const MessageRow kRows[] = {
    {"MaskThatCannotBeRead", "failingRead", kMask, lines(251, 1728), ""},
    {"MaskWithoutVertices", "failingCount", kMask, lines(268, 1728), ""},
    {"DualQuaternionThatCannotBeRead", "failingRead", kDual, lines(296, 1750), ""},
    {"DualQuaternionWithoutVertices", "failingCount", kDual, lines(313, 1750), ""},
    {"InfluenceThatCannotBeRead", "failingRead", kInfluence, lines(206, 1706), ""},
    {"InfluenceWithoutVertices", "failingCount", kInfluence, lines(223, 1706), ""},
    {"LayerThatIsNotThere", "vanishedId", kMask, lines(251, 1728), ""},
    {"MaskTooShort", "tooFewWeights", kMask, lines(0, 1728),
     "|sheet|sheetShape: ngSkinTools2 tells 5 weights for 6 vertices; nothing was written for it."},
    {"DualQuaternionTooLong", "tooManyWeights", kDual, lines(0, 1750),
     "|sheet|sheetShape: ngSkinTools2 tells 7 weights for 6 vertices; nothing was written for it."},
    {"InfluenceTooShort", "tooFewWeights", kInfluence, lines(0, 1706),
     "|sheet|sheetShape: ngSkinTools2 tells 5 weights for 6 vertices; nothing was written for it."},
    {"ListThatCannotBeRead", "failingList", kMask, {}, "the command failed"},
    {"ListThatIsNoJson", "brokenList", kMask, {}, "[json.exception.parse_error.101]", false},
    {"ListThatIsNoArray", "listIsObject", kMask, {}, "it is not an array"},
    {"ListOfNumbers", "listOfNumbers", kDual, {}, "an entry is not an object"},
    {"NameThatIsNoText", "nameIsNumber", kMask, {}, "a name is not a text", false},
    {"IdThatIsText", "idIsText", kMask, {}, "an id is not an integer"},
    {"IdThatIsAFraction", "idIsFraction", kInfluence, {}, "an id is not an integer"},
    {"IdThatIsHuge", "idIsHuge", kMask, {}, "an id is out of range"},
    {"LayerWithoutChildren", "noChildren", kDual, {}, "\"children\" is not an array", false},
    {"ChildrenThatAreText", "childrenIsText", kInfluence, {}, "\"children\" is not an array"},
};

class LayerMessages : public LayerTest, public ::testing::WithParamInterface<MessageRow> {
public:
    void SetUp() override
    {
        LayerTest::SetUp();
        for (const char* target : {"0", "1", "2"})
            paint(1, target, std::vector<double>(kVertices, 0.25));
        edit(std::string("-weightMode ") + GetParam().mode);
        press(at(1));
        release(at(1));
    }
    /// The tool's own errors and warnings in the trace; the command's begin with its name.
    std::vector<std::string> shown()
    {
        std::vector<std::string> texts;
        for (const std::string& line : trace)
            if ((line.compare(0, 6, "error\t") == 0 || line.compare(0, 8, "warning\t") == 0) &&
                line.find("ngst2Layers: ") == std::string::npos)
                texts.push_back(line);
        return texts;
    }
    /// Source and line of every report in a text.
    static std::vector<std::string> reportsIn(const std::string& text)
    {
        const std::string start = "\nAPI error detected in ";
        std::vector<std::string> found;
        for (std::size_t at = 0; (at = text.find(start, at)) != std::string::npos;) {
            at += start.size();
            found.push_back(text.substr(at, text.find('\n', at) - at));
        }
        return found;
    }
    std::string copied()
    {
        allowMessages(); // read from the trace, in their order
        trace.clear();
        testing::internal::CaptureStderr();
        edit("-copy true");
        return testing::internal::GetCapturedStderr();
    }
};

INSTANTIATE_TEST_SUITE_P(Rows, LayerMessages, ::testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(LayerMessages, ACopySaysWhatIsWrongAndLeavesNothingToPaste)
{
    const MessageRow& row = GetParam();
    EXPECT_EQ(copied(), "") << "a copy that can be pasted";
    EXPECT_EQ(shown(), std::vector<std::string>());
    misbehave(row.kind);
    const std::string report = copied();
    EXPECT_EQ(reportsIn(report), row.reports);
    std::vector<std::string> errors;
    if (*row.error)
        errors = {std::string("error\t") + (row.reports.empty() ? kList : "") + row.error};
    std::vector<std::string> found = shown();
    if (!row.whole && !found.empty())
        found[0].resize(errors[0].size());
    EXPECT_EQ(found, errors);
    // Where reading failed an empty line follows.
    EXPECT_EQ(report.size() > 2 && report.substr(report.size() - 2) == "\n\n", !row.reports.empty())
        << report;
    misbehave("none");
    mel("select sheet.vtx[2]");
    const std::string scene = sceneText(session);
    session.undo().flush();
    trace.clear();
    edit("-paste true");
    EXPECT_EQ(sceneText(session), scene);
    EXPECT_EQ(session.undo().undoCount(), 0u);
    EXPECT_EQ(shown(), std::vector<std::string>());
}

} // namespace
