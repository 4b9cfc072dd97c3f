#include "mel/command.h"
#include "mel/commands/register.h"
#include "session.h"
#include "tools/contextCommands.h"
#include "tools/idleQueue.h"
#include "tools/toolApi.h"
#include "tools/tools.h"
#include "types/api.h"
#include "types/error.h"
#include "view/drawRecord.h"

#include <maya/MPxContext.h>
#include <maya/MString.h>

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

Value setToolTo(Session& session, const Args& args)
{
    session.tools().setCurrent(args.objects().front().toString());
    return {};
}

Value currentCtx(Session& session, const Args&)
{
    return session.tools().current();
}

Value contextInfo(Session& session, const Args& args)
{
    const std::string name = args.objects().front().toString();
    const MPxContext* context = session.tools().findContext(name);
    if (args.isSet("exists"))
        return context != nullptr;
    if (!context)
        throw Error("contextInfo: tool '" + name + "' does not exist.");
    const ContextState& state = ToolApi::state(*context);
    if (args.isSet("class")) {
        MString className;
        context->getClassName(className);
        return Api::text(className);
    }
    if (args.isSet("title"))
        return state.title;
    for (int image = 0; image < 3; ++image) {
        if (args.isSet("image" + std::to_string(image + 1)))
            return state.images[image];
    }
    if (args.isSet("escapeContext"))
        return "selectSuperContext";
    throw Error("contextInfo: a flag that says what to tell is needed.");
}

/// Of all that has a name in the interface only tools can be taken away here.
Value deleteUI(Session& session, const Args& args)
{
    for (const std::string& name : args.objectNames()) {
        if (!session.tools().findContext(name))
            throw Error("deleteUI: '" + name + "' is no tool; nothing else can be deleted here.");
        session.tools().contextCommands().removeTool(name);
    }
    return {};
}

/// The events of one call are played in the order in which its flags stand; the button and the modifier keys
/// hold for all of them.
Value viewportEvent(Session& session, const Args& args)
{
    Tools& tools = session.tools();
    const Tools::Modifiers modifiers{args.isSet("shift"), args.isSet("control")};
    const int button = args.integerOr("button", 1);
    bool any = false;
    for (const Args::Use& use : args.allUses()) {
        const std::string& event = use.flag->longName;
        const bool hasPosition = use.values.size() == 2;
        const int x = hasPosition ? use.values[0].toInt() : 0;
        const int y = hasPosition ? use.values[1].toInt() : 0;
        // Nobody presses anything before the program has come to rest.
        tools.idle().run();
        if (event == "press")
            tools.press(x, y, button, modifiers);
        else if (event == "drag")
            tools.drag(x, y);
        else if (event == "release")
            tools.release(x, y);
        else if (event == "move")
            tools.move(x, y);
        else if (event == "key")
            tools.key(use.values[0].toString(), modifiers);
        else
            continue;
        any = true;
    }
    if (!any)
        throw Error("viewportEvent: one of -press, -drag, -release, -move and -key is needed.");
    return {};
}

Value viewportLabels(Session& session, const Args&)
{
    mel::StringArray labels;
    for (const DrawRecord::Text& text : session.drawing().texts)
        labels.push_back(text.text);
    return labels;
}

/// The sheet is closed when there is no window, so its layout has no name.
Value toolPropertyWindow(Session&, const Args& args)
{
    if (args.query() && args.isSet("location"))
        return "";
    throw Error("toolPropertyWindow: there is no tool settings window here; edit the tool by its command.");
}

Value quit(Session& session, const Args&)
{
    session.quit();
    return {};
}

} // namespace

void registerToolCommands(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("setToolTo").objects(1, 1), setToolTo);
    registry.add(CommandSpec("currentCtx"), currentCtx);
    registry.add(CommandSpec("contextInfo")
                     .flag("c", "class")
                     .flag("ex", "exists")
                     .flag("t", "title")
                     .flag("i1", "image1")
                     .flag("i2", "image2")
                     .flag("i3", "image3")
                     .flag("esc", "escapeContext")
                     .objects(1, 1),
                 contextInfo);
    registry.add(CommandSpec("deleteUI").flag("tol", "toolContext").objects(1), deleteUI);
    const std::vector<ArgType> position = {ArgType::kInt, ArgType::kInt};
    registry.add(CommandSpec("viewportEvent")
                     .flag("p", "press", position)
                     .multi()
                     .flag("d", "drag", position)
                     .multi()
                     .flag("r", "release", position)
                     .multi()
                     .flag("m", "move", position)
                     .multi()
                     .flag("k", "key", {ArgType::kString})
                     .multi()
                     .flag("b", "button", {ArgType::kInt})
                     .flag("sht", "shift")
                     .flag("ctl", "control"),
                 viewportEvent);
    registry.add(CommandSpec("viewportLabels"), viewportLabels);
    registry.add(CommandSpec("toolPropertyWindow").flag("loc", "location").query(), toolPropertyWindow);
    registry.add(CommandSpec("quit").flag("f", "force"), quit);
}

} // namespace host
