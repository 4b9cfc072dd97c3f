#include "progress.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

#include <unistd.h>

namespace workbench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kPatience = std::chrono::milliseconds(700); ///< shorter work is not worth a word
constexpr auto kStep = std::chrono::milliseconds(200);

} // namespace

Progress::Progress() : terminal(isatty(STDERR_FILENO) != 0)
{
    if (terminal)
        writer = std::thread([this] { run(); });
}

Progress::~Progress()
{
    if (!terminal)
        return;
    {
        const std::lock_guard<std::mutex> lock(access);
        quitting = true;
        erase();
    }
    wake.notify_all();
    writer.join();
}

void Progress::begin(const std::string& work, std::uint64_t total)
{
    const std::lock_guard<std::mutex> lock(access);
    title = work;
    whole = total;
    counted = 0;
    since = Clock::now();
}

void Progress::end()
{
    const std::lock_guard<std::mutex> lock(access);
    title.clear();
    erase();
}

void Progress::clear()
{
    const std::lock_guard<std::mutex> lock(access);
    erase();
}

void Progress::erase()
{
    if (shown == 0)
        return;
    std::fprintf(stderr, "\r%*s\r", static_cast<int>(shown), "");
    std::fflush(stderr);
    shown = 0;
}

std::string Progress::line() const
{
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - since).count();
    std::string text = title + "  ";
    if (whole > 0)
        text += std::to_string(std::min<std::uint64_t>(100, counted * 100 / whole)) + " %  ";
    return text + std::to_string(seconds) + " s";
}

void Progress::run()
{
    std::unique_lock<std::mutex> lock(access);
    while (!wake.wait_for(lock, kStep, [this] { return quitting; })) {
        if (title.empty() || Clock::now() - since < kPatience)
            continue;
        const std::string text = line();
        erase();
        std::fprintf(stderr, "%s", text.c_str());
        std::fflush(stderr);
        shown = text.size();
    }
}

} // namespace workbench
