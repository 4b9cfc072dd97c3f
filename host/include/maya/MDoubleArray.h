#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <cassert>
#include <vector>

MAYA_HOST_NAMESPACE_OPEN

/// A growing array of doubles; copies are deep. Elements lie in one contiguous block: the address of element
/// 0 is the address of all of them until the length changes. Indices are not checked in release builds.
class MAYA_HOST_EXPORT MDoubleArray {
public:
    MDoubleArray();
    MDoubleArray(const MDoubleArray& other);
    MDoubleArray(MDoubleArray&& other) noexcept;
    MDoubleArray(const double* source, unsigned int count);
    MDoubleArray(const float* source, unsigned int count);
    MDoubleArray(unsigned int size, double value = 0.0);
    ~MDoubleArray();
    MDoubleArray& operator=(const MDoubleArray& other);
    MDoubleArray& operator=(MDoubleArray&& other) noexcept;

    double& operator[](unsigned int index)
    {
        assert(index < elements.size());
        return elements[index];
    }
    double operator[](unsigned int index) const
    {
        assert(index < elements.size());
        return elements[index];
    }
    unsigned int length() const { return static_cast<unsigned int>(elements.size()); }
    /// New elements are default values.
    MStatus setLength(unsigned int length);
    MStatus append(double element);
    /// Inserts before the index; the length appends. kFailure beyond.
    MStatus insert(double element, unsigned int index);
    MStatus remove(unsigned int index);
    MStatus set(double element, unsigned int index);
    MStatus set(float element, unsigned int index);
    MStatus clear();
    MStatus copy(const MDoubleArray& source);
    /// Copies all elements to the caller's array of at least length() elements.
    MStatus get(double* values) const;
    MStatus get(float* values) const;
    static const char* className() { return "MDoubleArray"; }

private:
    std::vector<double> elements;
};

MAYA_HOST_NAMESPACE_CLOSE
