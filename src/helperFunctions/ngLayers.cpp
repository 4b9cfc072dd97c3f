#include "helperFunctions/ngLayers.h"

#include "helperFunctions/helperFunctions.h"
#include "helperFunctions/layerList.h"
#include "mel.h"
#include "report.h"

#include <limits>
#include <maya/MCommandResult.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MItGeometry.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <new>

namespace {

using Field = LayerEntry::Field;

/// Line numbers of the reports when reading values fails and when counting vertices fails.
struct ReportLines {
    int read;
    int count;
};
constexpr ReportLines kInfluenceLines = {206, 223};
constexpr ReportLines kMaskLines = {251, 268};
constexpr ReportLines kDqLines = {296, 313};

/// The paint target of an influence: its number, in the platform's notation.
MString influenceTarget(unsigned int influence)
{
    return MString() + static_cast<double>(influence);
}

MString layerCommand(int layerId, const MString& paintTarget)
{
    return MString("ngst2Layers") + " -id " + static_cast<double>(layerId) + " -paintTarget " + paintTarget;
}

std::vector<LayerEntry> readLayerList(const MDagPath& shape)
{
    MCommandResult result;
    MString text;
    if (!MGlobal::executeCommand(MString("ngst2Layers -q -ll ") + shape.fullPathName(), result, false, false))
        throw std::invalid_argument("the command failed");
    result.getResult(text);
    return readLayerEntries(text.asUTF8());
}

int idOf(const LayerEntry& layer)
{
    if (layer.idField != LayerEntry::Field::kGood)
        throw std::invalid_argument("an id is not an integer");
    if (layer.id < std::numeric_limits<int>::min() || layer.id > std::numeric_limits<int>::max())
        throw std::invalid_argument("an id is out of range");
    return static_cast<int>(layer.id);
}

/// Runs a look-up on the layer list; whatever is wrong with the list becomes one error that names the shape.
template <typename LookUp>
auto onLayerList(const MDagPath& shape, LookUp&& lookUp) -> decltype(lookUp(std::vector<LayerEntry>()))
{
    try {
        return lookUp(readLayerList(shape));
    } catch (const std::bad_alloc&) {
        throw; // nothing is wrong with the list
    } catch (const std::exception& failure) {
        throw LayerListError(std::string("The ngSkinTools2 layer list of ") + shape.fullPathName().asChar() +
                             " cannot be read: " + failure.what());
    }
}

/// Weights that are not one for each vertex cannot be offset or written back: they are dropped, which is
/// said.
MStatus checkCount(MDoubleArray& weights, const MDagPath& shape)
{
    const int vertices = MItGeometry(shape).count();
    if (vertices >= 0 && static_cast<unsigned int>(vertices) == weights.length())
        return MS::kSuccess;
    MGlobal::displayError(shape.fullPathName() + ": ngSkinTools2 tells " +
                          static_cast<double>(weights.length()) + " weights for " +
                          static_cast<double>(vertices) + " vertices; nothing was written for it.");
    weights.clear();
    return MS::kFailure;
}

MStatus readWeights(int layerId, const MString& paintTarget, MDoubleArray& weights, const MDagPath& shape,
                    ReportLines lines)
{
    MCommandResult result;
    const MString command =
        layerCommand(layerId, paintTarget) + " -q" + " -vertexWeights " + shape.fullPathName();
    MStatus status = MGlobal::executeCommand(command, result, false, false);
    if (!status)
        return apiError(status, kHelperSource, lines.read);
    weights.clear();
    // A layer without values gives no array; one that cannot be read is something else.
    if (!result.getResult(weights) && result.resultType() == MCommandResult::kDoubleArray)
        return apiError(MS::kFailure, kHelperSource, lines.read);
    if (weights.length() != 0)
        return checkCount(weights, shape);
    MCommandResult countResult;
    int count = 0;
    status = MGlobal::executeCommand(MString("ngst2Layers") + " -q" + " -vertexCount " + shape.fullPathName(),
                                     countResult, false, false);
    if (!status)
        return apiError(status, kHelperSource, lines.count);
    countResult.getResult(count);
    weights = MDoubleArray(count > 0 ? static_cast<unsigned int>(count) : 0U, 0.0);
    return checkCount(weights, shape);
}

/// Makes a write command, in the text's own room, and runs it; `appendValues` appends the values list.
template <typename Append>
MStatus runWrite(std::string& command, const MString& layer, const MDagPath& shape, Append&& appendValues)
{
    command = (layer + " -e" + " -vertexWeights \"").asChar();
    appendValues(command);
    command += "\" ";
    command += shape.fullPathName().asChar();
    return runMel(MString(command.data(), static_cast<int>(command.size())));
}

MStatus writeWeights(int layerId, const MString& paintTarget, const MDoubleArray& weights,
                     const MDagPath& shape)
{
    std::string command;
    return runWrite(command, layerCommand(layerId, paintTarget), shape,
                    [&](std::string& text) { text += valuesText(toVector(weights)); });
}

} // namespace

bool isNgEnabled()
{
    return queryMelInt("exists ngst2Layers") != 0;
}

bool hasNgData(MObject& skinCluster)
{
    const MPlug message = MFnDependencyNode(skinCluster).findPlug("message", false);
    MPlugArray fed;
    message.connectedTo(fed, false, true);
    for (unsigned int plug = 0; plug < fed.length(); ++plug) {
        if (MFnDependencyNode(fed[plug].node()).typeName() == "ngst2SkinLayerData")
            return true;
    }
    return false;
}

