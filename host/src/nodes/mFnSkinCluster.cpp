#include "graph/node.h"
#include "graph/numericArray.h"
#include "graph/statusOf.h"
#include "nodes/filterHandles.h"
#include "nodes/skinWeights.h"

#include <maya/MDagPathArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MFloatArray.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MIntArray.h>

#include <algorithm>

using host::Api;
using host::SkinInfluences;

namespace {

struct SkinRead {
    std::vector<double> weights; ///< vertex-major, all influences
    std::size_t points;
    std::size_t influences;
};

SkinRead readAll(const MFnBase& set, const MDagPath& path, const MObject& components)
{
    host::Node& skin = host::filterOf(set);
    const SkinInfluences influences(skin);
    const host::PointSelection selection = host::pointSelection(skin, path, components);
    return {host::skinWeights(skin, influences, selection.points), selection.points.size(),
            influences.count()};
}

/// The columns of some influences, vertex-major.
template <class Array>
void pick(const SkinRead& read, const std::vector<std::uint32_t>& columns, Array& weights)
{
    for (const std::uint32_t column : columns)
        if (column >= read.influences)
            throw host::Error("There is no influence " + std::to_string(column) + ".");
    weights.setLength(static_cast<unsigned int>(read.points * columns.size()));
    unsigned int next = 0;
    for (std::size_t point = 0; point < read.points; ++point)
        for (const std::uint32_t column : columns) {
            using Number = std::decay_t<decltype(weights[0])>;
            weights[next++] = static_cast<Number>(read.weights[point * read.influences + column]);
        }
}

template <class Array>
void all(const SkinRead& read, Array& weights)
{
    std::vector<std::uint32_t> columns(read.influences);
    for (std::size_t column = 0; column < columns.size(); ++column)
        columns[column] = static_cast<std::uint32_t>(column);
    pick(read, columns, weights);
}

template <class Array>
void write(const MFnBase& set, const MDagPath& path, const MObject& components, host::SkinWeightChange change,
           Array* oldValues)
{
    host::Node& skin = host::filterOf(set);
    const SkinInfluences influences(skin);
    change.points = host::pointSelection(skin, path, components).points;
    SkinRead before;
    if (oldValues)
        before = {host::skinWeights(skin, influences, change.points), change.points.size(),
                  influences.count()};
    host::setSkinWeights(skin, influences, change);
    if (oldValues)
        all(before, *oldValues);
}

std::vector<std::uint32_t> columnsOf(const MIntArray& influences)
{
    std::vector<std::uint32_t> columns;
    for (unsigned int i = 0; i < influences.length(); ++i)
        columns.push_back(static_cast<std::uint32_t>(influences[i]));
    return columns;
}

/// The values stay the caller's.
host::SkinWeightChange changeOf(std::vector<std::uint32_t> influences, const double* values,
                                std::size_t valueCount, bool normalize)
{
    host::SkinWeightChange change;
    change.influences = std::move(influences);
    change.values = values;
    change.valueCount = valueCount;
    change.normalize = normalize;
    return change;
}

/// All elements as one block; null when there are none.
template <class Array>
auto* dataOf(Array& values)
{
    return values.length() > 0 ? &values[0] : nullptr;
}

} // namespace

MFnSkinCluster::MFnSkinCluster() = default;

