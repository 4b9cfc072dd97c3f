#pragma once

#include "support/hostFixture.h"
#include "support/paths.h"

#include <string>
#include <vector>

namespace testing_support {

/// A host with the plug-in loaded as Maya loads it. The tool is morvaneContext1. It fails, too, when the
/// plug-in touched what had left the scene.
class ToolTest : public HostTest {
public:
    void SetUp() override;
    void TearDown() override;

    /// Runs `morvaneContext -e FLAGS morvaneContext1`.
    void edit(const std::string& flags) { mel("morvaneContext -e " + flags + " morvaneContext1"); }
    /// Runs it where it must fail.
    void editFails(const std::string& flags);
    host::mel::Value query(const std::string& flag)
    {
        return mel("morvaneContext -q -" + flag + " morvaneContext1");
    }
    void toolOn() { mel("setToolTo morvaneContext1"); }
    void toolOff() { mel("setToolTo selectSuperContext"); }

    struct Pixel {
        int x = 0, y = 0;
    };
    /// Where a point component is drawn in the view.
    Pixel pixelOf(const std::string& component);
    void press(Pixel at, const std::string& flags = {});
    void drag(Pixel to);
    void release(Pixel at);
    /// Press on a component, drag by (dx, dy) in `steps` events, release.
    void stroke(const std::string& component, int dx, int dy, const std::string& flags = {}, int steps = 1);
};

/// Empties the trace, runs, returns what was traced.
template <class Function>
std::vector<std::string> traced(HostTest& test, Function&& run)
{
    test.trace.clear();
    run();
    return test.trace;
}

} // namespace testing_support
