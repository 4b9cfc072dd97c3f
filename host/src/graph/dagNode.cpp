#include "graph/graph.h"

namespace host {

std::string DagNode::fullPath() const
{
    std::string path;
    for (const DagNode* step = this; step; step = step->parentNode)
        path.insert(0, step->name()).insert(0, 1, '|');
    return path;
}

std::string DagNode::partialPath() const
{
    std::string path = name();
    if (!alive())
        return path;
    const DagNode* above = parentNode;
    while (graph().findAll(path).size() > 1) {
        if (!above)
            return "|" + path;
        path.insert(0, 1, '|').insert(0, above->name());
        above = above->parentNode;
    }
    return path;
}

unsigned DagNode::depth() const
{
    unsigned count = 0;
    for (const DagNode* step = this; step; step = step->parentNode)
        ++count;
    return count;
}

bool DagNode::isAncestorOf(const DagNode& other) const
{
    for (const DagNode* step = other.parentNode; step; step = step->parentNode)
        if (step == this)
            return true;
    return false;
}

} // namespace host
