#include "graph/node.h"
#include "graph/statusOf.h"
#include "nodes/filterAccess.h"
#include "nodes/geometry.h"
#include "selection/component.h"

#include <maya/MDagPath.h>
#include <maya/MItGeometry.h>
#include <maya/MPointArray.h>

namespace host {

/// Where an iterator stands. The points are those of the moment it was made, and its own changes.
struct GeometryWalk {
    Ref<DagNode> shape;
    Ref<Component> component; ///< null = all points
    std::vector<int> ids;
    std::size_t at = 0;
    GeometryRef geometry;
    bool hasPath = false;

    std::size_t current() const
    {
        if (!shape || !shape->alive() || at >= ids.size())
            throw Error("The iterator stands on no point.");
        return static_cast<std::size_t>(ids[at]);
    }
};

} // namespace host

using host::Api;

namespace {

std::unique_ptr<host::GeometryWalk> begin(host::Node* node, const MObject& component, bool hasPath)
{
    host::DagNode* shape = node ? host::componentShape(*node) : nullptr;
    if (!shape)
        throw host::Error("There is no shape to walk over.");
    auto walk = std::make_unique<host::GeometryWalk>();
    walk->shape = shape;
    walk->hasPath = hasPath;
    if (!component.isNull()) {
        walk->component = dynamic_cast<host::Component*>(Api::object(component));
        if (!walk->component || walk->component->apiType() != host::pointComponentType(*shape))
            throw host::Error("The component holds no points of '" + shape->uniqueName() + "'.");
    }
    walk->geometry = host::shapeGeometry(*shape);
    if (!walk->geometry)
        throw host::Error("'" + shape->uniqueName() + "' has no points.");
    walk->ids = host::pointIndices(*walk->geometry, walk->component.get());
    return walk;
}

std::unique_ptr<host::GeometryWalk> tryBegin(host::Node* node, const MObject& component, bool hasPath,
                                             MStatus* status)
{
    std::unique_ptr<host::GeometryWalk> walk;
    const MStatus result = host::statusOf([&] { walk = begin(node, component, hasPath); });
    host::report(status, result);
    return walk ? std::move(walk) : std::make_unique<host::GeometryWalk>();
}

bool isWorld(MSpace::Space space)
{
    return space == MSpace::kWorld;
}

MPoint inSpace(const host::GeometryWalk& walk, std::size_t id, MSpace::Space space)
{
    Imath::V3d point = walk.geometry->points()[id];
    if (isWorld(space))
        point = point * host::worldMatrix(*walk.shape);
    return MPoint(point.x, point.y, point.z);
}

/// Adds to the offset of the point what carries it to the position.
void move(host::GeometryWalk& walk, const MPoint& position, MSpace::Space space)
{
    Imath::V3d target(position.x, position.y, position.z);
    if (isWorld(space))
        target = target * host::worldMatrix(*walk.shape).inverse();
    const std::size_t id = walk.current();
    const Imath::V3d change = target - walk.geometry->points()[id];
    const host::Plug offset = host::offsetPlug(*walk.shape, static_cast<int>(id));
    for (unsigned axis = 0; axis < 3; ++axis) {
        const host::Plug plug = offset.child(axis);
        plug.setNumber(plug.number() + change[static_cast<int>(axis)]);
    }
    walk.geometry = host::shapeGeometry(*walk.shape);
}

} // namespace

MItGeometry::MItGeometry(const MDagPath& dagPath, MStatus* status)
    : walk(tryBegin(Api::node(dagPath), MObject(), true, status))
{}

MItGeometry::MItGeometry(const MDagPath& dagPath, MObject& component, MStatus* status)
    : walk(tryBegin(Api::node(dagPath), component, true, status))
{}

MItGeometry::MItGeometry(MObject& dagObject, MStatus* status)
    : walk(tryBegin(Api::node(dagObject), MObject(), false, status))
{}

MItGeometry::~MItGeometry() = default;

bool MItGeometry::isDone(MStatus* status) const
{
    host::report(status, MStatus::kSuccess);
    return walk->at >= walk->ids.size();
}

MStatus MItGeometry::next()
{
    if (walk->at >= walk->ids.size())
        return MStatus::kFailure;
    ++walk->at;
    return MStatus::kSuccess;
}

MStatus MItGeometry::reset()
{
    walk->at = 0;
    return walk->shape ? MStatus::kSuccess : MStatus::kFailure;
}

MPoint MItGeometry::position(MSpace::Space space, MStatus* status) const
{
    if (isWorld(space) && walk->shape && !walk->hasPath) {
        host::report(status, MStatus::kInvalidParameter);
        return MPoint();
    }
    return host::answer(status, MPoint(), [&] { return inSpace(*walk, walk->current(), space); });
}

MStatus MItGeometry::setPosition(const MPoint& point, MSpace::Space space)
{
    if (isWorld(space) && walk->shape && !walk->hasPath)
        return MStatus::kInvalidParameter;
    return host::statusOf([&] { move(*walk, point, space); });
}

int MItGeometry::index(MStatus* status) const
{
    return host::answer(status, -1, [&] { return static_cast<int>(walk->current()); });
}

int MItGeometry::count(MStatus* status) const
{
    host::report(status, walk->shape ? MStatus::kSuccess : MStatus::kFailure);
    return static_cast<int>(walk->ids.size());
}

int MItGeometry::exactCount(MStatus* status)
{
    return count(status);
}

MObject MItGeometry::currentItem(MStatus* status) const
{
    return host::answer(status, MObject(), [&] {
        const int id = static_cast<int>(walk->current());
        return Api::wrap(host::pointComponent(*walk->shape, {id}).get());
    });
}

MWeight MItGeometry::weight(MStatus* status) const
{
    return host::answer(status, MWeight(), [&] {
        MWeight weight;
        walk->current();
        const host::Component* component = walk->component.get();
        weight.setInfluence(1.0f);
        if (component && walk->at < component->weights.size())
            weight.setInfluence(component->weights[walk->at]);
        if (component && walk->at < component->seams.size())
            weight.setSeam(component->seams[walk->at]);
        return weight;
    });
}

MStatus MItGeometry::allPositions(MPointArray& points, MSpace::Space space) const
{
    if (isWorld(space) && walk->shape && !walk->hasPath)
        return MStatus::kInvalidParameter;
    return host::statusOf([&] {
        if (!walk->shape || !walk->shape->alive())
            throw host::Error("The iterator walks over nothing.");
        const Imath::M44d matrix = isWorld(space) ? host::worldMatrix(*walk->shape) : Imath::M44d();
        points.setLength(static_cast<unsigned int>(walk->ids.size()));
        for (unsigned int i = 0; i < walk->ids.size(); ++i) {
            Imath::V3d point = walk->geometry->points()[static_cast<std::size_t>(walk->ids[i])];
            if (isWorld(space))
                point = point * matrix;
            points[i] = MPoint(point.x, point.y, point.z);
        }
    });
}
