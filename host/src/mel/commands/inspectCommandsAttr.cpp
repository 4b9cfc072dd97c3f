#include "graph/graph.h"
#include "graph/names.h"
#include "mel/command.h"
#include "mel/commands/inspectCommands.h"
#include "mel/commands/plugArguments.h"
#include "session.h"
#include "types/error.h"

#include <algorithm>
#include <cctype>
#include <functional>

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

bool isWhole(AttributeType type)
{
    return type <= AttributeType::kEnum; // bool, byte, char, short, long and enum come first
}

bool isTuple(const Attribute& attribute)
{
    return attribute.type == AttributeType::kCompound && !attribute.children.empty() &&
           std::all_of(attribute.children.begin(), attribute.children.end(),
                       [](const Ref<Attribute>& child) { return child->isNumber() && !child->flags.array; });
}

std::string enumName(const Plug& plug)
{
    const int value = static_cast<int>(plug.number());
    for (const auto& [name, number] : plug.attribute()->enumFields) {
        if (number == value)
            return name;
    }
    throw Error("getAttr: '" + plug.name() + "' has the value " + std::to_string(value) +
                ", which has no name.");
}

Value valueOfData(const Plug& plug)
{
    const DataRef data = plug.data();
    if (!data)
        return {};
    if (const auto* ints = dynamic_cast<const IntArrayData*>(data.get()))
        return ints->values;
    if (const auto* doubles = dynamic_cast<const DoubleArrayData*>(data.get()))
        return doubles->values;
    if (const auto* strings = dynamic_cast<const StringArrayData*>(data.get()))
        return strings->values;
    if (const auto* components = dynamic_cast<const ComponentListData*>(data.get()))
        return components->components;
    if (const auto* vectors = dynamic_cast<const VectorArrayData*>(data.get()))
        return vectors->values;
    if (const auto* points = dynamic_cast<const PointArrayData*>(data.get())) {
        mel::FloatArray numbers;
        for (const auto& point : points->values)
            numbers.insert(numbers.end(), point.begin(), point.end());
        return numbers;
    }
    throw Error("getAttr: The data of '" + plug.name() + "' is of type " + data->typeName() +
                " and cannot be shown.");
}

/// Numbers of an array, a compound of numbers or a matrix, one behind the other.
void appendNumbers(mel::FloatArray& numbers, const Plug& plug)
{
    const Attribute& attribute = *plug.attribute();
    if (plug.isArray()) {
        for (const std::uint32_t index : plug.existingIndices())
            appendNumbers(numbers, plug.element(index));
    } else if (attribute.isNumber()) {
        numbers.push_back(plug.number());
    } else if (isTuple(attribute)) {
        for (unsigned child = 0; child < attribute.children.size(); ++child)
            numbers.push_back(plug.child(child).number());
    } else if (attribute.type == AttributeType::kMatrix) {
        const Imath::M44d matrix = plug.matrix();
        numbers.insert(numbers.end(), matrix.getValue(), matrix.getValue() + 16);
    } else {
        throw Error("getAttr: '" + plug.name() + "' has no value that could be shown.");
    }
}

Value valueOf(const PlugRange& range, bool asText)
{
    const Plug& plug = range.plug;
    const Attribute& attribute = *plug.attribute();
    if (!range.ranged && !plug.isArray()) {
        if (attribute.isNumber() && asText && attribute.type == AttributeType::kEnum)
            return enumName(plug);
        if (attribute.isNumber())
            return isWhole(attribute.type) ? Value(mel::truncatedToInt(plug.number())) : Value(plug.number());
        if (attribute.type == AttributeType::kString)
            return plug.text();
        if (attribute.type == AttributeType::kData)
            return valueOfData(plug);
    }
    if (attribute.type == AttributeType::kString) {
        mel::StringArray texts;
        for (std::size_t step = 0; step < range.count(); ++step)
            texts.push_back(range.at(step).text());
        return texts;
    }
    mel::FloatArray numbers;
    for (std::size_t step = 0; step < range.count(); ++step)
        appendNumbers(numbers, range.at(step));
    if (!attribute.isNumber() || !isWhole(attribute.type))
        return numbers;
    return Value(numbers).toIntArray();
}

Value getAttr(Session& session, const Args& args)
{
    const PlugRange range = plugsNamed(session, args.objects().front().toString());
    const Plug& plug = range.plug;
    if (args.isSet("lock"))
        return plug.isLocked();
    if (args.isSet("keyable"))
        return plug.isKeyable();
    if (args.isSet("channelBox"))
        return plug.isInChannelBox();
    if (args.isSet("settable"))
        return !plug.isLocked() && !plug.isFed() && plug.attribute()->flags.writable;
    if (args.isSet("type"))
        return attributeTypeWord(*plug.attribute());
    if (args.isSet("size"))
        return plug.isArray() ? static_cast<int>(plug.numElements()) : 1;
    if (args.isSet("multiIndices")) {
        if (!plug.isArray())
            throw Error("getAttr: '" + plug.name() + "' is no array.");
        mel::IntArray indices;
        for (const std::uint32_t index : plug.existingIndices())
            indices.push_back(static_cast<int>(index));
        return indices;
    }
    return valueOf(range, args.isSet("asString"));
}

