#include "graph/graphWalk.h"
#include "graph/statusOf.h"

#include <maya/MItDependencyGraph.h>
#include <maya/MPlug.h>

using host::Api;
using host::GraphWalk;

namespace {

GraphWalk::Options optionsOf(MFn::Type filter, MItDependencyGraph::Direction direction,
                             MItDependencyGraph::Traversal traversal, MItDependencyGraph::Level level)
{
    GraphWalk::Options options;
    options.filter = filter;
    options.direction = direction == MItDependencyGraph::kUpstream ? GraphWalk::Direction::kUpstream
                                                                   : GraphWalk::Direction::kDownstream;
    options.breadthFirst = traversal == MItDependencyGraph::kBreadthFirst;
    options.everyAttribute = level == MItDependencyGraph::kPlugLevel;
    return options;
}

} // namespace

MItDependencyGraph::MItDependencyGraph(MObject& root, MFn::Type filter, Direction direction,
                                       Traversal traversal, Level level, MStatus* status)
{
    if (host::Node* node = Api::node(root))
        walk = std::make_unique<GraphWalk>(*node, optionsOf(filter, direction, traversal, level));
    host::report(status, walk ? MStatus::kSuccess : MStatus::kFailure);
}

MItDependencyGraph::MItDependencyGraph(MPlug& rootPlug, MFn::Type filter, Direction direction,
                                       Traversal traversal, Level level, MStatus* status)
{
    const host::Plug& plug = Api::plug(rootPlug);
    if (!plug.isNull() && plug.node()->alive())
        walk = std::make_unique<GraphWalk>(plug, optionsOf(filter, direction, traversal, level));
    host::report(status, walk ? MStatus::kSuccess : MStatus::kFailure);
}

MItDependencyGraph::~MItDependencyGraph() = default;

MStatus MItDependencyGraph::reset()
{
    if (!walk)
        return MStatus::kFailure;
    walk->reset();
    return MStatus::kSuccess;
}

MObject MItDependencyGraph::rootNode(MStatus* status)
{
    const host::Node* node = walk ? walk->start() : nullptr;
    host::report(status, node ? MStatus::kSuccess : MStatus::kFailure);
    return Api::wrap(node);
}

bool MItDependencyGraph::isDone(MStatus* status)
{
    host::report(status, walk ? MStatus::kSuccess : MStatus::kFailure);
    return !walk || walk->done();
}

MStatus MItDependencyGraph::next()
{
    if (!walk || walk->done())
        return MStatus::kFailure;
    walk->next();
    return MStatus::kSuccess;
}

MStatus MItDependencyGraph::prune()
{
    if (!walk || walk->done())
        return MStatus::kFailure;
    walk->prune();
    return MStatus::kSuccess;
}

MObject MItDependencyGraph::currentItem(MStatus* status)
{
    const host::Node* node = walk ? walk->item() : nullptr;
    host::report(status, node ? MStatus::kSuccess : MStatus::kFailure);
    return Api::wrap(node);
}

MObject MItDependencyGraph::thisNode(MStatus* status)
{
    return currentItem(status);
}
