#include "undo/undoQueue.h"

#include "messages.h"
#include "session.h"
#include "types/error.h"

#include <algorithm>
#include <deque>
#include <exception>
#include <utility>

namespace host {

namespace {

using Items = std::vector<std::unique_ptr<UndoItem>>;

struct Entry {
    std::string name;
    Items items;
};

/// What is being collected for one entry: by an open chunk or by an open command scope.
struct Collection {
    std::string name;
    Items items;
    int depth = 0; ///< chunks or scopes open around each other
};

/// Counts a level for as long as it lasts.
class Nesting {
public:
    explicit Nesting(int& counted) : level(counted) { ++level; }
    ~Nesting() { --level; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    int& level;
};

/// What went wrong in a step, as an error.
[[noreturn]] void failed(const char* otherwise)
{
    try {
        throw;
    } catch (const std::exception& problem) {
        throw Error(problem.what());
    } catch (...) {
        throw Error(otherwise);
    }
}

} // namespace

struct UndoQueue::State {
    explicit State(Session& owner) : session(owner) {}

    void add(Entry entry);
    void trim();
    void flushChunk();
    enum class Direction { kBack, kAgain };
    void run(const Items& items, Direction direction);
    void move(Entry entry, Direction direction);
    void rollBack(const Items& items);

