#pragma once

#include <memory>
#include <string>

namespace host {

class Graph;
class Edits;
class Messages;
class PluginRegistry;
class SelectionState;
class Tools;
class Trace;
class UndoQueue;
class Viewport;
struct DrawRecord;
struct SceneInfo;
namespace mel {
class CommandRegistry;
class Interpreter;
} // namespace mel

/// All state of one running host: everything hangs from here, nothing is global but the pointer to the
/// session that the static interface (MGlobal and the like) speaks to. Several may exist; making one makes
/// it current, ending one makes the previous current again.
///
/// Teardown order, the reverse of use: exit callbacks run, plug-ins leave (their contexts and commands go
/// first), the undo queue is flushed (it holds nodes and plug-in commands), tools, selection and viewport let
/// go of nodes, then interpreter and commands, then the scene, and last messages and trace.
class Session {
public:
    Session();
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// The session that the static interface speaks to; throws host::Error when there is none.
    static Session& current();
    static Session* currentOrNull();
    void makeCurrent();

    Trace& trace() { return *traceOwned; }
    Messages& messages() { return *messagesOwned; }
    Graph& graph() { return *graphOwned; }
    Edits& edits() { return *editsOwned; }
    UndoQueue& undo() { return *undoOwned; }
    mel::CommandRegistry& commands() { return *commandsOwned; }
    mel::Interpreter& mel() { return *melOwned; }
    SelectionState& selection() { return *selectionOwned; }
    Viewport& viewport() { return *viewportOwned; }
    DrawRecord& drawing() { return *drawingOwned; }
    Tools& tools() { return *toolsOwned; }
    PluginRegistry& plugins() { return *pluginsOwned; }
    SceneInfo& sceneInfo() { return *sceneInfoOwned; }

    /// Empties the scene to what `file -new` gives: default nodes and cameras, empty selection, empty undo
    /// queue, no file name.
    void newScene();
    std::string sceneName; ///< path of the open file, empty when untitled

    /// Quits as Maya does: exit callbacks run; no plug-in is unloaded by it or asked to uninitialize later.
    /// The end of a session quits it.
    void quit();
    bool quitting() const { return quitRequested; }

    /// How often a plug-in reached through a plain handle, path, plug or function set for a node that has
    /// left the scene. Such calls fail here; on the platform they may crash.
    int staleCalls = 0;

private:
    bool quitRequested = false;
    std::unique_ptr<Trace> traceOwned;
    std::unique_ptr<Messages> messagesOwned;
    std::unique_ptr<SceneInfo> sceneInfoOwned;
    std::unique_ptr<Graph> graphOwned;
    std::unique_ptr<UndoQueue> undoOwned;
    std::unique_ptr<Edits> editsOwned;
    std::unique_ptr<mel::CommandRegistry> commandsOwned;
    std::unique_ptr<mel::Interpreter> melOwned;
    std::unique_ptr<Viewport> viewportOwned;
    std::unique_ptr<DrawRecord> drawingOwned;
    std::unique_ptr<SelectionState> selectionOwned;
    std::unique_ptr<Tools> toolsOwned;
    std::unique_ptr<PluginRegistry> pluginsOwned;
};

} // namespace host
