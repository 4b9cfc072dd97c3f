#include "mel/commands/interfaceCommands.h"

#include "mel/command.h"
#include "mel/commands/register.h"
#include "session.h"
#include "tools/tools.h"
#include "types/error.h"

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

/// The panels of the program: the viewport and what a window shows beside it.
struct Panel {
    const char* name;
    const char* type;
};
constexpr Panel kPanels[] = {
    {"modelPanel4", "modelPanel"},
    {"outlinerPanel1", "outlinerPanel"},
    {"scriptEditorPanel1", "scriptedPanel"},
};

const Panel& panel(const std::string& name, const char* command)
{
    for (const Panel& candidate : kPanels) {
        if (name == candidate.name)
            return candidate;
    }
    throw Error(std::string(command) + ": panel '" + name + "' does not exist.");
}

Value getPanel(Session& session, const Args& args)
{
    if (args.isSet("withFocus"))
        return session.tools().focusPanel;
    if (args.isSet("underPointer"))
        return kPanels[0].name;
    if (args.isSet("typeOf"))
        return panel(args.text("typeOf"), "getPanel").type;
    if (!args.isSet("all") && !args.isSet("type"))
        throw Error("getPanel: one of -withFocus, -underPointer, -typeOf, -type and -all is needed.");
    mel::StringArray names;
    for (const Panel& candidate : kPanels) {
        if (!args.isSet("type") || args.text("type") == candidate.type)
            names.push_back(candidate.name);
    }
    return names;
}

Value setFocus(Session& session, const Args& args)
{
    session.tools().focusPanel = panel(args.objects().front().toString(), "setFocus").name;
    return {};
}

} // namespace

void registerInterfaceCommands(mel::CommandRegistry& registry)
{
    registerHeadsUpCommands(registry);
    registerHotkeyCommands(registry);
    registerNamedCommands(registry);
    registry.add(CommandSpec("getPanel")
                     .flag("wf", "withFocus")
                     .flag("up", "underPointer")
                     .flag("to", "typeOf", {ArgType::kString})
                     .flag("typ", "type", {ArgType::kString})
                     .flag("all", "all"),
                 getPanel);
    registry.add(CommandSpec("setFocus").objects(1, 1), setFocus);
}

} // namespace host
