#pragma once

#include <cstdint>
#include <vector>

namespace host {

class DagNode;
class Node;
class Session;

// The pose in which joints were bound: a dagPose that remembers where they and everything above them stood.
// Recorded; throws host::Error.

/// Connects a skinCluster to the bind pose of its joints: the one they have when they all stand as it says,
/// or a new one.
void attachBindPose(Session& session, Node& skin, const std::vector<DagNode*>& joints);

/// The bind poses that a node is a member of, in the order in which they were made.
std::vector<Node*> bindPosesOf(Node& node);
/// The DAG nodes that belong to a pose, ascending.
struct PoseMember {
    std::uint32_t index; ///< logical
    DagNode* node;
};
std::vector<PoseMember> membersOf(Node& pose);
/// The members that stand elsewhere than the pose says, next to what is above them.
std::vector<DagNode*> strayedFrom(Node& pose);
/// Puts every member back where it stood: in the world, or next to what is above it.
void restorePose(Session& session, Node& pose, bool inWorld);

} // namespace host
