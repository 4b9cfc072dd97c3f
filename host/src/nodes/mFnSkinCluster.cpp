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
#include <numeric>

using host::Api;
using host::SkinInfluences;

namespace {

/// All elements as one block; null when there are none.
template <class Array>
auto* dataOf(Array& values)
{
    return values.length() > 0 ? &values[0] : nullptr;
}

std::vector<std::uint32_t> allOf(const SkinInfluences& influences)
{
    std::vector<std::uint32_t> physical(influences.count());
    std::iota(physical.begin(), physical.end(), 0u);
    return physical;
}

/// The weights of some influences, vertex-major.
template <class Array>
void readInto(host::Node& skin, const host::SkinColumns& columns, const host::PointList& points,
              Array& weights)
{
    weights.setLength(static_cast<unsigned int>(points.size() * columns.count()));
    columns.read(skin.plug("weightList").rows(), points, dataOf(weights));
}

template <class Array>
void readSome(const MFnBase& set, const MDagPath& path, const MObject& components,
              const std::vector<std::uint32_t>& physical, Array& weights)
{
    host::Node& skin = host::filterOf(set);
    const host::PointSelection selection = host::pointSelection(skin, path, components);
    readInto(skin, {*SkinInfluences::of(skin), physical}, selection.points, weights);
}

template <class Array>
unsigned int readAll(const MFnBase& set, const MDagPath& path, const MObject& components, Array& weights)
{
    host::Node& skin = host::filterOf(set);
    const host::PointSelection selection = host::pointSelection(skin, path, components);
    const std::shared_ptr<const SkinInfluences> influences = SkinInfluences::of(skin);
    readInto(skin, {*influences, allOf(*influences)}, selection.points, weights);
    return static_cast<unsigned int>(influences->count());
}

template <class Array>
void write(const MFnBase& set, const MDagPath& path, const MObject& components, host::SkinWeightChange change,
           Array* oldValues)
{
    host::Node& skin = host::filterOf(set);
    change.points = host::pointSelection(skin, path, components).points;
    Array before;
    if (oldValues) {
        const std::shared_ptr<const SkinInfluences> influences = SkinInfluences::of(skin);
        readInto(skin, {*influences, allOf(*influences)}, change.points, before);
    }
    host::setSkinWeights(skin, change);
    if (oldValues)
        *oldValues = std::move(before);
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
    return host::statusOf([&] { readSome(*this, path, components, {influenceIndex}, weights); });
}

MStatus MFnSkinCluster::getWeights(const MDagPath& path, const MObject& components, MDoubleArray& weights,
                                   unsigned int& influenceCount) const
{
    return host::statusOf([&] { influenceCount = readAll(*this, path, components, weights); });
}

MStatus MFnSkinCluster::getWeights(const MDagPath& path, const MObject& components,
                                   MIntArray& influenceIndices, MDoubleArray& weights) const
{
    return host::statusOf([&] { readSome(*this, path, components, columnsOf(influenceIndices), weights); });
}

MStatus MFnSkinCluster::getWeights(const MDagPath& path, const MObject& components,
                                   unsigned int influenceIndex, MFloatArray& weights) const
{
    return host::statusOf([&] { readSome(*this, path, components, {influenceIndex}, weights); });
}

MStatus MFnSkinCluster::getWeights(const MDagPath& path, const MObject& components, MFloatArray& weights,
                                   unsigned int& influenceCount) const
{
    return host::statusOf([&] { influenceCount = readAll(*this, path, components, weights); });
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
        const std::shared_ptr<const SkinInfluences> influences = SkinInfluences::of(host::filterOf(*this));
        paths.clear();
        for (host::DagNode* node : influences->nodes)
            paths.append(Api::path(node));
        return static_cast<unsigned int>(influences->count());
    });
}

unsigned int MFnSkinCluster::indexForInfluenceObject(const MDagPath& path, MStatus* status) const
{
    return host::answer(status, 0u, [&] {
        const std::shared_ptr<const SkinInfluences> influences = SkinInfluences::of(host::filterOf(*this));
        const host::DagNode* node = Api::node(path);
        const std::uint32_t physical = node ? influences->physical(*node) : SkinInfluences::kNone;
        if (physical == SkinInfluences::kNone)
            throw host::Error("The path is no influence of the skin.");
        return static_cast<unsigned int>(influences->logical[physical]);
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
