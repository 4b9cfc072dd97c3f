#include "session.h"
#include "tools/selectionGesture.h"
#include "tools/toolApi.h"
#include "view/viewport.h"

#include <maya/MColor.h>
#include <maya/MEvent.h>
#include <maya/MPoint.h>
#include <maya/MPxSelectionContext.h>
#include <maya/MUIDrawManager.h>

namespace host {

SelectionGesture* ToolApi::gesture(MPxContext& context)
{
    auto* selecting = dynamic_cast<MPxSelectionContext*>(&context);
    return selecting ? selecting->gesture.get() : nullptr;
}

} // namespace host

namespace {

void drawMarquee(MHWRender::MUIDrawManager& manager, const host::SelectionGesture& gesture)
{
    const MPoint start(gesture.startX, gesture.startY), end(gesture.lastX, gesture.lastY);
    const MPoint right(end.x, start.y), up(start.x, end.y);
    manager.beginDrawable();
    manager.setColor(MColor(1.0F, 1.0F, 1.0F));
    manager.setLineStyle(MHWRender::MUIDrawManager::kShortDashed);
    manager.line2d(start, right);
    manager.line2d(right, end);
    manager.line2d(end, up);
    manager.line2d(up, start);
    manager.endDrawable();
}

/// The point of the near clipping plane that is seen at a pixel of the port.
MPoint underPixel(short x, short y)
{
    host::Session* session = host::Session::currentOrNull();
    if (!session)
        return {};
    Imath::V3d nearPoint, farPoint;
    session->viewport().viewToWorld(x, y, nearPoint, farPoint);
    return {nearPoint.x, nearPoint.y, nearPoint.z};
}

} // namespace

MPxSelectionContext::MPxSelectionContext() : gesture(std::make_unique<host::SelectionGesture>()) {}

MPxSelectionContext::~MPxSelectionContext() = default;

MStatus MPxSelectionContext::doPress(MEvent& event, MHWRender::MUIDrawManager&,
                                     const MHWRender::MFrameContext&)
{
    return doPress(event);
}

MStatus MPxSelectionContext::doPress(MEvent& event)
{
    host::Session* session = host::Session::currentOrNull();
    if (!session)
        return MStatus::kFailure;
    host::beginSelecting(*session, *gesture, host::ToolApi::event(event));
    return MStatus::kSuccess;
}

MStatus MPxSelectionContext::doDrag(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                                    const MHWRender::MFrameContext&)
{
    const MStatus status = doDrag(event);
    if (gesture->selecting && host::isMarquee(*gesture))
        drawMarquee(drawMgr, *gesture);
    return status;
}

MStatus MPxSelectionContext::doDrag(MEvent& event)
{
    host::continueSelecting(*gesture, host::ToolApi::event(event));
    return MStatus::kSuccess;
}

MStatus MPxSelectionContext::doRelease(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                                       const MHWRender::MFrameContext&)
{
    const bool marquee = gesture->selecting && host::isMarquee(*gesture);
    const MStatus status = doRelease(event);
    if (marquee) {
        drawMgr.beginDrawable();
        drawMgr.endDrawable();
    }
    return status;
}

MStatus MPxSelectionContext::doRelease(MEvent& event)
{
    host::Session* session = host::Session::currentOrNull();
    if (!session)
        return MStatus::kFailure;
    host::finishSelecting(*session, *gesture, host::ToolApi::event(event));
    return MStatus::kSuccess;
}

MStatus MPxSelectionContext::doHold(MEvent& event, MHWRender::MUIDrawManager&,
                                    const MHWRender::MFrameContext&)
{
    return doHold(event);
}

MStatus MPxSelectionContext::doHold(MEvent&)
{
    return MStatus::kSuccess;
}

MStatus MPxSelectionContext::helpStateHasChanged(MEvent&)
{
    return MStatus::kSuccess;
}

void MPxSelectionContext::abortAction()
{
    gesture->selecting = false;
}

MStatus MPxSelectionContext::setAllowPreSelectHilight()
{
    gesture->preselectHilite = true;
    return MStatus::kSuccess;
}

MStatus MPxSelectionContext::setAllowSoftSelect()
{
    gesture->softSelect = true;
    return MStatus::kSuccess;
}

MStatus MPxSelectionContext::setAllowSymmetry()
{
    gesture->symmetry = true;
    return MStatus::kSuccess;
}

MStatus MPxSelectionContext::setAllowDoubleClickAction()
{
    gesture->doubleClickAction = true;
    return MStatus::kSuccess;
}

bool MPxSelectionContext::isSelecting()
{
    return gesture->selecting;
}

MPoint MPxSelectionContext::startPoint()
{
    return underPixel(gesture->startX, gesture->startY);
}

MPoint MPxSelectionContext::lastDragPoint()
{
    return underPixel(gesture->lastX, gesture->lastY);
}

MPxToolCommand* MPxSelectionContext::newToolCommand()
{
    return MPxContext::newToolCommand();
}
