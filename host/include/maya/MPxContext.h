#pragma once

#include <maya/MEvent.h>
#include <maya/MFrameContext.h>
#include <maya/MObject.h>
#include <maya/MPxToolCommand.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>
#include <maya/MUIDrawManager.h>

#include <memory>

namespace host {
struct Api;
struct ToolApi;
struct ContextState;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

/// A tool. The forms with a draw manager are what the view calls; the others are for the legacy view.
class MAYA_HOST_EXPORT MPxContext {
public:
    enum ImageIndex : int {
        kImage1 = 0,
        kImage2 = 1,
        kImage3 = 2,
    };

    MPxContext();
    MPxContext(const MPxContext&) = delete;
    MPxContext& operator=(const MPxContext&) = delete;
    virtual ~MPxContext();

    /// The tool was made current / is about to be left.
    virtual void toolOnSetup(MEvent& event);
    virtual void toolOffCleanup();

    virtual MStatus doPress(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                            const MHWRender::MFrameContext& context);
    virtual MStatus doPress(MEvent& event);
    virtual MStatus doDrag(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                           const MHWRender::MFrameContext& context);
    virtual MStatus doDrag(MEvent& event);
    virtual MStatus doRelease(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                              const MHWRender::MFrameContext& context);
    virtual MStatus doRelease(MEvent& event);
    virtual MStatus doHold(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                           const MHWRender::MFrameContext& context);
    virtual MStatus doHold(MEvent& event);
    virtual MStatus doPtrMoved(MEvent& event, MHWRender::MUIDrawManager& drawMgr,
                               const MHWRender::MFrameContext& context);
    virtual MStatus doPtrMoved(MEvent& event);
    virtual MStatus drawFeedback(MHWRender::MUIDrawManager& drawMgr, const MHWRender::MFrameContext& context);
    virtual MStatus doEnterRegion(MEvent& event);
    virtual MStatus helpStateHasChanged(MEvent& event);

    /// Enter, Delete or Backspace, Escape.
    virtual void completeAction();
    virtual void deleteAction();
    virtual void abortAction();

    /// Names the MEL procedures of the settings window: <name>Properties, <name>Values.
    virtual void getClassName(MString& name) const;
    MStatus setImage(const MString& image, ImageIndex index);
    MString image(ImageIndex index, MStatus* status = nullptr) const;
    static const char* className() { return "MPxContext"; }

protected:
    MStatus setHelpString(const MString& str);
    MStatus setTitleString(const MString& str);

    /// Made by the creator that was registered with the context command. One that is never finalised lives as
    /// long as the context command. Null when none was registered.
    virtual MPxToolCommand* newToolCommand();

private:
    friend struct host::Api;
    friend struct host::ToolApi;
    std::unique_ptr<host::ContextState> state;
};

MAYA_HOST_NAMESPACE_CLOSE
