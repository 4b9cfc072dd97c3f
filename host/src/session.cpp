#include "session.h"

#include "graph/graph.h"
#include "mel/command.h"
#include "mel/commands/register.h"
#include "mel/interpreter.h"
#include "messages.h"
#include "plugins/pluginRegistry.h"
#include "scene/defaultScene.h"
#include "scene/sceneInfo.h"
#include "selection/selectionState.h"
#include "tools/sceneCallbacks.h"
#include "tools/tools.h"
#include "trace.h"
#include "types/error.h"
#include "undo/edits.h"
#include "undo/undoQueue.h"
#include "view/drawRecord.h"
#include "view/viewport.h"

#include <algorithm>
#include <vector>

namespace host {

namespace {

/// Running sessions, the current one last.
std::vector<Session*> sessions;

void registerCommands(mel::CommandRegistry& registry)
{
    registerNodeCommands(registry);
    registerInspectCommands(registry);
    registerGeometryCommands(registry);
    registerDeformerCommands(registry);
    registerSelectionCommands(registry);
    registerViewCommands(registry);
    registerToolCommands(registry);
    registerInterfaceCommands(registry);
    registerUndoCommands(registry);
    registerFileCommands(registry);
    registerPluginCommands(registry);
}

} // namespace

Session::Session()
    : traceOwned(std::make_unique<Trace>()), messagesOwned(std::make_unique<Messages>(*traceOwned)),
      sceneInfoOwned(std::make_unique<SceneInfo>()), graphOwned(std::make_unique<Graph>(*this)),
      undoOwned(std::make_unique<UndoQueue>(*this)), editsOwned(std::make_unique<Edits>(*this)),
      commandsOwned(std::make_unique<mel::CommandRegistry>(*this)),
      melOwned(std::make_unique<mel::Interpreter>(*this)), viewportOwned(std::make_unique<Viewport>(*this)),
      drawingOwned(std::make_unique<DrawRecord>()), selectionOwned(std::make_unique<SelectionState>(*this)),
      toolsOwned(std::make_unique<Tools>(*this)), pluginsOwned(std::make_unique<PluginRegistry>(*this))
{
    sessions.push_back(this);
    registerCommands(*commandsOwned);
    newScene();
}

Session::~Session()
{
    makeCurrent();
    traceOwned->setSink({}); // the trace tells what plug-ins ask while the host runs
    quit();
    pluginsOwned->leaveAll(); // needs everything below, the registry itself included
    pluginsOwned.reset();
    undoOwned->flush();
    toolsOwned.reset();
    selectionOwned.reset();
    drawingOwned.reset();
    viewportOwned.reset();
    melOwned.reset();
    commandsOwned.reset();
    editsOwned.reset();
    undoOwned.reset();
    graphOwned.reset();
    sessions.erase(std::find(sessions.begin(), sessions.end(), this));
}

Session& Session::current()
{
    if (sessions.empty())
        throw Error("There is no running session.");
    return *sessions.back();
}

Session* Session::currentOrNull()
{
    return sessions.empty() ? nullptr : sessions.back();
}

void Session::makeCurrent()
{
    const auto found = std::find(sessions.begin(), sessions.end(), this);
    std::rotate(found, found + 1, sessions.end());
}

void Session::newScene()
{
    const UndoQueue::Suspend suspend(*undoOwned);
    selectionOwned->setActive({});
    drawingOwned->clear();
    graphOwned->clear();
    createDefaultNodes(*graphOwned);
    graphOwned->modified = false;
    sceneName.clear();
    *sceneInfoOwned = SceneInfo();
    undoOwned->flush();
    viewportOwned->resetCamera();
}

void Session::quit()
{
    if (quitRequested)
        return;
    quitRequested = true;
    toolsOwned->callbacks().exiting();
}

} // namespace host
