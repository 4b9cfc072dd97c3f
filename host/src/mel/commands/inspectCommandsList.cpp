#include "graph/graph.h"
#include "mel/command.h"
#include "mel/commands/inspectCommands.h"
#include "mel/commands/plugArguments.h"
#include "nodes/geometry.h"
#include "selection/component.h"
#include "selection/selectionState.h"
#include "session.h"
#include "types/error.h"

#include <algorithm>
#include <functional>
#include <unordered_set>

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

/// One line of ls: a node, or the texts of a component or attribute.
struct Listed {
    Node* node = nullptr;
    std::vector<std::string> texts; ///< empty for a whole node
};

bool isOfType(const Node& node, const std::vector<std::string>& types, bool exact)
{
    return types.empty() || std::any_of(types.begin(), types.end(), [&](const std::string& type) {
               return exact ? node.type().name == type : node.type().isA(type);
           });
}

void addBelow(DagNode& node, std::vector<Listed>& list)
{
    list.push_back({&node, {}});
    for (const Ref<DagNode>& child : node.children())
        addBelow(*child, list);
}

void addItems(const SelectionList& items, bool flat, std::vector<Listed>& list)
{
    for (std::size_t k = 0; k < items.items.size(); ++k) {
        const SelectionItem& item = items.items[k];
        const bool whole = !item.component && item.plug.isNull();
        list.push_back({item.node.get(), whole  ? std::vector<std::string>()
                                         : flat ? items.flatTexts(k)
                                                : items.texts(k)});
    }
}

/// What the arguments of ls name; nothing that is not there is an error.
void addNamed(Session& session, const std::string& name, const Args& args, std::vector<Listed>& list)
{
    if (name.find('.') != name.npos) {
        SelectionList items;
        try {
            items.addPattern(session.graph(), name);
        } catch (const Error&) {
            return;
        }
        return addItems(items, args.isSet("flatten"), list);
    }
    std::vector<Node*> nodes = session.graph().match(name, args.booleanOr("recursive", false));
    if (nodes.empty())
        nodes = session.graph().findAll(name);
    for (Node* const node : nodes)
        list.push_back({node, {}});
}

std::vector<Listed> candidates(Session& session, const Args& args)
{
    std::vector<Listed> list;
    const bool selected = args.isSet("selection") || args.isSet("orderedSelection");
    if (selected)
        addItems(session.selection().active(), args.isSet("flatten"), list);
    for (const std::string& name : args.objectNames())
        addNamed(session, name, args, list);
    if (selected || !args.objects().empty())
        return list;
    for (const Ref<Node>& node : session.graph().nodes())
        list.push_back({node.get(), {}});
    return list;
}

/// With -dag: nodes of the DAG and everything below them.
std::vector<Listed> withDescendants(const std::vector<Listed>& list, bool everything)
{
    std::vector<Listed> all;
    for (const Listed& entry : list) {
        DagNode* const dag = entry.node->asDag();
        if (dag && everything)
            all.push_back(entry);
        else if (dag)
            addBelow(*dag, all);
    }
    std::unordered_set<const Node*> seen;
    all.erase(std::remove_if(all.begin(), all.end(),
                             [&](const Listed& entry) { return !seen.insert(entry.node).second; }),
              all.end());
    return all;
}

bool passes(const Listed& entry, const Args& args)
{
    const Node& node = *entry.node;
    const DagNode* const dag = node.asDag();
    if (args.isSet("type") && !isOfType(node, args.texts("type"), false))
        return false;
    if (args.isSet("exactType") && !isOfType(node, args.texts("exactType"), true))
        return false;
    if (args.isSet("cameras") && !node.type().isA("camera"))
        return false;
    if (args.isSet("shapes") && (!dag || !dag->isShape()))
        return false;
    if (args.isSet("transforms") && !node.type().isA("transform"))
        return false;
    if (args.isSet("assemblies") && (!dag || dag->parent()))
        return false;
    if (args.isSet("geometry") && !(dag && pointComponentType(*dag) != MFn::kInvalid))
        return false;
    if (args.isSet("visible") && !(dag && isVisible(*dag)))
        return false;
    if (args.isSet("noIntermediate") && node.isIntermediate())
        return false;
    if (args.isSet("intermediateObjects") && !node.isIntermediate())
        return false;
    if (args.isSet("lockedNodes") && !node.locked)
        return false;
    return !args.isSet("defaultNodes") || node.isDefault;
}

