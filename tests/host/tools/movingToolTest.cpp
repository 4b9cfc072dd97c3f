// A tool that moves what is selected and leaves selecting to its base class.
#include "support/hostFixture.h"
#include "tools/contextCommands.h"
#include "tools/tools.h"

#include <maya/MEvent.h>
#include <maya/MPxContextCommand.h>
#include <maya/MPxSelectionContext.h>

#include <memory>

namespace {

using testing_support::HostTest;
using Texts = std::vector<std::string>;

/// What one gesture works with; made by a press that does not select.
struct Move {
    MPoint start;
};

Texts notes;

void note(const char* step, const MPoint& from, const MPoint& to)
{
    notes.push_back(std::string(step) + (from.distanceTo(to) > 0.0 ? " moved" : ""));
}

class MovingContext : public MPxSelectionContext {
public:
    using MPxSelectionContext::doDrag;
    using MPxSelectionContext::doPress;
    using MPxSelectionContext::doRelease;

    MStatus doPress(MEvent& event) override
    {
        MPxSelectionContext::doPress(event);
        if (!isSelecting()) {
            move = std::make_unique<Move>(Move{startPoint()});
            note("press", startPoint(), lastDragPoint());
        }
        return MStatus::kSuccess;
    }
    MStatus doDrag(MEvent& event) override
    {
        MPxSelectionContext::doDrag(event);
        if (!isSelecting())
            note("drag", move->start, lastDragPoint()); // nothing was made by a press that selects
        return MStatus::kSuccess;
    }
    MStatus doRelease(MEvent& event) override
    {
        MPxSelectionContext::doRelease(event);
        if (isSelecting())
            return MStatus::kSuccess;
        note("release", move->start, lastDragPoint());
        move.reset();
        return MStatus::kSuccess;
    }
    MPoint start() { return startPoint(); }

private:
    std::unique_ptr<Move> move;
};

MovingContext* made = nullptr;

class MovingCommand : public MPxContextCommand {
public:
    MPxContext* makeObj() override { return made = new MovingContext; }
};

class MovingToolTest : public HostTest {
public:
    void SetUp() override
    {
        session.tools().contextCommands().add("movingTool", [] { return new MovingCommand; }, {});
        mel("polyCube -n box; polyCube -n other; move 3 0 0 other; lookThru frontShape; viewFit -all;"
            "select -cl; setToolTo `movingTool`");
        notes.clear();
    }
    /// From the middle of an object, by so many pixels to the right.
    void gesture(const std::string& object, int right, const std::string& flags = {})
    {
        const auto pixel = mel("viewportProject " + object).toIntArray();
        const std::string y = " " + std::to_string(pixel.at(1)) + " ";
        const std::string from = std::to_string(pixel.at(0)) + y,
                          to = std::to_string(pixel.at(0) + right) + y;
        mel("viewportEvent -press " + from + flags + "; viewportEvent -drag " + to +
            "; viewportEvent -release " + to);
    }
    Texts selected() { return melStrings("ls -selection"); }
};

TEST_F(MovingToolTest, APressOnWhatIsSelectedIsTheTools)
{
    gesture("box", 0);
    EXPECT_EQ(selected(), Texts{"box"});
    EXPECT_EQ(notes, Texts()) << "a gesture that selects is seen as such to its end";
    gesture("box", 8);
    EXPECT_EQ(notes, (Texts{"press", "drag moved", "release moved"}));
    EXPECT_EQ(selected(), Texts{"box"});
    notes.clear();
    gesture("other", 0);
    EXPECT_EQ(selected(), Texts{"other"});
    gesture("other", 0, "-shift");
    EXPECT_EQ(selected(), Texts()) << "with a key a press on what is selected selects";
    EXPECT_EQ(notes, Texts());
    mel("select box");
    gesture("other", 8, "-button 2");
    EXPECT_EQ(notes, (Texts{"press", "drag moved", "release moved"})) << "the middle button never selects";
}

TEST_F(MovingToolTest, PointsAreInTheWorld)
{
    gesture("other", 0);
    EXPECT_NEAR(made->start().x, 3.0, 0.05);
    EXPECT_NEAR(made->start().y, 0.0, 0.05);
    gesture("box", 0);
    EXPECT_NEAR(made->start().x, 0.0, 0.05);
}

} // namespace
