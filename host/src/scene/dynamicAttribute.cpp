#include "scene/dynamicAttribute.h"

#include "graph/node.h"
#include "mel/value.h"
#include "scene/maText.h"
#include "types/error.h"

#include <algorithm>

namespace host {

namespace {

struct TypeName {
    const char* name; ///< as addAttr writes it
    AttributeType type;
    int children; ///< of double3 and the like
};

// The first name of a type is the one that is written unless the attribute's dataType says another.
constexpr TypeName kTypes[] = {{"bool", AttributeType::kBool, 0},
                               {"byte", AttributeType::kByte, 0},
                               {"char", AttributeType::kChar, 0},
                               {"short", AttributeType::kShort, 0},
                               {"long", AttributeType::kLong, 0},
                               {"enum", AttributeType::kEnum, 0},
                               {"float", AttributeType::kFloat, 0},
                               {"double", AttributeType::kDouble, 0},
                               {"doubleAngle", AttributeType::kAngle, 0},
                               {"floatAngle", AttributeType::kAngle, 0},
                               {"doubleLinear", AttributeType::kDistance, 0},
                               {"floatLinear", AttributeType::kDistance, 0},
                               {"time", AttributeType::kTime, 0},
                               {"message", AttributeType::kMessage, 0},
                               {"compound", AttributeType::kCompound, 0},
                               {"matrix", AttributeType::kMatrix, 0},
                               {"fltMatrix", AttributeType::kMatrix, 0},
                               {"double2", AttributeType::kCompound, 2},
                               {"double3", AttributeType::kCompound, 3},
                               {"double4", AttributeType::kCompound, 4},
                               {"float2", AttributeType::kCompound, 2},
                               {"float3", AttributeType::kCompound, 3},
                               {"long2", AttributeType::kCompound, 2},
                               {"long3", AttributeType::kCompound, 3},
                               {"short2", AttributeType::kCompound, 2},
                               {"short3", AttributeType::kCompound, 3},
                               {"spectrum", AttributeType::kCompound, 3},
                               {"reflectance", AttributeType::kCompound, 3}};

const TypeName* findType(const std::string& name)
{
    const auto found = std::find_if(std::begin(kTypes), std::end(kTypes),
                                    [&](const TypeName& type) { return name == type.name; });
    return found == std::end(kTypes) ? nullptr : found;
}

/// "low=1:high:top=9": a field without a number follows the one in front of it.
void readEnum(Attribute& attribute, const std::string& text)
{
    long long next = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find(':', at), text.size());
        std::string field = text.substr(at, end - at);
        const std::size_t equals = field.rfind('=');
        double number = 0.0;
        if (equals != field.npos && maParseNumber(field.substr(equals + 1), number)) {
            next = mel::truncatedToInt(number);
            field.resize(equals);
        }
        attribute.enumFields.emplace_back(field, mel::truncatedToInt(static_cast<double>(next++)));
        at = end + 1;
    }
}

std::string enumText(const Attribute& attribute)
{
    std::string text;
    long long next = 0;
    for (const auto& [name, value] : attribute.enumFields) {
        if (!text.empty())
            text += ':';
        text += name;
        if (value != next)
            text += "=" + std::to_string(value);
        next = value + 1LL;
    }
    return text;
}

void setRange(Attribute& attribute, const AttributeRequest& request)
{
    const auto set = [](const std::optional<double>& given, bool& has, double& value) {
        has = given.has_value();
        value = given.value_or(0.0);
    };
    set(request.minimum, attribute.hasMin, attribute.minimum);
    set(request.maximum, attribute.hasMax, attribute.maximum);
    set(request.softMinimum, attribute.hasSoftMin, attribute.softMinimum);
    set(request.softMaximum, attribute.hasSoftMax, attribute.softMaximum);
    attribute.defaultNumber = request.defaultValue.value_or(0.0);
}

void setType(Attribute& attribute, const AttributeRequest& request)
{
    if (!request.dataTypes.empty()) {
        const std::string& type = request.dataTypes.front();
        attribute.dataType = type;
        attribute.type = type == "string"                          ? AttributeType::kString
                         : type == "matrix" || type == "fltMatrix" ? AttributeType::kMatrix
                                                                   : AttributeType::kData;
        return;
    }
    const TypeName* type = findType(request.attributeType);
    if (!type)
        throw Error("The attribute \"" + request.longName + "\" has an unknown attribute type \"" +
                    request.attributeType + "\".");
    attribute.type = type->type;
    // Which spelling was used matters where several mean the same to the host.
    const bool first = std::find_if(std::begin(kTypes), std::end(kTypes),
                                    [&](const TypeName& other) { return other.type == type->type; }) == type;
    if (!first)
        attribute.dataType = type->name;
}

std::string typeFlag(const Attribute& attribute)
{
    if (attribute.type == AttributeType::kString)
        return " -dt \"string\"";
    if (attribute.type == AttributeType::kData)
        return " -dt " + maQuoted(attribute.dataType);
    if (attribute.type == AttributeType::kMatrix && attribute.dataType != "fltMatrix")
        return " -dt \"matrix\"";
    if (!attribute.dataType.empty())
        return " -at \"" + attribute.dataType + "\"";
    const auto type = std::find_if(std::begin(kTypes), std::end(kTypes),
                                   [&](const TypeName& known) { return known.type == attribute.type; });
    return std::string(" -at \"") + (type == std::end(kTypes) ? "double" : type->name) + "\"";
}

} // namespace

