#include "nodes/setMembers.h"

#include "graph/graph.h"
#include "nodes/geometry.h"

#include <algorithm>

namespace host {

namespace {

Ref<Component> componentOf(DagNode& shape, const ComponentListData& list)
{
    std::vector<int> points;
    for (const std::string& text : list.components) {
        const std::vector<int> part = pointIndices(shape, parseComponent(shape, text).get());
        points.insert(points.end(), part.begin(), part.end());
    }
    std::sort(points.begin(), points.end());
    points.erase(std::unique(points.begin(), points.end()), points.end());
    return pointComponent(shape, points);
}

std::shared_ptr<const ComponentListData> listOf(const Plug& plug)
{
    return std::dynamic_pointer_cast<const ComponentListData>(plug.data());
}

/// What an object group holds: what the groupParts with its groupId says, else what is stored with it.
std::shared_ptr<const ComponentListData> groupComponents(const Plug& group)
{
    const Plug id = group.child("objectGroupId").source();
    if (!id.isNull())
        for (const Plug& user : id.destinations())
            if (user.node()->type().name == "groupParts")
                return listOf(user.node()->plug("inputComponents"));
    return listOf(group.child("objectGrpCompList"));
}

void addMember(const Plug& source, SelectionList& members)
{
    Node* node = source.node();
    DagNode* shape = node->asDag();
    if (!shape || source.attribute()->longName != "objectGroups") {
        members.items.push_back({Ref<Node>(node), {}, {}});
        return;
    }
    const auto list = groupComponents(source);
    if (!list)
        return;
    Ref<Component> component = componentOf(*shape, *list);
    if (component->count() > 0)
        members.items.push_back({Ref<Node>(node), component, {}});
}

void collect(Node& set, bool flatten, std::vector<const Node*>& open, SelectionList& members)
{
    if (std::find(open.begin(), open.end(), &set) != open.end())
        return; // a set that holds itself
    open.push_back(&set);
    for (const char* attribute : {"dagSetMembers", "dnSetMembers"}) {
        const Plug array = set.plug(attribute);
        for (const std::uint32_t index : array.existingIndices()) {
            const Plug source = array.element(index).source();
            if (source.isNull())
                continue;
            if (flatten && source.node()->type().isA("objectSet"))
                collect(*source.node(), flatten, open, members);
            else
                addMember(source, members);
        }
    }
    open.pop_back();
}

} // namespace

SelectionList setMembers(Node& set, bool flatten)
{
    SelectionList members;
    std::vector<const Node*> open;
    collect(set, flatten, open, members);
    return members;
}

} // namespace host
