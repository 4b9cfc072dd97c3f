#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <cassert>
#include <vector>

MAYA_HOST_NAMESPACE_OPEN

/// A growing array of strings; copies are deep. Elements lie in one contiguous block: the address of element
/// 0 is the address of all of them until the length changes. Indices are not checked in release builds.
class MAYA_HOST_EXPORT MStringArray {
public:
    MStringArray();
    MStringArray(const MStringArray& other);
    MStringArray(MStringArray&& other) noexcept;
    MStringArray(const MString* source, unsigned int count);
    MStringArray(unsigned int size, const MString& value);
    ~MStringArray();
    MStringArray& operator=(const MStringArray& other);
    MStringArray& operator=(MStringArray&& other) noexcept;

    MString& operator[](unsigned int index)
    {
        assert(index < elements.size());
        return elements[index];
    }
    MString operator[](unsigned int index) const
    {
        assert(index < elements.size());
        return elements[index];
    }
    unsigned int length() const { return static_cast<unsigned int>(elements.size()); }
    /// New elements are default values.
    MStatus setLength(unsigned int length);
    MStatus append(const MString& element);
    /// Inserts before the index; the length appends. kFailure beyond.
    MStatus insert(const MString& element, unsigned int index);
    MStatus remove(unsigned int index);
    MStatus set(const MString& element, unsigned int index);
    MStatus clear();
    /// Copies all elements to the caller's array of at least length() elements.
    MStatus get(MString* values) const;
    static const char* className() { return "MStringArray"; }

private:
    std::vector<MString> elements;
};

MAYA_HOST_NAMESPACE_CLOSE
