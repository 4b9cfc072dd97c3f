#include "weightModes/ngInfluenceStore.h"

#include "helperFunctions/helperFunctions.h"
#include "helperFunctions/ngLayers.h"
#include "report.h"
#include "weightModes/modeTable.h"
#include "weightModes/rowPaste.h"
#include "weightModes/wholeShape.h"

#include <maya/MDagPathArray.h>

namespace {

class InfluenceProbe : public WeightProbe {
public:
    InfluenceProbe(int layer, const MDagPath& shape, const std::vector<MDoubleArray>& oldWeights,
                   const MIntArray& logicalIndices, unsigned int physicalIndex, unsigned int vertexIndex)
        : layerId(layer), path(shape), old(oldWeights), logical(logicalIndices), physical(physicalIndex),
          vertex(vertexIndex),
          writer(layerId, static_cast<unsigned int>(logical[physical]), old[physical], path)
    {}
    MStatus writeLow(double step) override { return write(-step); }
    MStatus writeHigh(double step) override { return write(step); }
    MStatus restore(double) override
    {
        MStatus all;
        for (unsigned int influence = 0; influence < old.size(); ++influence) {
            const MStatus status = setNgInfluenceWeights(
                layerId, static_cast<unsigned int>(logical[influence]), old[influence], path);
            if (!status)
                all = status;
        }
        return all;
    }

private:
    MStatus write(double nudge)
    {
        std::vector<double> nudged = toVector(old[physical]);
        nudged[vertex] += nudge;
        return writer.write(nudged);
    }

