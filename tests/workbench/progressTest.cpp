// What a person at a terminal sees of long work.
#include "runWorkbench.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace testing_support;

namespace {

/// Runs the program with a terminal as standard error; what it wrote there.
std::string onTerminal(const std::string& script)
{
    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0)
        return "no terminal to be had";
    const std::string terminal = ptsname(master);
    const pid_t child = fork();
    if (child == 0) {
        dup2(open(terminal.c_str(), O_RDWR | O_NOCTTY), STDERR_FILENO);
        execl(WORKBENCH_PROGRAM, "morvane-workbench", "--batch", "--no-plug-in", "--script", script.c_str(),
              nullptr);
        _exit(127);
    }
    // Kept open on this side, so that reading waits instead of failing before the child has begun.
    const int keep = open(terminal.c_str(), O_RDWR | O_NOCTTY);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    fcntl(master, F_SETFL, O_NONBLOCK);
    std::string text(65536, ' ');
    const ssize_t count = read(master, text.data(), text.size());
    text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    close(keep);
    close(master);
    return text;
}

TEST(Progress, ShowsAtATerminalWhileWorkIsLongAndNowhereElse)
{
    const Folder folder;
    const std::string script = folder.write(
        "slow.mel", "warning \"first\"; float $t = `timerX`; while (`timerX -startTime $t` < 1.5) {}\n"
                    "warning \"last\";\n");
    const std::string seen = onTerminal(script);
    EXPECT_NE(seen.find("slow.mel  "), std::string::npos) << seen;
    EXPECT_NE(seen.find("1 s"), std::string::npos) << seen;
    // The messages stand on lines of their own: the line of progress was taken away.
    EXPECT_NE(seen.find("\r// Warning: last //"), std::string::npos) << seen;
    EXPECT_EQ(onTerminal(folder.write("quick.mel", "int $x = 1;")), "");
    EXPECT_EQ(runWorkbench({"--batch", "--no-plug-in", "--script", script}).err,
              "// Warning: first //\n// Warning: last //\n");
}

} // namespace
