#include "weightModes/ngLayerStore.h"

#include "helperFunctions/helperFunctions.h"
#include "helperFunctions/ngLayers.h"
#include "report.h"
#include "weightModes/modeTable.h"
#include "weightModes/wholeShape.h"

namespace {

/// What differs between the two kinds of layer weights.
struct LayerRow {
    const char* paintTarget;
    MStatus (*read)(int layerId, MDoubleArray& weights, const MDagPath& shape);
    MStatus (*write)(int layerId, const MDoubleArray& weights, const MDagPath& shape);
    int reportLine;            ///< of a failing read
    bool groupsCarryNoWeights; ///< a layer with child layers cannot be edited
};
const LayerRow kLayerRows[] = {{kNgMaskTarget, getNgMaskWeights, setNgMaskWeights, 1728, false},
                               {kNgDqTarget, getNgDqWeights, setNgDqWeights, 1750, true}};

class LayerProbe : public WeightProbe {
public:
    LayerProbe(NgWeightsWriter layerWriter, const MDoubleArray& oldWeights, unsigned int vertexIndex)
        : writer(std::move(layerWriter)), old(toVector(oldWeights)), vertex(vertexIndex)
    {}
    MStatus writeLow(double step) override { return write(-step); }
    MStatus writeHigh(double step) override { return write(step); }
    MStatus restore(double) override { return write(0.0); }

private:
    MStatus write(double nudge)
    {
        std::vector<double> nudged(old);
        if (nudge != 0.0)
            nudged[vertex] += nudge;
        return writer.write(nudged);
    }

    NgWeightsWriter writer;
    std::vector<double> old;
    unsigned int vertex;
};

class LayerLive : public LiveObject {
public:
    LayerLive(NgWeightsWriter layerWriter, WholeShapeWeights shapeWeights)
        : writer(std::move(layerWriter)), weights(std::move(shapeWeights))
    {}
    std::size_t pointCount() const override { return weights.pointCount(); }
    void newWeights(double offset, double* values) const override { weights.newWeights(offset, values); }
    MStatus write(double offset) override
    {
        writer.write(weights.offsetBy(offset));
        return MS::kSuccess;
    }
    MStatus restore() override { return writer.write(weights.oldWeights()); }

private:
    NgWeightsWriter writer;
    WholeShapeWeights weights;
};

/// A writer for one object; needs its columns.
NgWeightsWriter writerFor(const LayerRow& row, const EditRecord& record, unsigned int index,
                          const MDagPath& path)
{
    return NgWeightsWriter(record.ngLayerIds[index], row.paintTarget, record.oldNgWeights[index], path);
}

bool hasColumns(const EditRecord& record, const EditedObject& object)
{
    const bool has = object.index < record.ngLayerIds.length() && object.index < record.oldNgWeights.size();
    if (!has)
        refuseObject(object.path, kUnequalArrays);
    return has;
}

/// The vertex whose copied weight a target point takes; kNotFound for none. A paste vertex by vertex takes
/// the matched one. Otherwise it is the vertex at the match's position in the last copied object, even where
/// another object was matched: with one copied object that is the matched vertex too.
unsigned int sourceVertex(const PasteJob& job, std::size_t point)
{
    if (job.perVertex)
        return static_cast<unsigned int>(job.match.ids[point]);
    const auto position = static_cast<std::size_t>(job.match.positions[point]);
    return position < job.lastCopiedIds.size() ? static_cast<unsigned int>(job.lastCopiedIds[position])
                                               : kNotFound;
}

/// A read that failed half-way leaves objects without weights, and then nothing may be nudged either.
bool everyObjectWasRead(const EditRecord& record)
{
    for (const MDoubleArray& weights : record.oldNgWeights) {
        if (weights.length() == 0)
            return false;
    }
    return true;
}

} // namespace

Resolution NgLayerStore::resolve(const TargetInput& input) const
{
    return input.ngEnabled ? Resolution(SelectionRule::kSkinned) : Resolution(MString(kNoLayers));
}

MString NgLayerStore::addSkinColumns(const TargetInput& input, const MDagPath& path,
                                     MObject& skinCluster) const
{
    int layerId = 0;
    const MString problem = findLayer(input.names.ngLayerString, path, skinCluster, layerId);
    if (problem.length() != 0)
        return problem;
    if (kLayerRows[kind].groupsCarryNoWeights && layerHasChildren(path, layerId))
        return groupLayer(input.names.ngLayerString, path);
    input.record.ngLayerIds.append(layerId);
    return MString();
}

