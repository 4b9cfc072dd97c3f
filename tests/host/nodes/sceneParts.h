#pragma once

#include "graph/graph.h"
#include "nodes/geometry.h"

#include <string>
#include <vector>

namespace testing_support {

/// Makes scenes node by node, so that what a test sees does not depend on the commands.
class SceneParts {
public:
    explicit SceneParts(host::Graph& graph) : scene(graph) {}

    host::Node& node(const std::string& type, const std::string& name = {});
    host::DagNode& dag(const std::string& type, const std::string& name = {},
                       host::DagNode* parent = nullptr);
    /// A mesh of loose points under a transform of its own.
    host::DagNode& mesh(const host::Points& points, const std::string& name = "body");
    /// Sets the three children of a plug.
    void set(host::Node& node, const std::string& attribute, const Imath::V3d& value);
    void connect(const std::string& source, const std::string& destination);

    struct Deformed {
        host::DagNode& shape;    ///< what is seen
        host::DagNode& original; ///< intermediate
    };
    /// Puts a deformer (its input and output `index`) between a new intermediate shape and the shape.
    Deformed deform(host::DagNode& shape, host::Node& deformer, unsigned index = 0);
    /// A skinCluster on the shape with these influences at matrix[logical]; bound in the present pose.
    host::Node& skin(host::DagNode& shape, const std::vector<host::DagNode*>& joints,
                     const std::vector<unsigned>& logical);

private:
    host::Graph& scene;
};

} // namespace testing_support
