#include "graph/graph.h"
#include "mel/command.h"
#include "mel/commands/nodeCommands.h"
#include "mel/commands/plugArguments.h"
#include "scene/assignValues.h"
#include "scene/dynamicAttribute.h"
#include "scene/maStatement.h"
#include "scene/maText.h"
#include "scene/sceneInfo.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <algorithm>
#include <deque>
#include <memory>

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

/// The values of a call as the words of a statement, so that scripts and files share one way of reading them.
class ValueWords {
public:
    explicit ValueWords(const std::vector<Value>& values)
    {
        statement.words.push_back(bareWord("setAttr"));
        for (std::size_t k = 1; k < values.size(); ++k)
            statement.words.push_back(values[k].isNumber() ? bareWord(maNumber(values[k].toFloat()))
                                                           : textWord(values[k].toString()));
    }

    MaCursor cursor() const { return MaCursor(statement, {}); }
    std::size_t count() const { return statement.words.size() - 1; }

private:
    /// Texts that are numbers count as such, but "inf" and "nan" are names in scripts.
    MaWord textWord(std::string text)
    {
        bool isNumber = false, truth = false;
        double inFile = 0.0;
        mel::parseNumber(text, &isNumber);
        const bool bare = isNumber || (maParseBoolean(text, truth) && !maParseNumber(text, inFile));
        return word(std::move(text), bare ? MaWord::Kind::kBare : MaWord::Kind::kString);
    }
    MaWord bareWord(std::string text) { return word(std::move(text), MaWord::Kind::kBare); }

    MaWord word(std::string text, MaWord::Kind kind)
    {
        MaWord word;
        word.kind = kind;
        word.text = texts.emplace_back(std::move(text));
        word.line = 1;
        word.offset = whole.size();
        whole += word.kind == MaWord::Kind::kString ? maQuoted(word.text) : std::string(word.text);
        whole += ' ';
        statement.raw = whole;
        return word;
    }

    MaStatement statement;
    std::deque<std::string> texts;
    std::string whole;
};

/// A value outside the limits of its attribute is refused, or cut with -clamp.
double limited(const Plug& plug, double value, bool clamp)
{
    const Attribute& attribute = *plug.attribute();
    const auto refuse = [&](const char* limit, double bound) {
        throw Error("setAttr: Cannot set the attribute '" + plug.name() + "' past its " + limit +
                    " value of " + maNumber(bound) + ".");
    };
    if (attribute.hasMin && value < attribute.minimum) {
        if (!clamp)
            refuse("minimum", attribute.minimum);
        return attribute.minimum;
    }
    if (attribute.hasMax && value > attribute.maximum) {
        if (!clamp)
            refuse("maximum", attribute.maximum);
        return attribute.maximum;
    }
    return value;
}

void setFlags(Session& session, const PlugRange& range, const Args& args, bool before)
{
    constexpr std::size_t kMostFlagged = 1 << 16;
    if (!args.isSet("lock") && !args.isSet("keyable") && !args.isSet("channelBox"))
        return;
    if (range.count() > kMostFlagged)
        throw Error("setAttr: the flags of " + std::to_string(range.count()) +
                    " elements cannot be set at once.");
    for (std::size_t step = 0; step < range.count(); ++step) {
        const Plug plug = range.at(step);
        // Unlocking comes in front of the value, locking behind it.
        if (args.isSet("lock") && args.boolean("lock") != before)
            session.edits().setLocked(plug, args.boolean("lock"));
        if (before && args.isSet("keyable"))
            session.edits().setKeyable(plug, args.boolean("keyable"));
        if (before && args.isSet("channelBox"))
            session.edits().setChannelBox(plug, args.boolean("channelBox"));
    }
}

struct TouchedElements {
    Plug array;
    std::vector<std::uint32_t> indices;
};

/// The array whose elements a range runs over, or the rows in which weights lie; nothing for a single plug.
std::optional<TouchedElements> touchedElements(const PlugRange& range)
{
    const Attribute* attribute = range.plug.attribute();
    const bool isWeight = attribute->parent && attribute->parent->flags.weightRows;
    if (isWeight)
        attribute = attribute->parent;
    while (range.ranged && !isWeight && !(attribute->flags.array && attribute->ownIndexSlot() == range.slot))
        attribute = attribute->parent;
    if (!attribute->flags.array || (!range.ranged && !isWeight))
        return std::nullopt;
    const unsigned slot = attribute->ownIndexSlot();
    TouchedElements touched{Plug(range.plug.node(), attribute), {}};
    for (unsigned above = 0; above < slot; ++above)
        touched.array.setIndex(above, range.plug.index(above));
    const bool runs = range.ranged && range.slot == slot;
    const std::uint32_t first = runs ? range.first : range.plug.index(slot);
    for (std::size_t step = 0; step < (runs ? range.count() : 1); ++step)
        touched.indices.push_back(first + static_cast<std::uint32_t>(step));
    return touched;
}