/// -head and -tail: the first or last names only.
mel::StringArray cutToEnds(mel::StringArray names, const Args& args)
{
    for (const char* flag : {"head", "tail"}) {
        if (!args.isSet(flag))
            continue;
        const std::size_t each = args.isSet("showType") ? 2 : 1;
        const auto wanted = each * static_cast<std::size_t>(std::max(0, args.integer(flag)));
        if (wanted >= names.size())
            continue;
        const auto count = static_cast<std::ptrdiff_t>(wanted);
        if (std::string(flag) == "head")
            names.erase(names.begin() + count, names.end());
        else
            names.erase(names.begin(), names.end() - count);
    }
    return names;
}

Value ls(Session& session, const Args& args)
{
    std::vector<Listed> list = candidates(session, args);
    if (args.isSet("dagObjects")) {
        const bool everything = args.objects().empty() && !args.isSet("selection");
        list = withDescendants(list, everything);
    }
    mel::StringArray names;
    std::unordered_set<const Node*> seen; // an object counts once, however many of its parts are listed
    for (const Listed& entry : list) {
        if (!passes(entry, args))
            continue;
        const std::string name =
            args.isSet("uuid") ? entry.node->uuid() : shownName(*entry.node, args.isSet("long"));
        const bool whole = entry.texts.empty() || args.isSet("objectsOnly");
        if (whole && args.isSet("objectsOnly") && !seen.insert(entry.node).second)
            continue;
        std::vector<std::string> texts = whole ? std::vector<std::string>{name} : entry.texts;
        for (std::string& text : texts) {
            names.push_back(std::move(text));
            if (args.isSet("showType"))
                names.push_back(entry.node->type().name);
        }
    }
    return cutToEnds(std::move(names), args);
}

void addRelatives(DagNode& node, const Args& args, std::vector<DagNode*>& found)
{
    if (args.isSet("parent") || args.isSet("allParents")) {
        if (node.parent())
            found.push_back(node.parent());
        return;
    }
    for (const Ref<DagNode>& child : node.children()) {
        if (args.isSet("allDescendents"))
            addRelatives(*child, args, found);
        if (!args.isSet("shapes") || child->isShape())
            found.push_back(child.get());
    }
}