unsigned int getLayerId(MDagPath shape, MString layerName)
{
    const std::string wanted = layerName.asUTF8();
    return onLayerList(shape, [&wanted](const std::vector<LayerEntry>& layers) {
        for (const LayerEntry& layer : layers) {
            if (layer.nameField == Field::kMissing || layer.idField == Field::kMissing)
                continue;
            if (layer.nameField == Field::kWrong)
                throw std::invalid_argument("a name is not a text");
            if (layer.name == wanted)
                return static_cast<unsigned int>(idOf(layer));
        }
        return kNotFound;
    });
}

bool layerHasChildren(MDagPath shape, int layerId)
{
    return onLayerList(shape, [layerId](const std::vector<LayerEntry>& layers) {
        for (const LayerEntry& layer : layers) {
            if (layer.idField == Field::kMissing || idOf(layer) != layerId)
                continue;
            if (layer.childrenField != Field::kGood)
                throw std::invalid_argument("\"children\" is not an array");
            return layer.hasChildren;
        }
        return false;
    });
}

MStatus getNgMaskWeights(int layerId, MDoubleArray& weights, const MDagPath& shape)
{
    return readWeights(layerId, kNgMaskTarget, weights, shape, kMaskLines);
}

MStatus getNgDqWeights(int layerId, MDoubleArray& weights, const MDagPath& shape)
{
    return readWeights(layerId, kNgDqTarget, weights, shape, kDqLines);
}

MStatus getNgInfluenceWeights(int layerId, unsigned int influence, MDoubleArray& weights,
                              const MDagPath& shape)
{
    return readWeights(layerId, influenceTarget(influence), weights, shape, kInfluenceLines);
}

MStatus setNgMaskWeights(int layerId, const MDoubleArray& weights, const MDagPath& shape)
{
    return writeWeights(layerId, kNgMaskTarget, weights, shape);
}

MStatus setNgDqWeights(int layerId, const MDoubleArray& weights, const MDagPath& shape)
{
    return writeWeights(layerId, kNgDqTarget, weights, shape);
}

MStatus setNgInfluenceWeights(int layerId, unsigned int influence, const MDoubleArray& weights,
                              const MDagPath& shape)
{
    return writeWeights(layerId, influenceTarget(influence), weights, shape);
}

void setNgInfluenceWeights2(int layerId, unsigned int influence, const MIntArray& allInfluenceIds,
                            const MDoubleArray& newWeights, const MDagPath& shape,
                            const std::vector<MDoubleArray>& oldAllWeights, bool distribute)
{
    NgInfluenceWriter writer(layerId, influence, allInfluenceIds, oldAllWeights, shape);
    if (writer.canWrite(newWeights.length()))
        writer.write(toVector(newWeights), distribute);
    else
        refuseObject(shape, kSparseInfluences);
}

NgWeightsWriter::NgWeightsWriter(int layerId, const MString& paintTarget, const MDoubleArray& oldWeights,
                                 const MDagPath& shape)
    : layer(layerId), target(paintTarget), path(shape), texts(toVector(oldWeights))
{}

NgWeightsWriter::NgWeightsWriter(int layerId, unsigned int influence, const MDoubleArray& oldWeights,
                                 const MDagPath& shape)
    : NgWeightsWriter(layerId, influenceTarget(influence), oldWeights, shape)
{}

MStatus NgWeightsWriter::write(const std::vector<double>& weights)
{
    return runWrite(command, layerCommand(layer, target), path,
                    [&](std::string& text) { texts.append(weights, text); });
}

NgInfluenceWriter::NgInfluenceWriter(int layerId, unsigned int influence, const MIntArray& allInfluenceIds,
                                     const std::vector<MDoubleArray>& oldAllWeights, const MDagPath& shape)
    : layer(layerId), edited(influence), path(shape), writers(oldAllWeights.size())
{
    table.logicalIndices = toVector(allInfluenceIds);
    table.rows.reserve(oldAllWeights.size());
    for (const MDoubleArray& weights : oldAllWeights)
        table.rows.push_back(toVector(weights));
}

bool NgInfluenceWriter::canWrite(std::size_t vertexCount) const
{
    return canRedistribute(table, edited, vertexCount);
}

void NgInfluenceWriter::write(const std::vector<double>& newWeights, bool distribute)
{
    const std::vector<std::vector<double>> changed = redistribute(table, edited, newWeights, distribute);
    // Both look-ups use the logical index as a position; canWrite has made sure that it is one.
    for (int logical : table.logicalIndices) {
        const auto row = static_cast<std::size_t>(logical);
        if (static_cast<unsigned int>(table.logicalIndices[row]) != edited)
            writeRow(row, changed[row].empty() ? table.rows[row] : changed[row]);
    }
    writeRow(edited, newWeights);
}

MStatus NgInfluenceWriter::restore()
{
    MStatus all;
    for (int logical : table.logicalIndices) {
        const auto row = static_cast<std::size_t>(logical);
        const MStatus status = writeRow(row, table.rows[row]);
        if (!status)
            all = status;
    }
    return all;
}

/// Rows are addressed by their logical index, so that of the edited influence is its own too.
MStatus NgInfluenceWriter::writeRow(std::size_t row, const std::vector<double>& weights)
{
    std::unique_ptr<NgWeightsWriter>& writer = writers[row];
    if (writer == nullptr) {
        const std::vector<double>& old = table.rows[row];
        const MDoubleArray oldWeights(old.data(), static_cast<unsigned int>(old.size()));
        writer.reset(new NgWeightsWriter(layer, static_cast<unsigned int>(row), oldWeights, path));
    }
    return writer->write(weights);
}
