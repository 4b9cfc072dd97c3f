#pragma once

#include "graph/node.h"
#include "nodes/geometry.h"
#include "selection/selectionState.h"
#include "view/viewport.h"

#include <vector>

namespace host {
class Session;
}

namespace workbench {

/// A point of a shape and how much of a stroke it takes.
struct StrokePoint {
    const host::DagNode* shape;
    int point;
    float falloff;
};

/// Remembers how the view looked at the last press, and what was selected with which falloff: a stroke moves
/// points, and distances with them. A front end feeds it when the tool has heard of the press.
class PressWatch {
public:
    void press(host::Session& session, int x, int y);
    const host::RichSelection& selection() const { return rich; }
    /// Which of the points was nearest to the pointer, of equally near ones the one in front; their number
    /// when none of them was there.
    std::size_t pressedOf(const std::vector<StrokePoint>& points) const;

private:
    struct Seen {
        host::Ref<host::DagNode> shape;
        host::GeometryRef geometry;
        Imath::M44d toWorld;
    };
    const Seen* find(const host::DagNode* shape) const;

    std::vector<Seen> seen;
    host::RichSelection rich;
    host::ViewProjection projection{};
    int pressX = 0, pressY = 0;
};

} // namespace workbench
