#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <cassert>
#include <vector>

MAYA_HOST_NAMESPACE_OPEN

/// A growing array of handles; copies are deep. Elements lie in one contiguous block: the address of element
/// 0 is the address of all of them until the length changes. Indices are not checked in release builds.
class MAYA_HOST_EXPORT MObjectArray {
public:
    MObjectArray();
    MObjectArray(const MObjectArray& other);
    MObjectArray(MObjectArray&& other) noexcept;
    MObjectArray(const MObject* source, unsigned int count);
    MObjectArray(unsigned int size, const MObject& value = MObject());
    ~MObjectArray();
    MObjectArray& operator=(const MObjectArray& other);
    MObjectArray& operator=(MObjectArray&& other) noexcept;

    MObject& operator[](unsigned int index)
    {
        assert(index < elements.size());
        return elements[index];
    }
    const MObject& operator[](unsigned int index) const
    {
        assert(index < elements.size());
        return elements[index];
    }
    unsigned int length() const { return static_cast<unsigned int>(elements.size()); }
    /// New elements are default values.
    MStatus setLength(unsigned int length);
    MStatus append(const MObject& element);
    /// Inserts before the index; the length appends. kFailure beyond.
    MStatus insert(const MObject& element, unsigned int index);
    MStatus remove(unsigned int index);
    MStatus set(const MObject& element, unsigned int index);
    MStatus clear();
    MStatus copy(const MObjectArray& source);
    /// Copies all elements to the caller's array of at least length() elements.
    MStatus get(MObject* values) const;
    static const char* className() { return "MObjectArray"; }

private:
    std::vector<MObject> elements;
};

MAYA_HOST_NAMESPACE_CLOSE
