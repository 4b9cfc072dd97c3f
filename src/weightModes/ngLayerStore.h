#pragma once

#include "weightModes/weightStore.h"

/// Mask and dual-quaternion weights of an ngSkinTools2 layer: one double per vertex of the whole shape.
/// Values are always held to 0..1.
///
/// Undo of a stroke restores nothing in these two modes and succeeds, while redo does write them: users of
/// layers undo such strokes in the layer editor. Undo of a paste does restore.
class NgLayerStore : public WeightStore {
public:
    enum Kind { kMask, kDualQuaternionWeights };
    explicit NgLayerStore(Kind whichWeights) : kind(whichWeights) {}

    Resolution resolve(const TargetInput& input) const override;
    MString addSkinColumns(const TargetInput& input, const MDagPath& path,
                           MObject& skinCluster) const override;
    MStatus read(const WeightReading& reading) const override;
    std::unique_ptr<WeightProbe> openProbe(const EditRecord& record, const ClickedPoint& point,
                                           MStatus& status) const override;
    std::unique_ptr<LiveObject> openLive(const EditRecord& record, const EditedObject& object) const override;
    void completeRecord(EditRecord& record) const override;
    MStatus redoStroke(const EditRecord& record, const EditedObject& object) const override;
    MStatus paste(const EditRecord& record, const PasteRecord& pasted,
                  const EditedObject& object) const override;
    void undoStroke(const EditRecord& record, const EditedObject& object) const override;
    void undoPaste(const EditRecord& record, const EditedObject& object) const override;
    PasteVerdict acceptsCopy(WeightMode copiedMode) const override;
    bool fillPaste(const PasteJob& job, PasteRecord& pasted) const override;

private:
    Kind kind;
};
