#include "weightModes/elementPlugStore.h"

#include "helperFunctions/helperFunctions.h"
#include "morvaneContext/morvaneContext.h"
#include "report.h"
#include "weightModes/pointLive.h"

#include <maya/MFn.h>
#include <maya/MFnAttribute.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnGeometryFilter.h>
#include <maya/MGlobal.h>

namespace {

constexpr unsigned int kFirstGeometry = 0;

/// Writes an unchanged value, so that the deformer evaluates again after element writes.
MStatus refreshWrite(const MPlug& array)
{
    MPlug first = array.elementByLogicalIndex(0);
    return first.setFloat(first.asFloat());
}

MStatus setElement(const MPlug& array, int vertex, float weight)
{
    return array.elementByLogicalIndex(static_cast<unsigned int>(vertex)).setFloat(weight);
}

class ElementProbe : public WeightProbe {
public:
    ElementProbe(const MPlug& weightsArray, int vertexIndex)
        : array(weightsArray), vertex(vertexIndex),
          before(array.elementByLogicalIndex(static_cast<unsigned int>(vertexIndex)).asFloat())
    {}
    MStatus writeLow(double step) override { return write(static_cast<double>(before) - step); }
    MStatus writeHigh(double step) override { return write(static_cast<double>(before) + step); }
    MStatus restore(double) override { return write(static_cast<double>(before)); }

private:
    MStatus write(double weight)
    {
        const MStatus status = setElement(array, vertex, static_cast<float>(weight));
        return status ? refreshWrite(array) : status;
    }

    MPlug array;
    int vertex;
    float before;
};

/// Not checked: a locked or connected element does not keep the others from being written.
void setElements(const MPlug& array, const std::vector<int>& vertices, const MFloatArray& weights)
{
    for (std::size_t point = 0; point < vertices.size(); ++point)
        setElement(array, vertices[point], weights[static_cast<unsigned int>(point)]);
    refreshWrite(array);
}

class ElementLive : public FloatLive {
public:
    ElementLive(const EditRecord& record, const EditedObject& object, const MPlug& weightsArray,
                std::vector<int> vertexIndices)
        : FloatLive(record, object, record.oldWeights[object.index]), array(weightsArray),
          vertices(std::move(vertexIndices))
    {}

protected:
    MStatus writeValues() override
    {
        const float* weights = dataOf(values);
        for (std::size_t point = 0; point < vertices.size(); ++point) {
            const MStatus status = setElement(array, vertices[point], weights[point]);
            if (!status)
                return apiError(status, kContextSource, __LINE__);
        }
        const MStatus status = refreshWrite(array);
        return status ? status : apiError(status, kContextSource, __LINE__);
    }
    void writeOldValues() override { setElements(array, vertices, values); }

private:
    MPlug array;
    std::vector<int> vertices; ///< in component order
};

bool hasColumns(const EditRecord& record, const EditedObject& object)
{
    const bool has = object.index < record.oldWeights.size();
    if (!has)
        refuseObject(object.path, kUnequalArrays);
    return has && fitsFalloff(record, object, record.oldWeights[object.index].length());
}

SelectionRule resolveNamedPlug(morvaneContext& context)
{
    const EditRecord& record = context.record();
    // A skin has modes of its own; naming one here is silently nothing.
    if (record.activeDeformer.hasFn(MFn::kSkinClusterFilter))
        return SelectionRule::kNothing;
    context.checkWeightsPlug(context.getWeightsPlugStr());
    if (record.weightsPlug.isNull()) {
        MGlobal::displayWarning("The weights plug is invalid.");
        return SelectionRule::kNothing;
    }
    return record.weightsPlug.node() == record.activeDeformer ? SelectionRule::kMembers
                                                              : SelectionRule::kNothing;
}

SelectionRule resolveTarget(morvaneContext& context)
{
    const int target = convertTargetToIndex(context.record().activeDeformer, context.getTargetString());
    if (target == -1) {
        MGlobal::displayWarning(MString("Target:") + context.getTargetString() +
                                " is not a valid target on " + context.getDeformerStr());
        return SelectionRule::kNothing;
    }
    context.setTargetIndex(target);
    return SelectionRule::kMembers;
}

} // namespace

SelectionRule ElementPlugStore::resolve(morvaneContext& context) const
{
    if (context.record().activeDeformer.isNull()) {
        MGlobal::displayWarning("No valid deformer has been specified.");
        return SelectionRule::kNothing;
    }
    if (kind == kNamedPlug)
        return resolveNamedPlug(context);
    // The base weights accept any deformer here; reading them tells when it is no blend shape.
    return kind == kTargetWeights ? resolveTarget(context) : SelectionRule::kMembers;
}

