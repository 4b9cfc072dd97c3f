#pragma once

#include "graph/nodeType.h"

#include <ImathMatrix.h>

namespace host {

class Node;
class Plug;

// What cluster and softMod share: a handle (a shape below a transform) hands three matrices to its deformer.
// A point goes through pre, then as far through weighted as its weight says, then through post.

/// The compound of the three, as output of the handle and input of the deformer.
AttributeSpec handleMatrices(const char* longName, const char* shortName);

/// Stores the three for the transform above a handle: its own transform in the space of its parent, and the
/// way there and back. Nothing without a parent.
void computeHandleMatrices(Node& handle, const Plug& transforms);

/// What a point of weight 1 goes through, in world space. Absolute: from the handle's world matrix at the
/// time of binding to the present one. Relative: the same of the handle's local matrix only, in the space of
/// its parent, so that moving the parent moves nothing. `transforms` is the deformer's compound.
Imath::M44d handleMotion(Node& deformer, const Plug& transforms);

} // namespace host
