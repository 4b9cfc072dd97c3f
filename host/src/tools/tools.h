#pragma once

#include <maya/MApiNamespace.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace host {

class Session;
class ContextCommands;
class HotkeySets;
class HeadsUpDisplays;
class IdleQueue;
class SceneCallbacks;
struct Event;
struct NamedCommands;

/// The person's side of the host: tool contexts and which is current, the mouse and keys, hotkey sets,
/// heads-up displays, the idle queue, scene callbacks.
class Tools {
public:
    explicit Tools(Session& session);
    ~Tools();

    // --- contexts. The registry owns those made by context commands; they live until the plug-in that made
    // them is unloaded or the session ends.
    void addContext(const std::string& name, const std::string& command, std::unique_ptr<MPxContext> context);
    MPxContext* findContext(const std::string& name) const;
    std::vector<std::string> contextNames() const;
    /// Removes the contexts that a context command made, or one by its name; the current tool goes back to
    /// selectSuperContext. Throws host::Error while a tool is at work; removeContext also for an
    /// unknown name and for what is built in.
    void removeContextsOf(const std::string& command);
    void removeContext(const std::string& name);
    /// "toolContext" -> "toolContext1": the first free number.
    std::string freeContextName(const std::string& command) const;
    /// Leaves the current tool (toolOffCleanup) and enters the other (toolOnSetup). "selectSuperContext" is
    /// built in. Throws host::Error for an unknown name.
    void setCurrent(const std::string& name);
    const std::string& current() const { return currentName; }

    // --- events, in port pixels from the lower left. Exceptions of a context are reported as errors, what it
    // records for undo makes entries of its own whatever command plays the event, and the idle queue is run
    // after each event. The right button does not reach tools. A release or drag without a press does
    // nothing, and so do those after the tool was changed within a press.
    struct Modifiers {
        bool shift = false, control = false;
    };
    void press(int x, int y, int button, Modifiers modifiers); ///< button 1 left, 2 middle, 3 right
    void drag(int x, int y);
    void release(int x, int y);
    void move(int x, int y);
    /// Enter completes, Delete and Backspace delete, Escape aborts the tool's work; everything else is looked
    /// up among the hot keys and its name command is run. Letters tell upper and lower case apart; with Shift
    /// a lower-case letter counts as the upper-case one.
    void key(const std::string& key, Modifiers modifiers);

    ContextCommands& contextCommands() { return *commandsOfContexts; }
    NamedCommands& named() { return *namedCommands; }
    HotkeySets& hotkeys() { return *hotkeySets; }
    HeadsUpDisplays& headsUp() { return *displays; }
    IdleQueue& idle() { return *idleQueue; }
    SceneCallbacks& callbacks() { return *sceneCallbacks; }
    /// Told of each press of the left button once the tool has been: a front end may look at the selection
    /// and the view as they are before the drag.
    std::function<void(int x, int y)> pressWatcher;
    std::string helpText;                   ///< the current tool's help string (status line)
    std::string focusPanel = "modelPanel4"; ///< getPanel -withFocus

private:
    struct State;
    void
    removeContexts(const std::function<bool(const std::string& name, const std::string& command)>& which);
    enum class Step { kPress, kDrag, kRelease, kMove };
    /// Calls into a tool; exceptions are reported as errors.
    void callContext(const std::function<void()>& call);
    void leave(MPxContext& context);
    void enter(MPxContext& context);
    void route(Step step, const Event& event);
    bool toolKey(const std::string& key);
    void hotkey(const std::string& key, Modifiers modifiers);

    Session& owner;
    std::unique_ptr<ContextCommands> commandsOfContexts;
    std::unique_ptr<NamedCommands> namedCommands;
    std::unique_ptr<HotkeySets> hotkeySets;
    std::unique_ptr<HeadsUpDisplays> displays;
    std::unique_ptr<IdleQueue> idleQueue;
    std::unique_ptr<SceneCallbacks> sceneCallbacks;
    std::unique_ptr<State> state;
    std::string currentName = "selectSuperContext";
};

} // namespace host
