#pragma once

namespace host {

class Graph;

/// Fills an empty graph with the nodes that every scene has: the four cameras, the default sets and shading
/// nodes that files name with a leading colon. They are flagged Node::isDefault.
void createDefaultNodes(Graph& graph);

} // namespace host
