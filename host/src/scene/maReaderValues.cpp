#include "scene/maReader.h"

#include "scene/assignValues.h"
#include "scene/dataText.h"
#include "scene/maText.h"
#include "scene/meshText.h"
#include "scene/plugRange.h"
#include "types/error.h"

#include <algorithm>
#include <optional>

namespace host {

namespace {

/// Elements of one statement. A range without values may name billions.
constexpr std::size_t kMostFlagged = 1000;

} // namespace

struct MaReader::SetFlags {
    std::optional<bool> keyable, locked, channelBox;
    std::optional<bool> caching; ///< only a text can keep it
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
            flags.caching = cursor.boolean();
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
        keepWithNode(words);
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
    assignValues(*range, flags.type, info.units, cursor);
    // The parts of a transformation are kept as text beside the matrix that they make.
    const bool xform = range->plug.attribute()->type == AttributeType::kMatrix &&
                       std::any_of(words.words.begin(), words.words.end(),
                                   [](const MaWord& word) { return word.text == "xform"; });
    if (xform)
        keepSetAttr(*node, words, *flags.path, path);
    else if (flags.caching)
        node->keptStatements.push_back(std::string("setAttr -ca ") + (*flags.caching ? "on " : "off ") +
                                       maQuoted("." + path));
}

void MaReader::setFlagsOf(const PlugRange& range, const SetFlags& flags)
{
    if (!flags.locked && !flags.keyable && !flags.channelBox)
        return;
    if (range.count() > kMostFlagged)
        throw Error("too many elements are locked or made keyable at once");
    for (std::size_t step = 0; step < range.count(); ++step) {
        const Plug plug = range.at(step);
        if (flags.locked)
            locks.emplace_back(plug, *flags.locked);
        if (flags.keyable)
            plug.setKeyable(*flags.keyable);
        if (flags.channelBox)
            plug.setChannelBox(*flags.channelBox);
    }
}

/// Keeps the statement on its node, with the node's name taken out of it.
void MaReader::keepSetAttr(Node& node, const MaStatement& words, const MaWord& pathWord,
                           const std::string& path)
{
    std::string text(words.raw);
    if (pathWord.text.front() != '.') {
        text.replace(pathWord.offset, pathWord.length, maQuoted("." + path));
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
