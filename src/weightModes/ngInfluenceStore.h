#pragma once

#include "weightModes/weightStore.h"

/// Weights of one influence in an ngSkinTools2 layer (mode kNgInfluence): one double per vertex of the whole
/// shape, always held to 0..1, with the other influences redistributed. Logical influence indices are used as
/// positions by the redistribution; a shape whose indices have gaps is refused before anything is written.
class NgInfluenceStore : public WeightStore {
public:
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
    /// The plain writer: what redistribution did to the other influences stays.
    void undoStroke(const EditRecord& record, const EditedObject& object) const override;
    void undoPaste(const EditRecord& record, const EditedObject& object) const override;
    PasteVerdict acceptsCopy(WeightMode copiedMode) const override;
    bool fillPaste(const PasteJob& job, PasteRecord& pasted) const override;
};
