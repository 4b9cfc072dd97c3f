#include "mel/command.h"
#include "mel/commands/interfaceCommands.h"
#include "session.h"
#include "tools/hotkeySets.h"
#include "tools/tools.h"
#include "types/error.h"
#include "undo/edits.h"

#include <functional>

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

/// Changes a copy and then puts it in place, recorded: a change that fails half-way leaves nothing.
void change(Session& session, const std::function<void(HotkeySets&)>& work)
{
    const HotkeySets before = session.tools().hotkeys();
    HotkeySets after = before;
    work(after);
    session.edits().perform([after](Session& target) { target.tools().hotkeys() = after; },
                            [before](Session& target) { target.tools().hotkeys() = before; });
}

std::string onlyObject(const Args& args)
{
    if (args.objects().size() != 1)
        throw Error(args.commandName() + ": the name of a hotkey set is needed.");
    return args.objects().front().toString();
}

Value queryHotkeySet(const HotkeySets& sets, const Args& args)
{
    if (args.isSet("exists"))
        return sets.exists(onlyObject(args));
    if (args.isSet("hotkeySetArray"))
        return sets.names();
    if (args.isSet("current"))
        return sets.current();
    throw Error("hotkeySet: the query needs a flag that says what to tell.");
}

void editHotkeySet(HotkeySets& sets, const Args& args, const std::string& name)
{
    if (args.isSet("current"))
        sets.setCurrent(name);
    if (args.isSet("rename"))
        sets.rename(name, args.text("rename"));
    if (args.isSet("delete"))
        sets.remove(name);
}

Value hotkeySet(Session& session, const Args& args)
{
    if (args.query() || args.isSet("exists"))
        return queryHotkeySet(session.tools().hotkeys(), args);
    const std::string name = onlyObject(args);
    change(session, [&](HotkeySets& sets) {
        if (args.edit()) {
            editHotkeySet(sets, args, name);
            return;
        }
        if (args.isSet("delete")) {
            sets.remove(name);
            return;
        }
        sets.create(name, args.textOr("source", sets.current()));
        if (args.isSet("current"))
            sets.setCurrent(name);
    });
    return name;
}

Value queryHotkeyCtx(const HotkeySets& sets, const Args& args)
{
    if (args.isSet("typeArray"))
        return sets.types();
    if (!args.isSet("type"))
        throw Error("hotkeyCtx: -type is needed.");
    if (args.isSet("currentClient"))
        return sets.currentClient(args.text("type"));
    if (args.isSet("clientArray"))
        return sets.clients(args.text("type"));
    throw Error("hotkeyCtx: the query needs a flag that says what to tell.");
}

Value hotkeyCtx(Session& session, const Args& args)
{
    if (args.query())
        return queryHotkeyCtx(session.tools().hotkeys(), args);
    if (!args.isSet("type"))
        throw Error("hotkeyCtx: -type is needed.");
    const std::string type = args.text("type");
    change(session, [&](HotkeySets& sets) {
        if (args.isSet("insertTypeAt"))
            sets.insertType(type, args.text("insertTypeAt"));
        if (args.isSet("addClient"))
            sets.addClient(type, args.text("addClient"));
        if (args.isSet("currentClient"))
            sets.setCurrentClient(type, args.text("currentClient"));
        if (args.isSet("removeClient"))
            sets.removeClient(type, args.text("removeClient"));
        if (args.isSet("removeType"))
            sets.removeType(type);
    });
    return {};
}

KeyChord chordOf(const Args& args)
{
    KeyChord chord;
    if (args.isSet("keyShortcut"))
        chord.key = args.text("keyShortcut");
    else if (!args.objects().empty())
        chord.key = args.objects().front().toString();
    if (chord.key.empty())
        throw Error("hotkey: -keyShortcut is needed.");
    chord.control = args.isSet("ctrlModifier");
    chord.alt = args.isSet("altModifier");
    chord.shift = args.isSet("shiftModifier");
    chord.command = args.isSet("commandModifier");
    return chord;
}

Value hotkey(Session& session, const Args& args)
{
    const KeyChord chord = chordOf(args);
    const std::string client = args.textOr("ctxClient", {});
    if (args.query()) {
        const HotkeySets::Binding* found = session.tools().hotkeys().binding(client, chord);
        if (args.isSet("name"))
            return found ? found->press : std::string();
        if (args.isSet("releaseName"))
            return found ? found->release : std::string();
        throw Error("hotkey: the query needs -name or -releaseName.");
    }
    if (!args.isSet("name") && !args.isSet("releaseName"))
        throw Error("hotkey: -name or -releaseName is needed.");
    change(session, [&](HotkeySets& sets) {
        const HotkeySets::Binding* old = sets.binding(client, chord);
        HotkeySets::Binding binding = old ? *old : HotkeySets::Binding();
        binding.press = args.textOr("name", binding.press);
        binding.release = args.textOr("releaseName", binding.release);
        sets.bind(client, chord, binding);
    });
    return {};
}

} // namespace

void registerHotkeyCommands(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("hotkeySet")
                     .flag("cu", "current")
                     .flag("d", "delete")
                     .flag("ex", "exists")
                     .flag("hsa", "hotkeySetArray")
                     .flag("r", "rename", {ArgType::kString})
                     .flag("src", "source", {ArgType::kString})
                     .objects(0, 1)
                     .query()
                     .edit()
                     .undoable(),
                 hotkeySet);
    registry.add(CommandSpec("hotkeyCtx")
                     .flag("t", "type", {ArgType::kString})
                     .queryArgs()
                     .flag("ta", "typeArray")
                     .flag("ac", "addClient", {ArgType::kString})
                     .flag("cc", "currentClient", {ArgType::kString})
                     .flag("ca", "clientArray")
                     .flag("rc", "removeClient", {ArgType::kString})
                     .flag("ita", "insertTypeAt", {ArgType::kString})
                     .flag("rt", "removeType")
                     .query()
                     .undoable(),
                 hotkeyCtx);
    registry.add(CommandSpec("hotkey")
                     .flag("k", "keyShortcut", {ArgType::kString})
                     .queryArgs()
                     .flag("n", "name", {ArgType::kString})
                     .flag("rn", "releaseName", {ArgType::kString})
                     .flag("cxc", "ctxClient", {ArgType::kString})
                     .queryArgs()
                     .flag("ctl", "ctrlModifier")
                     .flag("alt", "altModifier")
                     .flag("sht", "shiftModifier")
                     .flag("cmd", "commandModifier")
                     .objects(0, 1)
                     .query()
                     .undoable(),
                 hotkey);
}

} // namespace host
