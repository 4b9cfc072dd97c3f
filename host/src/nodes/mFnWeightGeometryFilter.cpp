#include "graph/node.h"
#include "graph/numericArray.h"
#include "graph/statusOf.h"
#include "nodes/filterHandles.h"
#include "nodes/filterInput.h"

#include <maya/MFloatArray.h>
#include <maya/MFnWeightGeometryFilter.h>

#include <algorithm>

using host::PointSelection;

namespace {

void read(host::Node& filter, const PointSelection& selection, MFloatArray& weights)
{
    const unsigned int count = static_cast<unsigned int>(selection.points.size());
    weights.setLength(count);
    if (count == 0)
        return;
    if (const host::NumericArray* stored = host::filterWeights(filter, selection.index))
        stored->gather(selection.points.data(), count, &weights[0]);
    else
        std::fill_n(&weights[0], count, 1.0f);
}

/// `values` holds one number per point.
void write(host::Node& filter, const PointSelection& selection, const float* values)
{
    const host::Plug weights = filter.plug("weightList").element(selection.index).child(0);
    if (weights.isLocked() || weights.isFed())
        throw host::Error("'" + weights.name() + "' is locked or has an incoming connection.");
    weights.makeNumbers().scatter(selection.points.data(), selection.points.size(), values);
    weights.changed();
}

void writeOne(const MFnBase& set, const PointSelection& selection, float weight, MFloatArray* oldValues)
{
    host::Node& filter = host::filterOf(set);
    MFloatArray before;
    read(filter, selection, before);
    const std::vector<float> values(selection.points.size(), weight);
    write(filter, selection, values.data());
    if (oldValues)
        *oldValues = before;
}

void writeMany(const MFnBase& set, const PointSelection& selection, const MFloatArray& values)
{
    if (values.length() != selection.points.size())
        throw host::Error("There are " + std::to_string(selection.points.size()) + " points, but " +
                          std::to_string(values.length()) + " weights.");
    if (values.length() > 0)
        write(host::filterOf(set), selection, &const_cast<MFloatArray&>(values)[0]);
}

void requireShape(const MFnBase& set, const MDagPath& path, unsigned int index)
{
    if (host::pointSelection(host::filterOf(set), path, MObject()).index != index)
        throw host::Error("The path is not that of geometry " + std::to_string(index) + ".");
}

} // namespace

MFnWeightGeometryFilter::MFnWeightGeometryFilter() = default;

MFnWeightGeometryFilter::MFnWeightGeometryFilter(MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFnWeightGeometryFilter::MFnWeightGeometryFilter(const MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFn::Type MFnWeightGeometryFilter::type() const
{
    return MFn::kWeightGeometryFilt;
}

MStatus MFnWeightGeometryFilter::getWeights(unsigned int index, const MObject& components,
                                            MFloatArray& weights) const
{
    return host::statusOf([&] {
        host::Node& filter = host::filterOf(*this);
        read(filter, host::pointSelection(filter, index, components), weights);
    });
}

MStatus MFnWeightGeometryFilter::getWeights(const MDagPath& path, const MObject& components,
                                            MFloatArray& weights) const
{
    return host::statusOf([&] {
        host::Node& filter = host::filterOf(*this);
        read(filter, host::pointSelection(filter, path, components), weights);
    });
}

MStatus MFnWeightGeometryFilter::setWeight(const MDagPath& path, unsigned int index,
                                           const MObject& components, float weight, MFloatArray* oldValues)
{
    return host::statusOf([&] {
        requireShape(*this, path, index);
        writeOne(*this, host::pointSelection(host::filterOf(*this), index, components), weight, oldValues);
    });
}

MStatus MFnWeightGeometryFilter::setWeight(const MDagPath& path, const MObject& components, float weight,
                                           MFloatArray* oldValues)
{
    return host::statusOf([&] {
        writeOne(*this, host::pointSelection(host::filterOf(*this), path, components), weight, oldValues);
    });
}

MStatus MFnWeightGeometryFilter::setWeight(const MDagPath& path, unsigned int index,
                                           const MObject& components, MFloatArray& values)
{
    return host::statusOf([&] {
        requireShape(*this, path, index);
        writeMany(*this, host::pointSelection(host::filterOf(*this), index, components), values);
    });
}

MStatus MFnWeightGeometryFilter::setWeight(const MDagPath& path, const MObject& components,
                                           MFloatArray& values)
{
    return host::statusOf(
        [&] { writeMany(*this, host::pointSelection(host::filterOf(*this), path, components), values); });
}
