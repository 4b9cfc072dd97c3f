#include "mel/commands/plugArguments.h"

#include "graph/graph.h"
#include "mel/commands/commandTargets.h"
#include "session.h"
#include "types/error.h"

#include <algorithm>

namespace host {

namespace {

/// Commands go through all elements of a range, also of those that nothing is stored for.
constexpr std::size_t kMostElements = std::size_t{1} << 22;

std::string pathOf(const std::string& text)
{
    const std::size_t dot = text.find('.');
    return dot == text.npos ? std::string() : text.substr(dot + 1);
}

/// Looks an attribute up on a node, or else on the shapes that people see below it: body.inMesh is
/// bodyShape.inMesh.
template <typename LookUp>
auto onNodeOrShape(Node& node, LookUp&& lookUp) -> decltype(lookUp(node))
{
    auto found = lookUp(node);
    const DagNode* const dag = node.asDag();
    for (std::size_t k = 0; !found && dag && k < dag->children().size(); ++k) {
        DagNode& child = *dag->children()[k];
        if (child.isShape() && !child.isIntermediate())
            found = lookUp(child);
    }
    return found;
}

} // namespace

Node& nodeOfPlug(Session& session, const std::string& text)
{
    const std::size_t dot = text.find('.');
    if (dot == text.npos)
        throw Error("The attribute of '" + text + "' is missing.");
    return session.graph().get(text.substr(0, dot));
}

PlugRange plugsNamed(Session& session, const std::string& text)
{
    Node& node = nodeOfPlug(session, text);
    const std::optional<PlugRange> plugs =
        onNodeOrShape(node, [&](Node& each) { return resolvePlugs(each, pathOf(text)); });
    if (!plugs)
        throw Error("No object matches name: " + text);
    if (plugs->count() > kMostElements)
        throw Error("'" + text + "' names too many elements.");
    return *plugs;
}

Plug plugNamed(Session& session, const std::string& text)
{
    Node& node = nodeOfPlug(session, text);
    const std::optional<Plug> plug =
        onNodeOrShape(node, [&](Node& each) { return resolvePlug(each, pathOf(text)); });
    if (!plug)
        throw Error("No object matches name: " + text);
    return *plug;
}

bool plugExists(Session& session, const std::string& text)
{
    try {
        return !plugsNamed(session, text).plug.isNull();
    } catch (const Error&) {
        return false;
    }
}

std::vector<Node*> nodesNamed(Session& session, const std::vector<std::string>& names)
{
    std::vector<Node*> nodes;
    const auto add = [&](Node* node) {
        if (std::find(nodes.begin(), nodes.end(), node) == nodes.end())
            nodes.push_back(node);
    };
    for (const std::string& name : names) {
        if (name.find_first_of("*?") == name.npos) {
            add(&session.graph().get(name));
            continue;
        }
        const std::vector<Node*> matches = session.graph().match(name);
        if (matches.empty())
            throw Error("No object matches name: " + name);
        std::for_each(matches.begin(), matches.end(), add);
    }
    return nodes;
}

std::vector<Node*> nodesOrSelection(Session& session, const std::vector<std::string>& names)
{
    if (!names.empty())
        return nodesNamed(session, names);
    std::vector<Node*> nodes;
    for (const SelectionItem& item : commandTargets(session, {}).items) {
        if (item.node && std::find(nodes.begin(), nodes.end(), item.node.get()) == nodes.end())
            nodes.push_back(item.node.get());
    }
    return nodes;
}

std::string shownName(const Node& node, bool longNames)
{
    const DagNode* const dag = node.asDag();
    return longNames && dag ? dag->fullPath() : node.uniqueName();
}

} // namespace host
