#include "nodes/transformMatrix.h"

#include "graph/node.h"

#include <cmath>

namespace host {

namespace {

using Imath::M44d;
using Imath::V3d;

constexpr double kRadians = 3.14159265358979323846 / 180.0;

M44d translation(const V3d& offset)
{
    M44d result;
    result.setTranslation(offset);
    return result;
}

M44d scaling(const V3d& factors)
{
    M44d result;
    result.setScale(factors);
    return result;
}

M44d shearing(const V3d& shear)
{
    M44d result;
    result[1][0] = shear.x;
    result[2][0] = shear.y;
    result[2][1] = shear.z;
    return result;
}

M44d axisRotation(int axis, double degrees)
{
    const double sine = std::sin(degrees * kRadians);
    const double cosine = std::cos(degrees * kRadians);
    const int next = (axis + 1) % 3;
    const int last = (axis + 2) % 3;
    M44d result;
    result[next][next] = cosine;
    result[next][last] = sine;
    result[last][next] = -sine;
    result[last][last] = cosine;
    return result;
}

V3d inverted(const V3d& factors)
{
    const auto one = [](double factor) { return factor == 0.0 ? 1.0 : 1.0 / factor; };
    return {one(factors.x), one(factors.y), one(factors.z)};
}

V3d triple(Node& node, const char* name)
{
    const Plug plug = node.plug(name);
    return {plug.child(0).number(), plug.child(1).number(), plug.child(2).number()};
}

M44d ownMatrix(Node& node)
{
    return node.type().isA("transform") ? localMatrix(transformParts(node)) : M44d();
}

M44d parentWorld(Node& node)
{
    DagNode* parent = node.asDag() ? node.asDag()->parent() : nullptr;
    return parent ? parent->plug("worldMatrix").element(0).matrix() : M44d();
}

M44d world(Node& node)
{
    const M44d local = node.plug("matrix").matrix() * node.plug("offsetParentMatrix").matrix();
    if (node.type().isA("transform") && node.plug("inheritsTransform").number() == 0.0)
        return local;
    return local * parentWorld(node);
}

} // namespace

M44d rotationMatrix(const V3d& degrees, int order)
{
    static constexpr int kAxes[6][3] = {{0, 1, 2}, {1, 2, 0}, {2, 0, 1}, {0, 2, 1}, {1, 0, 2}, {2, 1, 0}};
    const int(&axes)[3] = kAxes[order >= 0 && order < 6 ? order : 0];
    return axisRotation(axes[0], degrees[axes[0]]) * axisRotation(axes[1], degrees[axes[1]]) *
           axisRotation(axes[2], degrees[axes[2]]);
}

M44d localMatrix(const TransformParts& parts)
{
    return translation(-parts.scalePivot) * scaling(parts.scale) * shearing(parts.shear) *
           translation(parts.scalePivot + parts.scalePivotTranslate - parts.rotatePivot) *
           rotationMatrix(parts.rotateAxis, 0) * rotationMatrix(parts.rotate, parts.rotateOrder) *
           rotationMatrix(parts.jointOrient, 0) * scaling(inverted(parts.inverseScale)) *
           translation(parts.rotatePivot + parts.rotatePivotTranslate + parts.translate);
}

TransformParts transformParts(Node& node)
{
    TransformParts parts;
    parts.translate = triple(node, "translate");
    parts.rotate = triple(node, "rotate");
    parts.scale = triple(node, "scale");
    parts.shear = triple(node, "shear");
    parts.scalePivot = triple(node, "scalePivot");
    parts.scalePivotTranslate = triple(node, "scalePivotTranslate");
    parts.rotatePivot = triple(node, "rotatePivot");
    parts.rotatePivotTranslate = triple(node, "rotatePivotTranslate");
    parts.rotateAxis = triple(node, "rotateAxis");
    parts.rotateOrder = static_cast<int>(node.plug("rotateOrder").number());
    if (node.type().isA("joint")) {
        parts.jointOrient = triple(node, "jointOrient");
        if (node.plug("segmentScaleCompensate").number() != 0.0)
            parts.inverseScale = triple(node, "inverseScale");
    }
    return parts;
}

void computeDagMatrices(Node& node, const Attribute& output)
{
    const Plug plug(&node, &output);
    const std::string& name = output.longName;
    if (name == "matrix" || name == "xformMatrix")
        node.storeMatrix(plug, ownMatrix(node));
    else if (name == "inverseMatrix")
        node.storeMatrix(plug, node.plug("matrix").matrix().inverse());
    else if (name == "worldMatrix")
        node.storeMatrix(plug.element(0), world(node));
    else if (name == "worldInverseMatrix")
        node.storeMatrix(plug.element(0), node.plug("worldMatrix").element(0).matrix().inverse());
    else if (name == "parentMatrix")
        node.storeMatrix(plug.element(0), parentWorld(node));
    else if (name == "parentInverseMatrix")
        node.storeMatrix(plug.element(0), parentWorld(node).inverse());
}

} // namespace host
