#pragma once

#include <maya/MDagPath.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <cassert>
#include <vector>

MAYA_HOST_NAMESPACE_OPEN

/// A growing array of paths; copies are deep. Elements lie in one contiguous block: the address of element
/// 0 is the address of all of them until the length changes. Indices are not checked in release builds.
class MAYA_HOST_EXPORT MDagPathArray {
public:
    MDagPathArray();
    MDagPathArray(const MDagPathArray& other);
    MDagPathArray(MDagPathArray&& other) noexcept;
    MDagPathArray(unsigned int size, const MDagPath& value);
    ~MDagPathArray();
    MDagPathArray& operator=(const MDagPathArray& other);
    MDagPathArray& operator=(MDagPathArray&& other) noexcept;

    MDagPath& operator[](unsigned int index)
    {
        assert(index < elements.size());
        return elements[index];
    }
    const MDagPath& operator[](unsigned int index) const
    {
        assert(index < elements.size());
        return elements[index];
    }
    unsigned int length() const { return static_cast<unsigned int>(elements.size()); }
    /// New elements are default values.
    MStatus setLength(unsigned int length);
    MStatus append(const MDagPath& element);
    /// Inserts before the index; the length appends. kFailure beyond.
    MStatus insert(const MDagPath& element, unsigned int index);
    MStatus remove(unsigned int index);
    MStatus set(const MDagPath& element, unsigned int index);
    MStatus clear();
    MStatus copy(const MDagPathArray& source);
    static const char* className() { return "MDagPathArray"; }

private:
    std::vector<MDagPath> elements;
};

MAYA_HOST_NAMESPACE_CLOSE
