#include "selection/picking.h"

#include "graph/graph.h"
#include "nodes/geometry.h"
#include "selection/objectPicking.h"
#include "selection/occlusion.h"
#include "selection/selectionState.h"
#include "session.h"

#include <algorithm>
#include <tuple>

namespace host {

namespace {

enum class ShapeFilter { kAll, kMeshes };

/// Calls visit(shape, point, pixelsAndDepth) for every point of every visible shape that the view shows.
template <class Visit>
void forEachPoint(Session& session, ShapeFilter filter, Visit&& visit)
{
    const ViewProjection view = session.viewport().projection();
    for (const Ref<Node>& node : session.graph().nodes()) {
        DagNode* shape = node->asDag();
        const MFn::Type type = shape ? pointComponentType(*shape) : MFn::kInvalid;
        if (type == MFn::kInvalid || !isPickable(*shape) ||
            (filter == ShapeFilter::kMeshes && type != MFn::kMeshVertComponent))
            continue;
        const GeometryRef geometry = shapeGeometry(*shape);
        if (!geometry)
            continue;
        const Imath::M44d toWorld = worldMatrix(*shape);
        for (const int point : pointIndices(*shape, nullptr)) {
            Imath::V3d at;
            if (view.project(geometry->points()[static_cast<std::size_t>(point)] * toWorld, at) &&
                view.shows(at))
                visit(*shape, point, at);
        }
    }
}

void addPoints(SelectionList& list, DagNode& shape, const std::vector<int>& points)
{
    if (!points.empty())
        list.items.push_back({Ref<Node>(&shape), pointComponent(shape, points), Plug()});
}

SelectionList pickNearestPoint(Session& session, double x, double y, bool visibleOnly, ShapeFilter filter)
{
    struct Candidate {
        DagNode* shape;
        int point;
        double squaredPixels;
        Imath::V3d at;
    };
    const double reach = session.selection().clickBoxSize;
    std::vector<Candidate> candidates;
    forEachPoint(session, filter, [&](DagNode& shape, int point, const Imath::V3d& at) {
        const double squared = (at.x - x) * (at.x - x) + (at.y - y) * (at.y - y);
        if (squared <= reach * reach)
            candidates.push_back({&shape, point, squared, at});
    });
    std::stable_sort(candidates.begin(), candidates.end(), [](const Candidate& a, const Candidate& b) {
        return std::tie(a.squaredPixels, a.at.z) < std::tie(b.squaredPixels, b.at.z);
    });
    SelectionList list;
    for (const Candidate& candidate : candidates) {
        if (visibleOnly && screenTriangles(session).hides(candidate.at))
            continue;
        addPoints(list, *candidate.shape, {candidate.point});
        break;
    }
    return list;
}

SelectionList pickPointsInside(Session& session, const PixelRectangle& box, bool visibleOnly)
{
    SelectionList list;
    DagNode* current = nullptr;
    std::vector<int> points;
    const ScreenTriangles* triangles = visibleOnly ? &screenTriangles(session) : nullptr;
    forEachPoint(session, ShapeFilter::kAll, [&](DagNode& shape, int point, const Imath::V3d& at) {
        if (at.x < box.x1 || at.x > box.x2 || at.y < box.y1 || at.y > box.y2)
            return;
        if (triangles && triangles->hides(at))
            return;
        if (current != &shape) {
            if (current)
                addPoints(list, *current, points);
            points.clear();
            current = &shape;
        }
        points.push_back(point);
    });
    if (current)
        addPoints(list, *current, points);
    return list;
}

} // namespace

SelectionList pickPoint(Session& session, double x, double y, bool visibleOnly)
{
    if (!session.viewport().camera())
        return {};
    if (!session.selection().componentMode)
        return pickObject(session, x, y, visibleOnly);
    return pickNearestPoint(session, x, y, visibleOnly, ShapeFilter::kAll);
}

SelectionList pickRectangle(Session& session, const PixelRectangle& rectangle, bool visibleOnly)
{
    if (!session.viewport().camera())
        return {};
    const PixelRectangle box{std::min(rectangle.x1, rectangle.x2), std::min(rectangle.y1, rectangle.y2),
                             std::max(rectangle.x1, rectangle.x2), std::max(rectangle.y1, rectangle.y2)};
    if (!session.selection().componentMode)
        return pickObjects(session, box, visibleOnly);
    return pickPointsInside(session, box, visibleOnly);
}

void updatePreselection(Session& session, double x, double y)
{
    SelectionState& selection = session.selection();
    selection.preselection = {};
    if (selection.preselectHilite && selection.componentMode && session.viewport().camera())
        selection.preselection = pickNearestPoint(session, x, y, true, ShapeFilter::kMeshes);
}

} // namespace host