MPlug ElementPlugStore::weightsArray(const EditRecord& record, const MDagPath& path, MStatus& status) const
{
    if (kind == kNamedPlug) {
        const unsigned int geometry =
            MFnGeometryFilter(record.activeDeformer).indexForOutputShape(path.node(), &status);
        if (!status)
            return MPlug();
        // Not the resolved plug itself: a networked plug cannot be pointed at a geometry.
        const MObject attribute = record.weightsPlug.attribute();
        MPlug array(record.weightsPlug.node(), attribute);
        status = array.selectAncestorLogicalIndex(geometry, MFnAttribute(attribute).parent());
        return array;
    }
    const MPlug geometries = MFnDependencyNode(record.activeDeformer).findPlug("inputTarget", false, &status);
    if (!status)
        return MPlug();
    const MPlug geometry = geometries.elementByLogicalIndex(kFirstGeometry);
    MPlug array = kind == kBaseWeights
                      ? geometry.child(1U)
                      : geometry.child(0U).elementByLogicalIndex(record.targetIndex).child(1U);
    if (array.isNull())
        status = MS::kFailure;
    return array;
}

bool ElementPlugStore::hasRightDeformer(const EditRecord& record) const
{
    if (kind == kNamedPlug || record.activeDeformer.hasFn(MFn::kBlendShape))
        return true;
    MGlobal::displayWarning("The current deformer is not a blendShape");
    return false;
}

MStatus ElementPlugStore::read(const WeightReading& reading) const
{
    if (!hasRightDeformer(reading.record))
        return MS::kFailure;
    const unsigned int count = reading.selection.length();
    reading.weights.resize(count);
    for (unsigned int index = 0; index < count; ++index) {
        EditedObject object;
        findEditedObject(reading.selection, index, object);
        MStatus status;
        const MPlug array = weightsArray(reading.record, object.path, status);
        std::vector<float> values;
        if (status) {
            const std::vector<int> vertices = vertexIndices(object.path, object.component);
            values.reserve(vertices.size());
            for (int vertex : vertices)
                values.push_back(array.elementByLogicalIndex(static_cast<unsigned int>(vertex)).asFloat());
        }
        reading.weights[index] = MFloatArray(values.data(), static_cast<unsigned int>(values.size()));
    }
    return MS::kSuccess;
}

std::unique_ptr<WeightProbe> ElementPlugStore::openProbe(const EditRecord& record, const ClickedPoint& point,
                                                         MStatus& status) const
{
    if (!hasRightDeformer(record)) {
        status = MS::kFailure;
        return nullptr;
    }
    const MPlug array = weightsArray(record, point.path, status);
    if (!status) {
        apiError(status, kContextSource, __LINE__);
        return nullptr;
    }
    return std::make_unique<ElementProbe>(array, point.vertex);
}

std::unique_ptr<LiveObject> ElementPlugStore::openLive(const EditRecord& record,
                                                       const EditedObject& object) const
{
    MStatus status;
    const MPlug array = weightsArray(record, object.path, status);
    if (!status) {
        refuseObject(object.path, kNotDeformed);
        return nullptr;
    }
    if (!hasColumns(record, object))
        return nullptr;
    std::vector<int> vertices = vertexIndices(object.path, object.component);
    if (!fitsFalloff(record, object, vertices.size()))
        return nullptr;
    return std::make_unique<ElementLive>(record, object, array, std::move(vertices));
}

void ElementPlugStore::writeElements(const EditRecord& record, const EditedObject& object,
                                     const MFloatArray& weights) const
{
    MStatus status;
    const MPlug array = weightsArray(record, object.path, status);
    if (!status) {
        refuseObject(object.path, kNotDeformed);
        return;
    }
    const std::vector<int> vertices = vertexIndices(object.path, object.component);
    if (vertices.size() != weights.length()) {
        refuseObject(object.path, kUnequalArrays);
        return;
    }
    setElements(array, vertices, weights);
}

MStatus ElementPlugStore::redoStroke(const EditRecord& record, const EditedObject& object) const
{
    if (hasColumns(record, object))
        writeElements(
            record, object,
            redoneWeights<MFloatArray, float>(record, object.index, record.oldWeights[object.index]));
    return MS::kSuccess;
}

MStatus ElementPlugStore::paste(const EditRecord& record, const PasteRecord& pasted,
                                const EditedObject& object) const
{
    writeElements(record, object, pasted.pasteWeights[object.index]);
    return MS::kSuccess;
}

void ElementPlugStore::undoStroke(const EditRecord& record, const EditedObject& object) const
{
    if (object.index < record.oldWeights.size())
        writeElements(record, object, record.oldWeights[object.index]);
}

void ElementPlugStore::undoPaste(const EditRecord& record, const EditedObject& object) const
{
    undoStroke(record, object);
}

std::vector<double> ElementPlugStore::copiedValues(const CopyBuffer& copied, std::size_t item) const
{
    return item < copied.copiedWeights.size() ? toVector(floatToDouble(copied.copiedWeights[item]))
                                              : std::vector<double>();
}
