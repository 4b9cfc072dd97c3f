// joint, move, rotate, scale: objects and control points put in their place.
#include "mel/command.h"
#include "mel/commands/commandTargets.h"
#include "mel/commands/geometryCommands.h"
#include "nodes/filterAccess.h"
#include "nodes/geometry.h"
#include "selection/selectionState.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <algorithm>

namespace host {

namespace {

using Imath::V3d;
using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

const std::vector<ArgType> kThree{ArgType::kFloat, ArgType::kFloat, ArgType::kFloat};

V3d tripleValue(const Plug& plug)
{
    return {plug.child(0).number(), plug.child(1).number(), plug.child(2).number()};
}

V3d triple(DagNode& node, const char* attribute)
{
    return tripleValue(node.plug(attribute));
}

void setTriple(Session& session, const Plug& plug, const V3d& value)
{
    for (unsigned k = 0; k < 3; ++k)
        session.edits().setNumber(plug.child(k), value[static_cast<int>(k)]);
}

void setTriple(Session& session, DagNode& node, const char* attribute, const V3d& value)
{
    setTriple(session, node.plug(attribute), value);
}

/// Puts one control point where it should be, by the offset that the shape or its tweak node has for it.
void placePoint(Session& session, DagNode& shape, int point, const V3d& target, const V3d& now)
{
    const Plug offset = offsetPlug(shape, point);
    setTriple(session, offset, tripleValue(offset) + target - now);
}

/// Where a point goes: `now` and the result are in a space, the placement is given beyond its matrix.
V3d placed(const V3d& now, const Imath::M44d& space, const Placement& to)
{
    V3d there = now * space;
    for (int axis = 0; axis < 3; ++axis)
        if (to.axes[static_cast<std::size_t>(axis)])
            there[axis] = to.relative ? there[axis] + to.value[axis] : to.value[axis];
    return there * space.inverse();
}

/// The numbers in front of the names: one for each of the flags -x, -y and -z, or three without them.
Placement leadingPlacement(const Args& args)
{
    Placement to;
    to.relative = args.isSet("relative");
    to.axes = {args.isSet("x"), args.isSet("y"), args.isSet("z")};
    if (to.axes == std::array<bool, 3>{false, false, false})
        to.axes = {true, true, true};
    const auto wanted = static_cast<std::size_t>(std::count(to.axes.begin(), to.axes.end(), true));
    const std::vector<double> numbers = leadingNumbers(args, wanted);
    std::size_t next = 0;
    for (std::size_t axis = 0; axis < 3; ++axis)
        if (to.axes[axis])
            to.value[static_cast<int>(axis)] = numbers[next++];
    return to;
}

SelectionList placedTargets(Session& session, const Args& args, const Placement& to)
{
    const auto numbers = static_cast<std::size_t>(std::count(to.axes.begin(), to.axes.end(), true));
    return commandTargets(session, namesAfter(args, numbers));
}

Value moveCommand(Session& session, const Args& args)
{
    Placement to = leadingPlacement(args);
    to.world = args.isSet("worldSpace") || (!args.isSet("objectSpace") && !args.isSet("localSpace"));
    for (const SelectionItem& item : placedTargets(session, args, to).items)
        moveItem(session, item, to);
    return {};
}

/// rotate and scale set or change the attribute of objects.
mel::CommandFunction attributeCommand(const char* attribute, bool multiplies)
{
    return [attribute, multiplies](Session& session, const Args& args) -> Value {
        const Placement to = leadingPlacement(args);
        for (const SelectionItem& item : placedTargets(session, args, to).items) {
            if (item.component)
                throw Error(args.commandName() + " works on objects, not on components.");
            DagNode& node = transformOf(item);
            V3d value = triple(node, attribute);
            for (int axis = 0; axis < 3; ++axis) {
                if (!to.axes[static_cast<std::size_t>(axis)])
                    continue;
                const double given = to.value[axis];
                value[axis] = !to.relative ? given : multiplies ? value[axis] * given : value[axis] + given;
            }
            setTriple(session, node, attribute, value);
        }
        return {};
    };
}

DagNode& jointNamed(Session& session, const Args& args)
{
    const SelectionList targets = commandTargets(session, args.objectNames());
    DagNode* const joint = targets.items.front().node->asDag();
    if (targets.items.size() != 1 || !joint || !joint->type().isA("joint"))
        throw Error("joint: -query and -edit take one joint.");
    return *joint;
}

Value queryJoint(const Args& args, DagNode& joint)
{
    const auto numbers = [](const V3d& value) { return mel::FloatArray{value.x, value.y, value.z}; };
    if (args.isSet("position"))
        return numbers(args.isSet("relative") ? triple(joint, "translate")
                                              : worldMatrix(joint).translation());
    if (args.isSet("orientation"))
        return numbers(triple(joint, "jointOrient"));
    if (args.isSet("radius"))
        return joint.plug("radius").number();
    throw Error("joint -query needs one of -position, -orientation, -radius.");
}

void setJoint(Session& session, const Args& args, DagNode& joint)
{
    if (args.isSet("position")) {
        const V3d position = args.vector("position");
        setTriple(session, joint, "translate",
                  args.isSet("relative") ? position : position * parentMatrix(joint).inverse());
    }
    if (args.isSet("orientation"))
        setTriple(session, joint, "jointOrient", args.vector("orientation"));
    if (args.isSet("radius"))
        session.edits().setNumber(joint.plug("radius"), args.number("radius"));
}

/// A new joint goes under the selected joint (or transform) and is selected, so that a row of calls makes a
/// chain. The position is in world space unless -relative is given.
Value jointCommand(Session& session, const Args& args)
{
    if (args.query())
        return queryJoint(args, jointNamed(session, args));
    if (args.edit()) {
        setJoint(session, args, jointNamed(session, args));
        return {};
    }
    if (!args.objects().empty())
        throw Error("joint: a new joint is named with -name.");
    DagNode* parent = nullptr;
    for (const SelectionItem& item : session.selection().active().items) {
        DagNode* dag = item.node->asDag();
        if (!item.component && dag && !dag->isShape())
            parent = dag;
    }
    const NodeType* type = session.graph().types().find("joint");
    DagNode& node = *session.edits().create(*type, args.textOr("name", ""), parent).asDag();
    setJoint(session, args, node);
    if (parent && parent->findAttribute("radius"))
        session.edits().connect(parent->plug("scale"), node.plug("inverseScale"));
    selectOnly(session, node);
    return Value(node.uniqueName());
}

} // namespace

void moveItem(Session& session, const SelectionItem& item, const Placement& to)
{
    if (!item.component) {
        DagNode& node = transformOf(item);
        const Imath::M44d space = to.world ? parentMatrix(node) : Imath::M44d();
        setTriple(session, node, "translate", placed(triple(node, "translate"), space, to));
        return;
    }
    DagNode& shape = *item.node->asDag();
    const GeometryRef geometry = shapeGeometry(shape);
    if (!geometry)
        throw Error(shape.uniqueName() + " has no points.");
    const Imath::M44d space = to.world ? worldMatrix(shape) : Imath::M44d();
    for (const int point : pointIndices(shape, item.component.get())) {
        const V3d now = geometry->points()[static_cast<std::size_t>(point)];
        placePoint(session, shape, point, placed(now, space, to), now);
    }
}

void registerTransformCommands(mel::CommandRegistry& registry)
{
    const auto placing = [](const char* name) {
        return CommandSpec(name)
            .flag("r", "relative")
            .flag("a", "absolute")
            .flag("ws", "worldSpace")
            .flag("os", "objectSpace")
            .flag("ls", "localSpace")
            .flag("x", "x")
            .flag("y", "y")
            .flag("z", "z")
            .objects(1)
            .undoable();
    };
    registry.add(placing("move"), moveCommand);
    registry.add(placing("rotate"), attributeCommand("rotate", false));
    registry.add(placing("scale"), attributeCommand("scale", true));
    registerXformCommand(registry);
    registry.add(CommandSpec("joint")
                     .flag("n", "name", {ArgType::kString})
                     .flag("p", "position", kThree)
                     .flag("o", "orientation", kThree)
                     .flag("rad", "radius", {ArgType::kFloat})
                     .flag("r", "relative")
                     .flag("a", "absolute")
                     .objects(0)
                     .query()
                     .edit()
                     .undoable(),
                 jointCommand);
}

} // namespace host
