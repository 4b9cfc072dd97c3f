// Random sessions: what somebody may do with the tool, the mouse and the scene in any order, also between a
// press and its release. After every action: undo and redo of it give the same scenes again, weights are
// finite, points that are not selected keep theirs, hot keys and preferences are the user's, and the saved
// text reopens and saves alike. A failure prints the script that replays it. MORVANE_SESSION_OPERATIONS=N
// makes each run longer or shorter, MORVANE_SESSION_SEED=N starts from another seed than 1.
#include "mel/interpreter.h"
#include "plugin/sessions/sessionState.h"
#include "plugin/sessions/sessionSteps.h"
#include "support/toolFixture.h"
#include "support/weights.h"
#include "tools/idleQueue.h"
#include "tools/tools.h"
#include "types/error.h"
#include "undo/undoQueue.h"

#include <cstdlib>
#include <iostream>

using namespace testing_support;

namespace {

constexpr unsigned kRuns = 25;
constexpr unsigned kOperations = 2000; ///< of a run
constexpr unsigned kOperationsPerScene = 200;

unsigned fromEnvironment(const char* name, unsigned otherwise)
{
    const char* const text = std::getenv(name);
    return text ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

class RandomSession : public ToolTest, public ::testing::WithParamInterface<unsigned> {
public:
    RandomSession()
        : steps(session, fromEnvironment("MORVANE_SESSION_SEED", 1) + GetParam(), libraryPath("morvane")),
          errors(std::cerr.rdbuf(nullptr))
    {
        session.makeCurrent(); // the one beside it, which reopens, came later
    }
    ~RandomSession() override { std::cerr.rdbuf(errors); }

    /// False when the command was refused.
    bool run(const std::string& line)
    {
        script += line + ";\n";
        try {
            session.mel().execute(line);
            session.tools().idle().run();
            return true;
        } catch (const host::Error&) {
            return false;
        }
    }

    void begin()
    {
        script = "loadPlugin \"" + libraryPath("morvane") + "\";\n";
        steps.begin([this](const std::string& line) { run(line); });
        run("undoInfo -state off; undoInfo -state on");
        known = stateOf(session);
    }

    void beginAction();
    void step();
    void checkUndo(std::size_t entries);
    void checkFlushed();
    void checkUnrecorded();
    void checkHistory();
    void checkWhatIsLeftAlone();
    void checkUserSettings();
    void checkReopening();

    /// From a press to its release, or one command.
    struct Action {
        std::string before;
        StoredWeights weights;
        std::size_t entries = 0;
        unsigned operations = 0;
        bool ofTool = false, ofToolOnly = true, goesBack = false, flushes = false;
        std::set<int> selected;
    };

    SessionSteps steps;
    Action action;
    Reopening reopened;
    std::string known; ///< the state after the last action
    std::string script;
    std::streambuf* errors;
};

void RandomSession::beginAction()
{
    action = Action();
    action.before = known;
    action.weights = storedWeights(session);
    action.entries = session.undo().undoCount();
}

void RandomSession::step()
{
    if (!steps.mouseIsDown())
        beginAction();
    const SessionSteps::Step next = steps.next();
    SCOPED_TRACE(next.script);
    run(next.script);
    ++action.operations;
    action.ofTool = action.ofTool || next.ofTool;
    action.ofToolOnly = action.ofToolOnly && next.ofTool;
    action.goesBack = next.goesBack;
    action.flushes = action.flushes || next.flushes;
    for (const int point : selectedPoints(session))
        action.selected.insert(point);
    ASSERT_EQ(notFinite(storedWeights(session)), "");
    checkUserSettings();
    if (steps.mouseIsDown())
        return;
    checkWhatIsLeftAlone();
    const std::size_t entries = session.undo().undoCount();
    known = stateOf(session);
    if (action.flushes)
        checkFlushed();
    else if (action.goesBack)
        checkHistory();
    else if (entries > action.entries)
        checkUndo(entries - action.entries);
    else
        checkUnrecorded();
    checkReopening();
}

/// A scene that is opened again, and a plug-in that is loaded again, leave the scene as it is.
void RandomSession::checkFlushed()
{
    if (action.operations == 1) {
        ASSERT_EQ(firstDifference(sceneOf(action.before), sceneOf(known)), "");
    }
}

/// What makes no entry changes nothing; the probe of a press may.
void RandomSession::checkUnrecorded()
{
    if (action.ofTool)
        return;
    ASSERT_EQ(firstDifference(action.before, known), "") << "not recorded";
}

void RandomSession::checkUndo(std::size_t entries)
{
    std::string undone, redone;
    for (int round = 0; round < 2; ++round) {
        for (std::size_t entry = 0; entry < entries; ++entry)
            ASSERT_TRUE(run("undo")) << "what has just been done can be undone";
        const std::string back = stateOf(session);
        for (std::size_t entry = 0; entry < entries; ++entry)
            ASSERT_TRUE(run("redo"));
        const std::string again = stateOf(session);
        if (round == 0) {
            undone = action.ofTool ? back : action.before;
            redone = action.ofTool ? again : known;
        }
        ASSERT_EQ(firstDifference(undone, back), "") << "undone, round " << round;
        ASSERT_EQ(firstDifference(redone, again), "") << "redone, round " << round;
        known = again;
    }
}

/// An undo or redo that was a step of its own, taken the other way and back.
void RandomSession::checkHistory()
{
    const std::size_t entries = session.undo().undoCount();
    if (entries == action.entries)
        return;
    const bool wasUndo = entries < action.entries;
    ASSERT_TRUE(run(wasUndo ? "redo; undo" : "undo; redo"));
    ASSERT_EQ(firstDifference(known, stateOf(session)), "") << "there and back";
}

void RandomSession::checkWhatIsLeftAlone()
{
    const bool reachesFurther =
        melInt("softSelect -q -sse") != 0 || melInt("symmetricModelling -q -symmetry") != 0;
    if (!action.ofToolOnly || reachesFurther)
        return;
    for (const int point : changedPoints(action.weights, storedWeights(session)))
        ASSERT_EQ(action.selected.count(point), 1u) << "point " << point << " was not selected";
}

void RandomSession::checkUserSettings()
{
    const bool on = melString("currentCtx") == "morvaneContext1";
    ASSERT_EQ(melString("hotkeySet -q -current"), on ? "morvaneTemp" : steps.usersSet());
    ASSERT_EQ(melInt("selectPref -q -clickDrag"), on || steps.usersClickDrag() ? 1 : 0);
}

void RandomSession::checkReopening()
{
    const std::string text = sceneText(session);
    ASSERT_EQ(firstDifference(text, reopened(text)), "") << "saved, opened and saved again";
}

TEST_P(RandomSession, LosesNothing)
{
    allowMessages();
    const unsigned operations = fromEnvironment("MORVANE_SESSION_OPERATIONS", kOperations);
    for (unsigned operation = 0; operation < operations && !HasFailure(); ++operation) {
        if (operation % kOperationsPerScene == 0)
            begin();
        step();
    }
    if (HasFailure())
        std::cout << "The script that replays it:\n" << script << std::flush;
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomSession, ::testing::Range(0u, kRuns));

} // namespace
