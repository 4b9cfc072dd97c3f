#pragma once

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MPoint.h>
#include <maya/MPointArray.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/MWeight.h>

#include <memory>

namespace host {
struct Api;
struct GeometryWalk;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

/// Walks over the points of a shape or of a component, in the order of the component.
class MAYA_HOST_EXPORT MItGeometry {
public:
    MItGeometry(const MItGeometry&) = delete;
    MItGeometry& operator=(const MItGeometry&) = delete;
    /// A null component means all points.
    MItGeometry(const MDagPath& dagPath, MStatus* status = nullptr);
    MItGeometry(const MDagPath& dagPath, MObject& component, MStatus* status = nullptr);
    MItGeometry(MObject& dagObject, MStatus* status = nullptr);
    virtual ~MItGeometry();

    bool isDone(MStatus* status = nullptr) const;
    MStatus next();
    MStatus reset();
    /// World space needs an iterator made from a path.
    MPoint position(MSpace::Space space = MSpace::kObject, MStatus* status = nullptr) const;
    MStatus setPosition(const MPoint& point, MSpace::Space space = MSpace::kObject);
    /// The id of the current point: vertex, CV or lattice point.
    int index(MStatus* status = nullptr) const;
    int count(MStatus* status = nullptr) const;
    int exactCount(MStatus* status = nullptr);
    MObject currentItem(MStatus* status = nullptr) const;
    MWeight weight(MStatus* status = nullptr) const;
    MStatus allPositions(MPointArray& points, MSpace::Space space = MSpace::kObject) const;
    static const char* className() { return "MItGeometry"; }

private:
    friend struct host::Api;
    std::unique_ptr<host::GeometryWalk> walk;
};

MAYA_HOST_NAMESPACE_CLOSE
