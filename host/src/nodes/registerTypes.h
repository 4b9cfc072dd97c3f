#pragma once

namespace host {

class NodeTypeRegistry;

/// Adds every node type that the host knows to an empty registry, base types first.
void registerNodeTypes(NodeTypeRegistry& registry);

} // namespace host
