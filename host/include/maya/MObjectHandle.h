#pragma once

#include <maya/MObject.h>
#include <maya/MTypes.h>

MAYA_HOST_NAMESPACE_OPEN

/// A handle that may be kept while the scene changes: it tells whether its object is still there. Anything
/// else that is kept across a new scene or a deletion must not be used again.
class MAYA_HOST_EXPORT MObjectHandle {
public:
    MObjectHandle();
    MObjectHandle(const MObject& object);
    MObjectHandle(const MObjectHandle& handle);
    ~MObjectHandle();
    MObjectHandle& operator=(const MObject& object);
    MObjectHandle& operator=(const MObjectHandle& other);

    /// The object while it is in memory, else null.
    MObject object() const;
    const MObject& objectRef() const;
    /// The same number for every handle on one object, 0 for none.
    unsigned int hashCode() const;
    static unsigned int objectHashCode(const MObject&);
    /// In the scene, not merely in memory.
    bool isValid() const;
    /// In memory, perhaps only because the undo queue could bring it back. Handles of this class do not keep
    /// an object in memory.
    bool isAlive() const;

    bool operator==(const MObject& object) const;
    bool operator==(const MObjectHandle& object) const;
    bool operator!=(const MObject& object) const;
    bool operator!=(const MObjectHandle& object) const;

private:
    MObject watched;
};

MAYA_HOST_NAMESPACE_CLOSE
