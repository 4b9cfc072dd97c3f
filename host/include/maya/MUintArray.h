#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <cassert>
#include <vector>

MAYA_HOST_NAMESPACE_OPEN

/// A growing array of unsigned ints; copies are deep. Elements lie in one contiguous block: the address of
/// element 0 is the address of all of them until the length changes. Indices are not checked in release
/// builds.
class MAYA_HOST_EXPORT MUintArray {
public:
    MUintArray();
    MUintArray(const MUintArray& other);
    MUintArray(MUintArray&& other) noexcept;
    MUintArray(const unsigned int* source, unsigned int count);
    MUintArray(unsigned int size, unsigned int value = 0);
    ~MUintArray();
    MUintArray& operator=(const MUintArray& other);
    MUintArray& operator=(MUintArray&& other) noexcept;

    unsigned int& operator[](unsigned int index)
    {
        assert(index < elements.size());
        return elements[index];
    }
    unsigned int operator[](unsigned int index) const
    {
        assert(index < elements.size());
        return elements[index];
    }
    unsigned int length() const { return static_cast<unsigned int>(elements.size()); }
    /// New elements are default values.
    MStatus setLength(unsigned int length);
    MStatus append(unsigned int element);
    /// Inserts before the index; the length appends. kFailure beyond.
    MStatus insert(unsigned int element, unsigned int index);
    MStatus remove(unsigned int index);
    MStatus set(unsigned int element, unsigned int index);
    MStatus clear();
    MStatus copy(const MUintArray& source);
    /// Copies all elements to the caller's array of at least length() elements.
    MStatus get(unsigned int* values) const;
    static const char* className() { return "MUintArray"; }

private:
    std::vector<unsigned int> elements;
};

MAYA_HOST_NAMESPACE_CLOSE
