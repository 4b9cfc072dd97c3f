#include <maya/MFrameContext.h>

#include "graph/node.h"
#include "types/api.h"
#include "view/viewport.h"

#include <maya/MDagPath.h>
#include <maya/MPoint.h>

MAYA_HOST_NAMESPACE_OPEN
namespace MHWRender {

namespace {

MMatrix wrapped(const Imath::M44d& matrix)
{
    MMatrix out;
    for (unsigned row = 0; row < 4; ++row)
        for (unsigned column = 0; column < 4; ++column)
            out.matrix[row][column] = matrix[static_cast<int>(row)][static_cast<int>(column)];
    return out;
}

/// The matrix that a type is a variant of: the types come in fours, itself, transposed, inverse, both.
Imath::M44d baseMatrix(const host::Viewport& view, int type)
{
    switch (type / 4) {
    case 1:
    case 4:
        return view.viewMatrix(); // the frame itself lies in world space, so "world" adds nothing
    case 2:
        return view.projectionMatrix();
    case 3:
    case 5:
        return view.viewMatrix() * view.projectionMatrix();
    default:
        return Imath::M44d();
    }
}

} // namespace

MFrameContext::MFrameContext() = default;
MFrameContext::~MFrameContext() = default;

MMatrix MFrameContext::getMatrix(MatrixType mtype, MStatus* status) const
{
    const bool known = mtype >= kWorldMtx && mtype <= kWorldViewProjTranspInverseMtx;
    host::report(status, view && known ? MS::kSuccess : MS::kFailure);
    if (!view || !known)
        return MMatrix();
    Imath::M44d matrix = baseMatrix(*view, mtype);
    if (mtype % 4 >= 2)
        matrix = matrix.inverse();
    return wrapped(mtype % 2 == 1 ? matrix.transposed() : matrix);
}

MStatus MFrameContext::getViewportDimensions(int& originX, int& originY, int& width, int& height) const
{
    if (!view)
        return MS::kFailure;
    originX = originY = 0;
    width = view->width;
    height = view->height;
    return MS::kSuccess;
}

MDagPath MFrameContext::getCurrentCameraPath(MStatus* status) const
{
    host::DagNode* camera = view ? view->camera() : nullptr;
    host::report(status, camera ? MS::kSuccess : MS::kFailure);
    return host::Api::path(camera);
}

void MFrameContext::worldToViewport(const MPoint& inPoint, double& xPos, double& yPos) const
{
    Imath::V3d at;
    if (!view || !view->project({inPoint.x, inPoint.y, inPoint.z}, at))
        return;
    xPos = at.x;
    yPos = at.y;
}

void MFrameContext::viewportToWorld(double xPos, double yPos, MPoint& worldNearPt, MPoint& worldFarPt) const
{
    if (!view)
        return;
    Imath::V3d nearPoint, farPoint;
    view->viewToWorld(xPos, yPos, nearPoint, farPoint);
    worldNearPt = MPoint(nearPoint.x, nearPoint.y, nearPoint.z);
    worldFarPt = MPoint(farPoint.x, farPoint.y, farPoint.z);
}

} // namespace MHWRender
MAYA_HOST_NAMESPACE_CLOSE