    int layerId;
    MDagPath path;
    std::vector<MDoubleArray> old; ///< per influence, physical order
    MIntArray logical;
    unsigned int physical;
    unsigned int vertex;
    NgWeightsWriter writer; ///< of the edited influence
};

class InfluenceLive : public LiveObject {
public:
    /// The record outlives this.
    InfluenceLive(const EditRecord& record, NgInfluenceWriter layerWriter, WholeShapeWeights shapeWeights)
        : settings(record), writer(std::move(layerWriter)), weights(std::move(shapeWeights))
    {}
    std::size_t pointCount() const override { return weights.pointCount(); }
    void newWeights(double offset, double* values) const override { weights.newWeights(offset, values); }
    MStatus write(double offset) override
    {
        writer.write(weights.offsetBy(offset), settings.distributeWeightsNg);
        return MS::kSuccess;
    }
    MStatus restore() override { return writer.restore(); }

private:
    const EditRecord& settings; ///< whether to distribute may change while the mouse is down
    NgInfluenceWriter writer;
    WholeShapeWeights weights;
};

bool hasLayerColumns(const EditRecord& record, unsigned int index)
{
    return index < record.ngLayerIds.length() && index < record.ngInfluenceIds.length() &&
           index < record.skinInfluenceIds.length() && index < record.allInfluenceLogicalIds.size() &&
           index < record.oldAllInfluenceNgWeight.size() &&
           record.oldAllInfluenceNgWeight[index].size() == record.allInfluenceLogicalIds[index].length() &&
           static_cast<std::size_t>(record.skinInfluenceIds[index]) <
               record.oldAllInfluenceNgWeight[index].size();
}

bool hasColumns(const EditRecord& record, const EditedObject& object)
{
    const bool has = hasLayerColumns(record, object.index);
    if (!has)
        refuseObject(object.path, kUnequalArrays);
    return has;
}

/// Whether the object's logical influence indices are positions among its influences, as redistribution and
/// pastes take them, and every influence was read for the whole shape. Needs hasLayerColumns.
bool isAddressable(const EditRecord& record, unsigned int index)
{
    const std::vector<MDoubleArray>& rows = record.oldAllInfluenceNgWeight[index];
    for (unsigned int row = 0; row < rows.size(); ++row) {
        const int logical = record.allInfluenceLogicalIds[index][row];
        if (logical < 0 || static_cast<std::size_t>(logical) >= rows.size() ||
            rows[row].length() != rows[0].length() || rows[row].length() == 0)
            return false;
    }
    return true;
}

/// Says why when an object cannot be edited.
bool isEditable(const EditRecord& record, const EditedObject& object)
{
    if (!hasColumns(record, object))
        return false;
    const bool addressable = isAddressable(record, object.index);
    if (!addressable)
        refuseObject(object.path, kSparseInfluences);
    return addressable;
}

/// A read that failed half-way leaves objects without weights, and then nothing may be nudged either.
bool everyObjectWasRead(const EditRecord& record)
{
    for (const std::vector<MDoubleArray>& rows : record.oldAllInfluenceNgWeight) {
        for (const MDoubleArray& row : rows) {
            if (row.length() == 0)
                return false;
        }
        if (rows.empty())
            return false;
    }
    return true;
}

NgInfluenceWriter writerFor(const EditRecord& record, const EditedObject& object,
                            const std::vector<MDoubleArray>& oldAllWeights)
{
    const unsigned int index = object.index;
    return NgInfluenceWriter(record.ngLayerIds[index],
                             static_cast<unsigned int>(record.ngInfluenceIds[index]),
                             record.allInfluenceLogicalIds[index], oldAllWeights, object.path);
}

/// The edited influence's array of one object, as the press read it.
const MDoubleArray& editedArray(const EditRecord& record, unsigned int index)
{
    return record.oldAllInfluenceNgWeight[index][static_cast<std::size_t>(record.skinInfluenceIds[index])];
}

/// A stroke on one object, live or redone, from the given old weights of the edited influence.
std::unique_ptr<LiveObject> openStroke(const EditRecord& record, const EditedObject& object,
                                       const MDoubleArray& oldWeights)
{
    WholeShapeWeights weights(record, object, oldWeights);
    if (!weights.isUsable())
        return nullptr;
    NgInfluenceWriter writer = writerFor(record, object, record.oldAllInfluenceNgWeight[object.index]);
    if (!writer.canWrite(oldWeights.length())) {
        refuseObject(object.path, kSparseInfluences);
        return nullptr;
    }
    return std::make_unique<InfluenceLive>(record, std::move(writer), std::move(weights));
}

/// Blocks of equal length, one after another.
MDoubleArray joined(const std::vector<MDoubleArray>& blocks)
{
    std::vector<double> values;
    for (const MDoubleArray& block : blocks) {
        const std::vector<double> part = toVector(block);
        values.insert(values.end(), part.begin(), part.end());
    }
    return MDoubleArray(values.data(), static_cast<unsigned int>(values.size()));
}

} // namespace

Resolution NgInfluenceStore::resolve(const TargetInput& input) const
{
    if (!input.ngEnabled)
        return {MString(kNoLayers)};
    if (input.record.liveInfluence().length() == 0)
        return {MString(kNoInfluence)};
    return SelectionRule::kSkinned;
}

MString NgInfluenceStore::addSkinColumns(const TargetInput& input, const MDagPath& path,
                                         MObject& skinCluster) const
{
    EditRecord& record = input.record;
    int layerId = 0;
    const MString problem = findLayer(input.names.ngLayerString, path, skinCluster, layerId);
    if (problem.length() != 0)
        return problem;
    MStatus status;
    const unsigned int logical =
        MFnSkinCluster(skinCluster).indexForInfluenceObject(record.liveInfluence(), &status);
    if (!status)
        return notAnInfluence(input.names.skinInfluenceStr, skinCluster);
    if (layerHasChildren(path, layerId))
        return groupLayer(input.names.ngLayerString, path);
    record.ngInfluenceIds.append(static_cast<int>(logical));
    record.skinInfluenceIds.append(static_cast<int>(getPhysicalIndex(skinCluster, record.liveInfluence())));
    record.ngLayerIds.append(layerId);
    record.allInfluenceLogicalIds.push_back(getAllLogicalIndices(skinCluster));
    return MString();
}

