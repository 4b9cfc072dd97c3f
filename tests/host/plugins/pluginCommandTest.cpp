#include "plugins/pluginRegistry.h"
#include "support/hostFixture.h"
#include "undo/undoQueue.h"

#include <algorithm>

namespace {

class PluginCommandTest : public testing_support::HostTest {
protected:
    void SetUp() override
    {
        session.plugins().load(std::string(MODULE_DIR) + "/counter.so");
        session.undo().flush();
    }
};

TEST_F(PluginCommandTest, resultsReachTheScript)
{
    EXPECT_EQ(5, melInt("int $n = `counter -step 5`;"));
    EXPECT_EQ(5, melInt("counter -q -step"));
    EXPECT_EQ((std::vector<std::string>{"one", "two"}), melStrings("counter -names"));
}

TEST_F(PluginCommandTest, anArrayIsOneArgumentWithoutASyntaxAndItsElementsWithOne)
{
    mel("loadPlugin \"" + std::string(MODULE_DIR) +
        "/words.so\";"
        "string $names[] = {\"a\", \"b\"}; float $none[]; int $step[] = {7};");
    EXPECT_EQ((std::vector<std::string>{"-n", "array of 2", "array of 0", "1", "2", "3", "0.5"}),
              melStrings("words -n $names $none <<1, 2, 3>> .5"));
    EXPECT_EQ(7, melInt("counter $none -step $step"));
}

TEST_F(PluginCommandTest, anUndoableCallIsOneEntryOfTheUndoQueue)
{
    mel("counter -step 3");
    mel("counter -q -step");
    EXPECT_EQ(1U, session.undo().undoCount());
    EXPECT_EQ("counter -step 3", session.undo().undoName());
    mel("undo");
    EXPECT_EQ(0, melInt("counter -q -step"));
    mel("redo");
    EXPECT_EQ(3, melInt("counter -q -step"));
}

TEST_F(PluginCommandTest, theEntryOfACallWithLongArgumentsHasAShortName)
{
    mel("counter -step \"3" + std::string(100000, ' ') + "\"");
    EXPECT_EQ("counter -step \"3" + std::string(200 - 16, ' ') + "...", session.undo().undoName());
}

TEST_F(PluginCommandTest, badCallsAreErrorsAndLeaveNoEntry)
{
    const struct {
        const char* call;
        const char* error;
    } cases[] = {
        {"counter -of 3", "counter: Invalid flag '-of'."},
        {"counter -step \"many\"", "counter: Invalid argument for flag '-step'. Expected int, got many."},
        {"counter -step", "counter: No argument for flag '-step'. Expected int."},
        {"counter stray", "counter: Too many arguments: 'stray'."},
        {"counter -throw", "counter: out of numbers"},
        {"counter -fail", "counter: (kInvalidParameter): Invalid parameter for this call"},
    };
    for (const auto& example : cases)
        EXPECT_EQ(std::string("line 1: ") + example.error, melError(example.call));
    EXPECT_EQ(0U, session.undo().undoCount());
    EXPECT_EQ(0, melInt("counter -q -step"));
}

TEST_F(PluginCommandTest, aFinalisedToolCommandIsUndoneAndRedoneButNotRun)
{
    mel("clickContext myClick; setToolTo myClick;");
    mel("viewportEvent -press 10 10; viewportEvent -release 10 10;");
    EXPECT_EQ(10, melInt("counter -q -step"));
    EXPECT_EQ("click -note \"one click\"", session.undo().undoName());
    mel("undo");
    EXPECT_EQ(0, melInt("counter -q -step"));
    mel("redo");
    EXPECT_EQ(10, melInt("counter -q -step"));
}

TEST_F(PluginCommandTest, aFinalisedToolCommandThatHasATextOfItsOwnIsNamedByIt)
{
    mel("clickContext myClick; setToolTo myClick;");
    mel("viewportEvent -press 10 10 -button 2; viewportEvent -release 10 10;");
    EXPECT_EQ("click in the middle", session.undo().undoName());
}

TEST_F(PluginCommandTest, aToolCommandThatIsNeverFinalisedLivesAsLongAsItsContextCommand)
{
    const auto gone = [this] {
        return std::count(messages().begin(), messages().end(), "warning: a click has come to nothing");
    };
    allowMessages();
    mel("clickContext myClick; setToolTo myClick;");
    mel("viewportEvent -press 10 10 -shift; viewportEvent -release 10 10;");
    mel("viewportEvent -press 10 10 -shift; viewportEvent -release 10 10;");
    EXPECT_EQ(0, gone());
    mel("viewportEvent -press 10 10 -control; viewportEvent -release 10 10;");
    EXPECT_EQ(1, gone()) << "the tool has deleted it";
    mel("viewportEvent -press 10 10; viewportEvent -release 10 10; unloadPlugin counter");
    EXPECT_EQ(3, gone());
}

TEST_F(PluginCommandTest, unloadingWhileTheToolIsOnAndItsCommandsAreInTheQueueIsSafe)
{
    mel("clickContext myClick; setToolTo myClick;");
    mel("viewportEvent -press 10 10; viewportEvent -release 10 10; counter; unloadPlugin counter;");
    EXPECT_EQ(0U, session.undo().undoCount());
    EXPECT_EQ("selectSuperContext", melString("currentCtx"));
}

TEST_F(PluginCommandTest, resultsGrowByWhatIsAppended)
{
    const char* const printed[] = {"1\n2\n", "1.5\n2.5\n", "1\n0\n", "one\ntwo\n",
                                   "x\ny\n", "x\ny\n",     "7\n8\n", "8\n"};
    int step = 0;
    for (const char* expected : printed)
        EXPECT_EQ(expected, mel("lister -step " + std::to_string(step++)).printed());
}

TEST_F(PluginCommandTest, aParserShowsWhatItRefuses)
{
    expectError("Invalid flag '-of'.");
    EXPECT_EQ("line 1: lister: (kFailure): Unexpected internal failure", melError("lister -of 3"));
}

} // namespace
