#include <maya/M3dView.h>

#include "graph/node.h"
#include "session.h"
#include "types/api.h"
#include "view/viewport.h"

#include <maya/MDagPath.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MVector.h>

namespace {

/// The view behind a handle if it can be drawn in, that is, has a camera.
bool usable(const host::Viewport* view)
{
    return view && view->camera();
}

MPoint wrapped(const Imath::V3d& point)
{
    return {point.x, point.y, point.z};
}

void copyMatrix(const Imath::M44d& from, MMatrix& to)
{
    for (unsigned row = 0; row < 4; ++row)
        for (unsigned column = 0; column < 4; ++column)
            to.matrix[row][column] = from[static_cast<int>(row)][static_cast<int>(column)];
}

} // namespace

M3dView::M3dView() : view(nullptr) {}
M3dView::M3dView(const M3dView& other) = default;
M3dView& M3dView::operator=(const M3dView& other) = default;
M3dView::~M3dView() = default;

M3dView M3dView::active3dView(MStatus* status)
{
    host::Session* session = host::Session::currentOrNull();
    M3dView active;
    active.view = session ? &session->viewport() : nullptr;
    host::report(status, usable(active.view) ? MS::kSuccess : MS::kFailure);
    return active;
}

int M3dView::portWidth(MStatus* status)
{
    host::report(status, view ? MS::kSuccess : MS::kFailure);
    return view ? view->width : 0;
}

int M3dView::portHeight(MStatus* status)
{
    host::report(status, view ? MS::kSuccess : MS::kFailure);
    return view ? view->height : 0;
}

MStatus M3dView::getCamera(MDagPath& camera)
{
    if (!usable(view))
        return MS::kFailure;
    camera = host::Api::path(view->camera());
    return MS::kSuccess;
}

bool M3dView::worldToView(const MPoint& worldPt, short& x_pos, short& y_pos, MStatus* status) const
{
    host::report(status, usable(view) ? MS::kSuccess : MS::kFailure);
    return usable(view) && view->worldToView({worldPt.x, worldPt.y, worldPt.z}, x_pos, y_pos);
}

MStatus M3dView::viewToWorld(short x_pos, short y_pos, MPoint& worldPt, MVector& worldVector) const
{
    MPoint farPoint;
    const MStatus status = viewToWorld(x_pos, y_pos, worldPt, farPoint);
    if (status)
        worldVector = (farPoint - worldPt).normal();
    return status;
}

MStatus M3dView::viewToWorld(short x_pos, short y_pos, MPoint& nearClipPt, MPoint& farClipPt) const
{
    if (!usable(view))
        return MS::kFailure;
    Imath::V3d nearPoint, farPoint;
    view->viewToWorld(x_pos, y_pos, nearPoint, farPoint);
    nearClipPt = wrapped(nearPoint);
    farClipPt = wrapped(farPoint);
    return MS::kSuccess;
}

MStatus M3dView::projectionMatrix(MMatrix& projectionMatrix) const
{
    if (!usable(view))
        return MS::kFailure;
    copyMatrix(view->projectionMatrix(), projectionMatrix);
    return MS::kSuccess;
}

MStatus M3dView::modelViewMatrix(MMatrix& modelViewMatrix) const
{
    if (!usable(view))
        return MS::kFailure;
    copyMatrix(view->viewMatrix(), modelViewMatrix);
    return MS::kSuccess;
}

// Pictures are made when somebody looks, always from the scene as it is then: a refresh has nothing to do.
MStatus M3dView::scheduleRefresh()
{
    return view ? MS::kSuccess : MS::kFailure;
}

MStatus M3dView::refresh(bool, bool)
{
    return view ? MS::kSuccess : MS::kFailure;
}