void setValues(Session& session, const PlugRange& range, const Args& args)
{
    const ValueWords words(args.objects());
    const std::string type = args.textOr("type", {});
    if (words.count() == 0)
        return;
    const Attribute& attribute = *range.plug.attribute();
    if (type == "attributeAlias")
        throw Error("setAttr: aliases are made with aliasAttr.");
    MaCursor cursor = words.cursor();
    if (!range.ranged && !range.plug.isArray() && attribute.isNumber() && type.empty()) {
        const double value = limited(range.plug, cursor.number(), args.isSet("clamp"));
        cursor.expectEnd();
        return session.edits().setNumber(range.plug, value);
    }
    if (range.count() > words.count())
        throw Error("setAttr: there are fewer values than elements.");
    const auto assign = [&] { assignValues(range, type, SceneUnits(), cursor); };
    if (const std::optional<TouchedElements> touched = touchedElements(range))
        session.edits().replaceElements(touched->array, touched->indices, assign);
    else
        session.edits().replaceBelow(range.plug, assign);
}

Value setAttr(Session& session, const Args& args)
{
    const PlugRange range = plugsNamed(session, args.objects().front().toString());
    setFlags(session, range, args, true);
    setValues(session, range, args);
    setFlags(session, range, args, false);
    return {};
}

AttributeRequest requestOf(const Args& args)
{
    AttributeRequest request;
    request.longName = args.textOr("longName", {});
    request.shortName = args.textOr("shortName", {});
    request.niceName = args.textOr("niceName", {});
    request.attributeType = args.textOr("attributeType", {});
    if (args.isSet("dataType"))
        request.dataTypes.push_back(args.text("dataType"));
    else if (request.attributeType.empty())
        request.attributeType = "double";
    request.parent = args.textOr("parent", {});
    request.enumNames = args.textOr("enumName", {});
    request.children = args.integerOr("numberOfChildren", 0);
    if (args.isSet("category"))
        request.categories = args.texts("category");
    const auto number = [&](const char* flag, std::optional<double>& value) {
        if (args.isSet(flag))
            value = args.number(flag);
    };
    number("defaultValue", request.defaultValue);
    number("minValue", request.minimum);
    number("maxValue", request.maximum);
    number("softMinValue", request.softMinimum);
    number("softMaxValue", request.softMaximum);
    request.flags.array = args.isSet("multi");
    request.flags.indexMatters = args.booleanOr("indexMatters", true);
    request.flags.keyable = args.booleanOr("keyable", false);
    request.flags.hidden = args.booleanOr("hidden", false);
    request.flags.readable = args.booleanOr("readable", true);
    request.flags.writable = args.booleanOr("writable", true);
    request.flags.storable = args.booleanOr("storable", true);
    request.flags.cached = args.booleanOr("cachedInternally", true);
    request.flags.usedAsColor = args.isSet("usedAsColor");
    request.flags.usedAsFilename = args.isSet("usedAsFilename");
    return request;
}

mel::CommandFunction addAttrCommand()
{
    // Children of a compound come one command at a time.
    auto pending = std::make_shared<PendingAttributes>();
    return [pending](Session& session, const Args& args) -> Value {
        const AttributeRequest request = requestOf(args);
        for (Node* const node : nodesOrSelection(session, args.objectNames())) {
            const std::string& name = request.longName.empty() ? request.shortName : request.longName;
            if (node->findAttribute(name))
                throw Error("Found an attribute with the same name '" + name + "' on " + node->uniqueName() +
                            ".");
            if (const Ref<Attribute> root = pending->add(*node, request))
                session.edits().addAttribute(*node, root);
        }
        return {};
    };
}

Value deleteAttr(Session& session, const Args& args)
{
    for (const std::string& text : args.objectNames()) {
        if (args.isSet("attribute") || text.find('.') == text.npos) {
            Node& node = session.graph().get(text);
            const Plug plug = node.plug(args.text("attribute"));
            session.edits().removeAttribute(node, plug.attribute()->root());
            continue;
        }
        const Plug plug = plugNamed(session, text);
        if (!plug.attribute()->flags.dynamic || plug.attribute()->parent)
            throw Error("'" + plug.name() + "' is no added attribute and cannot be deleted.");
        session.edits().removeAttribute(*plug.node(), *plug.attribute());
    }
    return {};
}

Value queryAliases(Session& session, const Args& args)
{
    if (args.objects().empty())
        throw Error("aliasAttr: name a node or an attribute.");
    const std::string text = args.objects().front().toString();
    if (text.find('.') == text.npos) {
        mel::StringArray pairs;
        for (const auto& [alias, path] : session.graph().get(text).aliases) {
            pairs.push_back(alias);
            pairs.push_back(path);
        }
        return pairs;
    }
    const Plug plug = plugNamed(session, text);
    for (const auto& [alias, path] : plug.node()->aliases) {
        const auto meant = resolvePlug(*plug.node(), path);
        if (meant && *meant == plug)
            return alias;
    }
    return std::string();
}

