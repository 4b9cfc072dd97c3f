#pragma once

#include "weightModes/weightStore.h"

/// Skin weights of one influence (mode kSkinCluster). Strokes write that influence and let the platform
/// adjust the others; undo and paste write the rows of all influences.
class SkinInfluenceStore : public WeightStore {
public:
    Resolution resolve(const TargetInput& input) const override;
    MString addSkinColumns(const TargetInput& input, const MDagPath& path,
                           MObject& skinCluster) const override;
    MString obstacle(const EditRecord& record, const ClickedPoint& point, const MString& name,
                     bool moves) const override;
    MStatus read(const WeightReading& reading) const override;
    std::unique_ptr<WeightProbe> openProbe(const EditRecord& record, const ClickedPoint& point,
                                           MStatus& status) const override;
    std::unique_ptr<LiveObject> openLive(const EditRecord& record, const EditedObject& object) const override;
    MStatus redoStroke(const EditRecord& record, const EditedObject& object) const override;
    MStatus paste(const EditRecord& record, const PasteRecord& pasted,
                  const EditedObject& object) const override;
    void undoStroke(const EditRecord& record, const EditedObject& object) const override;
    void undoPaste(const EditRecord& record, const EditedObject& object) const override;
    PasteVerdict acceptsCopy(WeightMode copiedMode) const override;
    bool fillPaste(const PasteJob& job, PasteRecord& pasted) const override;
    std::vector<double> copiedValues(const CopyBuffer& copied, std::size_t item) const override;
};
