#include "support/toolFixture.h"

namespace testing_support {

void ToolTest::SetUp()
{
    mel("loadPlugin \"" + libraryPath("morvane") + "\"");
    trace.clear();
}

void ToolTest::TearDown()
{
    EXPECT_EQ(session.staleCalls, 0) << "the plug-in kept plain handles of deleted nodes";
    HostTest::TearDown();
}

void ToolTest::editFails(const std::string& flags)
{
    expectError("morvaneContext: editing failed.");
    EXPECT_EQ(melInt("catch(`morvaneContext -e " + flags + " morvaneContext1`)"), 1) << flags;
}

ToolTest::Pixel ToolTest::pixelOf(const std::string& component)
{
    const std::vector<int> at = mel("viewportProject \"" + component + "\"").toIntArray();
    if (at.size() != 2) {
        ADD_FAILURE() << component << " has no pixel";
        return {};
    }
    return {at[0], at[1]};
}

void ToolTest::press(Pixel at, const std::string& flags)
{
    mel("viewportEvent -press " + std::to_string(at.x) + " " + std::to_string(at.y) + " " + flags);
}

void ToolTest::drag(Pixel to)
{
    mel("viewportEvent -drag " + std::to_string(to.x) + " " + std::to_string(to.y));
}

void ToolTest::release(Pixel at)
{
    mel("viewportEvent -release " + std::to_string(at.x) + " " + std::to_string(at.y));
}

void ToolTest::stroke(const std::string& component, int dx, int dy, const std::string& flags, int steps)
{
    const Pixel start = pixelOf(component);
    press(start, flags);
    for (int step = 1; step <= steps; ++step)
        drag({start.x + dx * step / steps, start.y + dy * step / steps});
    release({start.x + dx, start.y + dy});
}

} // namespace testing_support
