// Redo and undo, side by side: what a command writes, and what it puts back.
#include "morvaneToolCommand/morvaneToolCommand.h"
#include "report.h"
#include "weightModes/modeTable.h"
#include "weightModes/weightStore.h"

#include <iostream>
#include <maya/MGlobal.h>

namespace {

MStatus applySelection(const MSelectionList& selection, const MRichSelection& rich)
{
    MGlobal::setActiveSelectionList(selection, MGlobal::kReplaceList);
    if (MGlobal::setRichSelection(rich))
        return MS::kSuccess;
    std::cerr << "bad rich sel" << std::endl;
    return MS::kFailure;
}

/// Calls back for every object of the selection that is still there, in order, until one call fails.
template <typename Visit>
MStatus forEachObject(const EditRecord& record, Visit&& visit)
{
    for (unsigned int index = 0; index < record.validSel.length(); ++index) {
        EditedObject object;
        if (!record.isThere(index) || !findEditedObject(record.validSel, index, object)) {
            refuseObject(object.path, kNoSuchObject);
            continue;
        }
        const MStatus status = visit(object);
        if (!status)
            return status;
    }
    return MS::kSuccess;
}

} // namespace

MStatus morvaneToolCommand::redoIt()
{
    takenBack = false;
    return guarded(
        "Redoing", [this] { return redo(); },
        [this] {
            takenBack = true;
            undo();
        });
}

MStatus morvaneToolCommand::undoIt()
{
    return guarded(
        "Undoing", [this] { return undo(); }, [this] { redo(); });
}

MStatus morvaneToolCommand::redo()
{
    if (toolOperation == kPaste)
        return pasteObjects();
    if (selectionChanged) {
        const MStatus status = applySelection(newSel, newRichSel);
        if (!status || toolOperation == kSelect)
            return status;
    }
    return toolOperation == kSculpt ? redoWeights() : MStatus(MS::kSuccess);
}

MStatus morvaneToolCommand::undo()
{
    if (selectionChanged && toolOperation != kPaste) {
        const MStatus status = applySelection(oldSel, oldRichSel);
        if (!status)
            return status;
    }
    undoWeights();
    return MS::kSuccess;
}

bool morvaneToolCommand::sculptsWeights() const
{
    return ngSculptEnabled || !modeRow(weightMode).isLayerMode;
}

MStatus morvaneToolCommand::redoWeights()
{
    if (!sculptsWeights())
        return MS::kSuccess;
    const WeightStore& store = modeRow(weightMode).store();
    unpackFalloffs();
    const MStatus status =
        forEachObject(*this, [&](const EditedObject& object) { return store.redoStroke(*this, object); });
    packFalloffs();
    return status;
}

MStatus morvaneToolCommand::pasteObjects()
{
    const WeightStore& store = modeRow(weightMode).store();
    return forEachObject(*this, [&](const EditedObject& object) {
        const bool hasPaste = object.index < pasteWeights.size() &&
                              object.index < pasteNgAllInfluenceWeights.size() &&
                              object.index < pasteValues.size() && object.index < refusedObjects.size();
        return hasPaste && !refusedObjects[object.index] ? store.paste(*this, *this, object)
                                                         : MStatus(MS::kSuccess);
    });
}

void morvaneToolCommand::undoWeights()
{
    const WeightStore& store = modeRow(weightMode).store();
    const bool undoesStroke = toolOperation == kSculpt && sculptsWeights();
    if (toolOperation != kPaste && !undoesStroke)
        return;
    forEachObject(*this, [&](const EditedObject& object) {
        if (undoesStroke)
            store.undoStroke(*this, object);
        else if (object.index < refusedObjects.size() && !refusedObjects[object.index])
            store.undoPaste(*this, object);
        return MStatus(MS::kSuccess);
    });
}