bool isKnownAttributeType(const std::string& attributeType)
{
    return findType(attributeType) != nullptr;
}

Ref<Attribute> makeAttribute(const AttributeRequest& request)
{
    Ref<Attribute> attribute(new Attribute);
    attribute->longName = request.longName.empty() ? request.shortName : request.longName;
    attribute->shortName = request.shortName.empty() ? request.longName : request.shortName;
    if (attribute->longName.empty())
        throw Error("New attribute needs either a long (-ln) or short (-sn) attribute name.");
    if (request.attributeType.empty() == request.dataTypes.empty())
        throw Error("The attribute \"" + attribute->longName +
                    "\" needs either an attribute type (-at) or a data type (-dt).");
    attribute->niceName = request.niceName;
    attribute->flags = request.flags;
    attribute->flags.dynamic = true;
    attribute->categories = request.categories;
    setType(*attribute, request);
    setRange(*attribute, request);
    if (attribute->type == AttributeType::kEnum)
        readEnum(*attribute, request.enumNames);
    return attribute;
}

std::string addAttrText(const Attribute& attribute)
{
    const Attribute::Flags& flags = attribute.flags;
    std::string text = "addAttr";
    const auto add = [&](bool condition, const std::string& words) {
        if (condition)
            text += " " + words;
    };
    add(!flags.storable, "-s false");
    text += flags.cached ? " -ci true" : " -ci false";
    add(!flags.readable, "-r false");
    add(!flags.writable, "-w false");
    add(flags.keyable, "-k true");
    add(flags.hidden, "-h true");
    add(flags.usedAsColor, "-uac");
    add(flags.usedAsFilename, "-uaf");
    add(flags.proxy, "-uap");
    add(flags.array, "-m");
    add(!flags.indexMatters, "-im false");
    text += " -sn " + maQuoted(attribute.shortName) + " -ln " + maQuoted(attribute.longName);
    add(!attribute.niceName.empty(), "-nn " + maQuoted(attribute.niceName));
    for (const std::string& category : attribute.categories)
        text += " -ct " + maQuoted(category);
    add(attribute.defaultNumber != 0.0, "-dv " + maNumber(attribute.defaultNumber));
    add(attribute.hasMin, "-min " + maNumber(attribute.minimum));
    add(attribute.hasMax, "-max " + maNumber(attribute.maximum));
    add(attribute.hasSoftMin, "-smn " + maNumber(attribute.softMinimum));
    add(attribute.hasSoftMax, "-smx " + maNumber(attribute.softMaximum));
    add(attribute.type == AttributeType::kEnum, "-en " + maQuoted(enumText(attribute)));
    text += typeFlag(attribute);
    add(attribute.parent != nullptr,
        "-p " + (attribute.parent ? maQuoted(attribute.parent->longName) : std::string()));
    add(attribute.type == AttributeType::kCompound, "-nc " + std::to_string(attribute.children.size()));
    return text;
}

Ref<Attribute> PendingAttributes::add(Node& node, const AttributeRequest& request)
{
    Ref<Attribute> attribute = makeAttribute(request);
    int children = 0;
    if (attribute->type == AttributeType::kCompound) {
        const int fixed = findType(request.attributeType)->children;
        children = fixed ? fixed : request.children;
        if (children < 1)
            throw Error("The compound attribute \"" + attribute->longName +
                        "\" needs the number of its children (-nc).");
    }
    if (request.parent.empty()) {
        if (children == 0)
            return attribute;
        Tree tree{&node, attribute, {}};
        tree.wanted[attribute.get()] = children;
        trees.push_back(std::move(tree));
        return {};
    }
    for (auto tree = trees.begin(); tree != trees.end(); ++tree) {
        const auto parent = std::find_if(tree->wanted.begin(), tree->wanted.end(), [&](const auto& entry) {
            return entry.first->longName == request.parent || entry.first->shortName == request.parent;
        });
        if (tree->node.get() != &node || parent == tree->wanted.end() ||
            parent->first->children.size() >= static_cast<std::size_t>(parent->second))
            continue;
        parent->first->addChild(attribute);
        if (children)
            tree->wanted[attribute.get()] = children;
        if (!finished(*tree, *tree->root))
            return {};
        Ref<Attribute> root = tree->root;
        trees.erase(tree);
        return root;
    }
    throw Error("The attribute \"" + request.parent + "\" of " + node.name() +
                " is no compound that waits for the child \"" + attribute->longName + "\".");
}

bool PendingAttributes::finished(const Tree& tree, Attribute& attribute)
{
    const auto wanted = tree.wanted.find(&attribute);
    if (wanted == tree.wanted.end())
        return true;
    return attribute.children.size() == static_cast<std::size_t>(wanted->second) &&
           std::all_of(attribute.children.begin(), attribute.children.end(),
                       [&](const Ref<Attribute>& child) { return finished(tree, *child); });
}

std::vector<std::string> PendingAttributes::takeUnfinished()
{
    std::vector<std::string> names;
    for (const Tree& tree : trees)
        names.push_back(tree.node->name() + "." + tree.root->longName);
    trees.clear();
    return names;
}

} // namespace host
