#pragma once

#include "weightModes/weightStore.h"

/// The whole span of a probe that goes up in one step, in weight units.
constexpr double kProbeSpan = 0.01;

/// A probe that steps from the value it wrote last: down by the step, up by the span, down by the step again.
/// In the precision of `Weight` the sum need not be the first value: what is put back is the result of that
/// arithmetic, which users of these modes have always had. When the second write never happened, the first
/// value goes back.
template <typename Weight>
class SteppingProbe : public WeightProbe {
public:
    explicit SteppingProbe(Weight firstValue) : first(firstValue), value(firstValue) {}

    MStatus writeLow(double step) override { return write(static_cast<double>(value) - step); }
    MStatus writeHigh(double) override
    {
        steppedUp = true;
        return write(static_cast<double>(value) + kProbeSpan);
    }
    MStatus restore(double step) override
    {
        return writeValue(steppedUp ? static_cast<Weight>(static_cast<double>(value) - step) : first);
    }

protected:
    virtual MStatus writeValue(Weight newValue) = 0;

private:
    MStatus write(double newValue)
    {
        value = static_cast<Weight>(newValue);
        return writeValue(value);
    }

    Weight first;
    Weight value;
    bool steppedUp = false;
};