MFnSkinCluster::MFnSkinCluster(MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFnSkinCluster::MFnSkinCluster(const MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFn::Type MFnSkinCluster::type() const
{
    return MFn::kSkinClusterFilter;
}

MStatus MFnSkinCluster::getWeights(const MDagPath& path, const MObject& components,
                                   unsigned int influenceIndex, MDoubleArray& weights) const
{
    return host::statusOf([&] { pick(readAll(*this, path, components), {influenceIndex}, weights); });
}

MStatus MFnSkinCluster::getWeights(const MDagPath& path, const MObject& components, MDoubleArray& weights,
                                   unsigned int& influenceCount) const
{
    return host::statusOf([&] {
        const SkinRead read = readAll(*this, path, components);
        all(read, weights);
        influenceCount = static_cast<unsigned int>(read.influences);
    });
}

MStatus MFnSkinCluster::getWeights(const MDagPath& path, const MObject& components,
                                   MIntArray& influenceIndices, MDoubleArray& weights) const
{
    return host::statusOf(
        [&] { pick(readAll(*this, path, components), columnsOf(influenceIndices), weights); });
}

MStatus MFnSkinCluster::getWeights(const MDagPath& path, const MObject& components,
                                   unsigned int influenceIndex, MFloatArray& weights) const
{
    return host::statusOf([&] { pick(readAll(*this, path, components), {influenceIndex}, weights); });
}

MStatus MFnSkinCluster::getWeights(const MDagPath& path, const MObject& components, MFloatArray& weights,
                                   unsigned int& influenceCount) const
{
    return host::statusOf([&] {
        const SkinRead read = readAll(*this, path, components);
        all(read, weights);
        influenceCount = static_cast<unsigned int>(read.influences);
    });
}

MStatus MFnSkinCluster::setWeights(const MDagPath& path, const MObject& components, unsigned int jointIndex,
                                   double value, bool normalize, MDoubleArray* oldValues)
{
    return host::statusOf(
        [&] { write(*this, path, components, changeOf({jointIndex}, &value, 1, normalize), oldValues); });
}

MStatus MFnSkinCluster::setWeights(const MDagPath& path, const MObject& components,
                                   MIntArray& influenceIndices, MDoubleArray& values, bool normalize,
                                   MDoubleArray* oldValues)
{
    return host::statusOf([&] {
        write(*this, path, components,
              changeOf(columnsOf(influenceIndices), dataOf(values), values.length(), normalize), oldValues);
    });
}

MStatus MFnSkinCluster::setWeights(const MDagPath& path, const MObject& components, unsigned int jointIndex,
                                   float value, bool normalize, MFloatArray* oldValues)
{
    const double wide = static_cast<double>(value);
    return host::statusOf(
        [&] { write(*this, path, components, changeOf({jointIndex}, &wide, 1, normalize), oldValues); });
}

MStatus MFnSkinCluster::setWeights(const MDagPath& path, const MObject& components,
                                   MIntArray& influenceIndices, MFloatArray& values, bool normalize,
                                   MFloatArray* oldValues)
{
    return host::statusOf([&] {
        std::vector<double> wide(values.length());
        values.get(wide.data());
        write(*this, path, components,
              changeOf(columnsOf(influenceIndices), wide.data(), wide.size(), normalize), oldValues);
    });
}

unsigned int MFnSkinCluster::influenceObjects(MDagPathArray& paths, MStatus* status) const
{
    return host::answer(status, 0u, [&] {
        const SkinInfluences influences(host::filterOf(*this));
        paths.clear();
        for (host::DagNode* node : influences.nodes)
            paths.append(Api::path(node));
        return static_cast<unsigned int>(influences.count());
    });
}

unsigned int MFnSkinCluster::indexForInfluenceObject(const MDagPath& path, MStatus* status) const
{
    return host::answer(status, 0u, [&] {
        const SkinInfluences influences(host::filterOf(*this));
        const host::DagNode* node = Api::node(path);
        const std::uint32_t physical = node ? influences.physical(*node) : SkinInfluences::kNone;
        if (physical == SkinInfluences::kNone)
            throw host::Error("The path is no influence of the skin.");
        return static_cast<unsigned int>(influences.logical[physical]);
    });
}

MStatus MFnSkinCluster::getBlendWeights(const MDagPath& path, const MObject& components,
                                        MDoubleArray& weights) const
{
    return host::statusOf([&] {
        host::Node& skin = host::filterOf(*this);
        const host::PointList points = host::pointSelection(skin, path, components).points;
        const host::NumericArray* stored = skin.plug("blendWeights").numbers();
        const auto count = static_cast<unsigned int>(points.size());
        weights = MDoubleArray(count, 0.0);
        if (stored && count > 0)
            stored->gather(points.data(), count, &weights[0]);
    });
}

MStatus MFnSkinCluster::setBlendWeights(const MDagPath& path, const MObject& components,
                                        const MDoubleArray& weights)
{
    return host::statusOf([&] {
        host::Node& skin = host::filterOf(*this);
        const host::PointList points = host::pointSelection(skin, path, components).points;
        const host::Plug plug = skin.plug("blendWeights");
        if (plug.isLocked() || plug.isFed())
            throw host::Error("'" + plug.name() + "' is locked or has an incoming connection.");
        const std::size_t count = std::min<std::size_t>(points.size(), weights.length());
        plug.makeNumbers().scatter(points.data(), count, dataOf(const_cast<MDoubleArray&>(weights)));
        plug.changed();
    });
}
