#include "render/sceneView.h"

#include "graph/graph.h"
#include "nodes/geometry.h"
#include "render/grid.h"
#include "render/meshView.h"
#include "render/pointView.h"
#include "render/weightMap.h"
#include "session.h"
#include "view/viewport.h"

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

} // namespace

SceneView viewOf(host::Session& session)
{
    SceneView view;
    addGrid(view.grid);
    const host::ViewProjection projection = session.viewport().projection();
    const EditedWeights edited = editedWeights(session);
    host::Graph& graph = session.graph();
    const host::Node* influence = edited.influence.empty() ? nullptr : graph.find(edited.influence);
    const Highlights highlights = highlightsOf(session);
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
        const float clarity = clarityOf(*geometry, world, projection);
        const ShapeView shape{
            *dag,  *geometry, world, highlights.pointsOf(*dag), highlights.preselectedOf(*dag),
            whole, clarity};
        if (geometry->kind() == host::Geometry::Kind::kMesh)
            addMesh(view, shape, weightMap(*dag, edited));
        else
            addControlShape(view, shape);
        addPoints(view, shape);
    }
    return view;
}

} // namespace workbench
