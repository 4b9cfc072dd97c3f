#include "render/pressWatch.h"

#include "graph/graph.h"
#include "session.h"

#include <cmath>
#include <limits>

namespace workbench {

void PressWatch::press(host::Session& session, int x, int y)
{
    pressX = x;
    pressY = y;
    projection = session.viewport().projection();
    rich = session.selection().rich();
    seen.clear();
    for (const host::Ref<host::Node>& node : session.graph().nodes()) {
        host::DagNode* shape = node->asDag();
        if (!shape || !shape->isShape() || !host::isVisible(*shape))
            continue;
        // Geometry is never changed in place, so holding it costs no copy.
        if (host::GeometryRef geometry = host::shapeGeometry(*shape))
            seen.push_back({host::Ref<host::DagNode>(shape), std::move(geometry), host::worldMatrix(*shape)});
    }
}

const PressWatch::Seen* PressWatch::find(const host::DagNode* shape) const
{
    for (const Seen& each : seen) {
        if (each.shape.get() == shape)
            return &each;
    }
    return nullptr;
}

std::size_t PressWatch::pressedOf(const std::vector<StrokePoint>& points) const
{
    constexpr double kPixel = 1.0;
    std::size_t found = points.size();
    double nearest = std::numeric_limits<double>::infinity(), front = nearest;
    const Seen* shape = nullptr;
    for (std::size_t k = 0; k < points.size(); ++k) {
        if (!shape || shape->shape.get() != points[k].shape)
            shape = find(points[k].shape);
        const auto point = static_cast<std::size_t>(points[k].point);
        Imath::V3d at;
        if (!shape || point >= shape->geometry->count() ||
            !projection.project(shape->geometry->points()[point] * shape->toWorld, at))
            continue;
        const double away = std::hypot(at.x - pressX, at.y - pressY);
        if (away < nearest - kPixel || (away < nearest + kPixel && at.z < front)) {
            nearest = away;
            front = at.z;
            found = k;
        }
    }
    return found;
}

} // namespace workbench