MStatus NgLayerStore::read(const WeightReading& reading) const
{
    if (!reading.ngEnabled)
        return MS::kSuccess;
    const unsigned int count = reading.selection.length();
    reading.ngWeights.resize(count);
    for (unsigned int index = 0; index < count; ++index) {
        EditedObject object;
        findEditedObject(reading.selection, index, object);
        if (index >= reading.record.ngLayerIds.length()) {
            refuseObject(object.path, kUnequalArrays);
            return MS::kFailure;
        }
        const LayerRow& row = kLayerRows[kind];
        const MStatus status =
            row.read(reading.record.ngLayerIds[index], reading.ngWeights[index], object.path);
        if (!status)
            return apiError(status, kContextSource, row.reportLine);
    }
    return MS::kSuccess;
}

std::unique_ptr<WeightProbe> NgLayerStore::openProbe(const EditRecord& record, const ClickedPoint& point,
                                                     MStatus& status) const
{
    const std::vector<int> elements = componentElements(point.component);
    const int item = selectionListIndexOf(record.validSel, point.path);
    const auto index = static_cast<unsigned int>(item);
    status = MS::kFailure;
    if (item < 0 || elements.empty() || index >= record.ngLayerIds.length() ||
        index >= record.oldNgWeights.size() || !everyObjectWasRead(record))
        return nullptr;
    const auto vertex = static_cast<unsigned int>(elements[0]);
    const MDoubleArray& old = record.oldNgWeights[index];
    if (vertex >= old.length())
        return nullptr;
    status = MS::kSuccess;
    return std::make_unique<LayerProbe>(writerFor(kLayerRows[kind], record, index, point.path), old, vertex);
}

std::unique_ptr<LiveObject> NgLayerStore::openLive(const EditRecord& record, const EditedObject& object) const
{
    if (!hasColumns(record, object))
        return nullptr;
    WholeShapeWeights weights(record, object, record.oldNgWeights[object.index]);
    if (!weights.isUsable())
        return nullptr;
    return std::make_unique<LayerLive>(writerFor(kLayerRows[kind], record, object.index, object.path),
                                       std::move(weights));
}

void NgLayerStore::completeRecord(EditRecord& record) const
{
    // Undo of a paste puts back what it finds with the edited influence's weights.
    record.oldInfluenceWeights = record.oldNgWeights;
}

MStatus NgLayerStore::redoStroke(const EditRecord& record, const EditedObject& object) const
{
    std::unique_ptr<LiveObject> stroke = openLive(record, object);
    return stroke ? stroke->write(record.offsetValue) : MStatus(MS::kSuccess);
}

MStatus NgLayerStore::paste(const EditRecord& record, const PasteRecord& pasted,
                            const EditedObject& object) const
{
    const MDoubleArray& exact = pasted.pasteValues[object.index];
    if (hasColumns(record, object))
        kLayerRows[kind].write(record.ngLayerIds[object.index],
                               exact.length() != 0 ? exact : floatToDouble(pasted.pasteWeights[object.index]),
                               object.path);
    return MS::kSuccess;
}

void NgLayerStore::undoStroke(const EditRecord&, const EditedObject&) const {}

void NgLayerStore::undoPaste(const EditRecord& record, const EditedObject& object) const
{
    if (object.index < record.ngLayerIds.length() && object.index < record.oldInfluenceWeights.size())
        kLayerRows[kind].write(record.ngLayerIds[object.index], record.oldInfluenceWeights[object.index],
                               object.path);
}

PasteVerdict NgLayerStore::acceptsCopy(WeightMode copiedMode) const
{
    const bool isLayer = modeRow(copiedMode).family == StorageFamily::kNgLayer;
    return isLayer ? PasteVerdict::kAccepted : PasteVerdict::kStop;
}

bool NgLayerStore::fillPaste(const PasteJob& job, PasteRecord& pasted) const
{
    const unsigned int target = job.object.index;
    if (!hasColumns(job.target, job.object))
        return false;
    MDoubleArray weights(job.target.oldNgWeights[target]);
    const std::vector<MDoubleArray>& copied = job.copied.copiedNgWeights;
    for (std::size_t point = 0; point < job.match.objects.size(); ++point) {
        const auto item = static_cast<std::size_t>(job.match.objects[point]);
        const unsigned int source = sourceVertex(job, point);
        const auto vertex = static_cast<unsigned int>(job.targetIds[point]);
        if (item >= copied.size() || source >= copied[item].length() || vertex >= weights.length()) {
            refuseObject(job.object.path, kCopyTooShort);
            return false;
        }
        weights[vertex] = copied[item][source];
    }
    if (job.perVertex)
        pasted.pasteValues[target] = weights;
    else
        pasted.pasteWeights[target] = doubleToFloat(weights);
    return true;
}
