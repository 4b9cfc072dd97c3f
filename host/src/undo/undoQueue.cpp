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

struct Chunk {
    std::string name;
    Items items;
};

} // namespace

struct UndoQueue::State {
    explicit State(Session& owner) : session(owner) {}

    Session& session;
    std::deque<Entry> done;
    std::vector<Entry> undone; ///< the next redo is the last
    std::vector<Chunk> chunks; ///< open ones, outermost first; items gather in the outermost
    Items scopeItems;          ///< of the open command scopes
    int scopes = 0;
    int suspensions = 0;
    bool on = true;
    bool unlimited = true;
    std::size_t bound = 50;
    bool undoing = false, redoing = false;

    void trim()
    {
        while (!unlimited && done.size() > bound)
            done.pop_front();
    }
    void finish(std::string name, Items items)
    {
        if (items.empty())
            return;
        undone.clear();
        if (!chunks.empty()) {
            std::move(items.begin(), items.end(), std::back_inserter(chunks.front().items));
            return;
        }
        done.push_back({std::move(name), std::move(items)});
        trim();
    }
    /// One step of an entry; what it throws becomes a message and the rest of the entry still runs.
    template <class Step>
    void guarded(Step&& step)
    {
        try {
            step();
        } catch (const std::exception& problem) {
            session.messages().error(problem.what());
        }
    }
    /// Takes back the scope items from `begin` on.
    void rollBack(std::size_t begin)
    {
        ++suspensions;
        while (scopeItems.size() > begin) {
            const std::unique_ptr<UndoItem> item = std::move(scopeItems.back());
            scopeItems.pop_back();
            guarded([&] { item->undo(session); });
        }
        --suspensions;
    }
};

UndoQueue::UndoQueue(Session& session) : state(std::make_unique<State>(session)) {}
UndoQueue::~UndoQueue() = default;

bool UndoQueue::recording() const
{
    return state->on && state->suspensions == 0 && !state->undoing && !state->redoing;
}

void UndoQueue::push(std::unique_ptr<UndoItem> item)
{
    if (!recording())
        return;
    if (state->scopes > 0) {
        state->scopeItems.push_back(std::move(item));
        return;
    }
    Items items;
    items.push_back(std::move(item));
    state->finish({}, std::move(items));
}

UndoQueue::CommandScope::CommandScope(UndoQueue& undoQueue, std::string entryName)
    : queue(undoQueue), name(std::move(entryName)), exceptionsAtEntry(std::uncaught_exceptions()),
      itemsAtEntry(queue.state->scopeItems.size())
{
    ++queue.state->scopes;
}

void UndoQueue::CommandScope::fail() { failed = true; }

UndoQueue::CommandScope::~CommandScope()
{
    State& state = *queue.state;
    if (failed || std::uncaught_exceptions() > exceptionsAtEntry)
        state.rollBack(itemsAtEntry);
    if (--state.scopes == 0)
        state.finish(std::move(name), std::exchange(state.scopeItems, {}));
}

UndoQueue::Suspend::Suspend(UndoQueue& undoQueue) : queue(undoQueue) { ++queue.state->suspensions; }
UndoQueue::Suspend::~Suspend() { --queue.state->suspensions; }

struct UndoQueue::Isolate::Saved {
    int scopes, suspensions;
    Items items;
};

UndoQueue::Isolate::Isolate(UndoQueue& undoQueue)
    : queue(undoQueue),
      saved(new Saved{queue.state->scopes, queue.state->suspensions, std::move(queue.state->scopeItems)})
{
    queue.state->scopes = 0;
    queue.state->suspensions = 0;
    queue.state->scopeItems.clear();
}

UndoQueue::Isolate::~Isolate()
{
    queue.state->scopes = saved->scopes;
    queue.state->suspensions = saved->suspensions;
    queue.state->scopeItems = std::move(saved->items);
}

void UndoQueue::openChunk(const std::string& name) { state->chunks.push_back({name, {}}); }

void UndoQueue::closeChunk()
{
    if (state->chunks.empty())
        throw Error("There is no open undo chunk to close.");
    Chunk chunk = std::move(state->chunks.back());
    state->chunks.pop_back();
    if (state->chunks.empty())
        state->finish(chunk.name, std::move(chunk.items));
}

int UndoQueue::openChunks() const { return static_cast<int>(state->chunks.size()); }

void UndoQueue::undo()
{
    if (state->done.empty())
        throw Error("There are no more commands to undo.");
    Entry entry = std::move(state->done.back());
    state->done.pop_back();
    state->undoing = true;
    for (auto item = entry.items.rbegin(); item != entry.items.rend(); ++item)
        state->guarded([&] { (*item)->undo(state->session); });
    state->undoing = false;
    state->undone.push_back(std::move(entry));
}

void UndoQueue::redo()
{
    if (state->undone.empty())
        throw Error("There are no more commands to redo.");
    Entry entry = std::move(state->undone.back());
    state->undone.pop_back();
    state->redoing = true;
    for (const std::unique_ptr<UndoItem>& item : entry.items)
        state->guarded([&] { item->redo(state->session); });
    state->redoing = false;
    state->done.push_back(std::move(entry));
}

bool UndoQueue::isUndoing() const { return state->undoing; }
bool UndoQueue::isRedoing() const { return state->redoing; }

bool UndoQueue::enabled() const { return state->on; }

void UndoQueue::setEnabled(bool on)
{
    state->on = on;
    if (!on)
        flush();
}

void UndoQueue::setWithoutFlush(bool on) { state->on = on; }

bool UndoQueue::infinite() const { return state->unlimited; }

void UndoQueue::setInfinite(bool on)
{
    state->unlimited = on;
    state->trim();
}

std::size_t UndoQueue::length() const { return state->bound; }

void UndoQueue::setLength(std::size_t entries)
{
    state->bound = entries;
    state->trim();
}

std::string UndoQueue::undoName() const { return state->done.empty() ? std::string() : state->done.back().name; }

std::string UndoQueue::redoName() const
{
    return state->undone.empty() ? std::string() : state->undone.back().name;
}

std::vector<std::string> UndoQueue::names() const
{
    std::vector<std::string> all;
    for (const Entry& entry : state->done)
        all.push_back(entry.name);
    return all;
}

std::size_t UndoQueue::undoCount() const { return state->done.size(); }
std::size_t UndoQueue::redoCount() const { return state->undone.size(); }

void UndoQueue::flush()
{
    // Items may hold the last handles to nodes and plug-in objects; let them go one by one, newest first.
    state->undone.clear();
    while (!state->done.empty())
        state->done.pop_back();
    state->chunks.clear();
    state->scopeItems.clear();
}

} // namespace host
