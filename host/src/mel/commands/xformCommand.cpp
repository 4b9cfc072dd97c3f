// xform: where objects and control points are, and putting them elsewhere.
#include "graph/graph.h"
#include "mel/command.h"
#include "mel/commands/commandTargets.h"
#include "mel/commands/geometryCommands.h"
#include "nodes/geometry.h"
#include "nodes/transformMatrix.h"
#include "nodes/transformPlacing.h"
#include "selection/selectionState.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <ImathBox.h>

#include <algorithm>
#include <array>

namespace host {

namespace {

using Imath::M44d;
using Imath::V3d;
using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

const std::vector<ArgType> kThree{ArgType::kFloat, ArgType::kFloat, ArgType::kFloat};
const std::array<const char*, 6> kRotateOrders{"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"};

V3d triple(DagNode& node, const char* attribute)
{
    const Plug plug = node.plug(attribute);
    return {plug.child(0).number(), plug.child(1).number(), plug.child(2).number()};
}

void setTriple(Session& session, DagNode& node, const char* attribute, const V3d& value)
{
    for (unsigned axis = 0; axis < 3; ++axis)
        session.edits().setNumber(node.plug(attribute).child(axis), value[static_cast<int>(axis)]);
}

mel::FloatArray numbers(const V3d& value)
{
    return {value.x, value.y, value.z};
}

mel::FloatArray cells(const M44d& matrix)
{
    mel::FloatArray all;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            all.push_back(matrix[row][column]);
    return all;
}

void extend(Imath::Box3d& box, DagNode& node, const M44d& toSpace)
{
    if (const GeometryRef geometry = node.isShape() && !node.isIntermediate() ? shapeGeometry(node) : nullptr)
        for (const V3d& point : geometry->points())
            box.extendBy(point * worldMatrix(node) * toSpace);
    for (const Ref<DagNode>& child : node.children())
        extend(box, *child, toSpace);
}

/// Around everything below the node, in the world or in the space above the node.
Imath::Box3d boxOf(DagNode& node, bool world)
{
    Imath::Box3d box;
    extend(box, node, world ? M44d() : parentMatrix(node).inverse());
    if (box.isEmpty())
        box.extendBy(world ? worldMatrix(node).translation() : triple(node, "translate"));
    return box;
}

/// Where turning and scaling leave a pivot in the world.
V3d pivotInWorld(DagNode& node, bool ofRotation)
{
    const TransformParts parts = transformParts(node);
    V3d inParent = parts.translate + parts.rotatePivot + parts.rotatePivotTranslate;
    if (!ofRotation) {
        TransformParts turning = parts;
        turning.scale = V3d(1.0);
        turning.shear = V3d(0.0);
        turning.scalePivot = turning.scalePivotTranslate = V3d(0.0);
        inParent = (parts.scalePivot + parts.scalePivotTranslate) * localMatrix(turning);
    }
    return inParent * node.plug("offsetParentMatrix").matrix() * parentMatrix(node);
}

mel::FloatArray pivot(DagNode& node, bool ofRotation, bool world)
{
    return numbers(world ? pivotInWorld(node, ofRotation)
                         : triple(node, ofRotation ? "rotatePivot" : "scalePivot"));
}

mel::FloatArray bothPivots(DagNode& node, bool world)
{
    mel::FloatArray both = pivot(node, true, world);
    const mel::FloatArray scaling = pivot(node, false, world);
    both.insert(both.end(), scaling.begin(), scaling.end());
    return both;
}

Value queryPoints(const SelectionList& targets, bool world)
{
    mel::FloatArray all;
    for (const SelectionItem& each : targets.items)
        if (each.component)
            for (const V3d& point : pointPositions(*each.node->asDag(), each.component.get(), world))
                all.insert(all.end(), {point.x, point.y, point.z});
    return all;
}

Value rotateOrderName(Node& node)
{
    const double order = node.plug("rotateOrder").number();
    if (!(order >= 0.0 && order < static_cast<double>(kRotateOrders.size())))
        throw Error("xform: '" + node.uniqueName() + "' has no known rotate order.");
    return kRotateOrders[static_cast<std::size_t>(order)];
}

Value query(const Args& args, const SelectionList& targets)
{
    const bool world = args.isSet("worldSpace");
    if (targets.items.empty())
        throw Error("xform: there is nothing to query.");
    const SelectionItem& item = targets.items.front();
    if (args.isSet("translation") && item.component)
        return queryPoints(targets, world);
    DagNode& node = transformOf(item);
    if (args.isSet("matrix"))
        return cells(world ? worldMatrix(node) : node.plug("matrix").matrix());
    if (args.isSet("translation"))
        return numbers(world ? worldMatrix(node).translation() : triple(node, "translate"));
    if (args.isSet("rotation"))
        return numbers(world ? worldRotation(node) : triple(node, "rotate"));
    if (args.isSet("scale"))
        return numbers(world ? worldScale(node) : triple(node, "scale"));
    if (args.isSet("rotatePivot") || args.isSet("scalePivot"))
        return pivot(node, args.isSet("rotatePivot"), world);
    if (args.isSet("pivots"))
        return bothPivots(node, world);
    if (args.isSet("rotateOrder"))
        return rotateOrderName(node);
    if (args.isSet("boundingBox")) {
        const Imath::Box3d box = boxOf(node, world);
        mel::FloatArray corners = numbers(box.min);
        corners.insert(corners.end(), {box.max.x, box.max.y, box.max.z});
        return corners;
    }
    throw Error("xform -query needs one of -translation, -rotation, -scale, -matrix, -rotatePivot, "
                "-scalePivot, -pivots, -rotateOrder, -boundingBox.");
}

void setMatrix(Session& session, DagNode& node, const Args& args, bool world)
{
    M44d matrix;
    for (int cell = 0; cell < 16; ++cell)
        matrix[cell / 4][cell % 4] = args.number("matrix", cell);
    if (world)
        placeInWorld(session, node, matrix);
    else
        placeLocally(session, node, matrix);
}

void setRotation(Session& session, DagNode& node, const Args& args)
{
    const bool world = args.isSet("worldSpace");
    const V3d before = world ? worldRotation(node) : triple(node, "rotate");
    const V3d after = args.isSet("relative") ? before + args.vector("rotation") : args.vector("rotation");
    if (world && args.isSet("relative"))
        throw Error("xform: -rotation is relative in object space only.");
    if (world)
        turnInWorld(session, node, after);
    else
        setTriple(session, node, "rotate", after);
}

/// In the world pivots move alone, as they do for people; in object space the values are set as given.
void setPivotsGiven(Session& session, DagNode& node, const Args& args)
{
    const bool both = args.isSet("pivots");
    const bool turns = both || args.isSet("rotatePivot"), scales = both || args.isSet("scalePivot");
    const V3d rotate = turns ? args.vector(both ? "pivots" : "rotatePivot") : triple(node, "rotatePivot");
    const V3d scale = scales ? args.vector(both ? "pivots" : "scalePivot") : triple(node, "scalePivot");
    if (args.isSet("worldSpace")) {
        setWorldPivots(session, node, turns ? &rotate : nullptr, scales ? &scale : nullptr);
    } else if (args.booleanOr("preserve", false)) {
        setPivots(session, node, rotate, scale);
    } else {
        setTriple(session, node, "rotatePivot", rotate);
        setTriple(session, node, "scalePivot", scale);
    }
}

void setRotateOrder(Session& session, DagNode& node, const std::string& order)
{
    const auto found = std::find(kRotateOrders.begin(), kRotateOrders.end(), order);
    if (found == kRotateOrders.end())
        throw Error("xform: -rotateOrder takes xyz, yzx, zxy, xzy, yxz or zyx.");
    session.edits().setNumber(node.plug("rotateOrder"), static_cast<double>(found - kRotateOrders.begin()));
}

void setObject(Session& session, DagNode& node, const Args& args)
{
    const bool world = args.isSet("worldSpace");
    if (args.isSet("rotateOrder"))
        setRotateOrder(session, node, args.text("rotateOrder"));
    if (args.isSet("matrix"))
        setMatrix(session, node, args, world);
    if (args.isSet("rotation"))
        setRotation(session, node, args);
    if (args.isSet("scale")) {
        if (world)
            throw Error("xform: -scale is set in object space only.");
        const V3d scale = args.vector("scale");
        setTriple(session, node, "scale", args.isSet("relative") ? triple(node, "scale") * scale : scale);
    }
    if (args.isSet("rotatePivot") || args.isSet("scalePivot") || args.isSet("pivots"))
        setPivotsGiven(session, node, args);
    if (args.isSet("centerPivots")) {
        const V3d centre = boxOf(node, true).center();
        setWorldPivots(session, node, &centre, &centre);
    }
}

Value xformCommand(Session& session, const Args& args)
{
    const SelectionList targets = commandTargets(session, args.objectNames());
    if (args.query())
        return query(args, targets);
    if (args.isSet("boundingBox"))
        throw Error("xform: -boundingBox can be queried, not set.");
    for (const SelectionItem& item : targets.items) {
        if (!item.component)
            setObject(session, transformOf(item), args);
        if (args.isSet("translation"))
            moveItem(session, item,
                     {args.vector("translation"), args.isSet("relative"), args.isSet("worldSpace")});
    }
    return {};
}

/// Smallest x, y and z, then the largest, around everything named.
Value exactWorldBoundingBox(Session& session, const Args& args)
{
    Imath::Box3d box;
    for (const SelectionItem& item : commandTargets(session, args.objectNames()).items) {
        if (!item.component) {
            box.extendBy(boxOf(transformOf(item), true));
            continue;
        }
        for (const V3d& point : pointPositions(*item.node->asDag(), item.component.get(), true))
            box.extendBy(point);
    }
    mel::FloatArray corners = numbers(box.min);
    corners.insert(corners.end(), {box.max.x, box.max.y, box.max.z});
    return corners;
}

} // namespace

void registerXformCommand(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("exactWorldBoundingBox").objects(0), exactWorldBoundingBox);
    registry.add(CommandSpec("xform")
                     .flag("t", "translation", kThree)
                     .flag("ro", "rotation", kThree)
                     .flag("s", "scale", kThree)
                     .flag("rp", "rotatePivot", kThree)
                     .flag("sp", "scalePivot", kThree)
                     .flag("piv", "pivots", kThree)
                     .flag("cp", "centerPivots")
                     .flag("p", "preserve", {ArgType::kBool})
                     .flag("m", "matrix", std::vector<ArgType>(16, ArgType::kFloat))
                     .flag("roo", "rotateOrder", {ArgType::kString})
                     .flag("bb", "boundingBox")
                     .flag("r", "relative")
                     .flag("a", "absolute")
                     .flag("ws", "worldSpace")
                     .flag("os", "objectSpace")
                     .objects(0)
                     .query()
                     .undoable(),
                 xformCommand);
}

} // namespace host
