#pragma once

#include "graph/graph.h"
#include "graph/nodeState.h"

#include <exception>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace host {

/// The tables behind Graph.
struct Graph::Parts {
    std::map<std::uint64_t, std::unique_ptr<Link>> links; ///< by order
    std::uint64_t nextLink = 1;
    std::uint64_t nextNode = 1;
    std::unordered_map<std::string, std::vector<Node*>> byName; ///< name without path -> nodes
    std::unordered_map<std::string, Node*> byUuid;
    std::mt19937_64 random{std::random_device{}()};

    /// Attributes whose change is still to be passed on, and the number of the propagation under way.
    std::vector<std::pair<Node*, const Attribute*>> work;
    std::uint64_t propagation = 0;

    unsigned nested = 0; ///< computations under way, each for the one before it
    unsigned pulls = 0;  ///< pulls under way, and what failed since the outermost began
    std::map<std::pair<Node*, const Attribute*>, std::exception_ptr> failures;
};

} // namespace host
