#pragma once

#include "selection/selectionList.h"

namespace host {

class Node;

/// The members of an objectSet, in the order of its member connections: whole nodes (connected by their
/// instObjGroups element or message), and components (connected by an objectGroups element; which points is
/// told by the groupParts with the same groupId, else by the component list stored in the object group).
/// Members of one shape through several groups are several items. With `flatten`, sets inside are opened up.
SelectionList setMembers(Node& set, bool flatten = false);

} // namespace host
