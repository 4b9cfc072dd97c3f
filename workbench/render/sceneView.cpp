#include "render/sceneView.h"

#include "graph/graph.h"
#include "nodes/geometry.h"
#include "render/drawScale.h"
#include "render/grid.h"
#include "render/labelRanks.h"
#include "render/meshView.h"
#include "render/nurbsView.h"
#include "render/pointView.h"
#include "render/weightMap.h"
#include "session.h"
#include "view/viewport.h"

#include <algorithm>

namespace workbench {

namespace {

using host::DagNode;

bool isSelected(const Highlights& highlights, const DagNode& node)
{
    return highlights.wholeNodes.count(&node) != 0;
}

Imath::V3d positionOf(const DagNode& node)
{
    return host::worldMatrix(node).translation();
}

std::vector<Imath::V3d> worldPoints(const DagNode& shape, const host::Geometry& geometry)
{
    const Imath::M44d toWorld = host::worldMatrix(shape);
    std::vector<Imath::V3d> world;
    world.reserve(geometry.count());
    for (const Imath::V3d& point : geometry.points())
        world.push_back(point * toWorld);
    return world;
}

void addBone(SceneView& view, DagNode& joint, const Highlights& highlights, const host::Node* edited)
{
    SceneView::Bone bone;
    bone.to = positionOf(joint);
    const DagNode* parent = joint.parent();
    bone.hasParent = parent && parent->type().isA("joint");
    bone.from = bone.hasParent ? positionOf(*parent) : bone.to;
    bone.selected = isSelected(highlights, joint);
    bone.highlighted = &joint == edited;
    view.bones.push_back(bone);
}

void addShape(SceneView& view, const ShapeView& shape, const std::optional<WeightMap>& weights)
{
    using Kind = host::Geometry::Kind;
    bool drawn = false;
    switch (shape.geometry.kind()) {
    case Kind::kMesh:
        addMesh(view, shape, weights);
        drawn = true;
        break;
    case Kind::kCurve:
        drawn = addCurve(view, shape, weights);
        break;
    case Kind::kSurface:
        drawn = addSurface(view, shape, weights);
        break;
    case Kind::kLattice:
        break;
    }
    // Beside a spline its cage shows while its points are edited.
    if (!drawn || (shape.geometry.kind() != Kind::kMesh && !shape.falloff.empty()))
        addCage(view, shape);
    addPoints(view, shape, weights);
}

void noteWeights(SceneView& view, const WeightMap& weights)
{
    view.showsWeights = true;
    view.showsOutsiders = view.showsOutsiders || std::find(weights.members.begin(), weights.members.end(),
                                                           false) != weights.members.end();
}

} // namespace

SceneView viewOf(host::Session& session, const PressWatch* press)
{
    SceneView view;
    addGrid(view.grid);
    const host::ViewProjection projection = session.viewport().projection();
    const double unit = drawScaleOf(session.viewport().width, session.viewport().height, 1).unit;
    const EditedWeights edited = editedWeights(session);
    host::Graph& graph = session.graph();
    const host::Node* influence = edited.influence.empty() ? nullptr : graph.find(edited.influence);
    const Highlights highlights = highlightsOf(session);
    WeightMaps maps;
    for (const host::Ref<host::Node>& node : graph.nodes()) {
        DagNode* dag = node->asDag();
        if (!dag || !host::isVisible(*dag))
            continue;
        if (dag->type().isA("joint"))
            addBone(view, *dag, highlights, influence);
        const host::GeometryRef geometry = dag->isShape() ? host::shapeGeometry(*dag) : nullptr;
        if (!geometry)
            continue;
        const bool whole =
            isSelected(highlights, *dag) || (dag->parent() && isSelected(highlights, *dag->parent()));
        const std::vector<Imath::V3d> world = worldPoints(*dag, *geometry);
        const float clarity = clarityOf(*geometry, world, projection, unit);
        const ShapeView shape{
            *dag,  *geometry, world, highlights.pointsOf(*dag), highlights.preselectedOf(*dag),
            whole, clarity};
        std::optional<WeightMap> weights = weightMap(session, *dag, edited);
        addShape(view, shape, weights);
        if (weights) {
            noteWeights(view, *weights);
            maps.emplace(dag, std::move(*weights));
        }
    }
    view.labelRanks = labelRanks(session, maps, press);
    return view;
}

} // namespace workbench
