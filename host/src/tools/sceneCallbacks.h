#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <vector>

namespace host {

class Session;

/// Functions that plug-ins asked to be called when something happens to the scene or the program
/// (MSceneMessage). Messages are the numbers of MSceneMessage::Message. Within one message, functions are
/// called in the order in which they were added.
class SceneCallbacks {
public:
    using Id = std::uintptr_t; ///< never 0, never used twice in a process
    using Function = void (*)(void* clientData);

    explicit SceneCallbacks(Session& session) : owner(session) {}

    Id add(int message, Function function, void* clientData);
    bool remove(Id id); ///< false when there is no such callback
    /// The callbacks whose function the test accepts, for finding those that point into a library.
    std::vector<Id> idsOf(const std::function<bool(Function)>& accepts) const;
    bool has(Id id) const { return entries.count(id) != 0; }
    std::size_t count() const { return entries.size(); }

    /// Calls what waits for the message. A callback may add and remove callbacks, itself included: those
    /// added are not called this time, those removed not any more. Exceptions are reported as errors.
    void send(int message);
    void exiting(); ///< the program ends (kMayaExiting)

    /// The callback that is being called, 0 outside of one.
    Id running() const { return current; }

private:
    struct Entry {
        int message;
        Function function;
        void* clientData;
    };
    Session& owner;
    std::map<Id, Entry> entries;
    Id current = 0;
};

} // namespace host