const Attribute& queriedAttribute(Session& session, const Args& args)
{
    const std::string name = args.objects().front().toString();
    const Attribute* found = nullptr;
    std::string owner;
    if (args.isSet("node")) {
        owner = args.text("node");
        found = session.graph().get(owner).findAttribute(name);
    } else if (args.isSet("type")) {
        owner = args.text("type");
        const NodeType* const type = session.graph().types().find(owner);
        if (!type)
            throw Error("attributeQuery: '" + owner + "' is no node type.");
        found = type->find(name);
    } else {
        throw Error("attributeQuery needs a node (-node) or a node type (-type).");
    }
    if (!found)
        throw Error("attributeQuery: '" + owner + "' has no attribute '" + name + "'.");
    return *found;
}

mel::StringArray childNames(const Attribute& attribute)
{
    mel::StringArray names;
    for (const Ref<Attribute>& child : attribute.children)
        names.push_back(child->longName);
    return names;
}

std::string niceName(const Attribute& attribute)
{
    if (!attribute.niceName.empty())
        return attribute.niceName;
    std::string name;
    for (const char c : attribute.longName) {
        if (std::isupper(static_cast<unsigned char>(c)) && !name.empty())
            name += ' ';
        name += name.empty() ? static_cast<char>(std::toupper(static_cast<unsigned char>(c))) : c;
    }
    return name;
}

mel::FloatArray defaults(const Attribute& attribute)
{
    mel::FloatArray numbers;
    if (attribute.isNumber())
        numbers.push_back(attribute.defaultNumber);
    for (const Ref<Attribute>& child : attribute.children)
        numbers.push_back(child->defaultNumber);
    return numbers;
}

mel::StringArray enumList(const Attribute& attribute)
{
    std::string text;
    long long next = 0;
    for (const auto& [name, value] : attribute.enumFields) {
        text += (text.empty() ? "" : ":") + name + (value != next ? "=" + std::to_string(value) : "");
        next = value + 1LL;
    }
    return {text};
}

struct Question {
    const char* shortName;
    const char* longName;
    Value (*answer)(const Attribute& attribute);
};
using A = Attribute;
const Question kQuestions[] = {
    {"lc", "listChildren", [](const A& a) -> Value { return childNames(a); }},
    {"nc", "numberOfChildren", [](const A& a) -> Value { return static_cast<int>(a.children.size()); }},
    {"lp", "listParent",
     [](const A& a) -> Value {
         return a.parent ? mel::StringArray{a.parent->longName} : mel::StringArray();
     }},
    {"ln", "longName", [](const A& a) -> Value { return a.longName; }},
    {"sn", "shortName", [](const A& a) -> Value { return a.shortName; }},
    {"nn", "niceName", [](const A& a) -> Value { return niceName(a); }},
    {"at", "attributeType", [](const A& a) -> Value { return attributeTypeWord(a); }},
    {"le", "listEnum", [](const A& a) -> Value { return enumList(a); }},
    {"ld", "listDefault", [](const A& a) -> Value { return defaults(a); }},
    {"min", "minimum", [](const A& a) -> Value { return mel::FloatArray{a.minimum}; }},
    {"max", "maximum", [](const A& a) -> Value { return mel::FloatArray{a.maximum}; }},
    {"r", "range",
     [](const A& a) -> Value {
         return mel::FloatArray{a.minimum, a.maximum};
     }},
    {"mne", "minExists", [](const A& a) -> Value { return a.hasMin; }},
    {"mxe", "maxExists", [](const A& a) -> Value { return a.hasMax; }},
    {"re", "rangeExists", [](const A& a) -> Value { return a.hasMin && a.hasMax; }},
    {"m", "multi", [](const A& a) -> Value { return a.flags.array; }},
    {"k", "keyable", [](const A& a) -> Value { return a.flags.keyable; }},
    {"h", "hidden", [](const A& a) -> Value { return a.flags.hidden; }},
    {"w", "writable", [](const A& a) -> Value { return a.flags.writable; }},
    {"rd", "readable", [](const A& a) -> Value { return a.flags.readable; }},
    {"s", "storable", [](const A& a) -> Value { return a.flags.storable; }},
    {"c", "connectable", [](const A& a) -> Value { return a.flags.connectable; }},
    {"im", "indexMatters", [](const A& a) -> Value { return a.flags.indexMatters; }},
    {"msg", "message", [](const A& a) -> Value { return a.type == AttributeType::kMessage; }},
    {"e", "enum", [](const A& a) -> Value { return a.type == AttributeType::kEnum; }}};

