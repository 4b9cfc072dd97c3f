// Press, drag and release: which of them sculpts, which selects, and what goes onto the undo queue.
#include "helperFunctions/ngLayers.h"
#include "mel.h"
#include "morvaneContext/morvaneContext.h"
#include "morvaneToolCommand/morvaneToolCommand.h"
#include "report.h"
#include "weightModes/modeTable.h"

#include <maya/MPxContext.h>

namespace {

/// The selection that a press in select mode ends with: control removes, as marquees do everywhere on the
/// platform. A click that is about to sculpt has another table.
MGlobal::ListAdjustment adjustmentOfSelectPress(bool shift, bool control)
{
    if (shift)
        return control ? MGlobal::kAddToList : MGlobal::kXORWithList;
    return control ? MGlobal::kRemoveFromList : MGlobal::kReplaceList;
}

/// Keeps click-drag selection off and, for a press, the selection as it is while the base class handles an
/// event.
class BaseHandling {
public:
    BaseHandling()
    {
        runMel("selectPref -clickDrag false");
        MGlobal::getActiveSelectionList(selection, false);
        MGlobal::getRichSelection(rich, true);
    }
    ~BaseHandling()
    {
        insist([this] { return MGlobal::setActiveSelectionList(selection, MGlobal::kReplaceList); });
        insist([this] { return MGlobal::setRichSelection(rich); });
        insist([] { return runMel("selectPref -clickDrag true"); });
    }
    BaseHandling(const BaseHandling&) = delete;
    BaseHandling& operator=(const BaseHandling&) = delete;

private:
    MSelectionList selection;
    MRichSelection rich;
};

/// What a tool drew stays until it draws again: an empty drawable clears it.
void clearLabels(MHWRender::MUIDrawManager& drawManager)
{
    drawManager.beginDrawable(MHWRender::MUIDrawManager::kAutomatic, 0);
    drawManager.endDrawable();
}

} // namespace

MStatus morvaneContext::doPress(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                                const MHWRender::MFrameContext& context)
{
    return guarded(
        "Pressing", [&] { return pressed(event, drawManager, context); }, [this] { takeBackPress(); });
}

MStatus morvaneContext::doDrag(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                               const MHWRender::MFrameContext& context)
{
    return guarded(
        "Dragging", [&] { return dragged(event, drawManager, context); }, [this] { takeBackDrag(); });
}

MStatus morvaneContext::doRelease(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                                  const MHWRender::MFrameContext& context)
{
    return guarded(
        "Releasing", [&] { return released(event, drawManager, context); }, [this] { takeBackRelease(); });
}

MStatus morvaneContext::doPtrMoved(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                                   const MHWRender::MFrameContext& context)
{
    return guarded("Following the mouse",
                   [&] { return MPxContext::doPtrMoved(event, drawManager, context); });
}

MStatus morvaneContext::doPtrMoved(MEvent&)
{
    return MS::kSuccess;
}

MStatus morvaneContext::pressed(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                                const MHWRender::MFrameContext& context)
{
    // The release of an earlier press has got lost.
    endStroke();
    discardCommand();
    mouseDown = true;
    if (callBaseHandlers) {
        const BaseHandling bracket;
        MPxSelectionContext::doPress(event, drawManager, context);
    }
    clearData();
    startExplaining();
    event.getPosition(pressX, pressY);
    pressPoint = MPoint(pressX, pressY, 0, 1);
    shiftHeld = event.isModifierShift();
    controlHeld = event.isModifierControl();
    toolCommand = makeToolCommand();
    if (toolCommand != nullptr)
        toolCommand->describe(describeEdit("sculpt"));
    // A press that cannot sculpt stays in select mode; it has been reported.
    getContextMode(event, drawManager, context);
    ngEnabled = isNgEnabled();
    if (contextMode != kSculptMode) {
        contextMode = kSelectMode;
        listAdjustment = adjustmentOfSelectPress(shiftHeld, controlHeld);
        sayWhy();
        return MS::kSuccess;
    }
    startStroke();
    return MS::kSuccess;
}

/// A click that has selected the point has done its work; a drag will say why nothing moves.
void morvaneContext::sayWhyUnlessSelected()
{
    if (!selectionChanged)
        sayWhy();
}

void morvaneContext::startStroke()
{
    directionStep = 0.005;
    getValidActiveSel(validSel, softSelectWeights, validSkinClusters);
    keepObjects();
    if (validSel.isEmpty()) {
        explaining.pending = whyNothingToEdit();
        sayWhyUnlessSelected();
        return;
    }
    explaining.pending = explaining.wrongComponents;
    // Without the old weights there is no stroke.
    if (!getOldWeights()) {
        explaining.pending = explaining.unread.text;
        // Whoever has read them has already said what is wrong.
        if (explaining.pending.length() == 0)
            putIntoHelpLine("The weights cannot be read: the message says why.");
        sayWhyUnlessSelected();
        return;
    }
    prepareStroke();
    getDirectionVector();
    // Left to the first drag: a click on a selected point need not move anything.
    const MString hindrance = whatHinders();
    if (hindrance.length() != 0)
        explaining.pending = hindrance;
}