    Session& session;
    std::deque<Entry> done, undone;
    Collection scope, chunk;
    int suspended = 0;
    bool undoing = false, redoing = false;
    bool on = true, onWithoutFlush = true;
    bool unlimited = true;
    std::size_t limit = 50;
};

void UndoQueue::State::add(Entry entry)
{
    if (entry.items.empty())
        return;
    const std::deque<Entry> dropped = std::exchange(undone, {});
    done.push_back(std::move(entry));
    trim();
}

void UndoQueue::State::trim()
{
    while (!unlimited && done.size() > limit)
        done.pop_front();
}

/// What an open chunk has so far becomes an entry; the chunk stays open.
void UndoQueue::State::flushChunk()
{
    add({chunk.name, std::exchange(chunk.items, {})});
}

/// All steps, or none: those before one that fails are taken the other way.
void UndoQueue::State::run(const Items& items, Direction direction)
{
    const Nesting nesting(suspended);
    const bool back = direction == Direction::kBack;
    const auto item = [&](std::size_t step) -> UndoItem& {
        return *items[back ? items.size() - 1 - step : step];
    };
    std::size_t step = 0;
    try {
        for (; step < items.size(); ++step)
            back ? item(step).undo(session) : item(step).redo(session);
    } catch (...) {
        while (step-- > 0) {
            try {
                back ? item(step).redo(session) : item(step).undo(session);
            } catch (...) {
                session.messages().error("A step that was to be put back could not be.");
            }
        }
        failed(back ? "A step could not be undone." : "A step could not be redone.");
    }
}

/// From one queue to the other. The entry is in neither meanwhile: a step may empty them.
void UndoQueue::State::move(Entry entry, Direction direction)
{
    const bool back = direction == Direction::kBack;
    bool& underWay = back ? undoing : redoing;
    underWay = true;
    try {
        run(entry.items, direction);
    } catch (...) {
        underWay = false;
        (back ? done : undone).push_back(std::move(entry));
        throw;
    }
    underWay = false;
    (back ? undone : done).push_back(std::move(entry));
}

/// Takes back as much as can be of what a failing command has done.
void UndoQueue::State::rollBack(const Items& items)
{
    const Nesting nesting(suspended);
    for (auto item = items.rbegin(); item != items.rend(); ++item) {
        try {
            (*item)->undo(session);
        } catch (const std::exception& problem) {
            session.messages().error(problem.what());
        } catch (...) {
            session.messages().error("A step could not be undone.");
        }
    }
}

UndoQueue::UndoQueue(Session& session) : state(std::make_unique<State>(session)) {}

UndoQueue::~UndoQueue()
{
    flush();
}

bool UndoQueue::recording() const
{
    return state->on && state->onWithoutFlush && state->suspended == 0 && !state->undoing && !state->redoing;
}

void UndoQueue::push(std::unique_ptr<UndoItem> item)
{
    if (!recording())
        return;
    if (state->scope.depth > 0) {
        state->scope.items.push_back(std::move(item));
    } else if (state->chunk.depth > 0) {
        state->chunk.items.push_back(std::move(item));
    } else {
        Entry entry;
        entry.items.push_back(std::move(item));
        state->add(std::move(entry));
    }
}

UndoQueue::CommandScope::CommandScope(UndoQueue& owner, std::string command)
    : queue(owner), name(std::move(command)), exceptionsAtEntry(std::uncaught_exceptions()),
      itemsAtEntry(owner.state->scope.items.size())
{
    if (queue.state->scope.depth++ == 0)
        queue.state->scope.name = name;
}

UndoQueue::CommandScope::~CommandScope()
{
    State& shared = *queue.state;
    Collection& scope = shared.scope;
    if (failed || std::uncaught_exceptions() > exceptionsAtEntry) {
        const auto first = scope.items.begin() + static_cast<std::ptrdiff_t>(itemsAtEntry);
        const Items halfDone(std::make_move_iterator(first), std::make_move_iterator(scope.items.end()));
        scope.items.resize(itemsAtEntry);
        shared.rollBack(halfDone);
    }
    if (--scope.depth > 0)
        return;
    Items items = std::exchange(scope.items, {});
    if (shared.chunk.depth == 0) {
        shared.add({scope.name, std::move(items)});
        return;
    }
    if (shared.chunk.name.empty() && !items.empty())
        shared.chunk.name = scope.name;
    std::move(items.begin(), items.end(), std::back_inserter(shared.chunk.items));
}

void UndoQueue::CommandScope::fail()
{
    failed = true;
}

UndoQueue::Suspend::Suspend(UndoQueue& owner) : queue(owner)
{
    ++queue.state->suspended;
}

UndoQueue::Suspend::~Suspend()
{
    --queue.state->suspended;
}

struct UndoQueue::Isolate::Saved {
    Collection scope, chunk;
    int suspended = 0;
};

UndoQueue::Isolate::Isolate(UndoQueue& owner) : queue(owner), saved(std::make_unique<Saved>())
{
    saved->scope = std::exchange(queue.state->scope, {});
    saved->chunk = std::exchange(queue.state->chunk, {});
    saved->suspended = std::exchange(queue.state->suspended, 0);
}

UndoQueue::Isolate::~Isolate()
{
    queue.state->flushChunk();
    queue.state->scope = std::move(saved->scope);
    queue.state->chunk = std::move(saved->chunk);
    queue.state->suspended = saved->suspended;
}

void UndoQueue::openChunk(const std::string& name)
{
    if (state->chunk.depth++ == 0)
        state->chunk.name = name;
}

void UndoQueue::closeChunk()
{
    if (state->chunk.depth == 0)
        throw Error("There is no open undo chunk to close.");
    if (--state->chunk.depth > 0)
        return;
    state->flushChunk();
    state->chunk.name.clear();
}

int UndoQueue::openChunks() const
{
    return state->chunk.depth;
}

void UndoQueue::undo()
{
    if (state->undoing || state->redoing)
        throw Error("Undo cannot be called while a step is being undone or redone.");
    state->flushChunk();
    if (state->done.empty())
        throw Error("There are no more commands to undo.");
    Entry entry = std::move(state->done.back());
    state->done.pop_back();
    state->move(std::move(entry), State::Direction::kBack);
}

void UndoQueue::redo()
{
    if (state->undoing || state->redoing)
        throw Error("Redo cannot be called while a step is being undone or redone.");
    if (state->undone.empty())
        throw Error("There are no more commands to redo.");
    Entry entry = std::move(state->undone.back());
    state->undone.pop_back();
    state->move(std::move(entry), State::Direction::kAgain);
    state->trim();
}

bool UndoQueue::isUndoing() const
{
    return state->undoing;
}
bool UndoQueue::isRedoing() const
{
    return state->redoing;
}
bool UndoQueue::enabled() const
{
    return state->on && state->onWithoutFlush;
}

void UndoQueue::setEnabled(bool on)
{
    state->on = on;
    if (on)
        state->onWithoutFlush = true;
    else
        flush();
}

void UndoQueue::setWithoutFlush(bool on)
{
    state->onWithoutFlush = on;
    if (on)
        state->on = true;
}

bool UndoQueue::infinite() const
{
    return state->unlimited;
}

void UndoQueue::setInfinite(bool on)
{
    state->unlimited = on;
    state->trim();
}

std::size_t UndoQueue::length() const
{
    return state->limit;
}

void UndoQueue::setLength(std::size_t entries)
{
    state->limit = entries;
    state->trim();
}

std::string UndoQueue::undoName() const
{
    return state->done.empty() ? "" : state->done.back().name;
}
std::string UndoQueue::redoName() const
{
    return state->undone.empty() ? "" : state->undone.back().name;
}

std::vector<std::string> UndoQueue::names() const
{
    std::vector<std::string> result;
    for (const Entry& entry : state->done)
        result.push_back(entry.name);
    return result;
}

std::size_t UndoQueue::undoCount() const
{
    return state->done.size();
}
std::size_t UndoQueue::redoCount() const
{
    return state->undone.size();
}

void UndoQueue::flush()
{
    // Taken out first: what an item lets go of may come back here.
    const std::deque<Entry> done = std::exchange(state->done, {});
    const std::deque<Entry> undone = std::exchange(state->undone, {});
    const Items chunk = std::exchange(state->chunk.items, {});
}

} // namespace host
