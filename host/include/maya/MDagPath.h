#pragma once

#include <maya/MFn.h>
#include <maya/MMatrix.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

namespace host {
struct Api;
class Object;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

/// A path to a node of the hierarchy. There is no instancing: one node has one path.
class MAYA_HOST_EXPORT MDagPath {
public:
    MDagPath();
    MDagPath(const MDagPath& src);
    MDagPath(MDagPath&& other) noexcept : ptr(other.ptr) { other.ptr = nullptr; }
    virtual ~MDagPath();
    MDagPath& operator=(const MDagPath& src);
    MDagPath& operator=(MDagPath&& other) noexcept;
    bool operator==(const MDagPath& src) const;

    static MStatus getAPathTo(const MObject& node, MDagPath& path);
    static MDagPath getAPathTo(const MObject& node, MStatus* status = nullptr);
    bool hasFn(MFn::Type type, MStatus* status = nullptr) const;
    MFn::Type apiType(MStatus* status = nullptr) const;
    bool isValid(MStatus* status = nullptr) const;
    /// The last node of the path.
    MObject node(MStatus* status = nullptr) const;
    /// The last transform of the path.
    MObject transform(MStatus* status = nullptr) const;
    /// Nodes on the path, without the world.
    unsigned int length(MStatus* status = nullptr) const;
    /// From a transform to its only shape that is no intermediate object; a shape stays.
    MStatus extendToShape();
    MStatus numberOfShapesDirectlyBelow(unsigned int&) const;
    MStatus extendToShapeDirectlyBelow(unsigned int);
    MStatus pop(unsigned int num = 1);
    unsigned int childCount(MStatus* status = nullptr) const;
    MObject child(unsigned int i, MStatus* status = nullptr) const;
    MMatrix inclusiveMatrix(MStatus* status = nullptr) const;
    MMatrix exclusiveMatrix(MStatus* status = nullptr) const;
    MMatrix inclusiveMatrixInverse(MStatus* status = nullptr) const;
    MMatrix exclusiveMatrixInverse(MStatus* status = nullptr) const;
    MString fullPathName(MStatus* status = nullptr) const;
    MString partialPathName(MStatus* status = nullptr) const;
    static const char* className() { return "MDagPath"; }

private:
    friend struct host::Api;
    const host::Object* ptr = nullptr;
};

MAYA_HOST_NAMESPACE_CLOSE
