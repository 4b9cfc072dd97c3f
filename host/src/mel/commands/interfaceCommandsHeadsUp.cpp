#include "mel/command.h"
#include "mel/commands/interfaceCommands.h"
#include "session.h"
#include "tools/headsUpDisplays.h"
#include "tools/tools.h"
#include "types/error.h"

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;
using Display = HeadsUpDisplays::Display;
using Size = HeadsUpDisplays::Size;

Size sizeOf(const Args& args, const char* flag)
{
    const std::string text = args.text(flag);
    if (text == "small")
        return Size::kSmall;
    if (text == "medium")
        return Size::kMedium;
    if (text == "large")
        return Size::kLarge;
    throw Error(std::string("headsUpDisplay: -") + flag + " '" + text +
                "' is none of small, medium and large.");
}

const char* sizeText(Size size)
{
    switch (size) {
    case Size::kSmall:
        return "small";
    case Size::kMedium:
        return "medium";
    case Size::kLarge:
        break;
    }
    return "large";
}

int section(const Args& args, const char* flag)
{
    const int number = args.integer(flag);
    if (number < 0 || number >= HeadsUpDisplays::kSections)
        throw Error(std::string("headsUpDisplay: -") + flag + " " + std::to_string(number) +
                    " does not exist; sections are 0 to 9.");
    return number;
}

/// What the flags say about the looks of a display; its place is not touched.
void applyLooks(const Args& args, Display& display)
{
    // A copy first, so that a bad value leaves the display as it was.
    Display changed = display;
    changed.visible = args.booleanOr("visible", changed.visible);
    changed.label = args.textOr("label", changed.label);
    changed.labelWidth = args.integerOr("labelWidth", changed.labelWidth);
    changed.dataWidth = args.integerOr("dataWidth", changed.dataWidth);
    changed.command = args.textOr("command", changed.command);
    if (args.isSet("labelFontSize"))
        changed.labelSize = sizeOf(args, "labelFontSize");
    if (args.isSet("dataFontSize"))
        changed.dataSize = sizeOf(args, "dataFontSize");
    if (args.isSet("blockSize"))
        changed.blockSize = sizeOf(args, "blockSize");
    display = changed;
}

Value query(HeadsUpDisplays& displays, const Args& args, const std::string& name)
{
    if (args.isSet("listHeadsUpDisplays"))
        return displays.names();
    const Display& display = displays.get(name);
    if (args.isSet("visible"))
        return display.visible;
    if (args.isSet("label"))
        return display.label;
    if (args.isSet("section"))
        return display.section;
    if (args.isSet("block"))
        return display.block;
    if (args.isSet("command"))
        return display.command;
    if (args.isSet("labelWidth"))
        return display.labelWidth;
    if (args.isSet("dataWidth"))
        return display.dataWidth;
    if (args.isSet("labelFontSize"))
        return sizeText(display.labelSize);
    if (args.isSet("dataFontSize"))
        return sizeText(display.dataSize);
    if (args.isSet("blockSize"))
        return sizeText(display.blockSize);
    throw Error("headsUpDisplay: the query needs a flag that says what to tell.");
}

Value edit(HeadsUpDisplays& displays, const Args& args, const std::string& name)
{
    Display& display = displays.get(name);
    Display changed = display;
    applyLooks(args, changed);
    displays.move(display, args.isSet("section") ? section(args, "section") : display.section,
                  args.integerOr("block", display.block));
    changed.section = display.section;
    changed.block = display.block;
    display = changed;
    return {};
}

Value create(HeadsUpDisplays& displays, const Args& args, const std::string& name)
{
    if (!args.isSet("section") || !args.isSet("block"))
        throw Error("headsUpDisplay: -section and -block are needed to make a display.");
    Display display;
    display.name = name;
    display.section = section(args, "section");
    display.block = args.integer("block");
    applyLooks(args, display);
    return displays.add(std::move(display)).id;
}

Value headsUpDisplay(Session& session, const Args& args)
{
    HeadsUpDisplays& displays = session.tools().headsUp();
    const std::string name = args.objects().empty() ? std::string() : args.objects().front().toString();
    if (args.isSet("exists"))
        return displays.find(name) != nullptr;
    if (args.query())
        return query(displays, args, name);
    if (args.isSet("lastOccupiedBlock"))
        return displays.lastOccupiedBlock(section(args, "lastOccupiedBlock"));
    if (args.isSet("nextFreeBlock"))
        return displays.nextFreeBlock(section(args, "nextFreeBlock"));
    if (args.isSet("listHeadsUpDisplays"))
        return displays.names();
    if (args.isSet("removePosition")) {
        displays.removeAt(section(args, "removePosition"), args.integer("removePosition", 1));
        return {};
    }
    if (args.isSet("remove")) {
        displays.remove(name);
        return {};
    }
    if (args.isSet("refresh")) {
        displays.get(name);
        return {};
    }
    return args.edit() ? edit(displays, args, name) : create(displays, args, name);
}

} // namespace

void registerHeadsUpCommands(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("headsUpDisplay")
                     .flag("ex", "exists")
                     .flag("vis", "visible", {ArgType::kBool})
                     .flag("s", "section", {ArgType::kInt})
                     .flag("b", "block", {ArgType::kInt})
                     .flag("l", "label", {ArgType::kString})
                     .flag("lfs", "labelFontSize", {ArgType::kString})
                     .flag("lw", "labelWidth", {ArgType::kInt})
                     .flag("dfs", "dataFontSize", {ArgType::kString})
                     .flag("dw", "dataWidth", {ArgType::kInt})
                     .flag("bs", "blockSize", {ArgType::kString})
                     .flag("c", "command", {ArgType::kString})
                     .flag("lob", "lastOccupiedBlock", {ArgType::kInt})
                     .flag("nfb", "nextFreeBlock", {ArgType::kInt})
                     .flag("lh", "listHeadsUpDisplays")
                     .flag("rem", "remove")
                     .flag("rp", "removePosition", {ArgType::kInt, ArgType::kInt})
                     .flag("r", "refresh")
                     .objects(0, 1)
                     .query()
                     .edit(),
                 headsUpDisplay);
}

} // namespace host
