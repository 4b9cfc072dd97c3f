#pragma once

#include "scene/plugRange.h"

#include <string>
#include <vector>

namespace host {

class Session;

// Attributes and nodes as the arguments of commands name them. Throw host::Error naming what is missing.

/// "node.attr", "node.attr[0:5].child": the attributes that a text stands for. "node" may be a path.
PlugRange plugsNamed(Session& session, const std::string& text);
/// The same for exactly one plug (an array counts as one).
Plug plugNamed(Session& session, const std::string& text);
/// The node in front of the dot.
Node& nodeOfPlug(Session& session, const std::string& text);
/// Whether the text names an attribute that exists; does not throw.
bool plugExists(Session& session, const std::string& text);

/// The nodes of names and patterns, in order and without repeats; every one must find something.
std::vector<Node*> nodesNamed(Session& session, const std::vector<std::string>& names);
/// The same, or the nodes of the selection when there are no names.
std::vector<Node*> nodesOrSelection(Session& session, const std::vector<std::string>& names);

/// The name that commands give back: shortest, or the whole path of DAG nodes.
std::string shownName(const Node& node, bool longNames = false);

} // namespace host
