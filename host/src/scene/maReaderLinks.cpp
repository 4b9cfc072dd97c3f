#include "scene/maReader.h"

#include "scene/plugRange.h"
#include "types/error.h"

#include <algorithm>
#include <functional>
#include <optional>

namespace host {

/// One end of a connection, or what is missing of it.
struct MaReader::Endpoint {
    Plug plug;
    std::string missing;
};

namespace {

struct AddFlag {
    const char* shortName;
    const char* longName;
    void (*read)(AttributeRequest& request, MaCursor& cursor);
};

using Request = AttributeRequest;
constexpr AddFlag kAddFlags[] = {
    {"ln", "longName", [](Request& r, MaCursor& c) { r.longName = c.text(); }},
    {"sn", "shortName", [](Request& r, MaCursor& c) { r.shortName = c.text(); }},
    {"nn", "niceName", [](Request& r, MaCursor& c) { r.niceName = c.text(); }},
    {"at", "attributeType", [](Request& r, MaCursor& c) { r.attributeType = c.text(); }},
    {"dt", "dataType", [](Request& r, MaCursor& c) { r.dataTypes.push_back(c.text()); }},
    {"p", "parent", [](Request& r, MaCursor& c) { r.parent = c.text(); }},
    {"en", "enumName", [](Request& r, MaCursor& c) { r.enumNames = c.text(); }},
    {"ct", "category", [](Request& r, MaCursor& c) { r.categories.push_back(c.text()); }},
    {"dv", "defaultValue", [](Request& r, MaCursor& c) { r.defaultValue = c.number(); }},
    {"min", "minValue", [](Request& r, MaCursor& c) { r.minimum = c.number(); }},
    {"max", "maxValue", [](Request& r, MaCursor& c) { r.maximum = c.number(); }},
    {"smn", "softMinValue", [](Request& r, MaCursor& c) { r.softMinimum = c.number(); }},
    {"smx", "softMaxValue", [](Request& r, MaCursor& c) { r.softMaximum = c.number(); }},
    {"nc", "numberOfChildren", [](Request& r, MaCursor& c) { r.children = static_cast<int>(c.integer()); }},
    {"m", "multi", [](Request& r, MaCursor&) { r.flags.array = true; }},
    {"im", "indexMatters", [](Request& r, MaCursor& c) { r.flags.indexMatters = c.boolean(); }},
    {"ci", "cachedInternally", [](Request& r, MaCursor& c) { r.flags.cached = c.boolean(); }},
    {"s", "storable", [](Request& r, MaCursor& c) { r.flags.storable = c.boolean(); }},
    {"k", "keyable", [](Request& r, MaCursor& c) { r.flags.keyable = c.boolean(); }},
    {"h", "hidden", [](Request& r, MaCursor& c) { r.flags.hidden = c.boolean(); }},
    {"r", "readable", [](Request& r, MaCursor& c) { r.flags.readable = c.boolean(); }},
    {"w", "writable", [](Request& r, MaCursor& c) { r.flags.writable = c.boolean(); }},
    {"uac", "usedAsColor", [](Request& r, MaCursor&) { r.flags.usedAsColor = true; }},
    {"uaf", "usedAsFilename", [](Request& r, MaCursor&) { r.flags.usedAsFilename = true; }},
    {"uap", "usedAsProxy", [](Request& r, MaCursor&) { r.flags.proxy = true; }}};

} // namespace

/// Reads what addAttr asks for; false when it asks for something that only its text can keep.
bool MaReader::attributeRequest(MaCursor& cursor, AttributeRequest& request) const
{
    while (!cursor.atEnd()) {
        if (!cursor.peek().isFlag())
            return false;
        const std::string_view flag = cursor.next().text.substr(1);
        const auto known =
            std::find_if(std::begin(kAddFlags), std::end(kAddFlags), [&](const AddFlag& candidate) {
                return flag == candidate.shortName || flag == candidate.longName;
            });
        if (known == std::end(kAddFlags))
            return false;
        known->read(request, cursor);
    }
    return (request.attributeType.empty() || isKnownAttributeType(request.attributeType)) &&
           request.dataTypes.size() <= 1 && keptAttributes.count(request.parent) == 0;
}

void MaReader::addAttr(const MaStatement& words)
{
    if (context == Context::kNone)
        throw Error("there is no node to which the attribute could be added");
    if (context == Context::kText)
        return keepWithNode(words);
    if (context == Context::kIgnored)
        return;
    MaCursor cursor(words, file);
    AttributeRequest request;
    if (!attributeRequest(cursor, request))
        return keepAddAttr(*current, words, request);
    const std::string& name = request.longName.empty() ? request.shortName : request.longName;
    const Attribute* const taken = current->findAttribute(name);
    if (taken && !(options.import && taken->flags.dynamic))
        return keepAddAttr(*current, words, request);
    if (const Ref<Attribute> root = pending.add(*current, request))
        graph.addAttribute(*current, root);
}

/// An attribute of a kind that the host does not know, or that its own node type has already.
void MaReader::keepAddAttr(Node& node, const MaStatement& words, const AttributeRequest& request)
{
    node.keptStatements.emplace_back(words.raw);
    keptAttributes.insert(request.longName);
    keptAttributes.insert(request.shortName);
    keptAttributes.erase("");
}

/// A connection's end "node.attr": an attribute that the host does not know becomes a kept one.
MaReader::Endpoint MaReader::endpoint(const std::string& text, bool wantsNext)
{
    const std::size_t dot = text.find('.');
    if (dot == text.npos)
        throw Error("\"" + text + "\" is no attribute of a node");
    Node* const node = findNode(text.substr(0, dot));
    if (!node)
        return {Plug(), text};
    const std::string path = text.substr(dot + 1);
    if (wantsNext)
        return {nextAvailable(*node, path), {}};
    const std::optional<Plug> plug = resolvePlug(*node, path);
    return {plug ? *plug : graph.keepAttribute(*node, path), {}};
}

Plug MaReader::nextAvailable(Node& node, const std::string& path)
{
    if (const std::optional<Plug> array = resolvePlug(node, path)) {
        if (!array->isArray())
            throw Error("\"" + array->name() + "\" is no array that could have a next element");
        return array->element(graph.nextAvailable(*array));
    }
    for (std::uint32_t index = 0;; ++index) {
        Plug plug = graph.keepAttribute(node, path + "[" + std::to_string(index) + "]");
        if (!graph.isFed(plug))
            return plug;
    }
}

void MaReader::connectAttr(const MaStatement& words)
{
    linksBegun = true;
    bool next = false;
    std::optional<bool> locked;
    std::vector<std::string> ends;
    for (MaCursor cursor(words, file); !cursor.atEnd();) {
        const bool flag = cursor.peek().isFlag();
        const std::string text = cursor.text();
        if (!flag)
            ends.push_back(text);
        else if (text == "-na" || text == "-nextAvailable")
            next = true;
        else if (text == "-l" || text == "-lock")
            locked = cursor.boolean();
        else if (text != "-f" && text != "-force") {
            keep(words);
            return;
        }
    }
    if (ends.size() != 2)
        throw Error("connectAttr takes two attributes");
    const Endpoint source = endpoint(ends[0], false);
    const Endpoint destination = source.missing.empty() ? endpoint(ends[1], next) : source;
    if (!destination.missing.empty())
        return void(keepUnresolved(words, destination.missing));
    try {
        graph.connect(source.plug, destination.plug, true);
    } catch (const Error& error) {
        notes.push_back("line " + std::to_string(words.line) + ": " + error.what() + "; kept as text");
        keep(words);
        return;
    }
    if (locked)
        locks.emplace_back(destination.plug, *locked);
}

void MaReader::disconnectAttr(const MaStatement& words)
{
    std::vector<std::string> ends;
    bool plain = true;
    for (MaCursor cursor(words, file); !cursor.atEnd();) {
        plain = plain && !cursor.peek().isFlag();
        ends.push_back(cursor.text());
    }
    if (!plain || ends.size() != 2) {
        keep(words);
        return;
    }
    const Endpoint source = endpoint(ends[0], false), destination = endpoint(ends[1], false);
    const std::string& missing = source.missing.empty() ? destination.missing : source.missing;
    if (!missing.empty())
        return void(keepUnresolved(words, missing));
    if (graph.source(destination.plug) == source.plug) {
        // A statement that is read again came before the connection.
        if (!retried)
            graph.disconnect(source.plug, destination.plug);
        return;
    }
    keep(words).unlinked.emplace(source.plug, destination.plug);
}

} // namespace host