Value attributeQuery(Session& session, const Args& args)
{
    if (args.isSet("exists")) {
        const std::string name = args.objects().front().toString();
        if (args.isSet("node"))
            return session.graph().get(args.text("node")).findAttribute(name) != nullptr;
        const NodeType* const type = session.graph().types().find(args.textOr("type", {}));
        return type && type->find(name);
    }
    const Attribute& attribute = queriedAttribute(session, args);
    for (const Question& question : kQuestions) {
        if (args.isSet(question.longName))
            return question.answer(attribute);
    }
    throw Error("attributeQuery: a flag must say what to tell about '" + attribute.longName + "'.");
}

void listAttributes(Node& node, const Args& args, mel::StringArray& names)
{
    const std::vector<std::string> patterns =
        args.isSet("string") ? args.texts("string") : std::vector<std::string>();
    const auto wanted = [&](const Attribute& attribute) {
        const Plug plug(&node, &attribute);
        const bool simple = attribute.arrayDepth == (attribute.flags.array ? 1u : 0u);
        if (args.isSet("userDefined") && !attribute.root().flags.dynamic)
            return false;
        if ((args.isSet("keyable") && !plug.isKeyable()) || (args.isSet("multi") && !attribute.flags.array))
            return false;
        if ((args.isSet("channelBox") && !plug.isInChannelBox()) ||
            (args.isSet("locked") && !plug.isLocked()))
            return false;
        if ((args.isSet("unlocked") && plug.isLocked()) || (args.isSet("visible") && attribute.flags.hidden))
            return false;
        if (args.isSet("scalar") && (!attribute.isNumber() || !simple))
            return false;
        return patterns.empty() ||
               std::any_of(patterns.begin(), patterns.end(), [&](const std::string& pattern) {
                   return matchesWildcard(pattern, attribute.longName);
               });
    };
    const std::function<void(const Attribute&)> visit = [&](const Attribute& attribute) {
        if (wanted(attribute))
            names.push_back(args.isSet("shortNames") ? attribute.shortName
                                                     : Plug(&node, &attribute).attributePath(true).substr(1));
        for (const Ref<Attribute>& child : attribute.children)
            visit(*child);
    };
    for (const Ref<Attribute>& root : node.type().roots)
        visit(*root);
    for (const Ref<Attribute>& root : node.dynamicAttributes())
        visit(*root);
}

Value listAttr(Session& session, const Args& args)
{
    mel::StringArray names;
    for (Node* const node : nodesOrSelection(session, args.objectNames()))
        listAttributes(*node, args, names);
    return names;
}

} // namespace

std::string attributeTypeWord(const Attribute& attribute)
{
    if (!attribute.dataType.empty() && attribute.type != AttributeType::kMatrix)
        return attribute.dataType;
    switch (attribute.type) {
    case AttributeType::kBool:
        return "bool";
    case AttributeType::kByte:
        return "byte";
    case AttributeType::kChar:
        return "char";
    case AttributeType::kShort:
        return "short";
    case AttributeType::kLong:
        return "long";
    case AttributeType::kEnum:
        return "enum";
    case AttributeType::kFloat:
        return "float";
    case AttributeType::kDouble:
        return "double";
    case AttributeType::kAngle:
        return "doubleAngle";
    case AttributeType::kDistance:
        return "doubleLinear";
    case AttributeType::kTime:
        return "time";
    case AttributeType::kString:
        return "string";
    case AttributeType::kMatrix:
        return "matrix";
    case AttributeType::kCompound:
        return "TdataCompound";
    case AttributeType::kMessage:
        return "message";
    case AttributeType::kData:
    case AttributeType::kOpaque:
        break;
    }
    return "typed";
}

void registerAttributeQueries(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("getAttr")
                     .flag("l", "lock")
                     .flag("k", "keyable")
                     .flag("cb", "channelBox")
                     .flag("se", "settable")
                     .flag("typ", "type")
                     .flag("s", "size")
                     .flag("mi", "multiIndices")
                     .flag("as", "asString")
                     .objects(1, 1),
                 getAttr);
    CommandSpec query("attributeQuery");
    query.flag("n", "node", {ArgType::kString}).flag("typ", "type", {ArgType::kString}).flag("ex", "exists");
    for (const Question& question : kQuestions)
        query.flag(question.shortName, question.longName);
    registry.add(query.objects(1, 1), attributeQuery);
    registry.add(CommandSpec("listAttr")
                     .flag("k", "keyable")
                     .flag("cb", "channelBox")
                     .flag("ud", "userDefined")
                     .flag("l", "locked")
                     .flag("u", "unlocked")
                     .flag("v", "visible")
                     .flag("s", "scalar")
                     .flag("m", "multi")
                     .flag("sn", "shortNames")
                     .flag("st", "string", {ArgType::kString})
                     .multi()
                     .objects(0),
                 listAttr);
}

} // namespace host
