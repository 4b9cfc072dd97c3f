#pragma once

#include "graph/graph.h"
#include "nodes/geometry.h"
#include "selection/selectionState.h"
#include "support/hostFixture.h"

#include <map>
#include <string>
#include <vector>

namespace testing_support {

using Names = std::vector<std::string>;

/// A host with helpers for looking at shapes and selections.
class SelectionTest : public HostTest {
public:
    host::SelectionState& state() { return session.selection(); }
    host::DagNode& shape(const std::string& transform)
    {
        return *host::componentShape(session.graph().get(transform));
    }
    host::SelectionList named(const Names& names)
    {
        host::SelectionList list;
        for (const std::string& name : names)
            list.addPattern(session.graph(), name);
        return list;
    }
    static Names texts(const host::SelectionList& list)
    {
        Names all;
        for (std::size_t item = 0; item < list.items.size(); ++item)
            for (const std::string& text : list.texts(item))
                all.push_back(text);
        return all;
    }
    Names selected() { return texts(state().active()); }

    /// Displayed positions of all points of a shape, in the world.
    std::vector<Imath::V3d> world(const std::string& transform)
    {
        host::DagNode& node = shape(transform);
        std::vector<Imath::V3d> points = host::shapeGeometry(node)->points();
        const Imath::M44d matrix = host::worldMatrix(node);
        for (Imath::V3d& point : points)
            point = point * matrix;
        return points;
    }
    /// Point index -> weight of the items of a list that belong to one shape.
    std::map<int, double> weights(const host::SelectionList& list, const std::string& transform)
    {
        std::map<int, double> found;
        host::DagNode& node = shape(transform);
        for (const host::SelectionItem& item : list.items) {
            if (item.node.get() != &node || !item.component)
                continue;
            const std::vector<int> points = host::pointIndices(node, item.component.get());
            EXPECT_EQ(points.size(), item.component->weights.size());
            EXPECT_TRUE(std::is_sorted(points.begin(), points.end()));
            for (std::size_t k = 0; k < points.size(); ++k)
                EXPECT_TRUE(found.emplace(points[k], static_cast<double>(item.component->weights[k])).second);
        }
        return found;
    }
};

} // namespace testing_support
