#include "weightModes/defaultMapStore.h"

#include "report.h"
#include "weightModes/pointLive.h"
#include "weightModes/steppingProbe.h"

#include <maya/MFn.h>
#include <maya/MFnWeightGeometryFilter.h>

namespace {

class MapProbe : public SteppingProbe<float> {
public:
    MapProbe(const MObject& deformer, const ClickedPoint& point, float firstValue)
        : SteppingProbe<float>(firstValue), filter(deformer), path(point.path), component(point.component)
    {}

protected:
    MStatus writeValue(float newValue) override
    {
        MFloatArray values(1, newValue);
        return filter.setWeight(path, component, values);
    }

private:
    MFnWeightGeometryFilter filter;
    MDagPath path;
    MObject component;
};

class MapLive : public FloatLive {
public:
    MapLive(const EditRecord& record, const EditedObject& object)
        : FloatLive(record, object, record.oldWeights[object.index]), filter(record.liveDeformer())
    {}

protected:
    MStatus writeValues() override
    {
        const MStatus status = filter.setWeight(path, component, values);
        return status ? status : apiError(status, kContextSource, __LINE__);
    }
    MStatus writeOldValues() override { return filter.setWeight(path, component, values); }

private:
    MFnWeightGeometryFilter filter;
};

bool hasColumns(const EditRecord& record, const EditedObject& object)
{
    const bool has = object.index < record.oldWeights.size();
    if (!has)
        refuseObject(object.path, kUnequalArrays);
    return has && fitsFalloff(record, object, record.oldWeights[object.index].length());
}

MStatus writeMap(const EditRecord& record, const EditedObject& object, const MFloatArray& weights)
{
    MFloatArray values(weights);
    return MFnWeightGeometryFilter(record.liveDeformer()).setWeight(object.path, object.component, values);
}

void restoreMap(const EditRecord& record, const EditedObject& object)
{
    if (object.index < record.oldWeights.size())
        writeMap(record, object, record.oldWeights[object.index]);
}

} // namespace

Resolution DefaultMapStore::resolve(const TargetInput& input) const
{
    const MObject deformer = input.record.liveDeformer();
    if (deformer.isNull())
        return {kNoDeformer, true};
    if (deformer.hasFn(MFn::kSkinClusterFilter))
        return {input.names.deformerStr + kSkinHasModes};
    if (!deformer.hasFn(MFn::kWeightGeometryFilt))
        return {"The specified deformer does not have a default weightMap", true};
    return SelectionRule::kMembers;
}

MStatus DefaultMapStore::read(const WeightReading& reading) const
{
    const unsigned int count = reading.selection.length();
    reading.weights.resize(count);
    const MFnWeightGeometryFilter filter(reading.record.liveDeformer());
    for (unsigned int index = 0; index < count; ++index) {
        EditedObject object;
        findEditedObject(reading.selection, index, object);
        MFloatArray values;
        // An unread map is noticed by its length where it is used.
        filter.getWeights(object.path, object.component, values);
        reading.weights[index] = values;
    }
    return MS::kSuccess;
}

std::unique_ptr<WeightProbe> DefaultMapStore::openProbe(const EditRecord& record, const ClickedPoint& point,
                                                        MStatus& status) const
{
    MFloatArray weights;
    status = MFnWeightGeometryFilter(record.liveDeformer()).getWeights(point.path, point.component, weights);
    if (status && weights.length() == 0)
        status = MS::kFailure;
    if (!status) {
        apiError(status, kContextSource, __LINE__);
        return nullptr;
    }
    return std::make_unique<MapProbe>(record.liveDeformer(), point, weights[0]);
}

std::unique_ptr<LiveObject> DefaultMapStore::openLive(const EditRecord& record,
                                                      const EditedObject& object) const
{
    if (!hasColumns(record, object))
        return nullptr;
    return std::make_unique<MapLive>(record, object);
}

MStatus DefaultMapStore::redoStroke(const EditRecord& record, const EditedObject& object) const
{
    // The write is not checked: a redo goes on with the next object.
    if (hasColumns(record, object))
        writeMap(record, object,
                 redoneWeights<MFloatArray, float>(record, object.index, record.oldWeights[object.index]));
    return MS::kSuccess;
}

MStatus DefaultMapStore::paste(const EditRecord& record, const PasteRecord& pasted,
                               const EditedObject& object) const
{
    const MStatus status = writeMap(record, object, pasted.pasteWeights[object.index]);
    return status ? status : apiError(status, kToolCommandSource, __LINE__);
}

void DefaultMapStore::undoStroke(const EditRecord& record, const EditedObject& object) const
{
    restoreMap(record, object);
}

void DefaultMapStore::undoPaste(const EditRecord& record, const EditedObject& object) const
{
    restoreMap(record, object);
}

std::vector<double> DefaultMapStore::copiedValues(const CopyBuffer& copied, std::size_t item) const
{
    return item < copied.copiedWeights.size() ? toVector(floatToDouble(copied.copiedWeights[item]))
                                              : std::vector<double>();
}
