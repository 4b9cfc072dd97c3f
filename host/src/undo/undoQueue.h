#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace host {

class Session;

/// One step that can be taken back and taken again. Items hold Refs and value copies only.
class UndoItem {
public:
    virtual ~UndoItem() = default;
    virtual void undo(Session& session) = 0;
    virtual void redo(Session& session) = 0;
};

/// Two functions as an item.
class UndoCall final : public UndoItem {
public:
    UndoCall(std::function<void(Session&)> undoing, std::function<void(Session&)> redoing)
        : back(std::move(undoing)), again(std::move(redoing))
    {}
    void undo(Session& session) override { back(session); }
    void redo(Session& session) override { again(session); }

private:
    std::function<void(Session&)> back, again;
};

/// The undo queue. Infinite by default (undoInfo -length sets a bound).
///
/// Every MEL command that changes something is an entry of its own, named by its text; entries made between
/// undoInfo -openChunk and -closeChunk become one. A tool command that is finalized is an entry too.
/// Undo and redo run with recording off. When a step of an entry fails, the steps before it are taken the
/// other way again, the entry stays where it is, and undo and redo throw what the step said: nothing goes
/// past an entry that could not be taken back.
class UndoQueue {
public:
    explicit UndoQueue(Session& session);
    ~UndoQueue();

    /// Whether Edits should record: on, not suspended, not undoing or redoing.
    bool recording() const;
    void push(std::unique_ptr<UndoItem> item); ///< into the open command scope, else as an entry of its own

    /// Around one command: the items pushed while the outermost scope is open become one entry, named
    /// `name`, when it closes; none pushed, no entry. If a scope is left by an exception (or fail() was
    /// called) its own items are undone in reverse and dropped: a failing command leaves nothing half-done.
    class CommandScope {
    public:
        CommandScope(UndoQueue& queue, std::string name);
        ~CommandScope();
        CommandScope(const CommandScope&) = delete;
        CommandScope& operator=(const CommandScope&) = delete;
        void fail();

    private:
        UndoQueue& queue;
        std::string name;
        int exceptionsAtEntry;
        std::size_t itemsAtEntry;
        bool failed = false;
    };
    /// Nothing is recorded inside (API calls with undo off, file reading, undo itself).
    class Suspend {
    public:
        explicit Suspend(UndoQueue& queue);
        ~Suspend();
        Suspend(const Suspend&) = delete;
        Suspend& operator=(const Suspend&) = delete;

    private:
        UndoQueue& queue;
    };
    /// Entries made inside are top-level whatever scope is open outside, and recording is on again even if
    /// it was suspended: for events that a command plays (a stroke is its own undo step).
    class Isolate {
    public:
        explicit Isolate(UndoQueue& queue);
        ~Isolate();
        Isolate(const Isolate&) = delete;
        Isolate& operator=(const Isolate&) = delete;

    private:
        struct Saved;
        UndoQueue& queue;
        std::unique_ptr<Saved> saved;
    };

    void openChunk(const std::string& name);
    void closeChunk(); ///< an unmatched close is an error (host::Error)
    int openChunks() const;

    /// Throws host::Error ("There are no more commands to undo.") when empty.
    void undo();
    void redo();
    bool isUndoing() const;
    bool isRedoing() const;

    bool enabled() const;
    void setEnabled(bool on);      ///< undoInfo -state; turning off empties the queue
    void setWithoutFlush(bool on); ///< undoInfo -stateWithoutFlush
    bool infinite() const;
    void setInfinite(bool on);
    std::size_t length() const;
    void setLength(std::size_t entries);
    std::string undoName() const; ///< of the entry that undo would take back; empty when none
    std::string redoName() const;
    std::vector<std::string> names() const; ///< oldest first (undoInfo -printQueue)
    std::size_t undoCount() const;
    std::size_t redoCount() const;
    void flush();

private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace host
