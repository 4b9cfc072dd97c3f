#pragma once

#include <ImathMatrix.h>
#include <ImathVec.h>

namespace host {

class Attribute;
class Node;

/// What a transform is made of. Angles in degrees, positions in centimetres, row vectors.
struct TransformParts {
    Imath::V3d translate{0.0}, rotate{0.0}, scale{1.0};
    Imath::V3d shear{0.0}; ///< xy, xz, yz
    Imath::V3d scalePivot{0.0}, scalePivotTranslate{0.0}, rotatePivot{0.0}, rotatePivotTranslate{0.0};
    Imath::V3d rotateAxis{0.0}, jointOrient{0.0};
    Imath::V3d inverseScale{1.0}; ///< the parent's scale, taken out again before the translation
    int rotateOrder = 0;          ///< 0 xyz, 1 yzx, 2 zxy, 3 xzy, 4 yxz, 5 zyx; the first is applied first
};

/// Euler rotation in degrees; the first axis of the order is applied first.
Imath::M44d rotationMatrix(const Imath::V3d& degrees, int order);

/// The local matrix of a transform or joint, as the platform documents it:
/// Sp^-1 * S * Sh * Sp * St * Rp^-1 * Ra * R * Jo * Is * Rp * Rt * T.
/// A transform has neither joint orient nor inverse scale; a joint at default pivots gives S * Ra * R * Jo *
/// Is * T.
Imath::M44d localMatrix(const TransformParts& parts);

/// The values of a node: all of them for a joint, without joint orient and inverse scale for a transform.
/// The inverse scale counts only while the joint compensates for segment scale.
TransformParts transformParts(Node& node);

/// Computes the matrix outputs of DAG nodes. A shape's own matrix is the identity. World matrix = matrix *
/// offset parent matrix * parent's world matrix; the last is left out when the node does not inherit
/// transforms.
void computeDagMatrices(Node& node, const Attribute& output);

} // namespace host
