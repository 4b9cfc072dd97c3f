#include "weightModes/elementPlugStore.h"

#include "helperFunctions/helperFunctions.h"
#include "report.h"
#include "weightModes/pointLive.h"

#include <maya/MFn.h>
#include <maya/MFnAttribute.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnGeometryFilter.h>
#include <maya/MGlobal.h>

namespace {

constexpr unsigned int kFirstGeometry = 0;
const char* const kNoBlendShape = "The current deformer is not a blendShape";

/// Writes an unchanged value, so that the deformer evaluates again after element writes.
MStatus refreshWrite(const MPlug& array)
{
    MPlug first = array.elementByLogicalIndex(0);
    MStatus status;
    const float weight = first.asFloat(&status);
    // What was not read must not be written: it may be the weight of a point that nobody selected.
    return status ? first.setFloat(weight) : status;
}

MStatus setElement(const MPlug& array, int vertex, float weight)
{
    return array.elementByLogicalIndex(static_cast<unsigned int>(vertex)).setFloat(weight);
}

class ElementProbe : public WeightProbe {
public:
    ElementProbe(const MPlug& weightsArray, int vertexIndex, float weight)
        : array(weightsArray), vertex(vertexIndex), before(weight)
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

/// A locked or connected element does not keep the others from being written. Tells whether all were.
MStatus setElements(const MPlug& array, const std::vector<int>& vertices, const MFloatArray& weights)
{
    MStatus all;
    for (std::size_t point = 0; point < vertices.size(); ++point) {
        const MStatus status = setElement(array, vertices[point], weights[static_cast<unsigned int>(point)]);
        if (!status)
            all = status;
    }
    refreshWrite(array);
    return all;
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
    MStatus writeOldValues() override { return setElements(array, vertices, values); }

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

/// Whether a plug is shaped like a deformer's weights: numbers in an array, in a compound that is an element
/// of an array, which is a top-level attribute.
bool isWeightsShape(const MPlug& plug)
{
    return plug.isArray() && plug.elementByLogicalIndex(0).numChildren() == 0 && plug.isChild() &&
           plug.parent().isElement() && !plug.parent().array().isChild();
}

Resolution resolveNamedPlug(const TargetInput& input)
{
    EditRecord& record = input.record;
    if (record.liveDeformer().hasFn(MFn::kSkinClusterFilter))
        return {input.names.deformerStr + kSkinHasModes};
    resolveWeightsPlug(record, input.names.weightsPlugStr);
    if (record.weightsPlug.isNull())
        return {"The weights plug is invalid.", true};
    return SelectionRule::kMembers;
}

Resolution resolveTarget(const TargetInput& input)
{
    const int target = convertTargetToIndex(input.record.liveDeformer(), input.names.targetString);
    if (target == -1)
        return {"Target:" + input.names.targetString + " is not a valid target on " + input.names.deformerStr,
                true};
    Resolution found(SelectionRule::kMembers);
    found.targetIndex = target;
    return found;
}

} // namespace

MStatus resolveWeightsPlug(EditRecord& record, const MString& name)
{
    record.weightsPlug = MPlug();
    record.weightListAttr = MObject();
    if (record.liveDeformer().isNull())
        return MS::kFailure;
    MStatus status;
    const MPlug plug = MFnDependencyNode(record.liveDeformer()).findPlug(name, true, &status);
    if (!status)
        return apiError(status, kContextSource, 138);
    if (!isWeightsShape(plug))
        return MS::kFailure;
    // What was found may be networked, and such a plug must not be kept.
    record.weightsPlug = MPlug(record.liveDeformer(), plug.attribute());
    return MS::kSuccess;
}

Resolution ElementPlugStore::resolve(const TargetInput& input) const
{
    if (input.record.liveDeformer().isNull())
        return {kNoDeformer, true};
    if (kind == kNamedPlug)
        return resolveNamedPlug(input);
    // The base weights accept any deformer here; reading them tells when it is no blend shape.
    return kind == kTargetWeights ? resolveTarget(input) : Resolution(SelectionRule::kMembers);
}

MPlug ElementPlugStore::weightsArray(const EditRecord& record, const MDagPath& path, MStatus& status) const
{
    if (kind == kNamedPlug) {
        const unsigned int geometry =
            MFnGeometryFilter(record.liveDeformer()).indexForOutputShape(path.node(), &status);
        if (!status)
            return MPlug();
        MPlug array(record.weightsPlug);
        status = array.selectAncestorLogicalIndex(geometry, MFnAttribute(array.attribute()).parent());
        return array;
    }
    const MPlug geometries = MFnDependencyNode(record.liveDeformer()).findPlug("inputTarget", false, &status);
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
    return kind == kNamedPlug || record.liveDeformer().hasFn(MFn::kBlendShape);
}

MStatus ElementPlugStore::read(const WeightReading& reading) const
{
    if (!hasRightDeformer(reading.record)) {
        reading.failure = {kNoBlendShape, true};
        return MS::kFailure;
    }
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
            for (int vertex : vertices) {
                const MPlug element = array.elementByLogicalIndex(static_cast<unsigned int>(vertex));
                values.push_back(element.asFloat(&status));
                // Undo would put back what was never there.
                require(status, "a weight cannot be read");
            }
        }
        reading.weights[index] = MFloatArray(values.data(), static_cast<unsigned int>(values.size()));
    }
    return MS::kSuccess;
}

MString ElementPlugStore::obstacle(const EditRecord& record, const ClickedPoint& point, const MString& name,
                                   bool moves) const
{
    if (moves || kind == kNamedPlug)
        return MString();
    const MFnGeometryFilter filter(record.liveDeformer());
    MStatus status;
    const unsigned int geometry = filter.indexForOutputShape(point.path.node(), &status);
    return status && geometry != kFirstGeometry
               ? name + " does not move: the weights of a blend shape are those of its first object."
               : MString();
}

std::unique_ptr<WeightProbe> ElementPlugStore::openProbe(const EditRecord& record, const ClickedPoint& point,
                                                         MStatus& status) const
{
    if (!hasRightDeformer(record)) {
        MGlobal::displayWarning(kNoBlendShape);
        status = MS::kFailure;
        return nullptr;
    }
    const MPlug array = weightsArray(record, point.path, status);
    float weight = 0.0F;
    if (status)
        weight = array.elementByLogicalIndex(static_cast<unsigned int>(point.vertex)).asFloat(&status);
    if (!status) {
        apiError(status, kContextSource, __LINE__);
        return nullptr;
    }
    return std::make_unique<ElementProbe>(array, point.vertex, weight);
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
    if (vertices.size() != record.oldWeights[object.index].length()) {
        refuseObject(object.path, kUnequalArrays);
        return nullptr;
    }
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
