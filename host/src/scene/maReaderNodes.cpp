#include "scene/maReader.h"

#include "scene/maText.h"
#include "scene/meshText.h"
#include "types/error.h"

#include <algorithm>
#include <string_view>

namespace host {

namespace {

/// Types that live in the DAG without being known to the host, and may stand there without a parent.
bool looksLikeTransform(const std::string& type)
{
    static constexpr const char* kTypes[] = {
        "assembly",       "dagContainer",    "fosterParent",    "hikEffector", "hikGroundPlane",
        "hikIKEffector",  "ikEffector",      "ikHandle",        "instancer",   "lookAt",
        "place3dTexture", "pluginTransform", "unknownTransform"};
    return std::find(std::begin(kTypes), std::end(kTypes), type) != std::end(kTypes) ||
           (type.size() > 10 && type.compare(type.size() - 10, 10, "Constraint") == 0);
}

} // namespace

/// Ends what was said about the former node.
void MaReader::enter(Node* node, Context newContext)
{
    finishMesh();
    const std::vector<std::string> unfinished = pending.takeUnfinished();
    if (!unfinished.empty())
        throw Error("the compound attribute " + unfinished.front() + " lacks children");
    keptAttributes.clear();
    group = nullptr;
    current = node;
    context = newContext;
}

void MaReader::createNode(const MaStatement& words)
{
    MaCursor cursor(words, file);
    const std::string type = cursor.text();
    std::string name, parentName;
    bool shared = false;
    while (!cursor.atEnd()) {
        const std::string flag = cursor.text();
        if (flag == "-n" || flag == "-name")
            name = cursor.text();
        else if (flag == "-p" || flag == "-parent")
            parentName = cursor.text();
        else if (flag == "-s" || flag == "-shared")
            shared = true;
        else if (flag != "-ss" && flag != "-skipSelect")
            cursor.fail("createNode has no flag \"" + flag + "\"");
    }
    enter(nullptr, Context::kNone);
    nodesBegun = true;
    DagNode* parent = nullptr;
    if (!parentName.empty()) {
        Node* const found = findNode(parentName);
        parent = found ? found->asDag() : nullptr;
        if (!parent) {
            // The parent comes with a reference: all that is said about the node goes with it.
            enter(nullptr, Context::kText);
            return void(keepUnresolved(words, parentName));
        }
    }
    if (Node* const existing = sharedNode(type, name, shared, parent))
        return enterShared(*existing, maLeaf(name), parent);
    Node& node = makeNode(type, name, parent);
    node.shared = shared;
    enter(&node, Context::kNode);
}

/// A node that every scene has: files make it again and mean the one that is there. Other nodes may have its
/// name below another parent, and it may have got another parent itself.
Node* MaReader::sharedNode(const std::string& type, const std::string& name, bool shared,
                           const DagNode* parent) const
{
    if (name.empty() || options.copies)
        return nullptr;
    const std::string leaf = maLeaf(name);
    for (Node* const existing : graph.findAll(":" + leaf)) {
        const DagNode* const dag = existing->asDag();
        const bool elsewhere = dag && dag->parent() != parent;
        if (existing->type().name != type || (elsewhere && (!shared || isDeclared(leaf, *existing))))
            continue;
        if (existing->isDefault || (shared && options.import))
            return existing;
    }
    return nullptr;
}

bool MaReader::isDeclared(const std::string& leaf, const Node& node) const
{
    const auto [begin, end] = declared.equal_range(leaf);
    return std::any_of(begin, end, [&](const auto& entry) { return entry.second == &node; });
}

void MaReader::enterShared(Node& existing, const std::string& leaf, DagNode* parent)
{
    if (!isDeclared(leaf, existing))
        declared.emplace(leaf, &existing);
    if (options.import)
        return enter(&existing, Context::kIgnored);
    // Behind those that the file has made so far, which is its order.
    if (existing.asDag())
        graph.reparent(*existing.asDag(), parent);
    for (const Ref<Attribute>& root : existing.type().roots) {
        const Plug plug(&existing, root.get());
        if (root->flags.storable && !root->flags.output && plug.hasStored())
            plug.unset();
    }
    enter(&existing, Context::kNode);
}

Node& MaReader::makeNode(const std::string& type, const std::string& name, DagNode* parent)
{
    const NodeType* known = graph.types().find(type);
    if (!known) {
        const bool shape = parent && name.find("Shape") != name.npos;
        known = &graph.types().findOrKeep(type, parent || looksLikeTransform(type), shape);
    }
    const std::string wanted = name.empty() ? type : maLeaf(name);
    const std::string prefix = options.nameSpace.empty() ? "" : options.nameSpace + ":";
    Node& node = graph.create(*known, prefix + wanted, parent);
    declared.emplace(wanted, &node);
    if (waiting.count(wanted) > 0)
        arrived.push_back(wanted);
    if (node.name() != wanted)
        renamed[&node] = wanted;
    return node;
}

/// select -ne :time1 makes a default node the one that is spoken of.
void MaReader::select(const MaStatement& words)
{
    MaCursor cursor(words, file);
    bool plain = true;
    std::string name;
    while (!cursor.atEnd()) {
        const bool flag = cursor.peek().isFlag();
        const std::string text = cursor.text();
        if (!flag)
            name = text;
        else if (text != "-ne" && text != "-noExpand" && text != "-r" && text != "-replace")
            plain = false;
    }
    if (!plain || name.empty()) {
        keep(words);
        return;
    }
    nodesBegun = true;
    Node* const node = findNode(name);
    if (node && options.import && node->isDefault)
        return enter(node, Context::kIgnored);
    enter(node, node ? Context::kNode : Context::kText);
    if (!node)
        keepUnresolved(words, name).usual = true; // each version has default nodes of its own
}

void MaReader::renameNode(const MaStatement& words)
{
    MaCursor cursor(words, file);
    const bool identity =
        words.words.size() == 3 && (cursor.peek().text == "-uid" || cursor.peek().text == "-uuid");
    if (!identity) {
        keep(words);
        return;
    }
    if (context == Context::kText)
        return keepWithNode(words);
    cursor.next();
    const std::string uuid = cursor.text();
    if (current && context == Context::kNode && !options.import)
        graph.setUuid(*current, uuid);
}

void MaReader::lockNode(const MaStatement& words)
{
    MaCursor cursor(words, file);
    bool locked = true, named = false;
    std::vector<Node*> nodes;
    while (!cursor.atEnd()) {
        const bool flag = cursor.peek().isFlag();
        const std::string text = cursor.text();
        if (flag && (text == "-l" || text == "-lock")) {
            locked = cursor.boolean();
        } else if (flag) {
            // Only the host's own kind of lock is interpreted (-lockUnpublished and others are not).
            if (context == Context::kNode)
                current->keptStatements.emplace_back(words.raw);
            else if (context == Context::kText)
                keepWithNode(words);
            else
                keep(words);
            return;
        } else {
            named = true;
            Node* const node = findNode(text);
            if (!node)
                return void(keepUnresolved(words, text));
            nodes.push_back(node);
        }
    }
    if (!named && context == Context::kText)
        return keepWithNode(words);
    if (!named && context == Context::kNode)
        nodes.push_back(current);
    for (Node* const node : nodes)
        nodeLocks.emplace_back(node, locked);
}

/// Instances (parent -add) are not supported: such statements are kept and said to be.
void MaReader::parentNode(const MaStatement& words)
{
    MaCursor cursor(words, file);
    bool add = false, toWorld = false;
    std::vector<std::string> names;
    while (!cursor.atEnd()) {
        const bool flag = cursor.peek().isFlag();
        const std::string text = cursor.text();
        if (!flag)
            names.push_back(text);
        add = add || text == "-add" || text == "-addObject";
        toWorld = toWorld || text == "-w" || text == "-world";
    }
    if (add) {
        const std::string note = "instances are not supported: parent -add is kept as text";
        if (std::find(notes.begin(), notes.end(), note) == notes.end())
            notes.push_back(note);
        keep(words);
        return;
    }
    if (names.size() < (toWorld ? 1u : 2u))
        cursor.fail("parent lacks nodes");
    Node* const above = toWorld ? nullptr : findNode(names.back());
    if (!toWorld && (!above || !above->asDag()))
        return void(keepUnresolved(words, names.back()));
    if (!toWorld)
        names.pop_back();
    for (const std::string& name : names) {
        Node* const node = findNode(name);
        DagNode* const dag = node ? node->asDag() : nullptr;
        if (!dag && node && renamed.count(node) > 0)
            throw Error("\"" + name + "\" can have no parent"); // as a text it would speak of another node
        if (!dag)
            return void(keepUnresolved(words, name));
        if (dag->isShape() && !above)
            return void(keep(words));
        if (dag->parent() != (above ? above->asDag() : nullptr))
            graph.reparent(*dag, above ? above->asDag() : nullptr);
    }
}

std::string MaReader::fileNameOf(const Node& node) const
{
    const auto found = renamed.find(&node);
    return found == renamed.end() ? node.name() : found->second;
}

/// Whether the node's own path, in the file's names, ends in this one (or is it, when it begins with a bar).
bool MaReader::onPath(const DagNode* node, std::string_view path) const
{
    while (!path.empty()) {
        const std::size_t bar = path.rfind('|');
        const std::string_view part = bar == path.npos ? path : path.substr(bar + 1);
        path = bar == path.npos ? std::string_view() : path.substr(0, bar + 1);
        if (!part.empty()) {
            if (!node || maLeaf(part) != fileNameOf(*node))
                return false;
            node = node->parent();
        }
        if (path == "|")
            return !node;
        if (!path.empty())
            path.remove_suffix(1);
    }
    return true;
}

/// A node by the name that the file gives it: of this file first, then of the scene. Of several, the one that
/// could keep the name; else none, since nobody knows which is meant and a text that is kept must not stop
/// the file for that.
Node* MaReader::findNode(const std::string& name) const
{
    const auto [begin, end] = declared.equal_range(maLeaf(name));
    const bool path = name.find('|') != name.npos;
    std::size_t count = 0, keeping = 0;
    Node *any = nullptr, *keeper = nullptr;
    for (auto entry = begin; entry != end; ++entry) {
        Node* const node = entry->second;
        if (path && !onPath(node->asDag(), name))
            continue;
        any = node;
        ++count;
        if (renamed.count(node) == 0) {
            keeper = node;
            ++keeping;
        }
    }
    if (count > 1)
        return keeping == 1 ? keeper : nullptr;
    if (any || (options.import && name.find(':') != 0))
        return any;
    const std::vector<Node*> others = graph.findAll(name);
    Node* const other = others.size() == 1 ? others.front() : nullptr;
    return !options.import || (other && other->isDefault) ? other : nullptr;
}

} // namespace host
