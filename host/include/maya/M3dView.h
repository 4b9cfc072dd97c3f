#pragma once

#include <maya/MDagPath.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/MVector.h>

namespace host {
struct Api;
class Viewport;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

/// A view of the scene. Pixels count from the lower left corner of the port.
class MAYA_HOST_EXPORT M3dView {
public:
    M3dView();
    M3dView(const M3dView& other);
    M3dView& operator=(const M3dView& other);
    virtual ~M3dView();

    /// Fails when there is no view.
    static M3dView active3dView(MStatus* status = nullptr);
    int portWidth(MStatus* status = nullptr);
    int portHeight(MStatus* status = nullptr);
    MStatus getCamera(MDagPath& camera);
    /// A point in world space to port pixels; false when it is clipped.
    bool worldToView(const MPoint& worldPt, short& x_pos, short& y_pos, MStatus* status = nullptr) const;
    MStatus viewToWorld(short x_pos, short y_pos, MPoint& worldPt, MVector& worldVector) const;
    MStatus viewToWorld(short x_pos, short y_pos, MPoint& nearClipPt, MPoint& farClipPt) const;
    MStatus projectionMatrix(MMatrix& projectionMatrix) const;
    MStatus modelViewMatrix(MMatrix& modelViewMatrix) const;
    MStatus scheduleRefresh();
    MStatus refresh(bool all = false, bool force = false);
    static const char* className() { return "M3dView"; }

private:
    friend struct host::Api;
    /// Owned by the session. Views live as long as it does.
    host::Viewport* view;
};

MAYA_HOST_NAMESPACE_CLOSE