MStatus morvaneContext::getContextMode(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                                       const MHWRender::MFrameContext& context)
{
    // The layers may have come since the last press: the first one works.
    if (modeRow(weightMode).isLayerMode && !ngEnabled)
        ngEnabled = isNgEnabled();
    MStatus status = checkActiveDeformer(deformerStr);
    if (!status) {
        if (pickAtPress() && event.mouseButton() == MEvent::kLeftMouse)
            explainPick(whyNoDeformer());
        return apiError(status, kContextSource, __LINE__);
    }
    status = processClick(event, drawManager, context);
    if (!status)
        return apiError(status, kContextSource, __LINE__);
    return MS::kSuccess;
}

MStatus morvaneContext::dragged(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                                const MHWRender::MFrameContext& context)
{
    short x = 0, y = 0;
    const MStatus status = event.getPosition(x, y);
    if (!status)
        return apiError(status, kContextSource, __LINE__);
    dragPoint = MPoint(x, y, 0, 1);
    if (contextMode == kSculptMode) {
        const MStatus drawn = doDragSculpt(event, drawManager, context);
        if (drawn) {
            completeOffset = offsetValue;
            dragCompleted = strokeWritten;
        }
        return drawn;
    }
    doDragSelect(event, drawManager, context);
    return MS::kSuccess;
}

MStatus morvaneContext::released(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                                 const MHWRender::MFrameContext& context)
{
    event.getPosition(releaseX, releaseY);
    if (callBaseHandlers) {
        const BaseHandling bracket;
        MPxSelectionContext::doRelease(event, drawManager, context);
    }
    const bool wasDown = mouseDown;
    mouseDown = false;
    // A release that no press came before, or whose stroke has been ended, has nothing to record.
    if (toolCommand == nullptr) {
        if (wasDown && contextMode == kSculptMode)
            clearLabels(drawManager);
        return MS::kSuccess;
    }
    const MStatus status = contextMode == kSculptMode ? releaseSculpt(&drawManager) : doReleaseSelect();
    discardCommand();
    liveObjects.clear();
    return status;
}

void morvaneContext::endStroke()
{
    if (!mouseDown || contextMode != kSculptMode || toolCommand == nullptr)
        return;
    try {
        releaseSculpt(nullptr);
    } catch (...) {
        takeBackRelease();
        throw;
    }
    discardCommand();
    liveObjects.clear();
    validSel.clear();
    strokeWritten = false;
}

MStatus morvaneContext::releaseSculpt(MHWRender::MUIDrawManager* drawManager)
{
    MSelectionList selection;
    dropLostObjects();
    if (offsetValue == 0.0) {
        if (strokeWritten) {
            restorePressWeights();
            if (drawManager != nullptr)
                clearLabels(*drawManager);
        }
        if (selectionChanged) {
            MGlobal::getActiveSelectionList(selection, false);
            toolCommand->setNewRichSel();
            toolCommand->setNewSel(selection);
            toolCommand->setSelectionChanged(true);
            toolCommand->setToolOperation(kSelect);
            recordSelection();
        }
        return MS::kSuccess;
    }
    settleStroke();
    passToToolCommand(toolCommand);
    if (drawManager != nullptr)
        clearLabels(*drawManager);
    if (selectionChanged) {
        toolCommand->setNewRichSel();
        MGlobal::getActiveSelectionList(selection, false);
        toolCommand->setNewSel(selection);
        toolCommand->setSelectionChanged(true);
    }
    // Not redone: the drag has written the weights. What cannot be undone must not stay.
    if (!finalizeCommand())
        restorePressWeights();
    return MS::kSuccess;
}

void morvaneContext::clearData()
{
    selectionChanged = false;
    controlHeld = false;
    shiftHeld = false;
    offsetValue = 0.0;
    validSel.clear();
    softSelectWeights.clear();
    validSkinClusters.clear();
    clearColumns();
    oldBlendWeights.clear();
    oldSkinRows.clear();
    oldSkinWeights.clear();
    oldInfluenceWeights.clear();
    directionVector = MVector(0, 0, 0);
    oldIndexArray.clear();
    richSel.clear();
    pressSelection.clear();
    pressSelectionKnown = false;
    pickList.clear();
    oldNgWeights.clear();
    oldAllInfluenceNgWeight.clear();
    liveObjects.clear();
    strokeWritten = false;
    completeOffset = 0.0;
    dragCompleted = false;
    contextMode = kSelectMode;
}

/// The index columns that the selection analysis appends to, whoever asks for it.
void morvaneContext::clearColumns()
{
    skinInfluenceIds.clear();
    ngLayerIds.clear();
    ngInfluenceIds.clear();
    allInfluenceLogicalIds.clear();
}

morvaneToolCommand* morvaneContext::makeToolCommand()
{
    // The platform makes the command that was registered together with the context command.
    return static_cast<morvaneToolCommand*>(newToolCommand());
}

MStatus morvaneContext::finalizeCommand()
{
    // Owned by the undo queue from here on; one that it refuses stays ours to empty.
    const MStatus status = toolCommand->finalize();
    if (status)
        toolCommand = nullptr;
    return status;
}

void morvaneContext::discardCommand()
{
    if (toolCommand != nullptr)
        toolCommand->empty();
    toolCommand = nullptr;
}
