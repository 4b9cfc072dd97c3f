#include "layers/layerComposer.h"

#include <maya/MDoubleArray.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MIntArray.h>

#include <algorithm>
#include <stdexcept>

namespace layers {

namespace {

/// What becomes of the skin, vertex-major for the influences.
struct Composed {
    MDoubleArray weights;
    MDoubleArray dualQuaternion;
};

/// The values in one block; null when there are none.
double* dataOf(MDoubleArray& values)
{
    return values.length() == 0 ? nullptr : &values[0];
}

void require(const MStatus& status, const char* what)
{
    if (!status)
        throw std::runtime_error(what);
}

/// The layer's amount at every vertex: opacity and mask, times those of the groups around it.
std::vector<double> amounts(const Layer& layer, const LayerStack& stack, std::size_t vertices)
{
    std::vector<double> amount(vertices, 1.0);
    for (const Layer* part = &layer;; part = &stack.get(part->parent)) {
        for (std::size_t vertex = 0; vertex < vertices; ++vertex)
            amount[vertex] *= part->opacity * (part->mask.empty() ? 1.0 : part->mask[vertex]);
        if (part->parent == kTopLevel)
            return amount;
    }
}

/// Columns by logical index, in physical order; null where there is none.
std::vector<const double*> columnsOf(const std::map<int, std::vector<double>>& influences,
                                     const std::vector<int>& logicalIndices)
{
    std::vector<const double*> columns;
    for (const int logical : logicalIndices) {
        const auto found = influences.find(logical);
        columns.push_back(found == influences.end() ? nullptr : found->second.data());
    }
    return columns;
}

void layInfluences(const std::vector<const double*>& columns, const std::vector<double>& amount, double* row)
{
    const std::size_t count = columns.size();
    for (std::size_t vertex = 0; vertex < amount.size(); ++vertex) {
        double sum = 0.0;
        for (const double* column : columns)
            sum += column ? column[vertex] : 0.0;
        const double below = 1.0 - amount[vertex] * std::min(sum, 1.0);
        const double above = amount[vertex] / std::max(sum, 1.0);
        for (std::size_t influence = 0; influence < count; ++influence)
            row[influence] =
                row[influence] * below + (columns[influence] ? columns[influence][vertex] * above : 0.0);
        row += count;
    }
}

void lay(const Layer& layer, const LayerStack& stack, const std::vector<int>& logicalIndices, Composed& skin)
{
    if (!stack.childrenOf(layer.id).empty() || (layer.influences.empty() && layer.dualQuaternion.empty()))
        return;
    const std::vector<double> amount = amounts(layer, stack, skin.dualQuaternion.length());
    if (!layer.influences.empty())
        layInfluences(columnsOf(layer.influences, logicalIndices), amount, dataOf(skin.weights));
    if (layer.dualQuaternion.empty())
        return;
    double* const below = dataOf(skin.dualQuaternion);
    for (std::size_t vertex = 0; vertex < amount.size(); ++vertex)
        below[vertex] += amount[vertex] * (layer.dualQuaternion[vertex] - below[vertex]);
}

bool hasDualQuaternion(const LayerStack& stack)
{
    const std::vector<Layer>& layers = stack.all();
    return std::any_of(layers.begin(), layers.end(),
                       [](const Layer& layer) { return !layer.dualQuaternion.empty(); });
}

/// An influence that left the skin takes its part of the base along: the rest is scaled up.
Composed startingPoint(const SkinShape& shape, const BaseWeights& base)
{
    const std::vector<const double*> columns = columnsOf(base.influences, shape.logicalIndices);
    const std::size_t count = columns.size();
    Composed skin;
    skin.weights.setLength(static_cast<unsigned int>(shape.vertexCount * count));
    skin.dualQuaternion = MDoubleArray(base.dualQuaternion.data(), shape.vertexCount);
    double* row = dataOf(skin.weights);
    for (std::size_t vertex = 0; vertex < shape.vertexCount; ++vertex, row += count) {
        double sum = 0.0;
        for (std::size_t influence = 0; influence < count; ++influence) {
            row[influence] = columns[influence] ? columns[influence][vertex] : 0.0;
            sum += row[influence];
        }
        if (sum == 1.0 || !(sum > 0.0))
            continue;
        for (std::size_t influence = 0; influence < count; ++influence)
            row[influence] /= sum;
    }
    return skin;
}

} // namespace

BaseWeights readBase(const SkinShape& shape)
{
    const MFnSkinCluster skin(shape.skin);
    BaseWeights base;
    MDoubleArray values;
    unsigned int count = 0;
    require(skin.getWeights(shape.path, shape.allVertices, values, count), "its skin cannot be read");
    for (unsigned int influence = 0; influence < count; ++influence) {
        std::vector<double>& column = base.influences[shape.logicalIndices[influence]];
        for (unsigned int vertex = 0; vertex < shape.vertexCount; ++vertex)
            column.push_back(values[vertex * count + influence]);
    }
    require(skin.getBlendWeights(shape.path, shape.allVertices, values), "its skin cannot be read");
    for (unsigned int vertex = 0; vertex < shape.vertexCount; ++vertex)
        base.dualQuaternion.push_back(vertex < values.length() ? values[vertex] : 0.0);
    return base;
}

void compose(const SkinShape& shape, BaseWeights& base, const LayerStack& stack)
{
    if (base.dualQuaternion.size() != shape.vertexCount)
        throw std::runtime_error("it has other vertices than when the layers were attached");
    Composed composed = startingPoint(shape, base);
    for (const Layer& layer : stack.all())
        lay(layer, stack, shape.logicalIndices, composed);

    MFnSkinCluster skin(shape.skin);
    MIntArray influences;
    for (std::size_t influence = 0; influence < shape.logicalIndices.size(); ++influence)
        influences.append(static_cast<int>(influence));
    require(skin.setWeights(shape.path, shape.allVertices, influences, composed.weights, false),
            "its skin cannot be written");
    const bool blends = hasDualQuaternion(stack);
    if (!blends && !base.isBlended)
        return;
    base.isBlended = blends;
    require(skin.setBlendWeights(shape.path, shape.allVertices, composed.dualQuaternion),
            "its skin cannot be written");
}

} // namespace layers
