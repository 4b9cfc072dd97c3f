#pragma once

#include <maya/MSelectionList.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

namespace host {
struct Api;
}

MAYA_HOST_NAMESPACE_OPEN

/// The door to the session: selection, commands and messages.
class MAYA_HOST_EXPORT MGlobal {
public:
    enum MMayaState : int {
        kInteractive = 0,
        kBatch = 1,
        kLibraryApp = 2,
        kBaseUIMode = 3,
    };

    enum ListAdjustment : int {
        kReplaceList = 0,
        kXORWithList = 1,
        kAddToList = 2,
        kRemoveFromList = 3,
        kAddToHeadOfList = 4,
    };

    enum SelectionMethod : int {
        kSurfaceSelectMethod = 0,
        kWireframeSelectMethod = 1,
    };

    MGlobal() = delete;

    static MString mayaVersion();
    static int apiVersion();
    static MMayaState mayaState(MStatus* status = nullptr);

    static MStatus getActiveSelectionList(MSelectionList& dest, bool orderedSelectionIfAvailable = false);
    static MStatus setActiveSelectionList(const MSelectionList& src, ListAdjustment = kReplaceList);
    /// As setActiveSelectionList, as a command that can be undone.
    static MStatus selectCommand(const MSelectionList& src, ListAdjustment = kReplaceList);
    /// Everything that a name or pattern stands for; fails when that is nothing.
    static MStatus selectByName(const MString& name, ListAdjustment = kAddToList);
    static MStatus unselectByName(const MString& name);
    static MStatus getSelectionListByName(const MString& name, MSelectionList& list);
    static MStatus clearSelectionList();
    static MStatus getRichSelection(MRichSelection& dest, bool defaultToActiveSelection = true);
    static MStatus setRichSelection(const MRichSelection& src);
    /// Port pixels from the lower left corner.
    static MStatus selectFromScreen(const short& x_pos, const short& y_pos, ListAdjustment = kAddToList,
                                    SelectionMethod = kWireframeSelectMethod);
    static MStatus selectFromScreen(const short& start_x, const short& start_y, const short& end_x,
                                    const short& end_y, ListAdjustment = kAddToList,
                                    SelectionMethod = kWireframeSelectMethod);
    static MStatus getPreselectionHiliteList(MSelectionList& list);
    static MStatus setPreselectionHiliteList(const MSelectionList& list);

    /// Runs at once. Display echoes the text; undo puts the command on the undo queue. The result forms fail
    /// when the result is of another type.
    static MStatus executeCommand(const MString& command, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MCommandResult& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, int& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MIntArray& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, double& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MDoubleArray& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MStringArray& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& command, MString& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MString executeCommandStringResult(const MString& command, bool displayEnabled = false,
                                              bool undoEnabled = false, MStatus* status = nullptr);
    static MStatus executeCommandOnIdle(const MString& command, bool displayEnabled = false);

    static void displayInfo(const MString& theMessage);
    static void displayWarning(const MString& theWarning);
    static void displayError(const MString& theError);
    static const char* className() { return "MGlobal"; }

private:
    friend struct host::Api;
};

MAYA_HOST_NAMESPACE_CLOSE
