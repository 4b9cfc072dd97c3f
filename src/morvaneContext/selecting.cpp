// What a press picks, and the selection mode: marquee, click and their undo entries.
#include "mel.h"
#include "morvaneContext/morvaneContext.h"
#include "morvaneToolCommand/morvaneToolCommand.h"
#include "report.h"

#include <cstdlib>
#include <iostream>
#include <maya/MColor.h>

namespace {

/// The selection that a click on a vertex makes before it sculpts: control adds the vertex, so that several
/// can be gathered. A press that ends in select mode has another table.
MGlobal::ListAdjustment adjustmentOfSculptClick(bool shift, bool control)
{
    if (control)
        return MGlobal::kAddToList;
    return shift ? MGlobal::kXORWithList : MGlobal::kReplaceList;
}

/// A release this near to the press, on both axes, is a click.
constexpr int kClickPixels = 2;

} // namespace

MStatus morvaneContext::processClick(MEvent& event, MHWRender::MUIDrawManager&,
                                     const MHWRender::MFrameContext&)
{
    // A press that cannot sculpt picks as well: a click selects what lies there.
    if (!pickAtPress() || event.mouseButton() != MEvent::kLeftMouse)
        return MS::kFailure;
    listAdjustment = adjustmentOfSculptClick(shiftHeld, controlHeld);
    if (shiftHeld)
        return MS::kSuccess;
    getClickInfo(pressX, pressY, pressSelection, pickList);
    if (!clickHit) {
        MGlobal::setActiveSelectionList(pickList, listAdjustment);
        symmetrizeSelection();
        getClickInfo(pressX, pressY, pickList, pickList);
        selectionChanged = true;
    }
    if (clickHit)
        contextMode = kSculptMode;
    else
        explainPick(MString());
    return MS::kSuccess;
}

bool morvaneContext::pickAtPress()
{
    if (toolCommand == nullptr)
        return false;
    if (!MGlobal::getActiveSelectionList(pressSelection, false)) {
        std::cerr << "bad active selection" << std::endl;
        return false;
    }
    pressSelectionKnown = true;
    toolCommand->setOldSel(pressSelection);
    toolCommand->setOldRichSel();
    gatherPickList();
    return true;
}

/// An empty reason: only that the component is no point, if so. A press beside everything and a press on a
/// whole object select, and need no reason.
void morvaneContext::explainPick(const MString& reason)
{
    EditedObject picked;
    if (shiftHeld || pickList.isEmpty() || !findEditedObject(pickList, 0, picked) ||
        picked.component.isNull())
        return;
    if (reason.length() != 0)
        explaining.pending = reason;
    else if (!holdsPoints(picked))
        explaining.pending = explaining.wrongComponents;
}

/// What lies under the cursor: the highlighted component, or else what a click there selects, with the
/// selection of the press put back afterwards.
void morvaneContext::gatherPickList()
{
    if (queryMelInt("selectPref -q -preSelectHilite") != 0) {
        MGlobal::getPreselectionHiliteList(pickList);
        return;
    }
    MGlobal::setActiveSelectionList(pickList, listAdjustment);
    MGlobal::selectFromScreen(pressX, pressY, MGlobal::kReplaceList, MGlobal::kSurfaceSelectMethod);
    MGlobal::getActiveSelectionList(pickList, false);
    MGlobal::setActiveSelectionList(pressSelection, MGlobal::kReplaceList);
    // Always empty: it takes back the soft selection that the pick has made.
    MGlobal::setRichSelection(richSel);
}

void morvaneContext::doDragSelect(MEvent&, MHWRender::MUIDrawManager& drawManager,
                                  const MHWRender::MFrameContext&)
{
    const MPoint corners[] = {pressPoint, MPoint(pressPoint.x, dragPoint.y, 0, 1), dragPoint,
                              MPoint(dragPoint.x, pressPoint.y, 0, 1)};
    drawManager.beginDrawable(MHWRender::MUIDrawManager::kAutomatic, 0);
    drawManager.setColor(MColor(1, 1, 1, 1));
    drawManager.setLineStyle(MHWRender::MUIDrawManager::kShortDashed);
    for (int corner = 0; corner < 4; ++corner)
        drawManager.line2d(corners[corner], corners[(corner + 1) % 4]);
    drawManager.endDrawable();
}

MStatus morvaneContext::doReleaseSelect()
{
    const bool isClick =
        std::abs(pressX - releaseX) < kClickPixels && std::abs(pressY - releaseY) < kClickPixels;
    if (isClick) {
        MGlobal::setActiveSelectionList(pickList, listAdjustment);
        symmetrizeSelection();
    } else {
        MGlobal::selectFromScreen(pressX, pressY, releaseX, releaseY, listAdjustment,
                                  MGlobal::kSurfaceSelectMethod);
    }
    MSelectionList selection;
    MGlobal::getActiveSelectionList(selection, false);
    toolCommand->setNewSel(selection);
    toolCommand->setSelectionChanged(true);
    toolCommand->setToolOperation(kSelect);
    toolCommand->setNewRichSel();
    if (selection.isEmpty())
        MGlobal::executeCommand("select -cl", true, true);
    else
        recordSelection();
    return MS::kSuccess;
}

/// Runs and finalizes the tool command, which holds a selection change, as one undo.
void morvaneContext::recordSelection()
{
    const UndoChunk chunk;
    toolCommand->describe("select");
    toolCommand->redoIt();
    if (!toolCommand->wasTakenBack() && finalizeCommand())
        symmetrizeSelection();
}
