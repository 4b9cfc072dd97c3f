#pragma once

#include <deque>
#include <string>

namespace host {

class Session;

/// Commands that wait until the program is idle (executeCommandOnIdle, evalDeferred): run in the order in
/// which they were queued, without result, and apart from any undo entry that is open. A command that fails
/// is reported as an error and the rest still run; what a command queues itself runs in the same go, after
/// everything else.
class IdleQueue {
public:
    explicit IdleQueue(Session& session) : owner(session) {}

    /// Queues MEL text. `display` echoes the text as information when it runs; `recorded` lets it make
    /// entries of the undo queue (what a person's script defers does, what a plug-in queues does not).
    /// Traced here, by the call.
    void add(const std::string& text, bool display = false, bool recorded = false);
    /// Runs until the queue is empty. A call from within a queued command does nothing.
    void run();
    /// How many commands have failed that a script had deferred.
    int failures() const { return failed; }
    bool empty() const { return waiting.empty(); }
    void clear() { waiting.clear(); }

private:
    struct Entry {
        std::string text;
        bool display, recorded;
    };
    void runOne(const Entry& entry);

    Session& owner;
    std::deque<Entry> waiting;
    bool running = false;
    int failed = 0;
};

} // namespace host
