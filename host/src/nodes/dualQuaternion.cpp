#include "nodes/dualQuaternion.h"

#include <ImathMatrixAlgo.h>

#include <cmath>

namespace host {

using Imath::M44d;
using Imath::Quatd;
using Imath::V3d;

DualQuaternion DualQuaternion::fromMatrix(const M44d& matrix)
{
    const V3d translation = matrix.translation();
    M44d rotation = matrix;
    V3d scale, shear;
    DualQuaternion result;
    if (Imath::extractAndRemoveScalingAndShear(rotation, scale, shear, false)) {
        // A mirroring matrix comes out with all axes turned round.
        result.real = Imath::extractQuat(rotation);
        result.real.normalize();
    }
    result.dual = Quatd(0.0, translation * 0.5) * result.real;
    return result;
}

void DualQuaternion::add(const DualQuaternion& other, double factor)
{
    real.r += factor * other.real.r;
    real.v += factor * other.real.v;
    dual.r += factor * other.dual.r;
    dual.v += factor * other.dual.v;
}

V3d DualQuaternion::transform(const V3d& point) const
{
    const double length = std::sqrt(real.r * real.r + real.v.dot(real.v));
    if (length == 0.0)
        return point;
    const double r = real.r / length;
    const V3d v = real.v / length;
    const double dualR = dual.r / length;
    const V3d dualV = dual.v / length;
    const V3d rotated = point + 2.0 * v.cross(v.cross(point) + r * point);
    return rotated + 2.0 * (r * dualV - dualR * v + v.cross(dualV));
}

} // namespace host
