#pragma once

#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <cassert>
#include <vector>

MAYA_HOST_NAMESPACE_OPEN

/// A growing array of points; copies are deep. Elements lie in one contiguous block: the address of element
/// 0 is the address of all of them until the length changes. Indices are not checked in release builds.
class MAYA_HOST_EXPORT MPointArray {
public:
    MPointArray();
    MPointArray(const MPointArray& other);
    MPointArray(MPointArray&& other) noexcept;
    MPointArray(const MPoint* source, unsigned int count);
    MPointArray(const double (*source)[4], unsigned int count);
    MPointArray(unsigned int size, const MPoint& value = MPoint());
    ~MPointArray();
    MPointArray& operator=(const MPointArray& other);
    MPointArray& operator=(MPointArray&& other) noexcept;

    MPoint& operator[](unsigned int index)
    {
        assert(index < elements.size());
        return elements[index];
    }
    const MPoint& operator[](unsigned int index) const
    {
        assert(index < elements.size());
        return elements[index];
    }
    unsigned int length() const { return static_cast<unsigned int>(elements.size()); }
    /// New elements are default values.
    MStatus setLength(unsigned int length);
    MStatus append(const MPoint& element);
    MStatus append(double x, double y, double z = 0.0, double w = 1.0);
    /// Inserts before the index; the length appends. kFailure beyond.
    MStatus insert(const MPoint& element, unsigned int index);
    MStatus remove(unsigned int index);
    MStatus set(const MPoint& element, unsigned int index);
    MStatus set(unsigned int index, double x, double y, double z = 0.0, double w = 1.0);
    MStatus clear();
    MStatus copy(const MPointArray& source);
    MStatus get(double (*values)[4]) const;
    static const char* className() { return "MPointArray"; }

private:
    std::vector<MPoint> elements;
};

MAYA_HOST_NAMESPACE_CLOSE
