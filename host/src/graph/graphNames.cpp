#include "graph/graphParts.h"
#include "graph/names.h"
#include "types/error.h"

#include <algorithm>
#include <cstdio>
#include <set>

namespace host {

bool Graph::isTaken(const std::string& name, const Node& node, const DagNode* parent, bool anywhere) const
{
    const auto named = parts->byName.find(name);
    if (named == parts->byName.end())
        return false;
    return std::any_of(named->second.begin(), named->second.end(), [&](const Node* other) {
        if (other == &node)
            return false;
        const DagNode* dag = other->asDag();
        return anywhere || !dag || !node.asDag() || dag->parent() == parent;
    });
}

/// `anywhere`: no node at all may have the name, as with names that nobody chose.
std::string Graph::freeName(const std::string& wish, const Node& node, const DagNode* parent,
                            bool anywhere) const
{
    if (!isTaken(wish, node, parent, anywhere))
        return wish;
    const NumberedName start = numbered(wish);
    for (unsigned long number = start.number + 1;; ++number) {
        std::string candidate = start.stem + std::to_string(number);
        if (!isTaken(candidate, node, parent, anywhere))
            return candidate;
    }
}

void Graph::setName(Node& node, const std::string& name)
{
    if (name == node.nodeName)
        return;
    std::vector<Node*>& before = parts->byName[node.nodeName];
    before.erase(std::find(before.begin(), before.end(), &node));
    node.nodeName = name;
    parts->byName[name].push_back(&node);
    ++changes;
    modified = true;
}

void Graph::rename(Node& node, const std::string& name)
{
    const std::string wish = cleanName(name);
    if (wish.empty())
        throw Error("'" + name + "' is no name for a node.");
    if (node.locked || node.isDefault)
        throw Error("Cannot rename '" + node.uniqueName() + "': it is " +
                    (node.locked ? "locked." : "a node that every scene has."));
    const DagNode* dag = node.asDag();
    setName(node, freeName(wish, node, dag ? dag->parent() : nullptr, false));
}

std::string Graph::newUuid()
{
    const std::uint64_t high = (parts->random() & ~0xF000ULL) | 0x4000ULL;
    const std::uint64_t low = (parts->random() & ~(3ULL << 62)) | (2ULL << 62);
    char text[40];
    std::snprintf(text, sizeof text, "%08X-%04X-%04X-%04X-%012llX", static_cast<unsigned>(high >> 32),
                  static_cast<unsigned>(high >> 16 & 0xFFFF), static_cast<unsigned>(high & 0xFFFF),
                  static_cast<unsigned>(low >> 48), static_cast<unsigned long long>(low & 0xFFFFFFFFFFFFULL));
    return text;
}

void Graph::setUuid(Node& node, const std::string& uuid)
{
    if (uuid.empty())
        throw Error("The identifier of '" + node.uniqueName() + "' cannot be empty.");
    const auto other = parts->byUuid.find(uuid);
    if (other != parts->byUuid.end() && other->second != &node)
        throw Error("The identifier '" + uuid + "' belongs to '" + other->second->uniqueName() +
                    "' already.");
    parts->byUuid.erase(node.nodeUuid);
    node.nodeUuid = uuid;
    parts->byUuid[uuid] = &node;
}

std::vector<std::string> Graph::namespaces() const
{
    std::set<std::string> found;
    for (const Ref<Node>& node : all)
        for (std::size_t colon = node->nodeName.find(':'); colon != std::string::npos;
             colon = node->nodeName.find(':', colon + 1))
            found.insert(node->nodeName.substr(0, colon));
    return {found.begin(), found.end()};
}

namespace {

/// The parts of a path with the names of the nodes from the end upwards. `rooted`: the first part must be a
/// child of the world.
template <class Same>
bool fits(const Node& node, const std::vector<std::string>& parts, bool rooted, Same same)
{
    const Node* step = &node;
    for (std::size_t left = parts.size(); left > 0; --left) {
        if (!step || !same(parts[left - 1], step->name()))
            return false;
        const DagNode* dag = step->asDag();
        step = dag ? dag->parent() : nullptr;
    }
    return !rooted || (!step && node.asDag());
}

struct PathText {
    explicit PathText(const std::string& text)
        : rooted(!text.empty() && text[0] == '|'), parts(split(rooted ? text.substr(1) : text, '|'))
    {
        for (std::string& part : parts)
            if (!part.empty() && part[0] == ':')
                part.erase(0, 1);
    }
    bool rooted;
    std::vector<std::string> parts;
};

} // namespace

std::vector<Node*> Graph::findAll(const std::string& nameOrPath) const
{
    const PathText path(nameOrPath);
    std::vector<Node*> result;
    const auto named = parts->byName.find(path.parts.back());
    if (named != parts->byName.end())
        for (Node* node : named->second)
            if (fits(*node, path.parts, path.rooted,
                     [](const std::string& a, const std::string& b) { return a == b; }))
                result.push_back(node);
    const auto identified = parts->byUuid.find(nameOrPath);
    if (result.empty() && identified != parts->byUuid.end())
        result.push_back(identified->second);
    std::sort(result.begin(), result.end(),
              [](const Node* a, const Node* b) { return a->state().sequence < b->state().sequence; });
    return result;
}

Node* Graph::find(const std::string& nameOrPath) const
{
    const std::vector<Node*> found = findAll(nameOrPath);
    if (found.size() > 1)
        throw Error("More than one object matches name: " + nameOrPath);
    return found.empty() ? nullptr : found.front();
}

Node& Graph::get(const std::string& nameOrPath) const
{
    Node* node = find(nameOrPath);
    if (!node)
        throw Error("No object matches name: " + nameOrPath);
    return *node;
}

std::vector<Node*> Graph::match(const std::string& pattern, bool anyNamespace) const
{
    if (!hasWildcard(pattern) && !anyNamespace)
        return findAll(pattern);
    const PathText path(pattern);
    std::vector<Node*> result;
    for (const Ref<Node>& node : all)
        if (fits(*node, path.parts, path.rooted, [&](const std::string& part, const std::string& name) {
                return matchesName(part, name, anyNamespace);
            }))
            result.push_back(node.get());
    return result;
}

Plug Graph::plug(const std::string& text) const
{
    const std::size_t dot = text.find('.');
    if (dot == std::string::npos || dot == 0)
        throw Error("'" + text + "' names no attribute.");
    return get(text.substr(0, dot)).plugByPath(text.substr(dot + 1));
}

} // namespace host
