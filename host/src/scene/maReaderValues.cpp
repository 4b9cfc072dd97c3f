#include "scene/maReader.h"

#include "graph/numericArray.h"
#include "graph/weightRows.h"
#include "scene/dataText.h"
#include "scene/meshText.h"
#include "scene/plugRange.h"
#include "types/error.h"

#include <algorithm>
#include <optional>

namespace host {

struct MaReader::SetFlags {
    std::optional<bool> keyable, locked, channelBox;
    bool kept = false; ///< a flag was given that only the text can keep
    std::string type;
    const MaWord* path = nullptr;
};

/// The flags around the path: those of setAttr stand in front of it, -type behind it. The cursor ends up at
/// the first value.
MaReader::SetFlags MaReader::setFlags(MaCursor& cursor) const
{
    SetFlags flags;
    while (!cursor.atEnd()) {
        const MaWord& word = cursor.peek();
        if (!word.isFlag()) {
            if (flags.path)
                break;
            flags.path = &cursor.next();
            continue;
        }
        const std::string_view flag = word.text.substr(1);
        cursor.next();
        if (flag == "type" || flag == "typ")
            flags.type = cursor.text();
        else if (flag == "k" || flag == "keyable")
            flags.keyable = cursor.boolean();
        else if (flag == "l" || flag == "lock")
            flags.locked = cursor.boolean();
        else if (flag == "cb" || flag == "channelBox")
            flags.channelBox = cursor.boolean();
        else if (flag == "s" || flag == "size" || flag == "ch" || flag == "capacityHint")
            cursor.integer();
        else if (flag == "ca" || flag == "caching")
            flags.kept = cursor.boolean() || true;
        else if (flag != "av" && flag != "alteredValue" && flag != "c" && flag != "clamp")
            cursor.fail("setAttr has no flag \"-" + std::string(flag) + "\"");
    }
    if (!flags.path)
        cursor.fail("setAttr lacks an attribute");
    return flags;
}

/// The node that ".attr" or "node.attr" speaks of; `path` becomes what follows the dot.
Node* MaReader::setTarget(const MaStatement& words, std::string& path)
{
    const std::size_t dot = path.find('.');
    if (dot == path.npos)
        throw Error("\"" + path + "\" is no attribute");
    const std::string name = path.substr(0, dot);
    path.erase(0, dot + 1);
    if (!name.empty()) {
        Node* const node = findNode(name);
        if (!node)
            keepUnresolved(words, name);
        return node;
    }
    if (context == Context::kNone)
        throw Error("there is no node to which \"." + path + "\" could belong");
    if (context == Context::kText)
        keep(words);
    return context == Context::kNode ? current : nullptr;
}

void MaReader::setAttr(const MaStatement& words)
{
    MaCursor cursor(words, file);
    const SetFlags flags = setFlags(cursor);
    std::string path(flags.path->text);
    Node* const node = setTarget(words, path);
    if (!node || (options.import && node->isDefault))
        return;
    if (meshStatement(*node, path, cursor))
        return;
    if (flags.type == "attributeAlias") {
        node->aliases = readAliases(cursor);
        return cursor.expectEnd();
    }
    const std::optional<PlugRange> range = resolvePlugs(*node, path);
    if (!range || range->plug.attribute()->type == AttributeType::kOpaque)
        return keepSetAttr(*node, words, *flags.path, path);
    setFlagsOf(*range, flags);
    setValues(*range, flags, cursor);
    // The parts of a transformation are kept as text beside the matrix that they make.
    const bool xform = range->plug.attribute()->type == AttributeType::kMatrix &&
                       std::any_of(words.words.begin(), words.words.end(),
                                   [](const MaWord& word) { return word.text == "xform"; });
    if (flags.kept || xform)
        keepSetAttr(*node, words, *flags.path, path);
}

void MaReader::setFlagsOf(const PlugRange& range, const SetFlags& flags)
{
    for (std::size_t step = 0; step < range.count(); ++step) {
        const Plug plug = range.at(step);
        if (flags.locked)
            locks.emplace_back(plug, *flags.locked);
        if (flags.keyable)
            plug.setKeyable(*flags.keyable);
        if (flags.channelBox)
            plug.setChannelBox(*flags.channelBox);
        if (!flags.locked && !flags.keyable && !flags.channelBox)
            break;
    }
}

void MaReader::setValues(const PlugRange& range, const SetFlags& flags, MaCursor& cursor)
{
    if (cursor.atEnd())
        return;
    const Attribute& attribute = *range.plug.attribute();
    if (attribute.type == AttributeType::kData && flags.type.empty())
        cursor.fail("the value of \"" + attribute.longName + "\" needs a -type");
    if (range.count() > cursor.left())
        cursor.fail("there are fewer values than elements");
    if (range.ranged && attribute.isNumber() && attribute.flags.array &&
        range.slot == attribute.ownIndexSlot() && !(attribute.parent && attribute.parent->flags.weightRows)) {
        const Plug array = range.plug.array();
        NumericArray& numbers = array.makeNumbers();
        for (std::uint32_t index = range.first; index <= range.last; ++index)
            numbers.set(index, inSceneUnits(attribute, cursor.number()));
        array.changed();
    } else {
        for (std::size_t step = 0; step < range.count(); ++step)
            assign(range.at(step), flags.type, cursor);
    }
    cursor.expectEnd();
}

double MaReader::inSceneUnits(const Attribute& attribute, double value) const
{
    if (attribute.type == AttributeType::kDistance)
        return value * info.units.centimetres;
    if (attribute.type == AttributeType::kAngle)
        return value * info.units.degrees;
    return value;
}

/// Takes the words of one value: children one after the other, elements of an array as index and value.
void MaReader::assign(const Plug& plug, const std::string& type, MaCursor& cursor)
{
    const Attribute& attribute = *plug.attribute();
    if (plug.isArray())
        return assignArray(plug, type, cursor);
    if (attribute.isNumber()) {
        if (attribute.parent && attribute.parent->flags.weightRows) {
            const Plug rows(plug.node(), attribute.parent);
            rows.makeRows().set(plug.index(0), plug.index(1), cursor.number());
            return rows.changed();
        }
        return plug.setNumber(inSceneUnits(attribute, cursor.number()));
    }
    switch (attribute.type) {
    case AttributeType::kCompound:
        for (unsigned child = 0; child < attribute.children.size(); ++child)
            assign(plug.child(child), type, cursor);
        return;
    case AttributeType::kString:
        return plug.setText(cursor.text());
    case AttributeType::kMatrix:
        return assignMatrix(plug, type, cursor);
    case AttributeType::kData:
        return plug.setData(readData(cursor, type));
    default:
        cursor.fail("the attribute \"" + attribute.longName + "\" takes no value");
    }
}

void MaReader::assignArray(const Plug& array, const std::string& type, MaCursor& cursor)
{
    const Attribute& attribute = *array.attribute();
    const bool row = attribute.parent && attribute.parent->flags.weightRows;
    if (row) {
        const Plug rows(array.node(), attribute.parent);
        rows.makeRows().touchRow(array.index(0));
    }
    for (std::size_t left = cursor.count(); left > 0; --left) {
        const long long index = cursor.integer();
        if (index < 0 || index >= Plug::kNoIndex)
            cursor.fail("\"" + std::to_string(index) + "\" is no index");
        assign(array.element(static_cast<std::uint32_t>(index)), type, cursor);
    }
}

void MaReader::assignMatrix(const Plug& plug, const std::string& type, MaCursor& cursor)
{
    if (!type.empty() && type != "matrix" && type != "fltMatrix")
        cursor.fail("a value of type \"" + type + "\" is no matrix");
    if (cursor.peek().text == "xform") {
        cursor.next();
        return plug.setMatrix(readXform(cursor));
    }
    plug.setMatrix(readMatrix(cursor));
}

/// Keeps the statement on its node, with the node's name taken out of it.
void MaReader::keepSetAttr(Node& node, const MaStatement& words, const MaWord& pathWord,
                           const std::string& path)
{
    std::string text(words.raw);
    if (pathWord.text.front() != '.') {
        const std::size_t length = pathWord.text.size() + (pathWord.kind == MaWord::Kind::kString ? 2 : 0);
        text.replace(pathWord.offset, length, "\"." + path + "\"");
    }
    node.keptStatements.push_back(std::move(text));
}

bool MaReader::meshStatement(Node& node, const std::string& path, MaCursor& cursor)
{
    if (!node.type().isA("mesh") || !MeshText::isPart(path))
        return false;
    if (&node != current)
        cursor.fail("the geometry of a mesh must be set where the mesh is made");
    if (!mesh)
        mesh = std::make_unique<MeshText>();
    mesh->read(path, cursor);
    return true;
}

void MaReader::finishMesh()
{
    const std::unique_ptr<MeshText> done = std::move(mesh);
    if (!done || done->empty())
        return;
    try {
        current->plug("cachedInMesh").setData(done->build());
    } catch (const Error& error) {
        throw Error(file + ": line " + std::to_string(done->line()) + ": mesh " + current->name() + ": " +
                    error.what());
    }
}

} // namespace host
