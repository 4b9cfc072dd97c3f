#include "layers/layerComposer.h"

#include <maya/MDoubleArray.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MIntArray.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace layers {

namespace {

void require(const MStatus& status, const char* what)
{
    if (!status)
        throw std::runtime_error(what);
}

/// The values in one block; null when there are none.
double* dataOf(MDoubleArray& values)
{
    return values.length() == 0 ? nullptr : &values[0];
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

/// A layer with weights of its own, and what its amount is the product of: itself and the groups around it.
struct Source {
    const Layer* layer;
    std::vector<const Layer*> parts;
    std::vector<const double*> columns; ///< of its influences, in physical order; null where it holds none
};

/// Lowest first.
std::vector<Source> sourcesOf(const LayerStack& stack, const std::vector<int>& logicalIndices)
{
    std::vector<Source> sources;
    for (const Layer& layer : stack.all()) {
        if (!stack.childrenOf(layer.id).empty() || (layer.influences.empty() && layer.dualQuaternion.empty()))
            continue;
        Source source{&layer, {&layer}, columnsOf(layer.influences, logicalIndices)};
        while (source.parts.back()->parent != kTopLevel)
            source.parts.push_back(&stack.get(source.parts.back()->parent));
        sources.push_back(std::move(source));
    }
    return sources;
}

/// Some vertices on their way up through the layers, few enough to stay in the cache, with a run of
/// values for each influence.
class Block {
public:
    static constexpr std::size_t kSize = 1024;

    Block(std::size_t firstVertex, std::size_t vertices, std::size_t influences)
        : first(firstVertex), count(vertices), columns(influences)
    {}

    /// An influence that left the skin takes its part of the base along: the rest is scaled up. Without
    /// dual-quaternion weights (null) only the others are laid and stored.
    void start(const std::vector<const double*>& base, const double* baseDualQuaternion)
    {
        Run sum = {};
        for (std::size_t influence = 0; influence < columns.size(); ++influence) {
            for (std::size_t k = 0; base[influence] && k < count; ++k)
                sum[k] += columns[influence][k] = base[influence][first + k];
        }
        for (std::size_t k = 0; k < count; ++k)
            sum[k] = sum[k] > 0.0 ? sum[k] : 1.0;
        for (Run& column : columns) {
            for (std::size_t k = 0; k < count; ++k)
                column[k] /= sum[k];
        }
        if (baseDualQuaternion)
            std::copy_n(baseDualQuaternion + first, count, dualQuaternion.begin());
    }

    void lay(const Source& source)
    {
        Run amount;
        amount.fill(1.0);
        for (const Layer* part : source.parts) {
            for (std::size_t k = 0; k < count; ++k)
                amount[k] *= part->opacity * (part->mask.empty() ? 1.0 : part->mask[first + k]);
        }
        if (!source.layer->influences.empty())
            layInfluences(source.columns, amount);
        const std::vector<double>& above = source.layer->dualQuaternion;
        for (std::size_t k = 0; !above.empty() && k < count; ++k)
            dualQuaternion[k] += amount[k] * (above[first + k] - dualQuaternion[k]);
    }

    /// Into arrays of the whole shape, vertex-major for the influences.
    void store(double* weights, double* blendWeights) const
    {
        for (std::size_t influence = 0; influence < columns.size(); ++influence) {
            double* to = weights + first * columns.size() + influence;
            for (std::size_t k = 0; k < count; ++k, to += columns.size())
                *to = columns[influence][k];
        }
        if (blendWeights)
            std::copy_n(dualQuaternion.begin(), count, blendWeights + first);
    }

private:
    using Run = std::array<double, kSize>;

    void layInfluences(const std::vector<const double*>& above, const Run& amount)
    {
        Run sum = {};
        for (const double* column : above) {
            for (std::size_t k = 0; column && k < count; ++k)
                sum[k] += column[first + k];
        }
        Run keep, add;
        for (std::size_t k = 0; k < count; ++k) {
            keep[k] = 1.0 - amount[k] * std::min(sum[k], 1.0);
            add[k] = amount[k] / std::max(sum[k], 1.0);
        }
        for (std::size_t influence = 0; influence < columns.size(); ++influence) {
            Run& column = columns[influence];
            for (std::size_t k = 0; k < count; ++k)
                column[k] *= keep[k];
            for (std::size_t k = 0; above[influence] && k < count; ++k)
                column[k] += above[influence][first + k] * add[k];
        }
    }

    std::size_t first, count;
    std::vector<Run> columns; ///< zeros at first
    Run dualQuaternion = {};
};

bool hasDualQuaternion(const LayerStack& stack)
{
    const std::vector<Layer>& layers = stack.all();
    return std::any_of(layers.begin(), layers.end(),
                       [](const Layer& layer) { return !layer.dualQuaternion.empty(); });
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
    const std::size_t count = shape.logicalIndices.size();
    const std::vector<const double*> start = columnsOf(base.influences, shape.logicalIndices);
    const std::vector<Source> sources = sourcesOf(stack, shape.logicalIndices);
    MDoubleArray& weights = base.composed;
    weights.setLength(static_cast<unsigned int>(shape.vertexCount * count));
    const bool blends = hasDualQuaternion(stack), writesBlends = blends || base.isBlended;
    MDoubleArray dualQuaternion(writesBlends ? shape.vertexCount : 0);
    for (std::size_t first = 0; first < shape.vertexCount; first += Block::kSize) {
        Block block(first, std::min(Block::kSize, shape.vertexCount - first), count);
        block.start(start, writesBlends ? base.dualQuaternion.data() : nullptr);
        for (const Source& source : sources)
            block.lay(source);
        block.store(dataOf(weights), dataOf(dualQuaternion));
    }

    MFnSkinCluster skin(shape.skin);
    MIntArray influences;
    for (std::size_t influence = 0; influence < shape.logicalIndices.size(); ++influence)
        influences.append(static_cast<int>(influence));
    require(skin.setWeights(shape.path, shape.allVertices, influences, weights, false),
            "its skin cannot be written");
    if (!writesBlends)
        return;
    base.isBlended = blends;
    require(skin.setBlendWeights(shape.path, shape.allVertices, dualQuaternion),
            "its skin cannot be written");
}

} // namespace layers
