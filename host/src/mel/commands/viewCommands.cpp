#include "graph/graph.h"
#include "mel/command.h"
#include "mel/commands/commandTargets.h"
#include "mel/commands/register.h"
#include "nodes/geometry.h"
#include "selection/selectionState.h"
#include "session.h"
#include "types/error.h"
#include "view/viewport.h"

#include <ImathBox.h>

#include <cmath>

namespace host {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

namespace {

void addPoints(DagNode& shape, const Component* component, Imath::Box3d& box)
{
    const GeometryRef geometry = shapeGeometry(shape);
    if (!geometry)
        return;
    const Imath::M44d toWorld = worldMatrix(shape);
    for (const int point : pointIndices(shape, component))
        box.extendBy(geometry->points()[static_cast<std::size_t>(point)] * toWorld);
}

/// The points of a node and of everything below it; joints and empty transforms by their position.
void addNode(DagNode& node, Imath::Box3d& box)
{
    if (node.isIntermediate() || node.hasFn(MFn::kCamera))
        return;
    if (pointComponentType(node) != MFn::kInvalid)
        addPoints(node, nullptr, box);
    else if (node.children().empty() || node.hasFn(MFn::kJoint))
        box.extendBy(Imath::V3d(0.0) * worldMatrix(node));
    for (const Ref<DagNode>& child : node.children())
        addNode(*child, box);
}

Imath::Box3d boxOf(const SelectionList& list)
{
    Imath::Box3d box;
    for (const SelectionItem& item : list.items) {
        DagNode* dag = item.node->asDag();
        if (!dag || !item.plug.isNull())
            continue;
        if (item.component && pointComponentType(*dag) == item.component->apiType())
            addPoints(*dag, item.component.get(), box);
        else
            addNode(*dag, box);
    }
    return box;
}

Imath::Box3d boxOfAll(Session& session)
{
    Imath::Box3d box;
    for (const Ref<DagNode>& root : session.graph().roots())
        if (!root->isDefault && isVisible(*root))
            addNode(*root, box);
    return box;
}

Value viewFit(Session& session, const Args& args)
{
    const std::vector<std::string> names = args.objectNames();
    Imath::Box3d box;
    if (!args.isSet("allObjects") && (!names.empty() || !session.selection().active().items.empty()))
        box = boxOf(commandTargets(session, names));
    else
        box = boxOfAll(session);
    if (!box.isEmpty())
        session.viewport().frame(box.min, box.max);
    else if (!names.empty())
        throw Error("viewFit: " + names.front() + " has no place in the view");
    return {};
}

DagNode& cameraShapeOf(Graph& graph, const std::string& name)
{
    DagNode* dag = graph.get(name).asDag();
    if (dag && dag->hasFn(MFn::kCamera) && dag->isShape())
        return *dag;
    if (dag)
        for (const Ref<DagNode>& child : dag->children())
            if (child->hasFn(MFn::kCamera))
                return *child;
    throw Error("lookThru: " + name + " is no camera");
}

Value lookThru(Session& session, const Args& args)
{
    Viewport& view = session.viewport();
    if (args.query()) {
        DagNode* camera = view.camera();
        if (!camera)
            throw Error("lookThru: the view has no camera");
        const DagNode* transform = camera->parent();
        return transform ? transform->uniqueName() : camera->uniqueName();
    }
    const std::vector<std::string> names = args.objectNames();
    if (names.empty())
        throw Error("lookThru needs a camera");
    const std::string& panel = names.front();
    if (names.size() == 2 && panel != "modelPanel4")
        throw Error("lookThru: there is no panel " + panel + " (only modelPanel4)");
    view.lookThrough(cameraShapeOf(session.graph(), names.back()));
    return {};
}

/// Where the first thing in a list is in the world.
Imath::V3d worldPosition(const SelectionItem& item, const std::string& text)
{
    DagNode* dag = item.node->asDag();
    if (!dag || !item.plug.isNull())
        throw Error("viewportProject: " + text + " has no place in the view");
    if (!item.component)
        return Imath::V3d(0.0) * worldMatrix(*dag);
    const GeometryRef geometry = shapeGeometry(*dag);
    const std::vector<int> points = pointIndices(*dag, item.component.get());
    if (!geometry || points.empty())
        throw Error("viewportProject: " + text + " is no point");
    return geometry->points()[static_cast<std::size_t>(points.front())] * worldMatrix(*dag);
}

Value viewportSize(Session& session, const Args&)
{
    return mel::IntArray{session.viewport().width, session.viewport().height};
}

Value viewportProject(Session& session, const Args& args)
{
    const std::string text = args.objectNames().front();
    SelectionList list;
    list.addPattern(session.graph(), text);
    Imath::V3d at;
    const Imath::V3d position = worldPosition(list.items.front(), text);
    if (!std::isfinite(position.x) || !std::isfinite(position.y) || !std::isfinite(position.z))
        throw Error("viewportProject: " + text + " has no finite position");
    if (!session.viewport().project(position, at))
        throw Error("viewportProject: " + text + " is behind the camera");
    return mel::IntArray{static_cast<int>(std::lround(at.x)), static_cast<int>(std::lround(at.y))};
}

/// Pictures are made from the scene as it is when somebody looks, so there is nothing to bring up to date.
Value refresh(Session&, const Args&)
{
    return {};
}

} // namespace

void registerViewCommands(mel::CommandRegistry& registry)
{
    registry.add(
        CommandSpec("viewFit").flag("all", "allObjects").flag("an", "animate", {ArgType::kBool}).objects(0),
        viewFit);
    registry.add(CommandSpec("lookThru").objects(0, 2).query(), lookThru);
    registry.add(CommandSpec("refresh").flag("f", "force").flag("cv", "currentView"), refresh);
    registry.add(CommandSpec("viewportSize"), viewportSize);
    registry.add(CommandSpec("viewportProject").objects(1, 1), viewportProject);
}

} // namespace host
