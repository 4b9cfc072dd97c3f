#include "selection/objectPicking.h"

#include "graph/graph.h"
#include "nodes/geometry.h"
#include "selection/occlusion.h"
#include "selection/selectionState.h"
#include "session.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace host {

namespace {

/// An object as its outline on the screen: points that the view shows, and lines between them.
struct Outline {
    DagNode* object = nullptr; ///< the transform
    bool mesh = false;
    std::vector<std::optional<Imath::V3d>> points; ///< pixels and depth; empty = not shown
    std::vector<std::pair<std::size_t, std::size_t>> lines;
};

void addLines(const Geometry& geometry, Outline& outline)
{
    if (geometry.kind() == Geometry::Kind::kMesh) {
        for (const auto& edge : static_cast<const MeshData&>(geometry).topology->edges)
            outline.lines.emplace_back(static_cast<std::size_t>(edge[0]), static_cast<std::size_t>(edge[1]));
    } else if (geometry.kind() == Geometry::Kind::kCurve) {
        for (std::size_t cv = 1; cv < geometry.count(); ++cv)
            outline.lines.emplace_back(cv - 1, cv);
    }
}

/// Nodes that show something in object mode: geometry shapes, other shapes except cameras, joints.
bool isDrawn(const DagNode& node)
{
    if (node.isShape())
        return node.parent() && !node.hasFn(MFn::kCamera);
    return node.hasFn(MFn::kJoint);
}

Outline outlineOf(DagNode& node, const ViewProjection& view)
{
    Outline outline;
    outline.object = node.isShape() ? node.parent() : &node;
    const Imath::M44d toWorld = worldMatrix(node);
    const auto add = [&](const Imath::V3d& local) {
        Imath::V3d at;
        const bool shown = view.project(local * toWorld, at) && view.shows(at);
        outline.points.push_back(shown ? std::optional<Imath::V3d>(at) : std::nullopt);
    };
    const GeometryRef geometry = pointComponentType(node) == MFn::kInvalid ? nullptr : shapeGeometry(node);
    if (!geometry) {
        add(Imath::V3d(0.0));
        return outline;
    }
    outline.mesh = geometry->kind() == Geometry::Kind::kMesh;
    for (const Imath::V3d& point : geometry->points())
        add(point);
    addLines(*geometry, outline);
    return outline;
}

template <class Visit>
void forEachOutline(Session& session, Visit&& visit)
{
    const ViewProjection view = session.viewport().projection();
    for (const Ref<Node>& node : session.graph().nodes()) {
        DagNode* dag = node->asDag();
        if (dag && isDrawn(*dag) && isPickable(*dag))
            visit(outlineOf(*dag, view));
    }
}

double squaredToLine(const Imath::V3d& from, const Imath::V3d& to, double x, double y)
{
    const double dx = to.x - from.x, dy = to.y - from.y;
    const double length = dx * dx + dy * dy;
    const double along = length > 0.0 ? ((x - from.x) * dx + (y - from.y) * dy) / length : 0.0;
    const double t = std::clamp(along, 0.0, 1.0);
    const double nearX = from.x + t * dx - x, nearY = from.y + t * dy - y;
    return nearX * nearX + nearY * nearY;
}

/// Squared pixels from a pixel to the nearest point or line of an outline.
double squaredDistance(const Outline& outline, double x, double y, const ScreenTriangles* hiding)
{
    double best = std::numeric_limits<double>::infinity();
    for (const auto& point : outline.points) {
        if (!point)
            continue;
        const double squared = (point->x - x) * (point->x - x) + (point->y - y) * (point->y - y);
        if (squared < best && !(hiding && hiding->hides(*point)))
            best = squared;
    }
    for (const auto& [from, to] : outline.lines) {
        if (from >= outline.points.size() || to >= outline.points.size())
            continue;
        const auto &a = outline.points[from], &b = outline.points[to];
        const double squared = a && b ? squaredToLine(*a, *b, x, y) : best;
        if (squared < best && !(hiding && hiding->hides(*a) && hiding->hides(*b)))
            best = squared;
    }
    return best;
}

/// Whether a line touches the box: clips it by the four sides in turn.
bool lineTouches(const Imath::V3d& from, const Imath::V3d& to, const PixelRectangle& box)
{
    double enter = 0.0, leave = 1.0;
    const auto clip = [&](double start, double delta, double low, double high) {
        if (delta == 0.0)
            return start >= low && start <= high;
        const double a = (low - start) / delta, b = (high - start) / delta;
        enter = std::max(enter, std::min(a, b));
        leave = std::min(leave, std::max(a, b));
        return enter <= leave;
    };
    return clip(from.x, to.x - from.x, box.x1, box.x2) && clip(from.y, to.y - from.y, box.y1, box.y2);
}

bool touchesBox(const Outline& outline, const PixelRectangle& box, const ScreenTriangles* hiding)
{
    const auto inside = [&](const std::optional<Imath::V3d>& at) {
        return at && at->x >= box.x1 && at->x <= box.x2 && at->y >= box.y1 && at->y <= box.y2 &&
               !(hiding && hiding->hides(*at));
    };
    if (std::any_of(outline.points.begin(), outline.points.end(), inside))
        return true;
    return std::any_of(outline.lines.begin(), outline.lines.end(), [&](const auto& line) {
        if (line.first >= outline.points.size() || line.second >= outline.points.size())
            return false;
        const auto &from = outline.points[line.first], &to = outline.points[line.second];
        return from && to && lineTouches(*from, *to, box) &&
               !(hiding && hiding->hides(*from) && hiding->hides(*to));
    });
}

void addObject(SelectionList& list, DagNode* object)
{
    if (object)
        list.add({Ref<Node>(object), {}, Plug()}, true);
}

} // namespace

