#pragma once

#include <maya/MDagPath.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

namespace host {
struct Api;
class Viewport;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

namespace MHWRender {

/// The view that is being drawn. Tools pass it on.
class MAYA_HOST_EXPORT MFrameContext {
public:
    enum MatrixType : int {
        kWorldMtx = 0,
        kWorldTransposeMtx = 1,
        kWorldInverseMtx = 2,
        kWorldTranspInverseMtx = 3,
        kViewMtx = 4,
        kViewTransposeMtx = 5,
        kViewInverseMtx = 6,
        kViewTranspInverseMtx = 7,
        kProjectionMtx = 8,
        kProjectionTranposeMtx = 9,
        kProjectionInverseMtx = 10,
        kProjectionTranspInverseMtx = 11,
        kViewProjMtx = 12,
        kViewProjTranposeMtx = 13,
        kViewProjInverseMtx = 14,
        kViewProjTranspInverseMtx = 15,
        kWorldViewMtx = 16,
        kWorldViewTransposeMtx = 17,
        kWorldViewInverseMtx = 18,
        kWorldViewTranspInverseMtx = 19,
        kWorldViewProjMtx = 20,
        kWorldViewProjTransposeMtx = 21,
        kWorldViewProjInverseMtx = 22,
        kWorldViewProjTranspInverseMtx = 23,
    };

    MFrameContext(const MFrameContext&) = delete;
    MFrameContext& operator=(const MFrameContext&) = delete;

    virtual MMatrix getMatrix(MatrixType mtype, MStatus* status = nullptr) const;
    virtual MStatus getViewportDimensions(int& originX, int& originY, int& width, int& height) const;
    MDagPath getCurrentCameraPath(MStatus* status = nullptr) const;
    /// Port pixels.
    void worldToViewport(const MPoint& inPoint, double& xPos, double& yPos) const;
    void viewportToWorld(double xPos, double yPos, MPoint& worldNearPt, MPoint& worldFarPt) const;
    static const char* className() { return "MFrameContext"; }

protected:
    MFrameContext();
    virtual ~MFrameContext();

private:
    friend struct host::Api;
    host::Viewport* view = nullptr;
};

} // namespace MHWRender

MAYA_HOST_NAMESPACE_CLOSE
