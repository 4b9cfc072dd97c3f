#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

namespace workbench {

/// Tells a person at a terminal what the program is at while that takes long: one line on standard error that
/// is written over and gone when the work is done. Nothing at all where standard error is no terminal.
///
/// A thread of its own writes it, because the work itself runs in one piece.
class Progress {
public:
    /// A piece of work for as long as it lives.
    class Work {
    public:
        Work(Progress& shownBy, const std::string& title, std::uint64_t total = 0) : progress(shownBy)
        {
            progress.begin(title, total);
        }
        ~Work() { progress.end(); }
        Work(const Work&) = delete;
        Work& operator=(const Work&) = delete;

    private:
        Progress& progress;
    };

    Progress();
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    bool toTerminal() const { return terminal; }
    /// What the work at hand counts up to its total.
    std::atomic<std::uint64_t>& done() { return counted; }
    /// Takes the line away, so that something else can be written; it comes back by itself.
    void clear();

private:
    void begin(const std::string& work, std::uint64_t total); ///< total 0 = not known
    void end();
    void run();
    std::string line() const;
    void erase();

    const bool terminal;
    std::atomic<std::uint64_t> counted{0};
    mutable std::mutex access; ///< of all below
    std::condition_variable wake;
    std::string title; ///< empty between pieces of work
    std::uint64_t whole = 0;
    std::chrono::steady_clock::time_point since;
    std::size_t shown = 0; ///< characters on the terminal
    bool quitting = false;
    std::thread writer;
};

} // namespace workbench
