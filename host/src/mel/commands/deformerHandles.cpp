#include "mel/commands/deformerHandles.h"

#include "graph/graph.h"
#include "nodes/geometry.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

namespace host {

Imath::Box3d boxAround(const std::vector<DeformedShape>& shapes)
{
    Imath::Box3d box;
    for (const DeformedShape& each : shapes) {
        const GeometryRef geometry = shapeGeometry(*each.shape);
        if (!geometry)
            throw Error(each.shape->uniqueName() + " has no points.");
        const Imath::M44d world = worldMatrix(*each.shape);
        if (each.points.empty())
            for (const Imath::V3d& point : geometry->points())
                box.extendBy(point * world);
        for (const int point : each.points)
            box.extendBy(geometry->points()[static_cast<std::size_t>(point)] * world);
    }
    return box;
}

Imath::V3d centreOf(const std::vector<DeformedShape>& shapes)
{
    return boxAround(shapes).center();
}

Node& createHandle(Session& session, Node& deformer, const Imath::V3d& centre, const HandleNames& names)
{
    Graph& graph = session.graph();
    Edits& edits = session.edits();
    DagNode& handle = *edits.create(*graph.types().find("transform"), deformer.name() + "Handle").asDag();
    Node& shape = edits.create(*graph.types().find(names.type), handle.name() + "Shape", &handle);
    for (unsigned k = 0; k < 3; ++k) {
        const double at = centre[static_cast<int>(k)];
        edits.setNumber(shape.plug("origin").child(k), at);
        edits.setNumber(handle.plug("rotatePivot").child(k), at);
        edits.setNumber(handle.plug("scalePivot").child(k), at);
    }
    edits.connect(handle.plug("worldMatrix").element(0), deformer.plug("matrix"));
    edits.connect(shape.plug(names.transforms), deformer.plug(names.received));
    return handle;
}

} // namespace host
