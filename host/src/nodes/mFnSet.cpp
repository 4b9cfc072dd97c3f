#include "graph/node.h"
#include "graph/statusOf.h"
#include "nodes/deformerBuild.h"
#include "nodes/filterHandles.h"
#include "nodes/setMembers.h"
#include "session.h"
#include "undo/undoQueue.h"

#include "graph/graph.h"

#include <maya/MFnSet.h>

using host::Api;

namespace {

host::SelectionItem itemOf(const MDagPath& path, const MObject& component)
{
    host::SelectionItem item;
    item.node = Api::node(path);
    if (!item.node)
        throw host::Error("The path leads to no node.");
    if (component.isNull())
        return item;
    item.component = dynamic_cast<host::Component*>(Api::object(component));
    host::DagNode* shape = host::componentShape(*item.node);
    if (!item.component || !shape)
        throw host::Error("The component is none of '" + item.node->uniqueName() + "'.");
    item.node = shape;
    return item;
}

/// The members with the components of a shape in one item, however many groups they come from.
host::SelectionList merged(const host::SelectionList& members)
{
    host::SelectionList result;
    for (const host::SelectionItem& item : members.items)
        result.add(item, true);
    return result;
}

} // namespace

MFnSet::MFnSet() = default;

MFnSet::MFnSet(MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFnSet::MFnSet(const MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFn::Type MFnSet::type() const
{
    return MFn::kSet;
}

MStatus MFnSet::getMembers(MSelectionList& members, bool flatten) const
{
    return host::statusOf([&] {
        host::SelectionList found = host::setMembers(host::filterOf(*this), flatten);
        Api::list(members) = std::move(found);
    });
}

MStatus MFnSet::addMember(const MDagPath& obj, const MObject& component)
{
    return host::statusOf([&] {
        host::Node& set = host::filterOf(*this);
        host::SelectionList added;
        added.add(itemOf(obj, component), false);
        host::Session& session = set.graph().session();
        const host::UndoQueue::Suspend unrecorded(session.undo());
        host::addToSet(session, set, added);
    });
}

bool MFnSet::isMember(const MDagPath& object, const MObject& component, MStatus* status) const
{
    return host::answer(status, false, [&] {
        return merged(host::setMembers(host::filterOf(*this))).holds(itemOf(object, component));
    });
}

MStatus MFnSet::clear()
{
    return host::statusOf([&] {
        host::Node& set = host::filterOf(*this);
        host::Session& session = set.graph().session();
        const host::UndoQueue::Suspend unrecorded(session.undo());
        host::removeFromSet(session, set, host::setMembers(set));
    });
}
