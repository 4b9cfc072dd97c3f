#include "mel/command.h"
#include "mel/commands/interfaceCommands.h"
#include "mel/interpreter.h"
#include "session.h"
#include "tools/runTimeCommands.h"
#include "tools/tools.h"
#include "types/error.h"

#include <algorithm>
#include <cctype>

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

void checkName(const std::string& command, const std::string& name)
{
    const bool valid = !name.empty() && std::isdigit(static_cast<unsigned char>(name[0])) == 0 &&
                       std::all_of(name.begin(), name.end(), [](char letter) {
                           return letter == '_' || std::isalnum(static_cast<unsigned char>(letter)) != 0;
                       });
    if (!valid)
        throw Error(command + ": '" + name + "' is no name; letters, digits and underscores make one.");
}

RunTimeCommand& existing(Session& session, const std::string& name)
{
    auto& commands = session.tools().named().runTime;
    const auto found = commands.find(name);
    if (found == commands.end())
        throw Error("runTimeCommand: '" + name + "' does not exist.");
    return found->second;
}

void apply(const Args& args, RunTimeCommand& command)
{
    if (args.textOr("commandLanguage", command.language) != "mel")
        throw Error("runTimeCommand: -commandLanguage '" + args.text("commandLanguage") +
                    "' cannot be run here; only mel can.");
    command.annotation = args.textOr("annotation", command.annotation);
    command.label = args.textOr("label", command.label);
    command.category = args.textOr("category", command.category);
    command.command = args.textOr("command", command.command);
    command.hotkeyContext = args.textOr("hotkeyCtx", command.hotkeyContext);
    command.plugIn = args.textOr("plugin", command.plugIn);
    command.tags = args.textOr("tags", command.tags);
    command.image = args.textOr("image", command.image);
    command.isDefault = args.booleanOr("default", command.isDefault);
}

Value queryRunTimeCommand(Session& session, const Args& args, const std::string& name)
{
    auto& commands = session.tools().named().runTime;
    if (args.isSet("exists"))
        return commands.count(name) != 0;
    if (args.isSet("numberOfCommands"))
        return static_cast<int>(commands.size());
    if (args.isSet("commandArray")) {
        mel::StringArray names;
        for (const auto& entry : commands)
            names.push_back(entry.first);
        return names;
    }
    const RunTimeCommand& command = existing(session, name);
    const std::pair<const char*, const std::string*> texts[] = {
        {"annotation", &command.annotation},
        {"label", &command.label},
        {"category", &command.category},
        {"command", &command.command},
        {"commandLanguage", &command.language},
        {"hotkeyCtx", &command.hotkeyContext},
        {"plugin", &command.plugIn},
        {"tags", &command.tags},
        {"image", &command.image},
    };
    for (const auto& [flag, text] : texts) {
        if (args.isSet(flag))
            return *text;
    }
    if (args.isSet("default"))
        return command.isDefault;
    throw Error("runTimeCommand: the query needs a flag that says what to tell.");
}

void createRunTimeCommand(Session& session, const Args& args, const std::string& name)
{
    checkName("runTimeCommand", name);
    RunTimeCommand command;
    apply(args, command);
    // Fails for a name that any command already has.
    session.commands().add(CommandSpec(name), [name](Session& target, const Args&) {
        // A copy: the text may redefine or delete the command that it is.
        const std::string text = existing(target, name).command;
        return target.mel().execute(text);
    });
    session.tools().named().runTime.emplace(name, std::move(command));
}

Value runTimeCommand(Session& session, const Args& args)
{
    const std::string name = args.objects().empty() ? std::string() : args.objects().front().toString();
    if (args.query() || args.isSet("exists"))
        return queryRunTimeCommand(session, args, name);
    if (args.isSet("delete")) {
        existing(session, name);
        session.commands().remove(name);
        session.tools().named().runTime.erase(name);
        return {};
    }
    if (args.edit()) {
        RunTimeCommand changed = existing(session, name);
        apply(args, changed);
        existing(session, name) = changed;
        return {};
    }
    createRunTimeCommand(session, args, name);
    return name;
}

Value nameCommand(Session& session, const Args& args)
{
    const std::string name = args.objects().front().toString();
    checkName("nameCommand", name);
    NameCommand command;
    command.annotation = args.textOr("annotation", {});
    command.command = args.textOr("command", {});
    command.sourceType = args.textOr("sourceType", "mel");
    if (command.sourceType != "mel")
        throw Error("nameCommand: -sourceType '" + command.sourceType +
                    "' cannot be run here; only mel can.");
    session.tools().named().byName[name] = command;
    return name;
}

} // namespace

void registerNamedCommands(mel::CommandRegistry& registry)
{
    const std::vector<ArgType> text = {ArgType::kString};
    registry.add(CommandSpec("runTimeCommand")
                     .flag("ann", "annotation", text)
                     .flag("cat", "category", text)
                     .flag("c", "command", text)
                     .flag("cl", "commandLanguage", text)
                     .flag("d", "default", {ArgType::kBool})
                     .flag("hc", "hotkeyCtx", text)
                     .flag("l", "label", text)
                     .flag("plg", "plugin", text)
                     .flag("t", "tags", text)
                     .flag("i", "image", text)
                     .flag("del", "delete")
                     .flag("ex", "exists")
                     .flag("ca", "commandArray")
                     .flag("nc", "numberOfCommands")
                     .objects(0, 1)
                     .query()
                     .edit(),
                 runTimeCommand);
    registry.add(CommandSpec("nameCommand")
                     .flag("ann", "annotation", text)
                     .flag("c", "command", text)
                     .flag("stp", "sourceType", text)
                     .flag("d", "default", {ArgType::kBool})
                     .objects(1, 1),
                 nameCommand);
}

} // namespace host
