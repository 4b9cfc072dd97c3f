#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace host {

/// A key with its modifiers. Letters tell upper and lower case apart.
struct KeyChord {
    std::string key;
    bool control = false, alt = false, shift = false, command = false;

    friend bool operator<(const KeyChord& a, const KeyChord& b);
};

/// What keys do. A set holds, per client ("" is every place without a client of its own), the name commands
/// that keys press and release.
///
/// "Maya_Default" is shipped: it cannot be edited or deleted, and it is current at first. Clients stand for
/// places or tools that want keys of their own; they are registered under a type, and of each type at most
/// one client is current. A key is looked up for the current clients in the order of the types, then without
/// a client.
class HotkeySets {
public:
    static constexpr const char* kDefault = "Maya_Default";

    struct Binding {
        std::string press;   ///< name commands
        std::string release; ///< may be empty
    };
    using Bindings = std::map<std::pair<std::string, KeyChord>, Binding>; ///< key: client and chord

    HotkeySets();

    // --- sets, in the order in which they were made
    std::vector<std::string> names() const;
    bool exists(const std::string& set) const { return sets.count(set) != 0; }
    /// A copy of `source` under a new name; throws for a name that is taken or no source.
    void create(const std::string& set, const std::string& source);
    void rename(const std::string& set, const std::string& newName);
    /// Deleting the current set makes Maya_Default current. Throws for an unknown or the shipped set.
    void remove(const std::string& set);
    const std::string& current() const { return currentSet; }
    void setCurrent(const std::string& set); ///< throws for an unknown set

    // --- clients
    /// The types in order of precedence, "Global" last.
    const std::vector<std::string>& types() const { return clientTypes; }
    void insertType(const std::string& type, const std::string& before);
    void removeType(const std::string& type);
    void addClient(const std::string& type, const std::string& client); ///< again is no error
    void removeClient(const std::string& type, const std::string& client);
    std::vector<std::string> clients(const std::string& type) const;
    /// Makes a registered client the current one of its type; "" leaves the type without a current client.
    void setCurrentClient(const std::string& type, const std::string& client);
    std::string currentClient(const std::string& type) const;

    // --- keys of the current set
    /// Binds press and release; both empty removes the binding. Throws when the set is locked or the client
    /// is not registered.
    void bind(const std::string& client, const KeyChord& chord, Binding binding);
    /// The binding of exactly this client; null when there is none.
    const Binding* binding(const std::string& client, const KeyChord& chord) const;
    /// The binding that a key press runs: current clients first. Null when the key does nothing.
    const Binding* lookUp(const KeyChord& chord) const;

private:
    struct Clients {
        std::vector<std::string> names;
        std::string current;
    };
    Clients& clientsOf(const std::string& type);
    bool isClient(const std::string& client) const;

    std::vector<std::string> order;
    std::map<std::string, Bindings> sets;
    std::string currentSet;
    std::vector<std::string> clientTypes;
    std::map<std::string, Clients> clientsByType;
};

} // namespace host
