#pragma once

#include "weightModes/weightStore.h"

/// Dual-quaternion blend weights of a skin (mode kDualQuaternion): one double per point.
class DualQuaternionStore : public WeightStore {
public:
    Resolution resolve(const TargetInput& input) const override;
    MStatus read(const WeightReading& reading) const override;
    std::unique_ptr<WeightProbe> openProbe(const EditRecord& record, const ClickedPoint& point,
                                           MStatus& status) const override;
    std::unique_ptr<LiveObject> openLive(const EditRecord& record, const EditedObject& object) const override;
    MStatus redoStroke(const EditRecord& record, const EditedObject& object) const override;
    MStatus paste(const EditRecord& record, const PasteRecord& pasted,
                  const EditedObject& object) const override;
    void undoStroke(const EditRecord& record, const EditedObject& object) const override;
    void undoPaste(const EditRecord& record, const EditedObject& object) const override;
    std::vector<double> copiedValues(const CopyBuffer& copied, std::size_t item) const override;
};
