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

Value moveCommand(Session& session, const Args& args)
{
    Placement to;
    to.relative = args.isSet("relative");
    to.world = args.isSet("worldSpace") || (!args.isSet("objectSpace") && !args.isSet("localSpace"));
    const std::vector<double> xyz = leadingNumbers(args, 3);
    to.value = {xyz[0], xyz[1], xyz[2]};
    for (const SelectionItem& item : commandTargets(session, namesAfter(args, 3)).items)
        moveItem(session, item, to);
    return {};
}

/// rotate and scale set or change the attribute of objects.
mel::CommandFunction attributeCommand(const char* attribute, bool multiplies)
{
    return [attribute, multiplies](Session& session, const Args& args) -> Value {
        const std::vector<double> xyz = leadingNumbers(args, 3);
        const V3d given(xyz[0], xyz[1], xyz[2]);
        for (const SelectionItem& item : commandTargets(session, namesAfter(args, 3)).items) {
            if (item.component)
                throw Error(args.commandName() + " works on objects, not on components.");
            DagNode& node = transformOf(item);
            const V3d now = triple(node, attribute);
            const bool relative = args.isSet("relative");
            setTriple(session, node, attribute, !relative ? given : multiplies ? now * given : now + given);
        }
        return {};
    };
}

/// A new joint goes under the selected joint (or transform) and is selected, so that a row of calls makes a
/// chain. The position is in world space unless -relative is given.
Value jointCommand(Session& session, const Args& args)
{
    DagNode* parent = nullptr;
    for (const SelectionItem& item : session.selection().active().items) {
        DagNode* dag = item.node->asDag();
        if (!item.component && dag && !dag->isShape())
            parent = dag;
    }
    const NodeType* type = session.graph().types().find("joint");
    DagNode& node = *session.edits().create(*type, args.textOr("name", ""), parent).asDag();
    if (args.isSet("position")) {
        V3d local = args.vector("position");
        if (parent && !args.isSet("relative"))
            worldMatrix(*parent).inverse().multVecMatrix(args.vector("position"), local);
        setTriple(session, node, "translate", local);
    }
    if (args.isSet("orientation"))
        setTriple(session, node, "jointOrient", args.vector("orientation"));
    if (args.isSet("radius"))
        session.edits().setNumber(node.plug("radius"), args.number("radius"));
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
        const Imath::M44d parent = to.world ? parentMatrix(node) : Imath::M44d();
        V3d local = triple(node, "translate");
        if (to.relative) {
            V3d step;
            parent.inverse().multDirMatrix(to.value, step);
            local += step;
        } else {
            parent.inverse().multVecMatrix(to.value, local);
        }
        setTriple(session, node, "translate", local);
        return;
    }
    DagNode& shape = *item.node->asDag();
    const GeometryRef geometry = shapeGeometry(shape);
    if (!geometry)
        throw Error(shape.uniqueName() + " has no points.");
    const Imath::M44d toObject = to.world ? worldMatrix(shape).inverse() : Imath::M44d();
    for (const int point : pointIndices(shape, item.component.get())) {
        const V3d now = geometry->points()[static_cast<std::size_t>(point)];
        V3d target;
        if (to.relative) {
            toObject.multDirMatrix(to.value, target);
            target += now;
        } else {
            toObject.multVecMatrix(to.value, target);
        }
        placePoint(session, shape, point, target, now);
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
            .objects(3)
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
                     .undoable(),
                 jointCommand);
}

} // namespace host
