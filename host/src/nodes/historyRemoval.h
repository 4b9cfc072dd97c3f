#pragma once

namespace host {

class DagNode;
class Session;

/// Gives a shape the geometry it shows now for its own and takes away what made it: deformers, tweaks,
/// groups, intermediate shapes. Nodes that work for other shapes as well stay for those. Recorded. Throws
/// host::Error for a shape whose geometry cannot be known here.
void removeHistory(Session& session, DagNode& shape);

} // namespace host
