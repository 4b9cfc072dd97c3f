#pragma once

#include "common.h"
#include "weightModes/editRecord.h"

#include <maya/MArgList.h>
#include <maya/MPxToolCommand.h>
#include <maya/MRichSelection.h>
#include <maya/MStatus.h>
#include <maya/MSyntax.h>

/// What one tool command does.
enum ToolOperation : int {
    kSculpt = 0, ///< a stroke that offset weights
    kPaste = 1,  ///< copied weights were written over the selected points
    kSelect = 2  ///< only the selection changed
};

/// The undoable change behind a stroke, a paste or a click: a record that the context fills through the
/// setters, from which redo and undo work without asking the scene what to write. The platform makes it
/// through creator() when the context asks for one, and owns it from finalize() on.
///
/// The journal gets its bare name; replaying that does nothing.
class morvaneToolCommand : public MPxToolCommand, private EditRecord, private PasteRecord {
public:
    morvaneToolCommand();
    ~morvaneToolCommand() override;
    static void* creator();
    /// No flags, no arguments.
    static MSyntax appendSyntax();

    MStatus doIt(const MArgList& arguments) override;
    /// Puts back what the record remembers, and the selection of the press. Weight writes are not checked.
    MStatus undoIt() override;
    /// Writes the state that the command stands for. The first failing checked write ends it.
    MStatus redoIt() override;
    /// Whether the last redo has thrown: what it had written by then is undone again.
    bool wasTakenBack() const { return takenBack; }
    bool isUndoable() const override { return true; }
    bool hasSyntax() const override { return true; }
    MStatus finalize() override;
    /// What the undo list shows after the command's name.
    void describe(const MString& edit);
    /// Lets go of everything. For a command that will not be finalized: nobody is known to delete it, so what
    /// stays must be small.
    void empty();

    void setToolOperation(ToolOperation value) { toolOperation = value; }
    void setPaste(PasteRecord value) { static_cast<PasteRecord&>(*this) = std::move(value); }
    void setOldSel(MSelectionList value) { oldSel = value; }
    void setNewSel(MSelectionList value) { newSel = value; }
    /// These two read the scene's soft selection, or the plain one where there is none.
    void setOldRichSel();
    void setNewRichSel();
    void setSelectionChanged(bool value) { selectionChanged = value; }
    void setValidSel(MSelectionList value) { validSel = value; }
    void setKeptNodes(KeptNodes shapes, KeptNodes holders)
    {
        validShapes = std::move(shapes);
        validHolders = std::move(holders);
    }
    void setOldInfluenceWeights(std::vector<MDoubleArray> value) { oldInfluenceWeights = std::move(value); }
    void setOldBlendWeights(std::vector<MDoubleArray> value) { oldBlendWeights = std::move(value); }
    void setOldSkinRows(std::vector<SkinRowsRef> value) { oldSkinRows = std::move(value); }
    void setOldSkinWeights(std::vector<MDoubleArray> value) { oldSkinWeights = std::move(value); }
    void setOldWeights(std::vector<MFloatArray> value) { oldWeights = std::move(value); }
    void setWeightMode(WeightMode value) { weightMode = value; }
    void setClampedMin(bool value) { clampedMin = value; }
    void setClampedMax(bool value) { clampedMax = value; }
    void setWeightMin(double value) { weightMin = value; }
    void setWeightMax(double value) { weightMax = value; }
    void setDistributeWeightsNg(bool value) { distributeWeightsNg = value; }
    void setActiveDeformer(MObject value) { activeDeformer = value; }
    void setWeightsPlug(MPlug value) { weightsPlug = value; }
    void setWeightListAttr(MObject value) { weightListAttr = value; }
    void setTargetIndex(unsigned int value) { targetIndex = value; }
    void setSkinInfluenceIds(MIntArray value) { skinInfluenceIds = value; }
    void setValidSkinClusters(MObjectArray value) { validSkinClusters = value; }
    void setSkinInfluence(MDagPath value) { chooseInfluence(value); }
    void setSoftSelectWeights(std::vector<MFloatArray> value) { softSelectWeights = std::move(value); }
    void setOffsetValue(double value) { offsetValue = value; }
    void setNgInfluenceIds(MIntArray value) { ngInfluenceIds = value; }
    void setNgLayerIds(MIntArray value) { ngLayerIds = value; }
    void setAllInfluenceLogicalIds(std::vector<MIntArray> value)
    {
        allInfluenceLogicalIds = std::move(value);
    }
    void setOldNgWeights(std::vector<MDoubleArray> value) { oldNgWeights = std::move(value); }
    void setOldAllInfluenceNgWeight(std::vector<std::vector<MDoubleArray>> value)
    {
        oldAllInfluenceNgWeight = std::move(value);
    }

private:
    MStatus redo();
    MStatus undo();
    MStatus redoWeights();
    MStatus pasteObjects();
    void undoWeights();
    void pack();
    void packFalloffs();
    void unpackFalloffs();
    /// Strokes in the layer modes can be switched off as a whole.
    bool sculptsWeights() const;

    ToolOperation toolOperation = kSculpt;
    MSelectionList oldSel;
    MSelectionList newSel;
    MRichSelection oldRichSel; ///< filled by reading; never assigned
    MRichSelection newRichSel;
    bool selectionChanged = false;
    bool ngSculptEnabled = true;
    /// Per object the length of a falloff that is the same everywhere and kept as one value; 0 for others.
    std::vector<unsigned int> packedFalloffs;
    bool takenBack = false;
};
