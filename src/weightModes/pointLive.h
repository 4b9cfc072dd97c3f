#pragma once

#include "helperFunctions/helperFunctions.h"
#include "weightModes/weightStore.h"

/// Whether every point of an object has a falloff; when not, people are told and the object is left alone.
/// There may be more falloffs than points: those of an earlier item on the same object may stand before its
/// own.
bool fitsFalloff(const EditRecord& record, const EditedObject& object, std::size_t valueCount);

/// The clamps of the live stroke in the record's mode: 0..1, or the user's.
ClampSettings liveClampsOf(const EditRecord& record);

/// A live object of the modes that hold one number per point. `Array` is MFloatArray or MDoubleArray, the
/// precision in which the weights are stored.
template <typename Array, typename Weight>
class PointLive : public LiveObject {
public:
    /// Needs fitsFalloff for the old weights. The record outlives this.
    PointLive(const EditRecord& record, const EditedObject& object, const Array& oldWeights)
        : path(object.path), component(object.component), old(toVector(oldWeights)),
          soft(toVector(record.softSelectWeights[object.index])), settings(record), values(oldWeights)
    {}

    std::size_t pointCount() const override { return old.size(); }
    void newWeights(double offset, double* result) const override
    {
        offsetLive(old.data(), soft.data(), old.size(), offset, liveClampsOf(settings), result);
    }
    MStatus write(double offset) override
    {
        offsetLive(old.data(), soft.data(), old.size(), offset, liveClampsOf(settings), dataOf(values));
        return writeValues();
    }
    MStatus restore() override
    {
        values = Array(old.data(), static_cast<unsigned int>(old.size()));
        return writeOldValues();
    }

protected:
    /// Writes `values`; reports and returns a failure.
    virtual MStatus writeValues() = 0;
    /// Writes `values`, which are those of the press, as far as they can be written.
    virtual MStatus writeOldValues() = 0;

    MDagPath path;
    MObject component;
    std::vector<Weight> old;
    std::vector<float> soft;
    const EditRecord& settings; ///< the clamps may change while the mouse is down
    Array values;               ///< one per point; as long as the object lives
};

using FloatLive = PointLive<MFloatArray, float>;
using DoubleLive = PointLive<MDoubleArray, double>;

/// The redo of a stroke on per-point values: old weights, offset and falloff, clamped by the settings.
template <typename Array, typename Weight>
Array redoneWeights(const EditRecord& record, unsigned int objectIndex, const Array& oldWeights)
{
    const std::vector<Weight> old = toVector(oldWeights);
    const std::vector<float> soft = toVector(record.softSelectWeights[objectIndex]);
    Array values(oldWeights);
    offsetRedo(old.data(), soft.data(), old.size(), record.offsetValue, record.clamps(), dataOf(values));
    return values;
}
