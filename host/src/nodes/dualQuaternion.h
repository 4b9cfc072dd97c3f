#pragma once

#include <ImathMatrix.h>
#include <ImathQuat.h>
#include <ImathVec.h>

namespace host {

/// A rotation and a translation that can be blended without loss of volume: q' = real + eps * dual, with
/// dual = (0, translation) * real / 2.
/// Kavan, Collins, Zara, O'Sullivan: Geometric Skinning with Approximate Dual Quaternion Blending (2008).
struct DualQuaternion {
    Imath::Quatd real{1.0, 0.0, 0.0, 0.0};
    Imath::Quatd dual{0.0, 0.0, 0.0, 0.0};

    /// The rigid part of an affine matrix (row vectors): its rotation without scale and shear, and its
    /// translation. A matrix that flattens space counts as unrotated.
    static DualQuaternion fromMatrix(const Imath::M44d& matrix);

    void add(const DualQuaternion& other, double factor);
    /// Rotation and translation of the quaternion divided by its length, applied to a point. The point
    /// itself when the length is 0.
    Imath::V3d transform(const Imath::V3d& point) const;
};

} // namespace host
