#include "tools/idleQueue.h"

#include "mel/interpreter.h"
#include "messages.h"
#include "session.h"
#include "trace.h"
#include "undo/undoQueue.h"

#include <utility>

namespace host {

void IdleQueue::add(const std::string& text, bool display, bool recorded)
{
    owner.trace().idle(display, text);
    waiting.push_back({text, display, recorded});
}

void IdleQueue::run()
{
    if (running)
        return;
    running = true;
    while (!waiting.empty()) {
        const Entry entry = std::move(waiting.front());
        waiting.pop_front();
        runOne(entry);
    }
    running = false;
}

void IdleQueue::runOne(const Entry& entry)
{
    if (entry.display)
        owner.messages().info(entry.text);
    const UndoQueue::Isolate isolated(owner.undo());
    if (entry.recorded) {
        failed += owner.mel().run(entry.text) ? 0 : 1;
        return;
    }
    const UndoQueue::Suspend suspended(owner.undo());
    owner.mel().run(entry.text);
}

} // namespace host
