#include "tools/tools.h"

#include "messages.h"
#include "selection/picking.h"
#include "selection/selectionState.h"
#include "session.h"
#include "tools/contextCommands.h"
#include "tools/headsUpDisplays.h"
#include "tools/hotkeySets.h"
#include "tools/idleQueue.h"
#include "tools/runTimeCommands.h"
#include "tools/sceneCallbacks.h"
#include "tools/selectTool.h"
#include "tools/toolApi.h"
#include "trace.h"
#include "types/api.h"
#include "types/error.h"
#include "undo/undoQueue.h"
#include "view/drawRecord.h"
#include "view/viewport.h"

#include <maya/MEvent.h>
#include <maya/MPxContext.h>

#include <algorithm>
#include <exception>
#include <limits>

namespace host {

namespace {

constexpr const char* kSelectTool = "selectSuperContext";

short pixel(int value)
{
    using Limits = std::numeric_limits<short>;
    return static_cast<short>(std::clamp<int>(value, Limits::min(), Limits::max()));
}

} // namespace

struct Tools::State {
    struct Entry {
        std::string name, command;
        std::unique_ptr<MPxContext> context;
    };
    std::vector<Entry> contexts; ///< in the order in which they were made
    Event last;                  ///< of the press that is going on: button 0 when there is none
    int depth = 0;               ///< calls into contexts that have not returned
};

Tools::Tools(Session& session)
    : owner(session), commandsOfContexts(std::make_unique<ContextCommands>(session)),
      namedCommands(std::make_unique<NamedCommands>()), hotkeySets(std::make_unique<HotkeySets>()),
      displays(std::make_unique<HeadsUpDisplays>()), idleQueue(std::make_unique<IdleQueue>(session)),
      sceneCallbacks(std::make_unique<SceneCallbacks>(session)), state(std::make_unique<State>())
{
    addContext(kSelectTool, {}, makeSelectTool());
}

Tools::~Tools() = default;

void Tools::addContext(const std::string& name, const std::string& command,
                       std::unique_ptr<MPxContext> context)
{
    if (name.empty())
        throw Error("A tool needs a name.");
    if (findContext(name))
        throw Error("A tool named '" + name + "' already exists.");
    ContextState& details = ToolApi::state(*context);
    details.name = name;
    details.command = command;
    state->contexts.push_back({name, command, std::move(context)});
}

MPxContext* Tools::findContext(const std::string& name) const
{
    for (const State::Entry& entry : state->contexts) {
        if (entry.name == name)
            return entry.context.get();
    }
    return nullptr;
}

std::vector<std::string> Tools::contextNames() const
{
    std::vector<std::string> names;
    for (const State::Entry& entry : state->contexts)
        names.push_back(entry.name);
    return names;
}

void Tools::removeContexts(
    const std::function<bool(const std::string& name, const std::string& command)>& which)
{
    const auto doomed = [&](const State::Entry& entry) { return which(entry.name, entry.command); };
    const auto active = std::find_if(state->contexts.begin(), state->contexts.end(),
                                     [&](const State::Entry& entry) { return entry.name == currentName; });
    if (active != state->contexts.end() && doomed(*active))
        setCurrent(kSelectTool);
    auto& contexts = state->contexts;
    contexts.erase(std::remove_if(contexts.begin(), contexts.end(), doomed), contexts.end());
}

void Tools::removeContextsOf(const std::string& command)
{
    if (command.empty())
        return;
    if (state->depth > 0)
        throw Error("The tools of '" + command + "' cannot be removed while a tool is at work.");
    removeContexts([&](const std::string&, const std::string& maker) { return maker == command; });
}

void Tools::removeContext(const std::string& name)
{
    if (!findContext(name) || name == kSelectTool)
        throw Error("There is no tool '" + name + "' that could be removed.");
    if (state->depth > 0)
        throw Error("The tool '" + name + "' cannot be removed while a tool is at work.");
    removeContexts([&](const std::string& each, const std::string&) { return each == name; });
}

std::string Tools::freeContextName(const std::string& command) const
{
    int number = 1;
    while (findContext(command + std::to_string(number)))
        ++number;
    return command + std::to_string(number);
}

void Tools::setCurrent(const std::string& name)
{
    MPxContext* next = findContext(name);
    if (!next)
        throw Error("Tool '" + name + "' does not exist.");
    // Leaving a tool runs its code, and that may free the text behind `name`.
    const std::string nextName = name; // NOLINT(performance-unnecessary-copy-initialization): see above
    state->last.button = 0;
    if (MPxContext* previous = findContext(currentName))
        leave(*previous);
    currentName = nextName;
    enter(*next);
}

void Tools::callContext(const std::function<void()>& call)
{
    // The tool may have been left by the time it fails.
    const std::string name = currentName;
    std::string problem;
    bool failed = true;
    ++state->depth;
    try {
        call();
        failed = false;
    } catch (const std::exception& exception) {
        problem = std::string(": ") + exception.what();
    } catch (...) {
        problem = ".";
    }
    --state->depth;
    if (failed)
        owner.messages().error("Tool " + name + " failed with an exception" + problem);
}

void Tools::leave(MPxContext& context)
{
    callContext([&] { context.toolOffCleanup(); });
    owner.drawing().clear();
    helpText.clear();
    owner.selection().preselection = {};
}

void Tools::enter(MPxContext& context)
{
    helpText = ToolApi::state(context).help;
    MEvent event;
    ToolApi::event(event) = state->last;
    callContext([&] { context.toolOnSetup(event); });
}

void Tools::press(int x, int y, int button, Modifiers modifiers)
{
    if (button < 1 || button > 3)
        throw Error("Mouse button " + std::to_string(button) + " does not exist; buttons are 1 to 3.");
    if (button != 3) {
        Event& event = state->last;
        event = {pixel(x), pixel(y), button == 1 ? Event::kLeft : Event::kMiddle, 0};
        event.modifiers = (modifiers.shift ? Event::kShift : 0) | (modifiers.control ? Event::kControl : 0);
        route(Step::kPress, event);
        if (pressWatcher && button == 1)
            pressWatcher(pixel(x), pixel(y));
    }
    idleQueue->run();
}

void Tools::drag(int x, int y)
{
    state->last.x = pixel(x);
    state->last.y = pixel(y);
    if (state->last.button != 0)
        route(Step::kDrag, state->last);
    idleQueue->run();
}

void Tools::release(int x, int y)
{
    Event event = state->last;
    event.x = pixel(x);
    event.y = pixel(y);
    // The press is over before the tool hears of it: whatever the tool runs may press again.
    state->last = {event.x, event.y, 0, 0};
    if (event.button != 0)
        route(Step::kRelease, event);
    idleQueue->run();
}

void Tools::move(int x, int y)
{
    state->last.x = pixel(x);
    state->last.y = pixel(y);
    if (state->last.button == 0) {
        route(Step::kMove, state->last);
        MPxContext* context = findContext(currentName);
        const SelectionGesture* gesture = context ? ToolApi::gesture(*context) : nullptr;
        if (gesture && gesture->preselectHilite)
            updatePreselection(owner, state->last.x, state->last.y);
    }
    idleQueue->run();
}

void Tools::route(Step step, const Event& details)
{
    MPxContext* context = findContext(currentName);
    if (!context)
        return;
    const UndoQueue::Isolate isolated(owner.undo());
    MEvent event;
    ToolApi::event(event) = details;
    DrawRecord drawn;
    const auto call = [&](MHWRender::MUIDrawManager& manager, const MHWRender::MFrameContext& frame) {
        switch (step) {
        case Step::kPress:
            context->doPress(event, manager, frame);
            break;
        case Step::kDrag:
            context->doDrag(event, manager, frame);
            break;
        case Step::kRelease:
            context->doRelease(event, manager, frame);
            break;
        case Step::kMove:
            context->doPtrMoved(event, manager, frame);
            break;
        }
    };
    callContext([&] { Api::withDrawing(drawn, owner.viewport(), call); });
    // Events that draw nothing at all leave the overlay alone; an empty drawable clears it, and so does the
    // end of a gesture: what was drawn for the drag (a marquee) is over then.
    if (drawn.drawables > 0 || step == Step::kRelease)
        owner.drawing() = std::move(drawn);
}

} // namespace host
