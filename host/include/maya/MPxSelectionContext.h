#pragma once

#include <maya/MPoint.h>
#include <maya/MPxContext.h>

namespace host {
struct Api;
struct ToolApi;
struct SelectionGesture;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

/// A tool that selects: presses, drags and releases of the base class pick and marquee-select what the
/// selection mode allows.
class MAYA_HOST_EXPORT MPxSelectionContext : public MPxContext {
public:
    MPxSelectionContext();
    ~MPxSelectionContext();

    MStatus doPress(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                    const MHWRender::MFrameContext& context) override;
    MStatus doPress(MEvent& event) override;
    MStatus doDrag(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                   const MHWRender::MFrameContext& context) override;
    MStatus doDrag(MEvent& event) override;
    MStatus doRelease(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                      const MHWRender::MFrameContext& context) override;
    MStatus doRelease(MEvent& event) override;
    MStatus doHold(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                   const MHWRender::MFrameContext& context) override;
    MStatus doHold(MEvent& event) override;
    MStatus helpStateHasChanged(MEvent&) override;
    void abortAction() override;

    MStatus setAllowPreSelectHilight();
    MStatus setAllowSoftSelect();
    MStatus setAllowSymmetry();
    MStatus setAllowDoubleClickAction();
    static const char* className() { return "MPxSelectionContext"; }

protected:
    /// Whether the press of this gesture selects. False when it is on what is selected already: then the tool
    /// does its own work. Holds until the next press.
    bool isSelecting();

    /// World space, on the near clipping plane.
    MPoint startPoint();
    MPoint lastDragPoint();
    MPxToolCommand* newToolCommand() override;

private:
    friend struct host::Api;
    friend struct host::ToolApi;
    std::unique_ptr<host::SelectionGesture> gesture;
};

MAYA_HOST_NAMESPACE_CLOSE
