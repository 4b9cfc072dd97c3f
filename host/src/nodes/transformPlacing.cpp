#include "nodes/transformPlacing.h"

#include "graph/node.h"
#include "nodes/geometry.h"
#include "nodes/transformMatrix.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <ImathEuler.h>
#include <ImathMatrixAlgo.h>

#include <cmath>

namespace host {

namespace {

using Imath::M44d;
using Imath::V3d;

void setTriple(Session& session, DagNode& node, const char* attribute, const V3d& value)
{
    const Plug plug = node.plug(attribute);
    for (unsigned axis = 0; axis < 3; ++axis)
        if (plug.child(axis).number() != value[static_cast<int>(axis)])
            session.edits().setNumber(plug.child(axis), value[static_cast<int>(axis)]);
}

/// Degrees about x, y and z of a rotation in the given order.
V3d anglesOf(const M44d& rotation, int order)
{
    using Euler = Imath::Eulerd;
    static constexpr Euler::Order kOrders[] = {Euler::XYZ, Euler::YZX, Euler::ZXY,
                                               Euler::XZY, Euler::YXZ, Euler::ZYX};
    Euler angles(kOrders[order]);
    angles.extract(rotation);
    return angles.toXYZVector() * (180.0 / M_PI);
}

struct Split {
    V3d scale, shear;
    M44d rotation;
};

Split splitOf(const DagNode& node, const M44d& matrix)
{
    Split split;
    split.rotation = matrix;
    if (!Imath::extractAndRemoveScalingAndShear(split.rotation, split.scale, split.shear, false))
        throw Error(node.uniqueName() +
                    " has no size in one direction: it has no rotation and cannot be placed.");
    split.rotation[3][0] = split.rotation[3][1] = split.rotation[3][2] = 0.0;
    return split;
}

M44d spaceOf(DagNode& node)
{
    return node.plug("offsetParentMatrix").matrix() * parentMatrix(node);
}

/// What rotate must be for a rotation in the parent's space.
V3d rotateFor(const TransformParts& parts, const M44d& rotation)
{
    const M44d axis = rotationMatrix(parts.rotateAxis, 0), orient = rotationMatrix(parts.jointOrient, 0);
    return anglesOf(axis.inverse() * rotation * orient.inverse(), parts.rotateOrder);
}

/// Where scaling and turning take a pivot from, in the local matrix.
V3d moved(const M44d& linear, const V3d& pivot)
{
    V3d image;
    linear.multDirMatrix(pivot, image);
    return pivot - image;
}

} // namespace

void placeLocally(Session& session, DagNode& node, const M44d& local)
{
    TransformParts parts = transformParts(node);
    const Split split = splitOf(node, local);
    parts.scale = split.scale;
    parts.shear = split.shear;
    parts.rotate = rotateFor(parts, split.rotation);
    parts.translate = V3d(0.0);
    parts.translate = local.translation() - localMatrix(parts).translation();
    setTriple(session, node, "translate", parts.translate);
    setTriple(session, node, "rotate", parts.rotate);
    setTriple(session, node, "scale", parts.scale);
    setTriple(session, node, "shear", parts.shear);
}

void placeInWorld(Session& session, DagNode& node, const M44d& world)
{
    placeLocally(session, node, world * spaceOf(node).inverse());
}

V3d worldRotation(DagNode& node)
{
    return anglesOf(splitOf(node, worldMatrix(node)).rotation, transformParts(node).rotateOrder);
}

void turnInWorld(Session& session, DagNode& node, const V3d& degrees)
{
    const TransformParts parts = transformParts(node);
    const M44d wanted = rotationMatrix(degrees, parts.rotateOrder);
    const M44d above = splitOf(node, spaceOf(node)).rotation;
    setTriple(session, node, "rotate", rotateFor(parts, wanted * above.inverse()));
}

V3d worldScale(DagNode& node)
{
    return splitOf(node, worldMatrix(node)).scale;
}

void setPivots(Session& session, DagNode& node, const V3d& rotatePivot, const V3d& scalePivot)
{
    const TransformParts parts = transformParts(node);
    TransformParts scaling;
    scaling.scale = parts.scale;
    scaling.shear = parts.shear;
    TransformParts turning;
    turning.rotateAxis = parts.rotateAxis;
    turning.rotate = parts.rotate;
    turning.rotateOrder = parts.rotateOrder;
    turning.jointOrient = parts.jointOrient;
    turning.inverseScale = parts.inverseScale;
    const M44d scale = localMatrix(scaling), turn = localMatrix(turning);
    setTriple(session, node, "scalePivotTranslate",
              parts.scalePivotTranslate + moved(scale, parts.scalePivot) - moved(scale, scalePivot));
    setTriple(session, node, "rotatePivotTranslate",
              parts.rotatePivotTranslate + moved(turn, parts.rotatePivot) - moved(turn, rotatePivot));
    setTriple(session, node, "scalePivot", scalePivot);
    setTriple(session, node, "rotatePivot", rotatePivot);
}

void setWorldPivots(Session& session, DagNode& node, const V3d* rotatePivot, const V3d* scalePivot)
{
    const M44d toNode = worldMatrix(node).inverse();
    if (scalePivot)
        setPivots(session, node, transformParts(node).rotatePivot, *scalePivot * toNode);
    if (!rotatePivot)
        return;
    // The node turns about this pivot after it has been scaled.
    const TransformParts parts = transformParts(node);
    TransformParts scaling;
    scaling.scale = parts.scale;
    scaling.shear = parts.shear;
    scaling.scalePivot = parts.scalePivot;
    scaling.scalePivotTranslate = parts.scalePivotTranslate;
    setPivots(session, node, *rotatePivot * toNode * localMatrix(scaling), parts.scalePivot);
}

} // namespace host
