#include "graph/node.h"

#include "graph/graphParts.h"
#include "graph/slots.h"
#include "types/error.h"

#include <algorithm>

namespace host {

Node::Node(Graph& graph, const NodeType& type)
    : nodeType(type), typeOwner(type.shared_from_this()), scene(graph), values(std::make_unique<SlotTree>()),
      bookkeeping(std::make_unique<NodeState>())
{
    bookkeeping->roots.resize(type.roots.size());
    bookkeeping->nextRoot = static_cast<unsigned>(type.roots.size());
}

Node::~Node() = default;

std::string Node::uniqueName() const
{
    const DagNode* dag = asDag();
    return dag && inScene ? dag->partialPath() : nodeName;
}

DagNode* Node::asDag()
{
    return nodeType.dag ? static_cast<DagNode*>(this) : nullptr;
}

const DagNode* Node::asDag() const
{
    return nodeType.dag ? static_cast<const DagNode*>(this) : nullptr;
}

bool Node::isIntermediate() const
{
    const Attribute* flag = nodeType.dag ? nodeType.find("intermediateObject") : nullptr;
    return flag && inScene && Plug(const_cast<Node*>(this), flag).number() != 0.0;
}

namespace {

const Attribute* findBelow(const Attribute& attribute, const std::string& name)
{
    if (attribute.longName == name || attribute.shortName == name)
        return &attribute;
    for (const Ref<Attribute>& child : attribute.children)
        if (const Attribute* found = findBelow(*child, name))
            return found;
    return nullptr;
}

} // namespace

const Attribute* Node::findAttribute(const std::string& longOrShortName) const
{
    if (const Attribute* found = nodeType.find(longOrShortName))
        return found;
    for (const Ref<Attribute>& root : dynamicRoots)
        if (const Attribute* found = findBelow(*root, longOrShortName))
            return found;
    return nullptr;
}

bool Node::owns(const Attribute& attribute) const
{
    const Attribute* root = &attribute.root();
    if (root->childIndex < nodeType.roots.size())
        return nodeType.roots[root->childIndex].get() == root;
    return std::any_of(dynamicRoots.begin(), dynamicRoots.end(),
                       [root](const Ref<Attribute>& own) { return own.get() == root; });
}

Plug Node::plug(const std::string& longOrShortName)
{
    const Attribute* found = findAttribute(longOrShortName);
    if (!found)
        throw Error("No attribute '" + longOrShortName + "' on node '" + uniqueName() + "'.");
    return Plug(this, found);
}

namespace {

/// One step of a path: a name and the index behind it, if any.
struct PathStep {
    std::string name;
    std::uint32_t index = Plug::kNoIndex;
};

std::vector<PathStep> parsePath(const std::string& path, const Node& node)
{
    const Error bad("'" + node.uniqueName() + "." + path + "' is no path of an attribute.");
    std::vector<PathStep> steps(1);
    std::size_t at = 0;
    while (at < path.size()) {
        if (path[at] == '.') {
            steps.emplace_back();
            ++at;
            continue;
        }
        if (path[at] != '[') {
            steps.back().name += path[at++];
            continue;
        }
        const std::size_t close = path.find(']', at);
        const std::string digits = close == std::string::npos ? "" : path.substr(at + 1, close - at - 1);
        if (digits.empty() || digits.size() > 10 ||
            digits.find_first_not_of("0123456789") != std::string::npos)
            throw bad;
        const unsigned long long index = std::stoull(digits);
        if (index >= Plug::kAnyIndex || steps.back().index != Plug::kNoIndex)
            throw bad;
        steps.back().index = static_cast<std::uint32_t>(index);
        at = close + 1;
        if (at < path.size() && path[at] != '.')
            throw bad;
    }
    for (const PathStep& step : steps)
        if (step.name.empty())
            throw bad;
    return steps;
}

/// What a path means that does not begin with an alias.
Plug plugWithoutAlias(Node& node, const std::string& path)
{
    if (const Attribute* whole = node.findAttribute(path))
        return Plug(&node, whole);
    const std::vector<PathStep> steps = parsePath(path, node);
    Plug result = node.plug(steps.front().name);
    for (std::size_t position = 0; position < steps.size(); ++position) {
        if (position > 0)
            result = result.child(steps[position].name);
        if (steps[position].index != Plug::kNoIndex)
            result = result.element(steps[position].index);
        else if (result.isArray() && position + 1 < steps.size())
            result = result.element(0); // files leave out the index of the only instance
    }
    return result;
}

} // namespace

Plug Node::plugByPath(const std::string& path)
{
    if (const Attribute* whole = findAttribute(path))
        return Plug(this, whole);
    // What an alias stands for is no alias: two of them could stand for each other.
    for (const auto& alias : aliases)
        if (alias.first == path.substr(0, path.find_first_of(".[")))
            return plugWithoutAlias(*this, alias.second + path.substr(alias.first.size()));
    return plugWithoutAlias(*this, path);
}

void Node::storeNumber(const Plug& plug, double value)
{
    plug.storeNumber(value);
}

void Node::storeText(const Plug& plug, const std::string& value)
{
    plug.store(value);
}

void Node::storeMatrix(const Plug& plug, const Imath::M44d& value)
{
    plug.store(value);
}

void Node::storeData(const Plug& plug, DataRef value)
{
    plug.store(std::move(value));
}

bool Node::isDirty(const Attribute& output) const
{
    const RootState* root = bookkeeping->findRoot(output.root());
    return !root || root->freshness != RootState::Freshness::kClean;
}

namespace {

/// Computations that may nest on the call stack.
constexpr unsigned kMostNested = 48;

} // namespace

void Node::evaluate(const Attribute& output)
{
    using Freshness = RootState::Freshness;
    const Attribute& root = output.root();
    const Freshness freshness = bookkeeping->root(root).freshness;
    if (freshness == Freshness::kClean || !nodeType.compute)
        return;
    if (freshness == Freshness::kComputing || freshness == Freshness::kStale) {
        scene.reportCycle(Plug(this, &root));
        return;
    }
    if (scene.parts->nested >= kMostNested)
        scene.pull(*this, root);
    evaluateAlone(root);
}

/// What it is computed from may have come round to it, and have computed it.
void Node::evaluateAlone(const Attribute& root)
{
    if (isDirty(root) && nodeType.compute)
        compute(root);
}

void Node::compute(const Attribute& output)
{
    using Freshness = RootState::Freshness;
    const Ref<Node> kept(this);
    ++scene.computations;
    ++scene.parts->nested;
    bookkeeping->root(output).freshness = Freshness::kComputing;
    try {
        nodeType.compute(*this, output);
    } catch (...) {
        --scene.parts->nested;
        ++scene.computations;
        bookkeeping->root(output).freshness = Freshness::kFailed;
        throw;
    }
    --scene.parts->nested;
    ++scene.computations;
    Freshness& freshness = bookkeeping->root(output).freshness;
    freshness = freshness == Freshness::kStale ? Freshness::kDirty : Freshness::kClean;
}

} // namespace host
