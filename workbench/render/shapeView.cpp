#include "render/shapeView.h"

#include "selection/component.h"
#include "selection/selectionState.h"
#include "session.h"

#include <algorithm>
#include <cmath>

namespace workbench {

namespace {

void addFalloff(Highlights& highlights, const host::SelectionList& list)
{
    for (const host::SelectionItem& item : list.items) {
        if (!item.node)
            continue;
        if (!item.component) {
            if (item.plug.isNull())
                highlights.wholeNodes.insert(item.node.get());
            continue;
        }
        host::DagNode* shape = host::componentShape(*item.node);
        const host::GeometryRef geometry = shape ? host::shapeGeometry(*shape) : nullptr;
        if (!geometry)
            continue;
        PointFalloff& falloff = highlights.points[shape];
        falloff.resize(geometry->count(), 0.0F);
        const std::vector<int> points = host::pointIndices(*shape, item.component.get());
        const std::vector<float>& weights = item.component->weights;
        for (std::size_t element = 0; element < points.size(); ++element) {
            const float weight = weights.size() == points.size() ? weights[element] : 1.0F;
            float& kept = falloff.at(static_cast<std::size_t>(points[element]));
            kept = std::max(kept, weight);
        }
    }
}

} // namespace

const PointFalloff& Highlights::pointsOf(const host::DagNode& shape) const
{
    static const PointFalloff none;
    const auto found = points.find(&shape);
    return found == points.end() ? none : found->second;
}

std::vector<int> Highlights::preselectedOf(const host::DagNode& shape) const
{
    const auto found = preselection.find(&shape);
    return found == preselection.end() ? std::vector<int>() : found->second;
}

Highlights highlightsOf(host::Session& session)
{
    Highlights highlights;
    const host::RichSelection rich = session.selection().rich();
    addFalloff(highlights, rich.selection);
    addFalloff(highlights, rich.symmetry);
    // The selected points themselves are shown in full even where a falloff curve says less.
    addFalloff(highlights, session.selection().active());
    for (const host::SelectionItem& item : session.selection().preselection.items) {
        host::DagNode* shape = item.node ? host::componentShape(*item.node) : nullptr;
        if (shape && item.component)
            highlights.preselection[shape] = host::pointIndices(*shape, item.component.get());
    }
    return highlights;
}

float clarityOf(const host::Geometry& geometry, const std::vector<Imath::V3d>& world,
                const host::ViewProjection& projection, double unit)
{
    constexpr std::size_t kSamples = 400;
    constexpr double kLongEdge = 14.0, kFaintest = 0.22;
    if (geometry.kind() != host::Geometry::Kind::kMesh)
        return 1.0F;
    const auto& edges = static_cast<const host::MeshData&>(geometry).topology->edges;
    const std::size_t step = std::max<std::size_t>(1, edges.size() / kSamples);
    double length = 0.0;
    int count = 0;
    for (std::size_t edge = 0; edge < edges.size(); edge += step) {
        Imath::V3d from, to;
        if (!projection.project(world[static_cast<std::size_t>(edges[edge][0])], from) ||
            !projection.project(world[static_cast<std::size_t>(edges[edge][1])], to))
            continue;
        length += std::hypot(to.x - from.x, to.y - from.y);
        ++count;
    }
    return count == 0 ? 1.0F
                      : static_cast<float>(std::clamp(length / count / (kLongEdge * unit), kFaintest, 1.0));
}

DrawVertex drawVertex(const Imath::V3d& position, const Color& color, float size)
{
    const auto narrow = [](double number) { return static_cast<float>(number); };
    return {{narrow(position.x), narrow(position.y), narrow(position.z)},
            {0.0F, 0.0F, 0.0F},
            {color[0], color[1], color[2], color[3]},
            size};
}

} // namespace workbench