MStatus NgInfluenceStore::read(const WeightReading& reading) const
{
    if (!reading.ngEnabled)
        return MS::kSuccess;
    const unsigned int count = reading.selection.length();
    reading.allInfluenceNgWeights.resize(count);
    for (unsigned int index = 0; index < count; ++index) {
        EditedObject object;
        findEditedObject(reading.selection, index, object);
        if (index >= reading.record.ngLayerIds.length() || index >= reading.skinClusters.length()) {
            refuseObject(object.path, kUnequalArrays);
            return MS::kFailure;
        }
        const MIntArray logical = getAllLogicalIndices(reading.skinClusters[index]);
        std::vector<MDoubleArray>& weights = reading.allInfluenceNgWeights[index];
        weights.resize(logical.length());
        for (unsigned int influence = 0; influence < logical.length(); ++influence) {
            const MStatus status = getNgInfluenceWeights(reading.record.ngLayerIds[index],
                                                         static_cast<unsigned int>(logical[influence]),
                                                         weights[influence], object.path);
            if (!status)
                return apiError(status, kContextSource, 1706);
        }
    }
    return MS::kSuccess;
}

std::unique_ptr<WeightProbe> NgInfluenceStore::openProbe(const EditRecord& record, const ClickedPoint& point,
                                                         MStatus& status) const
{
    const std::vector<int> elements = componentElements(point.component);
    const int item = selectionListIndexOf(record.validSel, point.path);
    const auto index = static_cast<unsigned int>(item);
    status = MS::kFailure;
    if (item < 0 || elements.empty() || !hasLayerColumns(record, index) || !isAddressable(record, index) ||
        !everyObjectWasRead(record))
        return nullptr;
    const auto vertex = static_cast<unsigned int>(elements[0]);
    if (vertex >= editedArray(record, index).length())
        return nullptr;
    status = MS::kSuccess;
    return std::make_unique<InfluenceProbe>(
        record.ngLayerIds[index], point.path, record.oldAllInfluenceNgWeight[index],
        record.allInfluenceLogicalIds[index], static_cast<unsigned int>(record.skinInfluenceIds[index]),
        vertex);
}

std::unique_ptr<LiveObject> NgInfluenceStore::openLive(const EditRecord& record,
                                                       const EditedObject& object) const
{
    return isEditable(record, object) ? openStroke(record, object, editedArray(record, object.index))
                                      : nullptr;
}

void NgInfluenceStore::completeRecord(EditRecord& record) const
{
    const std::size_t count = record.oldAllInfluenceNgWeight.size();
    record.oldInfluenceWeights.assign(count, MDoubleArray());
    record.oldSkinWeights.assign(count, MDoubleArray());
    for (unsigned int index = 0; index < count; ++index) {
        if (!hasLayerColumns(record, index))
            continue;
        record.oldInfluenceWeights[index] = editedArray(record, index);
        record.oldSkinWeights[index] = joined(record.oldAllInfluenceNgWeight[index]);
    }
}

MStatus NgInfluenceStore::redoStroke(const EditRecord& record, const EditedObject& object) const
{
    if (!isEditable(record, object) || object.index >= record.oldInfluenceWeights.size())
        return MS::kSuccess;
    std::unique_ptr<LiveObject> stroke = openStroke(record, object, record.oldInfluenceWeights[object.index]);
    return stroke ? stroke->write(record.offsetValue) : MStatus(MS::kSuccess);
}

