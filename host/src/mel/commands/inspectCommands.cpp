#include "mel/commands/inspectCommands.h"

#include "graph/graph.h"
#include "mel/command.h"
#include "mel/commands/plugArguments.h"
#include "mel/commands/register.h"
#include "selection/selectionList.h"
#include "session.h"
#include "types/error.h"

#include <algorithm>

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

Value objExists(Session& session, const Args& args)
{
    const std::string name = args.objects().front().toString();
    if (name.find('.') == name.npos)
        return !session.graph().match(name).empty() || !session.graph().findAll(name).empty();
    if (plugExists(session, name))
        return true;
    try {
        SelectionList list;
        list.addPattern(session.graph(), name);
        return !list.items.empty();
    } catch (const Error&) {
        return false;
    }
}

Value inherited(const NodeType* type)
{
    mel::StringArray names;
    for (; type; type = type->base)
        names.push_back(type->name);
    std::reverse(names.begin(), names.end());
    return names;
}

Value nodeType(Session& session, const Args& args)
{
    const std::string name = args.objects().front().toString();
    const NodeType* type = nullptr;
    if (args.isSet("isTypeName")) {
        type = session.graph().types().find(name);
        if (!type)
            throw Error("nodeType: '" + name + "' is no node type.");
    } else {
        type = &session.graph().get(name.substr(0, name.find('.'))).type();
    }
    return args.isSet("inherited") ? inherited(type) : Value(type->name);
}

/// The same as nodeType for a node; with a type, whether the node is of it.
Value objectType(Session& session, const Args& args)
{
    const std::string name = args.objects().front().toString();
    const NodeType& type = session.graph().get(name.substr(0, name.find('.'))).type();
    if (args.isSet("isType"))
        return type.name == args.text("isType");
    if (args.isSet("isAType"))
        return type.isA(args.text("isAType"));
    return type.name;
}

} // namespace

void registerInspectCommands(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("objExists").objects(1, 1), objExists);
    registry.add(CommandSpec("nodeType").flag("i", "inherited").flag("itn", "isTypeName").objects(1, 1),
                 nodeType);
    registry.add(CommandSpec("objectType")
                     .flag("i", "isType", {ArgType::kString})
                     .flag("isa", "isAType", {ArgType::kString})
                     .objects(1, 1),
                 objectType);
    registerListCommands(registry);
    registerAttributeQueries(registry);
}

} // namespace host
