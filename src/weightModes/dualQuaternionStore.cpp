#include "weightModes/dualQuaternionStore.h"

#include "report.h"
#include "weightModes/pointLive.h"
#include "weightModes/steppingProbe.h"

namespace {

class BlendProbe : public SteppingProbe<double> {
public:
    BlendProbe(const MObject& skinCluster, const ClickedPoint& point, double firstValue)
        : SteppingProbe<double>(firstValue), skin(skinCluster), path(point.path), component(point.component)
    {}

protected:
    MStatus writeValue(double newValue) override
    {
        return skin.setBlendWeights(path, component, MDoubleArray(1, newValue));
    }

private:
    MFnSkinCluster skin;
    MDagPath path;
    MObject component;
};

class BlendLive : public DoubleLive {
public:
    BlendLive(const EditRecord& record, const EditedObject& object)
        : DoubleLive(record, object, record.oldBlendWeights[object.index]),
          skin(record.validSkinClusters[object.index])
    {}

protected:
    MStatus writeValues() override
    {
        const MStatus status = skin.setBlendWeights(path, component, values);
        return status ? status : apiError(status, kContextSource, __LINE__);
    }
    MStatus writeOldValues() override { return skin.setBlendWeights(path, component, values); }

private:
    MFnSkinCluster skin;
};

bool hasColumns(const EditRecord& record, const EditedObject& object)
{
    const bool has =
        object.index < record.validSkinClusters.length() && object.index < record.oldBlendWeights.size();
    if (!has)
        refuseObject(object.path, kUnequalArrays);
    return has && fitsFalloff(record, object, record.oldBlendWeights[object.index].length());
}

void restoreBlendWeights(const EditRecord& record, const EditedObject& object)
{
    if (object.index >= record.validSkinClusters.length() || object.index >= record.oldBlendWeights.size())
        return;
    MFnSkinCluster(record.validSkinClusters[object.index])
        .setBlendWeights(object.path, object.component, record.oldBlendWeights[object.index]);
}

} // namespace

Resolution DualQuaternionStore::resolve(const TargetInput&) const
{
    return SelectionRule::kSkinned;
}

MStatus DualQuaternionStore::read(const WeightReading& reading) const
{
    const unsigned int count = reading.selection.length();
    reading.blendWeights.resize(count);
    for (unsigned int index = 0; index < count; ++index) {
        EditedObject object;
        findEditedObject(reading.selection, index, object);
        if (index >= reading.skinClusters.length()) {
            refuseObject(object.path, kUnequalArrays);
            return MS::kFailure;
        }
        const MStatus status =
            MFnSkinCluster(reading.skinClusters[index])
                .getBlendWeights(object.path, object.component, reading.blendWeights[index]);
        if (!status) {
            reading.failure.text = unreadable(object.path);
            return apiError(status, kContextSource, 1551);
        }
    }
    return MS::kSuccess;
}

std::unique_ptr<WeightProbe> DualQuaternionStore::openProbe(const EditRecord&, const ClickedPoint& point,
                                                            MStatus& status) const
{
    MDagPath shape = point.path;
    MObject skinCluster = getSkinCluster(shape, status);
    if (!status) {
        apiError(status, kContextSource, __LINE__);
        return nullptr;
    }
    MDoubleArray weights;
    status = MFnSkinCluster(skinCluster).getBlendWeights(point.path, point.component, weights);
    if (status && weights.length() == 0)
        status = MS::kFailure;
    if (!status) {
        apiError(status, kContextSource, __LINE__);
        return nullptr;
    }
    return std::make_unique<BlendProbe>(skinCluster, point, weights[0]);
}

std::unique_ptr<LiveObject> DualQuaternionStore::openLive(const EditRecord& record,
                                                          const EditedObject& object) const
{
    if (!hasColumns(record, object))
        return nullptr;
    return std::make_unique<BlendLive>(record, object);
}

MStatus DualQuaternionStore::redoStroke(const EditRecord& record, const EditedObject& object) const
{
    if (!hasColumns(record, object))
        return MS::kSuccess;
    const MDoubleArray values =
        redoneWeights<MDoubleArray, double>(record, object.index, record.oldBlendWeights[object.index]);
    const MStatus status = MFnSkinCluster(record.validSkinClusters[object.index])
                               .setBlendWeights(object.path, object.component, values);
    return status ? status : apiError(status, kToolCommandSource, __LINE__);
}

MStatus DualQuaternionStore::paste(const EditRecord& record, const PasteRecord& pasted,
                                   const EditedObject& object) const
{
    if (object.index >= record.validSkinClusters.length())
        return MS::kSuccess;
    const MDoubleArray& exact = pasted.pasteValues[object.index];
    const MDoubleArray values =
        exact.length() != 0 ? exact : floatToDouble(pasted.pasteWeights[object.index]);
    const MStatus status = MFnSkinCluster(record.validSkinClusters[object.index])
                               .setBlendWeights(object.path, object.component, values);
    return status ? status : apiError(status, kToolCommandSource, __LINE__);
}

void DualQuaternionStore::undoStroke(const EditRecord& record, const EditedObject& object) const
{
    restoreBlendWeights(record, object);
}

void DualQuaternionStore::undoPaste(const EditRecord& record, const EditedObject& object) const
{
    restoreBlendWeights(record, object);
}

std::vector<double> DualQuaternionStore::copiedValues(const CopyBuffer& copied, std::size_t item) const
{
    return item < copied.copiedBlendWeights.size() ? toVector(copied.copiedBlendWeights[item])
                                                   : std::vector<double>();
}
