#include "tools/sceneCallbacks.h"

#include "messages.h"
#include "session.h"

#include <maya/MSceneMessage.h>

#include <exception>

namespace host {

namespace {

// Across sessions, so that an id that was kept too long never names the callback of another session.
SceneCallbacks::Id lastId = 0;

} // namespace

SceneCallbacks::Id SceneCallbacks::add(int message, Function function, void* clientData)
{
    entries[++lastId] = {message, function, clientData};
    return lastId;
}

bool SceneCallbacks::remove(Id id)
{
    return entries.erase(id) != 0;
}

std::vector<SceneCallbacks::Id> SceneCallbacks::idsOf(const std::function<bool(Function)>& accepts) const
{
    std::vector<Id> found;
    for (const auto& [id, entry] : entries) {
        if (accepts(entry.function))
            found.push_back(id);
    }
    return found;
}

void SceneCallbacks::send(int message)
{
    std::vector<Id> waiting;
    for (const auto& [id, entry] : entries) {
        if (entry.message == message)
            waiting.push_back(id);
    }
    const Id outer = current;
    for (const Id id : waiting) {
        const auto found = entries.find(id);
        if (found == entries.end())
            continue;
        // A copy: the callback may remove itself.
        const Entry entry = found->second;
        current = id;
        try {
            entry.function(entry.clientData);
        } catch (const std::exception& problem) {
            owner.messages().error(std::string("A scene callback failed: ") + problem.what());
        } catch (...) {
            owner.messages().error("A scene callback failed.");
        }
    }
    current = outer;
}

void SceneCallbacks::exiting()
{
    send(MSceneMessage::kMayaExiting);
}

} // namespace host
