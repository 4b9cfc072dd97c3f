#pragma once

#include "weightModes/weightStore.h"

#include <maya/MApiNamespace.h>

/// Resolves a weights attribute of the record's deformer; null on failure. It must be a top-level array of
/// compounds, one per geometry, with a child array of plain numbers, one per vertex.
MStatus resolveWeightsPlug(EditRecord& record, const MString& name);

/// Weights that are elements of an array attribute, one float per vertex index: the named weights attribute
/// of a deformer, the weights of a blend shape target and the base weights of a blend shape.
///
/// A blend shape is always addressed through its first geometry (element 0 of "inputTarget"), whatever object
/// is selected. After the elements of an object are written, element 0 is read and written back unchanged,
/// which makes the deformer evaluate again.
class ElementPlugStore : public WeightStore {
public:
    enum Kind { kNamedPlug, kTargetWeights, kBaseWeights };
    explicit ElementPlugStore(Kind whichPlug) : kind(whichPlug) {}

    Resolution resolve(const TargetInput& input) const override;
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
    std::vector<double> copiedValues(const CopyBuffer& copied, std::size_t item) const override;

private:
    /// The array plug that holds an object's weights; the status fails when the deformer does not deform the
    /// shape or has no such array.
    MPlug weightsArray(const EditRecord& record, const MDagPath& path, MStatus& status) const;
    /// False when a blend shape mode meets another deformer.
    bool hasRightDeformer(const EditRecord& record) const;
    void writeElements(const EditRecord& record, const EditedObject& object,
                       const MFloatArray& weights) const;

    Kind kind;
};
