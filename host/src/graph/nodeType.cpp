#include "graph/nodeType.h"

#include "nodes/registerTypes.h"
#include "types/error.h"

#include <algorithm>

namespace host {

const Attribute* NodeType::find(const std::string& longOrShortName) const
{
    const auto found = byName.find(longOrShortName);
    return found == byName.end() ? nullptr : found->second;
}

bool NodeType::hasFn(MFn::Type type) const
{
    if (type == MFn::kBase || type == MFn::kDependencyNode || (type == MFn::kDagNode && dag))
        return true;
    for (const NodeType* level = this; level; level = level->base) {
        const auto& own = level->functionTypes;
        if (level->apiType == type || std::find(own.begin(), own.end(), type) != own.end())
            return true;
    }
    return false;
}

bool NodeType::isA(const std::string& typeName) const
{
    for (const NodeType* level = this; level; level = level->base)
        if (level->name == typeName)
            return true;
    return false;
}

const std::vector<const Attribute*>& NodeType::affectedBy(unsigned rootIndex) const
{
    static const std::vector<const Attribute*> nothing;
    return rootIndex < affectsByRoot.size() ? affectsByRoot[rootIndex] : nothing;
}

Attribute& NodeType::add(AttributeSpec spec)
{
    Ref<Attribute> root = spec.take();
    root->childIndex = static_cast<unsigned>(roots.size());
    index(*root);
    roots.push_back(root);
    return *roots.back();
}

/// Long names win over short ones of other attributes, and what comes first wins over what comes later.
void NodeType::index(const Attribute& attribute)
{
    const auto taken = byName.find(attribute.longName);
    if (taken == byName.end() || taken->second->longName != attribute.longName)
        byName[attribute.longName] = &attribute;
    byName.emplace(attribute.shortName, &attribute);
    for (const Ref<Attribute>& child : attribute.children)
        index(*child);
}

void NodeType::affect(const std::string& input, const std::string& output)
{
    const Attribute* from = find(input);
    const Attribute* to = find(output);
    if (!from || !to)
        throw Error("Node type '" + name + "' has no attribute '" + (from ? output : input) + "'.");
    from = &from->root();
    to = &to->root();
    if (!to->flags.output)
        throw Error("Attribute '" + name + "." + output + "' is affected but is no output.");
    if (affectsByRoot.size() <= from->childIndex)
        affectsByRoot.resize(from->childIndex + 1);
    std::vector<const Attribute*>& fast = affectsByRoot[from->childIndex];
    if (std::find(fast.begin(), fast.end(), to) != fast.end())
        return;
    fast.push_back(to);
    affects[from].push_back(to);
}

void NodeType::affectAll(const std::vector<std::string>& inputs, const std::vector<std::string>& outputs)
{
    for (const std::string& input : inputs)
        for (const std::string& output : outputs)
            affect(input, output);
}

void NodeType::derive(const NodeType& from)
{
    base = &from;
    baseOwner = from.shared_from_this();
    apiType = from.apiType;
    dag = from.dag;
    shape = from.shape;
    compute = from.compute;
    initialise = from.initialise;
    keepInput = from.keepInput;
    roots = from.roots;
    affects = from.affects;
    dagOutput = from.dagOutput;
    byName = from.byName;
    affectsByRoot = from.affectsByRoot;
}

NodeTypeRegistry::NodeTypeRegistry()
{
    registerNodeTypes(*this);
}

NodeTypeRegistry::~NodeTypeRegistry() = default;

const NodeType* NodeTypeRegistry::find(const std::string& name) const
{
    const auto found = types.find(name);
    return found == types.end() ? nullptr : found->second.get();
}

const NodeType& NodeTypeRegistry::findOrKeep(const std::string& name, bool dag, bool shape)
{
    if (const NodeType* existing = find(name))
        return *existing;
    // An unknown type in the place of a transform still places its children.
    std::string baseName;
    for (const char* candidate : {shape ? "shape" : "transform", "dagNode"})
        if (dag && baseName.empty() && find(candidate))
            baseName = candidate;
    for (const char* candidate : {"node", "dependNode"})
        if (!dag && baseName.empty() && find(candidate))
            baseName = candidate;
    NodeType& type = add(name, baseName);
    type.known = false;
    type.dag = dag;
    type.shape = shape;
    if (!dag)
        type.apiType = MFn::kPluginDependNode;
    return type;
}

NodeType& NodeTypeRegistry::add(const std::string& name, const std::string& baseName)
{
    if (types.count(name))
        throw Error("Node type '" + name + "' is already registered.");
    auto type = std::make_shared<NodeType>();
    type->name = name;
    if (!baseName.empty()) {
        const NodeType* base = find(baseName);
        if (!base)
            throw Error("Node type '" + name + "' is derived from an unknown type '" + baseName + "'.");
        type->derive(*base);
    }
    return *(types[name] = std::move(type));
}

std::vector<std::string> NodeTypeRegistry::names() const
{
    std::vector<std::string> result;
    for (const auto& entry : types)
        result.push_back(entry.first);
    return result;
}

} // namespace host