bool isPickable(const DagNode& node)
{
    const auto value = [](const DagNode& of, const char* attribute) {
        return const_cast<DagNode&>(of).plug(attribute).number(); // reading evaluates
    };
    for (const DagNode* step = &node; step; step = step->parent())
        if (value(*step, "overrideEnabled") != 0.0)
            return value(*step, "overrideDisplayType") == 0.0 && isVisible(node);
    return isVisible(node);
}

SelectionList pickObject(Session& session, double x, double y, bool visibleOnly)
{
    const ScreenTriangles* hiding = visibleOnly ? &screenTriangles(session) : nullptr;
    const double reach = session.selection().clickBoxSize;
    DagNode *surfaceless = nullptr, *meshObject = nullptr;
    double surfacelessBest = reach * reach, meshBest = reach * reach;
    forEachOutline(session, [&](const Outline& outline) {
        double& best = outline.mesh ? meshBest : surfacelessBest;
        DagNode*& object = outline.mesh ? meshObject : surfaceless;
        const double squared = squaredDistance(outline, x, y, hiding);
        if (squared < best || (squared == best && !object)) {
            best = squared;
            object = outline.object;
        }
    });
    SelectionList list;
    const DagNode* front = hiding ? hiding->front(x, y) : nullptr;
    if (surfaceless)
        addObject(list, surfaceless);
    else
        addObject(list, front && isPickable(*front) ? front->parent() : meshObject);
    return list;
}

SelectionList pickObjects(Session& session, const PixelRectangle& box, bool visibleOnly)
{
    const ScreenTriangles* hiding = visibleOnly ? &screenTriangles(session) : nullptr;
    std::vector<const DagNode*> front;
    if (hiding) {
        const double middleX = 0.5 * (box.x1 + box.x2), middleY = 0.5 * (box.y1 + box.y2);
        front = {hiding->front(box.x1, box.y1), hiding->front(box.x2, box.y1), hiding->front(box.x1, box.y2),
                 hiding->front(box.x2, box.y2), hiding->front(middleX, middleY)};
    }
    SelectionList list;
    forEachOutline(session, [&](const Outline& outline) {
        const bool inFront = std::any_of(front.begin(), front.end(), [&](const DagNode* shape) {
            return shape && shape->parent() == outline.object;
        });
        if (inFront || touchesBox(outline, box, hiding))
            addObject(list, outline.object);
    });
    return list;
}

} // namespace host
