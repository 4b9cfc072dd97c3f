#include "nodes/attributeSpecs.h"
#include "nodes/families.h"

#include "graph/graph.h"
#include "nodes/geometry.h"

#include <algorithm>

namespace host {

namespace {

/// The group's number: one that no other group of the scene has.
void initialiseGroupId(Node& node)
{
    double highest = 0.0;
    for (const Ref<Node>& other : node.graph().nodes())
        if (other->type().name == "groupId" && other.get() != &node)
            highest = std::max(highest, other->plug("groupId").number());
    node.storeNumber(node.plug("groupId"), highest + 1.0);
}

/// Passes the geometry on and notes which of its points belong to the group.
void computeGroupParts(Node& node, const Attribute& output)
{
    const auto geometry = std::dynamic_pointer_cast<const Geometry>(node.plug("inputGeometry").data());
    const auto list = std::dynamic_pointer_cast<const ComponentListData>(node.plug("inputComponents").data());
    if (!geometry || !list || node.plug("nodeState").number() == 1.0)
        return node.storeData(Plug(&node, &output), geometry);
    auto groups = std::make_shared<std::map<int, PointGroup>>();
    if (geometry->groups)
        *groups = *geometry->groups;
    (*groups)[static_cast<int>(node.plug("groupId").number())] = pointGroup(*geometry, list->components);
    const std::shared_ptr<Geometry> copy = geometry->copy();
    copy->groups = std::move(groups);
    node.storeData(Plug(&node, &output), copy);
}

void addObjectSet(NodeTypeRegistry& registry)
{
    NodeType& type = registry.add("objectSet", "node");
    type.apiType = MFn::kSet;
    type.defaultName = "set";
    type.add(messageAttribute("dagSetMembers", "dsm").array(false));
    type.add(messageAttribute("dnSetMembers", "dnsm").array(false));
    type.add(shortAttribute("memberWireframeColor", "mwc", -1.0));
    type.add(textAttribute("annotation", "an"));
    type.add(flagAttribute("isLayer", "il"));
    type.add(flagAttribute("verticesOnlySet", "vo"));
    type.add(flagAttribute("edgesOnlySet", "eo"));
    type.add(flagAttribute("facetsOnlySet", "fo"));
    type.add(flagAttribute("editPointsOnlySet", "epo"));
    type.add(flagAttribute("renderableOnlySet", "ro"));
    type.add(messageAttribute("partition", "pa"));
    type.add(messageAttribute("groupNodes", "gn").array(false));
    type.add(messageAttribute("usedBy", "ub").array());
    type.add(flagAttribute("hiddenInOutliner", "hio"));
    NodeType& engine = registry.add("shadingEngine", "objectSet");
    engine.apiType = MFn::kShadingEngine;
    engine.defaultName = "shadingEngine";
    engine.add(colorAttribute("surfaceShader", "ss"));
    engine.add(colorAttribute("volumeShader", "vs"));
    engine.add(colorAttribute("displacementShader", "ds"));
}

} // namespace

void registerGroupTypes(NodeTypeRegistry& registry)
{
    NodeType& id = registry.add("groupId", "node");
    id.apiType = MFn::kGroupId;
    id.add(longAttribute("groupId", "id").notStorable());
    id.initialise = initialiseGroupId;

    NodeType& parts = registry.add("groupParts", "node");
    parts.apiType = MFn::kGroupParts;
    parts.add(dataAttribute("inputGeometry", "ig", "geometry").notStorable());
    parts.add(dataAttribute("inputComponents", "ic", "componentList"));
    parts.add(longAttribute("groupId", "gi"));
    parts.add(dataAttribute("outputGeometry", "og", "geometry").output());
    parts.affectAll({"inputGeometry", "inputComponents", "groupId", "nodeState"}, {"outputGeometry"});
    parts.compute = computeGroupParts;

    addObjectSet(registry);
    NodeType& partition = registry.add("partition", "node");
    partition.apiType = MFn::kPartition;
    partition.add(messageAttribute("sets", "st").array(false));
    partition.add(textAttribute("annotation", "an"));
    partition.add(shortAttribute("partitionType", "pt"));
}

} // namespace host
