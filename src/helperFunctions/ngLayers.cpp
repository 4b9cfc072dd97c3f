#include "helperFunctions/ngLayers.h"

#include "helperFunctions/helperFunctions.h"
#include "mel.h"
#include "report.h"

#include <cstdint>
#include <limits>
#include <maya/MCommandResult.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MItGeometry.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;

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

json readLayerList(const MDagPath& shape)
{
    MCommandResult result;
    MString text;
    if (!MGlobal::executeCommand(MString("ngst2Layers -q -ll ") + shape.fullPathName(), result, false, false))
        throw std::invalid_argument("the command failed");
    result.getResult(text);
    json layers = json::parse(std::string(text.asUTF8()));
    if (!layers.is_array())
        throw std::invalid_argument("it is not an array");
    for (const json& layer : layers) {
        if (!layer.is_object())
            throw std::invalid_argument("an entry is not an object");
    }
    return layers;
}

/// A layer's id. Conversion to a number alone would take fractions and cut off what does not fit.
int idOf(const json& value)
{
    if (!value.is_number_integer())
        throw std::invalid_argument("an id is not an integer");
    const auto id = value.get<std::int64_t>();
    if (id < std::numeric_limits<int>::min() || id > std::numeric_limits<int>::max())
        throw std::invalid_argument("an id is out of range");
    return static_cast<int>(id);
}

/// Runs a look-up on the layer list; whatever is wrong with the list becomes one error that names the shape.
template <typename LookUp>
auto onLayerList(const MDagPath& shape, LookUp&& lookUp) -> decltype(lookUp(json()))
{
    try {
        return lookUp(readLayerList(shape));
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
    result.getResult(weights);
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
void runWrite(std::string& command, const MString& layer, const MDagPath& shape, Append&& appendValues)
{
    command = (layer + " -e" + " -vertexWeights \"").asChar();
    appendValues(command);
    command += "\" ";
    command += shape.fullPathName().asChar();
    runMel(MString(command.data(), static_cast<int>(command.size())));
}

void writeWeights(int layerId, const MString& paintTarget, const MDoubleArray& weights, const MDagPath& shape)
{
    std::string command;
    runWrite(command, layerCommand(layerId, paintTarget), shape,
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
    return onLayerList(shape, [&wanted](const json& layers) {
        for (const json& layer : layers) {
            const auto name = layer.find("name");
            const auto id = layer.find("id");
            if (name != layer.end() && id != layer.end() && name->get<std::string>() == wanted)
                return static_cast<unsigned int>(idOf(*id));
        }
        return kNotFound;
    });
}

bool layerHasChildren(MDagPath shape, int layerId)
{
    return onLayerList(shape, [layerId](const json& layers) {
        for (const json& layer : layers) {
            const auto id = layer.find("id");
            if (id == layer.end() || idOf(*id) != layerId)
                continue;
            const json& children = layer.at("children");
            if (!children.is_array())
                throw std::invalid_argument("\"children\" is not an array");
            return !children.empty();
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

void setNgMaskWeights(int layerId, const MDoubleArray& weights, const MDagPath& shape)
{
    writeWeights(layerId, kNgMaskTarget, weights, shape);
}

void setNgDqWeights(int layerId, const MDoubleArray& weights, const MDagPath& shape)
{
    writeWeights(layerId, kNgDqTarget, weights, shape);
}

void setNgInfluenceWeights(int layerId, unsigned int influence, const MDoubleArray& weights,
                           const MDagPath& shape)
{
    writeWeights(layerId, influenceTarget(influence), weights, shape);
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

void NgWeightsWriter::write(const std::vector<double>& weights)
{
    runWrite(command, layerCommand(layer, target), path,
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

void NgInfluenceWriter::restore()
{
    for (int logical : table.logicalIndices)
        writeRow(static_cast<std::size_t>(logical), table.rows[static_cast<std::size_t>(logical)]);
}

/// Rows are addressed by their logical index, so that of the edited influence is its own too.
void NgInfluenceWriter::writeRow(std::size_t row, const std::vector<double>& weights)
{
    std::unique_ptr<NgWeightsWriter>& writer = writers[row];
    if (writer == nullptr) {
        const std::vector<double>& old = table.rows[row];
        const MDoubleArray oldWeights(old.data(), static_cast<unsigned int>(old.size()));
        writer.reset(new NgWeightsWriter(layer, static_cast<unsigned int>(row), oldWeights, path));
    }
    writer->write(weights);
}