Value listRelatives(Session& session, const Args& args)
{
    std::vector<DagNode*> found;
    for (Node* const node : nodesOrSelection(session, args.objectNames())) {
        if (!node->asDag())
            throw Error("listRelatives: " + node->uniqueName() + " is not in the DAG.");
        addRelatives(*node->asDag(), args, found);
    }
    mel::StringArray names;
    for (const DagNode* const node : found) {
        if (args.isSet("noIntermediate") && node->isIntermediate())
            continue;
        if (args.isSet("type") && !isOfType(*node, args.texts("type"), false))
            continue;
        const std::string name = args.isSet("fullPath") ? node->fullPath()
                                 : args.isSet("path")   ? node->partialPath()
                                                        : node->name();
        if (std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(name);
    }
    return names;
}

/// The node or attribute at the far end of a connection, as listConnections tells it.
std::string farEnd(const Plug& plug, const Args& args)
{
    if (args.booleanOr("plugs", false))
        return plug.name();
    const Node* node = plug.node();
    const DagNode* const dag = node->asDag();
    if (dag && dag->isShape() && dag->parent() && !args.booleanOr("shapes", false))
        node = dag->parent();
    return node->uniqueName();
}

bool isConversion(const Node& node)
{
    const std::string& type = node.type().name;
    return type == "unitConversion" || type == "unitToTimeConversion" || type == "timeToUnitConversion";
}

void addConnections(Session& session, Node& node, const Plug& plug, const Args& args, mel::StringArray& names)
{
    const bool exact = args.booleanOr("exactType", false);
    const auto visit = [&](const std::vector<Graph::Connection>& links, bool incoming) {
        for (const Graph::Connection& link : links) {
            const Plug& own = incoming ? link.destination : link.source;
            const Plug& other = incoming ? link.source : link.destination;
            if (!plug.isNull() && !(own == plug) && !own.isBelow(plug))
                continue;
            if (args.booleanOr("skipConversionNodes", false) && isConversion(*other.node())) {
                addConnections(session, *other.node(), Plug(), args, names);
                continue;
            }
            if (args.isSet("type") && !isOfType(*other.node(), args.texts("type"), exact))
                continue;
            if (args.booleanOr("connections", false))
                names.push_back(own.name());
            names.push_back(farEnd(other, args));
        }
    };
    if (args.booleanOr("source", true))
        visit(session.graph().inputs(node), true);
    if (args.booleanOr("destination", true))
        visit(session.graph().outputs(node), false);
}

Value listConnections(Session& session, const Args& args)
{
    mel::StringArray names;
    const std::vector<std::string> objects = args.objectNames();
    for (const std::string& name : objects) {
        if (name.find('.') == name.npos) {
            for (Node* const node : nodesNamed(session, {name}))
                addConnections(session, *node, Plug(), args, names);
            continue;
        }
        const PlugRange range = plugsNamed(session, name);
        for (std::size_t step = 0; step < range.count(); ++step)
            addConnections(session, *range.plug.node(), range.at(step), args, names);
    }
    if (objects.empty()) {
        for (Node* const node : nodesOrSelection(session, {}))
            addConnections(session, *node, Plug(), args, names);
    }
    return names;
}

/// Upstream or downstream nodes in the order in which they are met.
class History {
public:
    History(Graph& scene, bool downstream, int deepest) : graph(scene), future(downstream), levels(deepest) {}

    void visit(Node& node, int depth)
    {
        if (!seen.insert(&node).second)
            return;
        found.push_back(&node);
        if (levels > 0 && depth >= levels)
            return;
        for (const Graph::Connection& link : future ? graph.outputs(node) : graph.inputs(node)) {
            if (link.source.attribute()->type != AttributeType::kMessage)
                visit(future ? *link.destination.node() : *link.source.node(), depth + 1);
        }
    }

    std::vector<Node*> found;

private:
    Graph& graph;
    const bool future;
    const int levels; ///< 0 = all
    std::unordered_set<const Node*> seen;
};

Value listHistory(Session& session, const Args& args)
{
    History history(session.graph(), args.isSet("future"), args.integerOr("levels", 0));
    for (Node* const node : nodesOrSelection(session, args.objectNames())) {
        const DagNode* const dag = node->asDag();
        bool shapes = false;
        for (std::size_t k = 0; dag && !dag->isShape() && k < dag->children().size(); ++k) {
            DagNode& child = *dag->children()[k];
            if (!child.isShape() || child.isIntermediate())
                continue;
            history.visit(child, 0);
            shapes = true;
        }
        if (!shapes)
            history.visit(*node, 0);
    }
    mel::StringArray names;
    for (const Node* const node : history.found) {
        if (!args.isSet("pruneDagObjects") || !node->asDag())
            names.push_back(node->uniqueName());
    }
    return names;
}

void registerLs(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("ls")
                     .flag("sl", "selection")
                     .flag("os", "orderedSelection")
                     .flag("fl", "flatten")
                     .flag("l", "long")
                     .flag("r", "recursive", {ArgType::kBool})
                     .flag("typ", "type", {ArgType::kString})
                     .multi()
                     .flag("et", "exactType", {ArgType::kString})
                     .multi()
                     .flag("dag", "dagObjects")
                     .flag("s", "shapes")
                     .flag("tr", "transforms")
                     .flag("ca", "cameras")
                     .flag("as", "assemblies")
                     .flag("ni", "noIntermediate")
                     .flag("io", "intermediateObjects")
                     .flag("ln", "lockedNodes")
                     .flag("dn", "defaultNodes")
                     .flag("ap", "allPaths")
                     .flag("sn", "shortNames")
                     .flag("o", "objectsOnly")
                     .flag("g", "geometry")
                     .flag("v", "visible")
                     .flag("hd", "head", {ArgType::kInt})
                     .flag("tl", "tail", {ArgType::kInt})
                     .flag("st", "showType")
                     .flag("uid", "uuid")
                     .objects(0),
                 ls);
}

} // namespace

void registerListCommands(mel::CommandRegistry& registry)
{
    registerLs(registry);
    registry.add(CommandSpec("listRelatives")
                     .flag("c", "children")
                     .flag("p", "parent")
                     .flag("ap", "allParents")
                     .flag("s", "shapes")
                     .flag("ad", "allDescendents")
                     .flag("f", "fullPath")
                     .flag("pa", "path")
                     .flag("ni", "noIntermediate")
                     .flag("typ", "type", {ArgType::kString})
                     .multi()
                     .objects(0),
                 listRelatives);
    registry.add(CommandSpec("listConnections")
                     .flag("s", "source", {ArgType::kBool})
                     .flag("d", "destination", {ArgType::kBool})
                     .flag("p", "plugs", {ArgType::kBool})
                     .flag("c", "connections", {ArgType::kBool})
                     .flag("sh", "shapes", {ArgType::kBool})
                     .flag("et", "exactType", {ArgType::kBool})
                     .flag("scn", "skipConversionNodes", {ArgType::kBool})
                     .flag("t", "type", {ArgType::kString})
                     .multi()
                     .objects(0),
                 listConnections);
    registry.add(CommandSpec("listHistory")
                     .flag("f", "future")
                     .flag("pdo", "pruneDagObjects")
                     .flag("lv", "levels", {ArgType::kInt})
                     .objects(0),
                 listHistory);
}

} // namespace host
