#pragma once

#include <maya/MTypes.h>

MAYA_HOST_NAMESPACE_OPEN

/// The weight that soft selection gives to one element: influence is the falloff, 0 to 1.
class MAYA_HOST_EXPORT MWeight {
public:
    MWeight() : influenceValue(1.0F), seamValue(0.0F) {}

    float influence() const { return influenceValue; }
    float seam() const { return seamValue; }
    void setInfluence(float influence) { influenceValue = influence; }
    void setSeam(float seam) { seamValue = seam; }
    static const char* className() { return "MWeight"; }

private:
    float influenceValue;
    float seamValue;
};

MAYA_HOST_NAMESPACE_CLOSE