Value aliasAttr(Session& session, const Args& args)
{
    if (args.query())
        return queryAliases(session, args);
    const std::vector<std::string> names = args.objectNames();
    const bool remove = args.isSet("remove");
    if (!remove && names.size() % 2 != 0)
        throw Error("aliasAttr takes pairs of an alias and an attribute.");
    for (std::size_t k = 0; k < names.size(); k += remove ? 1 : 2) {
        const Plug plug = plugNamed(session, names[remove ? k : k + 1]);
        Node& node = *plug.node();
        auto aliases = node.aliases;
        aliases.erase(std::remove_if(aliases.begin(), aliases.end(),
                                     [&](const auto& entry) {
                                         const auto meant = resolvePlug(node, entry.second);
                                         return meant && *meant == plug;
                                     }),
                      aliases.end());
        if (!remove) {
            if (node.findAttribute(names[k]) ||
                std::any_of(aliases.begin(), aliases.end(),
                            [&](const auto& entry) { return entry.first == names[k]; }))
                throw Error("aliasAttr: the name '" + names[k] + "' is taken on " + node.uniqueName() + ".");
            aliases.emplace_back(names[k], plug.attributePath(true).substr(1));
        }
        session.edits().setAliases(node, std::move(aliases));
    }
    return {};
}

Value removeMultiInstance(Session& session, const Args& args)
{
    for (const std::string& text : args.objectNames()) {
        const PlugRange range = plugsNamed(session, text);
        for (std::size_t step = 0; step < range.count(); ++step) {
            const Plug plug = range.at(step);
            if (!plug.isElement())
                throw Error("removeMultiInstance: '" + plug.name() + "' is no element of an array.");
            const Plug source = session.graph().source(plug);
            if (!source.isNull()) {
                if (!args.booleanOr("break", false))
                    throw Error("removeMultiInstance: '" + plug.name() + "' is connected (-break true).");
                session.edits().disconnect(source, plug);
            }
            session.edits().unset(plug);
        }
    }
    return {};
}

} // namespace

void registerAttributeCommands(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("setAttr")
                     .flag("typ", "type", {ArgType::kString})
                     .flag("l", "lock", {ArgType::kBool})
                     .flag("k", "keyable", {ArgType::kBool})
                     .flag("cb", "channelBox", {ArgType::kBool})
                     .flag("s", "size", {ArgType::kInt})
                     .flag("ch", "capacityHint", {ArgType::kInt})
                     .flag("av", "alteredValue")
                     .flag("c", "clamp")
                     .objects(1)
                     .undoable(),
                 setAttr);
    registry.add(CommandSpec("addAttr")
                     .flag("ln", "longName", {ArgType::kString})
                     .flag("sn", "shortName", {ArgType::kString})
                     .flag("nn", "niceName", {ArgType::kString})
                     .flag("at", "attributeType", {ArgType::kString})
                     .flag("dt", "dataType", {ArgType::kString})
                     .flag("p", "parent", {ArgType::kString})
                     .flag("en", "enumName", {ArgType::kString})
                     .flag("nc", "numberOfChildren", {ArgType::kInt})
                     .flag("ct", "category", {ArgType::kString})
                     .multi()
                     .flag("dv", "defaultValue", {ArgType::kFloat})
                     .flag("min", "minValue", {ArgType::kFloat})
                     .flag("max", "maxValue", {ArgType::kFloat})
                     .flag("smn", "softMinValue", {ArgType::kFloat})
                     .flag("smx", "softMaxValue", {ArgType::kFloat})
                     .flag("m", "multi")
                     .flag("im", "indexMatters", {ArgType::kBool})
                     .flag("k", "keyable", {ArgType::kBool})
                     .flag("h", "hidden", {ArgType::kBool})
                     .flag("r", "readable", {ArgType::kBool})
                     .flag("w", "writable", {ArgType::kBool})
                     .flag("s", "storable", {ArgType::kBool})
                     .flag("ci", "cachedInternally", {ArgType::kBool})
                     .flag("uac", "usedAsColor")
                     .flag("uaf", "usedAsFilename")
                     .objects(0)
                     .undoable(),
                 addAttrCommand());
    registry.add(CommandSpec("deleteAttr").flag("at", "attribute", {ArgType::kString}).objects(1).undoable(),
                 deleteAttr);
    registry.add(CommandSpec("aliasAttr").flag("rm", "remove").objects(1).query().undoable(), aliasAttr);
    registry.add(
        CommandSpec("removeMultiInstance").flag("b", "break", {ArgType::kBool}).objects(1).undoable(),
        removeMultiInstance);
}

} // namespace host
