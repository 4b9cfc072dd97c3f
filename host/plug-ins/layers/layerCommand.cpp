#include "layers/layerCommand.h"

#include "layers/layerList.h"

#include <maya/MArgList.h>
#include <maya/MDoubleArray.h>

#include <charconv>
#include <stdexcept>
#include <string>

namespace layers {

namespace {

ShapeLayers* find(const MDagPath& path)
{
    const MObject node = path.node();
    for (ShapeLayers& layers : LayerData::instance().shapes) {
        if (layers.shape == node)
            return &layers;
    }
    return nullptr;
}

ShapeLayers& require(const MDagPath& path)
{
    ShapeLayers* const layers = find(path);
    if (!layers)
        throw std::runtime_error("it has no layers");
    return *layers;
}

void attach(const SkinShape& shape)
{
    if (find(shape.path))
        throw std::runtime_error("it has layers already");
    attachDataNode(shape);
    ShapeLayers layers;
    layers.shape = shape.path.node();
    layers.base = readBase(shape);
    LayerData::instance().shapes.push_back(std::move(layers));
}

/// The logical index that a paint target names. Throws std::runtime_error when the skin has no such
/// influence.
int influenceOf(const MString& target, const SkinShape& shape)
{
    for (const int logical : shape.logicalIndices) {
        if (std::to_string(logical) == target.asChar())
            return logical;
    }
    throw std::runtime_error(std::string("there is no paint target ") + target.asChar());
}

std::vector<double>& arrayOf(Layer& layer, const MString& target, const SkinShape& shape)
{
    if (target == "mask")
        return layer.mask;
    if (target == "dq")
        return layer.dualQuaternion;
    return layer.influences[influenceOf(target, shape)];
}

/// Empty when nothing was.
std::vector<double> paintedOn(const Layer& layer, const MString& target, const SkinShape& shape)
{
    if (target == "mask")
        return layer.mask;
    if (target == "dq")
        return layer.dualQuaternion;
    const auto painted = layer.influences.find(influenceOf(target, shape));
    return painted == layer.influences.end() ? std::vector<double>() : painted->second;
}

/// Numbers with commas between them. Throws std::runtime_error when they are not one for each vertex.
std::vector<double> parseValues(const MString& text, unsigned int vertexCount)
{
    std::vector<double> values;
    values.reserve(vertexCount);
    const char* next = text.asChar();
    const char* const last = next + text.length();
    while (next != last) {
        double value = 0.0;
        const std::from_chars_result read = std::from_chars(next, last, value);
        const bool more = read.ptr != last && *read.ptr == ',';
        if (read.ec != std::errc() || (!more && read.ptr != last) || (more && read.ptr + 1 == last))
            throw std::runtime_error("the weights are no list of numbers");
        values.push_back(value);
        next = more ? read.ptr + 1 : read.ptr;
    }
    if (values.size() != vertexCount)
        throw std::runtime_error("there are " + std::to_string(values.size()) + " weights for " +
                                 std::to_string(vertexCount) + " vertices");
    return values;
}

void refuse(Misbehaviour kind)
{
    if (LayerData::instance().misbehaviour == kind)
        throw std::runtime_error("the layers are out of order");
}

} // namespace

LayerData& LayerData::instance()
{
    static LayerData data;
    return data;
}

MStatus LayerCommand::doIt(const MArgList& args)
{
    std::string where;
    try {
        const LayerArguments sorted = sortArguments(args);
        where = sorted.object.length() == 0 ? "" : std::string(sorted.object.asChar()) + ": ";
        if (sorted.has("misbehave"))
            LayerData::instance().misbehaviour = misbehaviourNamed(sorted.text("misbehave").asChar());
        else if (sorted.mode == LayerArguments::kQuery)
            query(sorted);
        else if (sorted.mode == LayerArguments::kEdit)
            edit(sorted);
        else
            throw std::runtime_error("The command queries or edits.");
    } catch (const std::exception& failure) {
        displayError(MString("ngst2Layers: ") + where.c_str() + failure.what());
        return MS::kFailure;
    }
    return MS::kSuccess;
}

void LayerCommand::query(const LayerArguments& args)
{
    const SkinShape shape = skinShape(shapePath(args.object));
    const ShapeLayers& layers = require(shape.path);
    if (args.has("layerList")) {
        refuse(Misbehaviour::kFailingList);
        setResult(MString(layerList(layers.stack, LayerData::instance().misbehaviour).c_str()));
    } else if (args.has("vertexCount")) {
        refuse(Misbehaviour::kFailingCount);
        setResult(static_cast<int>(shape.vertexCount));
    } else if (args.has("vertexWeights")) {
        queryWeights(args, layers, shape);
    } else {
        throw std::runtime_error("nothing is queried");
    }
}

void LayerCommand::queryWeights(const LayerArguments& args, const ShapeLayers& layers, const SkinShape& shape)
{
    refuse(Misbehaviour::kFailingRead);
    std::vector<double> weights =
        paintedOn(layers.stack.get(args.integer("layerId")), args.text("paintTarget"), shape);
    switch (LayerData::instance().misbehaviour) {
    case Misbehaviour::kFailingCount:
        weights.clear();
        break;
    case Misbehaviour::kTooFewWeights:
        weights.resize(shape.vertexCount - 1, 0.5);
        break;
    case Misbehaviour::kTooManyWeights:
        weights.resize(shape.vertexCount + 1, 0.5);
        break;
    default:
        break;
    }
    setResult(MDoubleArray(weights.data(), static_cast<unsigned int>(weights.size())));
}

void LayerCommand::edit(const LayerArguments& args)
{
    const SkinShape shape = skinShape(shapePath(args.object));
    if (args.has("attach"))
        return attach(shape);
    ShapeLayers& layers = require(shape.path);
    if (args.has("addLayer")) {
        const int parent = args.has("parent") ? args.integer("parent") : kTopLevel;
        setResult(layers.stack.add(args.text("addLayer").asUTF8(), parent));
    } else {
        editLayer(args, layers, shape);
    }
    compose(shape, layers.base, layers.stack);
}

void LayerCommand::editLayer(const LayerArguments& args, ShapeLayers& layers, const SkinShape& shape)
{
    const int id = args.integer("layerId");
    Layer& layer = layers.stack.get(id);
    if (args.has("vertexWeights")) {
        refuse(Misbehaviour::kFailingWrite);
        std::vector<double> weights = parseValues(args.text("vertexWeights"), shape.vertexCount);
        arrayOf(layer, args.text("paintTarget"), shape) = std::move(weights);
    }
    if (args.has("name"))
        layer.name = args.text("name").asUTF8();
    if (args.has("opacity"))
        layer.opacity = args.real("opacity");
    if (args.has("parent"))
        layers.stack.setParent(id, args.integer("parent"));
    if (args.has("removeLayer"))
        layers.stack.remove(id);
}

} // namespace layers
