#pragma once

#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <cassert>
#include <vector>

MAYA_HOST_NAMESPACE_OPEN

/// A growing array of plugs; copies are deep. Elements lie in one contiguous block: the address of element
/// 0 is the address of all of them until the length changes. Indices are not checked in release builds.
class MAYA_HOST_EXPORT MPlugArray {
public:
    MPlugArray();
    MPlugArray(const MPlugArray& other);
    MPlugArray(MPlugArray&& other) noexcept;
    MPlugArray(const MPlug* source, unsigned int count);
    MPlugArray(unsigned int size, const MPlug& value);
    ~MPlugArray();
    MPlugArray& operator=(const MPlugArray& other);
    MPlugArray& operator=(MPlugArray&& other) noexcept;

    MPlug& operator[](unsigned int index)
    {
        assert(index < elements.size());
        return elements[index];
    }
    const MPlug& operator[](unsigned int index) const
    {
        assert(index < elements.size());
        return elements[index];
    }
    unsigned int length() const { return static_cast<unsigned int>(elements.size()); }
    /// New elements are default values.
    MStatus setLength(unsigned int length);
    MStatus append(const MPlug& element);
    /// Inserts before the index; the length appends. kFailure beyond.
    MStatus insert(const MPlug& element, unsigned int index);
    MStatus remove(unsigned int index);
    MStatus set(const MPlug& element, unsigned int index);
    MStatus clear();
    MStatus copy(const MPlugArray& source);
    /// Copies all elements to the caller's array of at least length() elements.
    MStatus get(MPlug* values) const;
    static const char* className() { return "MPlugArray"; }

private:
    std::vector<MPlug> elements;
};

MAYA_HOST_NAMESPACE_CLOSE
