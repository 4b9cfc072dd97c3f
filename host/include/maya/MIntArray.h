#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <cassert>
#include <vector>

MAYA_HOST_NAMESPACE_OPEN

/// A growing array of ints; copies are deep. Elements lie in one contiguous block: the address of element
/// 0 is the address of all of them until the length changes. Indices are not checked in release builds.
class MAYA_HOST_EXPORT MIntArray {
public:
    MIntArray();
    MIntArray(const MIntArray& other);
    MIntArray(MIntArray&& other) noexcept;
    MIntArray(const int* source, unsigned int count);
    MIntArray(unsigned int size, int value = 0);
    ~MIntArray();
    MIntArray& operator=(const MIntArray& other);
    MIntArray& operator=(MIntArray&& other) noexcept;

    int& operator[](unsigned int index)
    {
        assert(index < elements.size());
        return elements[index];
    }
    int operator[](unsigned int index) const
    {
        assert(index < elements.size());
        return elements[index];
    }
    unsigned int length() const { return static_cast<unsigned int>(elements.size()); }
    /// New elements are default values.
    MStatus setLength(unsigned int length);
    MStatus append(int element);
    /// Inserts before the index; the length appends. kFailure beyond.
    MStatus insert(int element, unsigned int index);
    MStatus remove(unsigned int index);
    MStatus set(int element, unsigned int index);
    MStatus clear();
    MStatus copy(const MIntArray& source);
    /// Copies all elements to the caller's array of at least length() elements.
    MStatus get(int* values) const;
    static const char* className() { return "MIntArray"; }

private:
    std::vector<int> elements;
};

MAYA_HOST_NAMESPACE_CLOSE
