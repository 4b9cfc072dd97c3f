// Making and changing object sets; see nodes/deformerBuild.h.
#include "nodes/deformerBuild.h"

#include "graph/graph.h"
#include "nodes/setMembers.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <algorithm>

namespace host {

namespace {

/// The plug of a whole node that a set's member list is connected to.
Plug memberPlug(Node& node)
{
    return node.asDag() ? node.plug("instObjGroups").element(0) : node.plug("message");
}

void connectMember(Session& session, Node& set, const Plug& member)
{
    const Plug list = set.plug(member.node()->asDag() ? "dagSetMembers" : "dnSetMembers");
    session.edits().connect(member, list.element(session.graph().nextAvailable(list)));
}

void addNode(Session& session, Node& set, Node& node)
{
    const Plug member = memberPlug(node);
    for (const Plug& user : member.destinations())
        if (user.node() == &set)
            return;
    connectMember(session, set, member);
}

/// The object group of a shape that a set holds through one of its groups with stored components.
Plug storedGroup(Node& set, DagNode& shape)
{
    const Plug members = set.plug("dagSetMembers");
    for (const std::uint32_t index : members.existingIndices()) {
        Plug source = members.element(index).source();
        if (!source.isNull() && source.node() == &shape && source.attribute()->longName == "objectGroups")
            return source;
    }
    return {};
}

std::shared_ptr<const ComponentListData> listOf(DagNode& shape, const std::vector<int>& points)
{
    auto list = std::make_shared<ComponentListData>();
    if (!points.empty())
        list->components = componentTexts(shape, *pointComponent(shape, points));
    return list;
}

/// Where the components of a group are kept: in the groupParts that shares its groupId, else in the group.
Plug componentPlug(const Plug& group)
{
    const Plug id = group.child("objectGroupId").source();
    if (!id.isNull())
        for (const Plug& user : id.destinations())
            if (user.node()->type().name == "groupParts")
                return user.node()->plug("inputComponents");
    return group.child("objectGrpCompList");
}

std::vector<int> membersOf(Node& set, DagNode& shape)
{
    std::vector<int> points;
    for (const SelectionItem& item : setMembers(set).items)
        if (item.node.get() == &shape && item.component) {
            const std::vector<int> part = pointIndices(shape, item.component.get());
            points.insert(points.end(), part.begin(), part.end());
        }
    std::sort(points.begin(), points.end());
    points.erase(std::unique(points.begin(), points.end()), points.end());
    return points;
}

Plug makeGroup(Session& session, Node& set, DagNode& shape)
{
    Graph& graph = session.graph();
    Node& id = session.edits().create(*graph.types().find("groupId"), "groupId1");
    const Plug groups = shape.plug("instObjGroups").element(0).child("objectGroups");
    Plug group = groups.element(graph.nextAvailable(groups));
    session.edits().connect(id.plug("groupId"), group.child("objectGroupId"));
    connectMember(session, set, group);
    const Plug nodes = set.plug("groupNodes");
    session.edits().connect(id.plug("message"), nodes.element(graph.nextAvailable(nodes)));
    return group;
}

void addPoints(Session& session, Node& set, DagNode& shape, const std::vector<int>& added)
{
    Plug group = storedGroup(set, shape);
    if (group.isNull())
        group = makeGroup(session, set, shape);
    std::vector<int> points = membersOf(set, shape);
    points.insert(points.end(), added.begin(), added.end());
    std::sort(points.begin(), points.end());
    points.erase(std::unique(points.begin(), points.end()), points.end());
    session.edits().setData(componentPlug(group), listOf(shape, points));
}

void requireSet(const Node& set)
{
    if (!set.type().isA("objectSet"))
        throw Error(set.uniqueName() + " is no set.");
}

} // namespace

Node& createSet(Session& session, const std::string& name, const SelectionList& members)
{
    Node& set = session.edits().create(*session.graph().types().find("objectSet"), name);
    addToSet(session, set, members);
    return set;
}

void addToSet(Session& session, Node& set, const SelectionList& members)
{
    requireSet(set);
    for (const SelectionItem& item : members.items) {
        if (item.component)
            addPoints(session, set, *item.node->asDag(),
                      pointIndices(*item.node->asDag(), item.component.get()));
        else
            addNode(session, set, *item.node);
    }
}

void removeFromSet(Session& session, Node& set, const SelectionList& members)
{
    requireSet(set);
    for (const SelectionItem& item : members.items) {
        if (!item.component) {
            const Plug member = memberPlug(*item.node);
            for (const Plug& user : member.destinations())
                if (user.node() == &set)
                    session.edits().disconnect(member, user);
            continue;
        }
        DagNode& shape = *item.node->asDag();
        const Plug group = storedGroup(set, shape);
        if (group.isNull())
            continue;
        std::vector<int> points = membersOf(set, shape);
        for (const int out : pointIndices(shape, item.component.get()))
            points.erase(std::remove(points.begin(), points.end(), out), points.end());
        session.edits().setData(componentPlug(group), listOf(shape, points));
    }
}

} // namespace host