MStatus NgInfluenceStore::paste(const EditRecord& record, const PasteRecord& pasted,
                                const EditedObject& object) const
{
    if (!hasColumns(record, object))
        return MS::kSuccess;
    const std::vector<MDoubleArray>& all = pasted.pasteNgAllInfluenceWeights[object.index];
    // The logical index serves as a position here too.
    const auto edited = static_cast<std::size_t>(record.ngInfluenceIds[object.index]);
    if (edited >= all.size()) {
        refuseObject(object.path, kSparseInfluences);
        return MS::kSuccess;
    }
    setNgInfluenceWeights2(record.ngLayerIds[object.index], static_cast<unsigned int>(edited),
                           record.allInfluenceLogicalIds[object.index], all[edited], object.path, all,
                           record.distributeWeightsNg);
    return MS::kSuccess;
}

void NgInfluenceStore::undoStroke(const EditRecord& record, const EditedObject& object) const
{
    if (hasLayerColumns(record, object.index) && isAddressable(record, object.index) &&
        object.index < record.oldInfluenceWeights.size())
        setNgInfluenceWeights(record.ngLayerIds[object.index],
                              static_cast<unsigned int>(record.ngInfluenceIds[object.index]),
                              record.oldInfluenceWeights[object.index], object.path);
}

void NgInfluenceStore::undoPaste(const EditRecord& record, const EditedObject& object) const
{
    const unsigned int index = object.index;
    if (!hasLayerColumns(record, index) || index >= record.oldInfluenceWeights.size() ||
        index >= record.validSkinClusters.length() || index >= record.oldSkinWeights.size())
        return;
    const MFnSkinCluster skin(record.validSkinClusters[index]);
    MDagPathArray influences;
    skin.influenceObjects(influences);
    const std::size_t vertices = record.oldInfluenceWeights[index].length();
    const std::vector<double> blocks = toVector(record.oldSkinWeights[index]);
    for (unsigned int influence = 0; influence < influences.length(); ++influence) {
        if ((influence + 1) * vertices > blocks.size())
            return;
        const MDoubleArray slice(blocks.data() + influence * vertices, static_cast<unsigned int>(vertices));
        MStatus status;
        const unsigned int logical = skin.indexForInfluenceObject(influences[influence], &status);
        if (status)
            setNgInfluenceWeights(record.ngLayerIds[index], logical, slice, object.path);
    }
}

PasteVerdict NgInfluenceStore::acceptsCopy(WeightMode copiedMode) const
{
    const bool isInfluence = modeRow(copiedMode).family == StorageFamily::kNgInfluence;
    return isInfluence ? PasteVerdict::kAccepted : PasteVerdict::kLeaveAlone;
}

/// Every object starts by setting the arrays of all objects back to the weights read before the paste, so of
/// several target objects only the last keeps its pasted values and the others are written back unchanged.
bool NgInfluenceStore::fillPaste(const PasteJob& job, PasteRecord& pasted) const
{
    const unsigned int target = job.object.index;
    if (job.perVertex)
        return isEditable(job.target, job.object) && fillLayerRows(job, pasted);
    pasted.pasteNgAllInfluenceWeights = job.target.oldAllInfluenceNgWeight;
    if (!isEditable(job.target, job.object))
        return false;
    std::vector<MDoubleArray> weights = job.target.oldAllInfluenceNgWeight[target];
    for (std::size_t point = 0; point < job.match.objects.size(); ++point) {
        const auto item = static_cast<std::size_t>(job.match.objects[point]);
        const auto source = static_cast<unsigned int>(job.match.ids[point]);
        const auto vertex = static_cast<unsigned int>(job.targetIds[point]);
        for (std::size_t influence = 0; influence < weights.size(); ++influence) {
            const auto& copied = job.copied.copiedAllInfluenceNgWeights;
            const bool reaches = item < copied.size() && influence < copied[item].size() &&
                                 source < copied[item][influence].length();
            if (!reaches || vertex >= weights[influence].length()) {
                refuseObject(job.object.path, kCopyTooShort);
                return false;
            }
            weights[influence][vertex] = copied[item][influence][source];
        }
    }
    pasted.pasteNgAllInfluenceWeights[target] = weights;
    return true;
}
