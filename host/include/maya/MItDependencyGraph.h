#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <memory>

namespace host {
struct Api;
struct GraphWalk;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

/// Walks over what feeds a node or what it feeds, through connections and through attributes that affect each
/// other. Each node is visited once, the root too when it passes the filter.
class MAYA_HOST_EXPORT MItDependencyGraph {
public:
    enum Direction : int {
        kDownstream = 0,
        kUpstream = 1,
    };

    enum Traversal : int {
        kDepthFirst = 0,
        kBreadthFirst = 1,
    };

    enum Level : int {
        kNodeLevel = 0,
        kPlugLevel = 1,
    };

    MItDependencyGraph(const MItDependencyGraph&) = delete;
    MItDependencyGraph& operator=(const MItDependencyGraph&) = delete;
    MItDependencyGraph(MObject& rootNode, MFn::Type filter = MFn::kInvalid, Direction direction = kDownstream,
                       Traversal traversal = kDepthFirst, Level level = kNodeLevel,
                       MStatus* status = nullptr);
    MItDependencyGraph(MPlug& rootPlug, MFn::Type filter = MFn::kInvalid, Direction direction = kDownstream,
                       Traversal traversal = kDepthFirst, Level level = kNodeLevel,
                       MStatus* status = nullptr);
    ~MItDependencyGraph();

    MStatus reset();
    MObject rootNode(MStatus* status = nullptr);
    bool isDone(MStatus* status = nullptr);
    MStatus next();
    /// Nothing beyond the current node is visited.
    MStatus prune();
    MObject currentItem(MStatus* status = nullptr);
    MObject thisNode(MStatus* status = nullptr);
    static const char* className() { return "MItDependencyGraph"; }

private:
    friend struct host::Api;
    std::unique_ptr<host::GraphWalk> walk;
};

MAYA_HOST_NAMESPACE_CLOSE
