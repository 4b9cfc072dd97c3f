// What the documents tell people to type, typed.
#include "documents.h"
#include "runWorkbench.h"
#include "support/toolFixture.h"

#include "undo/undoQueue.h"

#include <filesystem>
#include <regex>

using namespace testing_support;

namespace {

namespace files = std::filesystem;

/// A folder that looks like the checkout to the commands of the documents, with the program on the path.
class Checkout : public Folder {
public:
    Checkout()
    {
        for (const char* part : {"scenes", "run.sh", "test.sh"})
            files::create_symlink(sourceDir() + "/" + part, file(part));
    }
    RunResult run(const std::string& line) const
    {
        const std::string bin = buildDir() + "/bin";
        return runShell("cd '" + path + "' && PATH='" + bin + "':\"$PATH\" MORVANE_WORKBENCH='" + bin +
                        "/morvane-workbench' " + line);
    }
};

bool startsWith(const std::string& text, const std::string& start)
{
    return text.compare(0, start.size(), start) == 0;
}

TEST(Documents, ShellCommandsRunAsTheyStand)
{
    const Checkout checkout;
    int commands = 0;
    for (const CommandBlock& block : commandBlocks()) {
        for (const std::string& line : block.lines) {
            if (block.language != "sh")
                continue;
            SCOPED_TRACE(block.document + ": " + line);
            ++commands;
            // The script that runs this test is not run by it.
            const RunResult run = checkout.run(startsWith(line, "./test.sh") ? "sh -n test.sh" : line);
            EXPECT_EQ(run.status, 0) << run.err;
            EXPECT_EQ(run.err, "");
        }
    }
    EXPECT_GE(commands, 4) << "the documents have no commands any more";
    for (const char* result :
         {"out/stroke.png", "out/sculpted.ma", "out/weights.txt", "view.png", "result.ma"})
        EXPECT_TRUE(files::exists(checkout.file(result))) << result;
}

class DocumentedTool : public HostTest {};

TEST_F(DocumentedTool, MelBlocksRunAsTheyStand)
{
    ASSERT_EQ(setenv("MAYA_PLUG_IN_PATH", (buildDir() + "/lib").c_str(), 1), 0);
    int blocks = 0;
    for (const CommandBlock& block : commandBlocks()) {
        if (block.language != "mel")
            continue;
        ++blocks;
        std::string text;
        for (const std::string& line : block.lines)
            text += line + "\n";
        mel(text);
    }
    EXPECT_GT(blocks, 0);
    EXPECT_EQ(melString("currentCtx"), "morvaneContext1");
    // Every flag that the guide's tables name is there to be asked for.
    for (const std::vector<std::string>& row : tableRows("docs/guide.md")) {
        const std::regex flag("`(-[a-z][A-Za-z]+)(/[A-Z])*[^`]*`");
        const std::string first = row.front() + (startsWith(row.front(), "-") ? "`" : "");
        const std::string cell = startsWith(row.front(), "-") ? "`" + first : first;
        for (std::sregex_iterator at(cell.begin(), cell.end(), flag), end; at != end; ++at)
            mel("morvaneContext -q " + (*at)[1].str() + " morvaneContext1");
    }
}

/// A row of the guide that says how to edit something: the command, and the scene to try it on.
struct ModeRow {
    std::string command, scene, script;
};
std::ostream& operator<<(std::ostream& out, const ModeRow& row)
{
    return out << row.command;
}

std::vector<ModeRow> modeRows()
{
    std::vector<ModeRow> rows;
    for (const std::vector<std::string>& row : tableRows("docs/guide.md")) {
        if (row.size() < 3 || !startsWith(row[1], "morvaneContext -e"))
            continue;
        ModeRow found{row[1], {}, {}};
        const std::regex name("[A-Za-z]+\\.(ma|mel)");
        for (std::sregex_iterator at(row[2].begin(), row[2].end(), name), end; at != end; ++at)
            ((*at)[1] == "ma" ? found.scene : found.script) = sourceDir() + "/scenes/" + at->str();
        rows.push_back(found);
    }
    return rows;
}

class GuideRow : public ToolTest, public ::testing::WithParamInterface<ModeRow> {
public:
    /// A point of the scene's meshes that a tool which has the command can sculpt, and how far up and right
    /// it is dragged. The tool is another one.
    std::pair<std::string, int> sculptable()
    {
        std::string command = GetParam().command;
        command.replace(command.find("morvaneContext1"), 15, "finder");
        mel("morvaneContext finder; setToolTo finder;" + command);
        for (const std::string& shape : melStrings("ls -visible -ni -type \"mesh\"")) {
            const int count = melInt("polyEvaluate -v " + shape);
            for (int vertex = 0; vertex < count; vertex += 1 + count / 60) {
                for (const int way : {20, -20}) {
                    const std::string point = shape + ".vtx[" + std::to_string(vertex) + "]";
                    if (sculpts(point, way))
                        return {point, way};
                }
            }
        }
        return {};
    }
    /// Whether a drag draws weights and is recorded. A press that only selects is recorded too.
    bool sculpts(const std::string& point, int way)
    {
        mel("select " + point);
        const std::size_t before = session.undo().undoCount();
        const Pixel at = pixelOf(point);
        press(at);
        drag({at.x + way, at.y + way});
        const bool drawn = !melStrings("viewportLabels").empty();
        release({at.x + way, at.y + way});
        return drawn && session.undo().undoCount() > before;
    }
};

TEST_P(GuideRow, WorksOnAFreshTool)
{
    const ModeRow& row = GetParam();
    allowMessages(); // points that do not move say so
    ASSERT_FALSE(row.scene.empty()) << "no scene to try the row on";
    const auto open = [&] {
        mel("file -f -o \"" + row.scene + "\"");
        if (!row.script.empty())
            mel("source \"" + row.script + "\"");
    };
    if (!row.script.empty())
        mel("loadPlugin \"" + libraryPath("layerStandIn") + "\"");
    open();
    const auto [point, way] = sculptable();
    ASSERT_FALSE(point.empty()) << "nothing in the scene can be sculpted so";
    open();
    // As the guide has it: take the tool, tell it what to edit, press and drag.
    toolOn();
    mel(row.command);
    EXPECT_TRUE(sculpts(point, way)) << point;
}

INSTANTIATE_TEST_SUITE_P(Guide, GuideRow, ::testing::ValuesIn(modeRows()));

TEST(Documents, TheGuideShowsAllNineModes)
{
    EXPECT_EQ(modeRows().size(), 9U);
}

} // namespace
