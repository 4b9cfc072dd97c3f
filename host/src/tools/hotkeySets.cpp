#include "tools/hotkeySets.h"

#include "types/error.h"

#include <algorithm>
#include <tuple>

namespace host {

bool operator<(const KeyChord& a, const KeyChord& b)
{
    return std::tie(a.key, a.control, a.alt, a.shift, a.command) <
           std::tie(b.key, b.control, b.alt, b.shift, b.command);
}

HotkeySets::HotkeySets()
    : order{kDefault}, sets{{kDefault, {}}},
      currentSet(kDefault), clientTypes{"Tool", "Editor", "Panel", "Global"}
{}

std::vector<std::string> HotkeySets::names() const
{
    return order;
}

void HotkeySets::create(const std::string& set, const std::string& source)
{
    if (set.empty())
        throw Error("A hotkey set needs a name.");
    if (exists(set))
        throw Error("Hotkey set '" + set + "' already exists.");
    const auto found = sets.find(source);
    if (found == sets.end())
        throw Error("Hotkey set '" + source + "' does not exist.");
    Bindings copy = found->second;
    sets.emplace(set, std::move(copy));
    order.push_back(set);
}

void HotkeySets::rename(const std::string& set, const std::string& newName)
{
    if (set == kDefault)
        throw Error("Hotkey set '" + set + "' is locked and cannot be renamed.");
    create(newName, set);
    sets.erase(set);
    order.erase(std::find(order.begin(), order.end(), set));
    if (currentSet == set)
        currentSet = newName;
}

void HotkeySets::remove(const std::string& set)
{
    if (!exists(set))
        throw Error("Hotkey set '" + set + "' does not exist.");
    if (set == kDefault)
        throw Error("Hotkey set '" + set + "' is locked and cannot be deleted.");
    // The name may be the very string that is about to be erased.
    const std::string name = set; // NOLINT(performance-unnecessary-copy-initialization): see above
    if (currentSet == name)
        currentSet = kDefault;
    sets.erase(name);
    order.erase(std::find(order.begin(), order.end(), name));
}

void HotkeySets::setCurrent(const std::string& set)
{
    if (!exists(set))
        throw Error("Hotkey set '" + set + "' does not exist.");
    currentSet = set;
}

void HotkeySets::insertType(const std::string& type, const std::string& before)
{
    if (std::find(clientTypes.begin(), clientTypes.end(), type) != clientTypes.end())
        throw Error("Hotkey context type '" + type + "' already exists.");
    const auto place = std::find(clientTypes.begin(), clientTypes.end(), before);
    if (place == clientTypes.end())
        throw Error("Hotkey context type '" + before + "' does not exist.");
    clientTypes.insert(place, type);
}

void HotkeySets::removeType(const std::string& type)
{
    const auto place = std::find(clientTypes.begin(), clientTypes.end(), type);
    if (place == clientTypes.end() || type == "Global")
        throw Error("Hotkey context type '" + type + "' cannot be removed.");
    clientTypes.erase(place);
    clientsByType.erase(type);
}

HotkeySets::Clients& HotkeySets::clientsOf(const std::string& type)
{
    if (std::find(clientTypes.begin(), clientTypes.end(), type) == clientTypes.end())
        throw Error("Hotkey context type '" + type + "' does not exist.");
    return clientsByType[type];
}

void HotkeySets::addClient(const std::string& type, const std::string& client)
{
    if (client.empty())
        throw Error("A hotkey context client needs a name.");
    Clients& clients = clientsOf(type);
    if (std::find(clients.names.begin(), clients.names.end(), client) == clients.names.end())
        clients.names.push_back(client);
}

void HotkeySets::removeClient(const std::string& type, const std::string& client)
{
    Clients& clients = clientsOf(type);
    const auto place = std::find(clients.names.begin(), clients.names.end(), client);
    if (place == clients.names.end())
        throw Error("Hotkey context client '" + client + "' does not exist.");
    clients.names.erase(place);
    if (clients.current == client)
        clients.current.clear();
}

std::vector<std::string> HotkeySets::clients(const std::string& type) const
{
    const auto found = clientsByType.find(type);
    return found == clientsByType.end() ? std::vector<std::string>() : found->second.names;
}

void HotkeySets::setCurrentClient(const std::string& type, const std::string& client)
{
    Clients& clients = clientsOf(type);
    const bool known = std::find(clients.names.begin(), clients.names.end(), client) != clients.names.end();
    if (!client.empty() && !known)
        throw Error("Hotkey context client '" + client + "' is not registered with type '" + type + "'.");
    clients.current = client;
}

std::string HotkeySets::currentClient(const std::string& type) const
{
    const auto found = clientsByType.find(type);
    return found == clientsByType.end() ? std::string() : found->second.current;
}

bool HotkeySets::isClient(const std::string& client) const
{
    return std::any_of(clientsByType.begin(), clientsByType.end(), [&](const auto& entry) {
        const std::vector<std::string>& names = entry.second.names;
        return std::find(names.begin(), names.end(), client) != names.end();
    });
}

void HotkeySets::bind(const std::string& client, const KeyChord& chord, Binding binding)
{
    if (currentSet == kDefault)
        throw Error("Hotkey set '" + currentSet + "' is locked. Make a set of your own to change hotkeys.");
    if (chord.key.empty())
        throw Error("A hotkey needs a key.");
    if (!client.empty() && !isClient(client))
        throw Error("Hotkey context client '" + client + "' does not exist.");
    Bindings& bindings = sets[currentSet];
    if (binding.press.empty() && binding.release.empty())
        bindings.erase({client, chord});
    else
        bindings[{client, chord}] = std::move(binding);
}

const HotkeySets::Binding* HotkeySets::binding(const std::string& client, const KeyChord& chord) const
{
    const Bindings& bindings = sets.at(currentSet);
    const auto found = bindings.find({client, chord});
    return found == bindings.end() ? nullptr : &found->second;
}

const HotkeySets::Binding* HotkeySets::lookUp(const KeyChord& chord) const
{
    for (const std::string& type : clientTypes) {
        const std::string client = currentClient(type);
        const Binding* own = client.empty() ? nullptr : binding(client, chord);
        if (own)
            return own;
    }
    return binding({}, chord);
}

} // namespace host
