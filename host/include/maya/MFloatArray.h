#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <cassert>
#include <vector>

MAYA_HOST_NAMESPACE_OPEN

/// A growing array of floats; copies are deep. Elements lie in one contiguous block: the address of element
/// 0 is the address of all of them until the length changes. Indices are not checked in release builds.
class MAYA_HOST_EXPORT MFloatArray {
public:
    MFloatArray();
    MFloatArray(const MFloatArray& other);
    MFloatArray(MFloatArray&& other) noexcept;
    MFloatArray(const float* source, unsigned int count);
    MFloatArray(const double* source, unsigned int count);
    MFloatArray(unsigned int size, float value = 0.0F);
    ~MFloatArray();
    MFloatArray& operator=(const MFloatArray& other);
    MFloatArray& operator=(MFloatArray&& other) noexcept;

    float& operator[](unsigned int index)
    {
        assert(index < elements.size());
        return elements[index];
    }
    float operator[](unsigned int index) const
    {
        assert(index < elements.size());
        return elements[index];
    }
    unsigned int length() const { return static_cast<unsigned int>(elements.size()); }
    /// New elements are default values.
    MStatus setLength(unsigned int length);
    MStatus append(float element);
    /// Inserts before the index; the length appends. kFailure beyond.
    MStatus insert(float element, unsigned int index);
    MStatus remove(unsigned int index);
    MStatus set(float element, unsigned int index);
    MStatus set(double element, unsigned int index);
    MStatus clear();
    MStatus copy(const MFloatArray& source);
    /// Copies all elements to the caller's array of at least length() elements.
    MStatus get(float* values) const;
    MStatus get(double* values) const;
    static const char* className() { return "MFloatArray"; }

private:
    std::vector<float> elements;
};

MAYA_HOST_NAMESPACE_CLOSE
