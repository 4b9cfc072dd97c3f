#pragma once

#include "mel/value.h"
#include "selection/selectionList.h"

#include <string>
#include <vector>

namespace host {

class Session;

namespace mel {
class Args;
}

/// What a command works on: the objects it was given, or the active selection when it was given none.
/// Throws host::Error for a name that finds nothing and when there is nothing at all ("Nothing is
/// selected.").
SelectionList commandTargets(Session& session, const std::vector<std::string>& names);

/// The last `count` of the words, or all: for commands whose first words are numbers (move 1 2 3 a b).
/// Throws host::Error when fewer than `numbers` words are there or one of these is no number.
std::vector<double> leadingNumbers(const mel::Args& args, std::size_t numbers);
std::vector<std::string> namesAfter(const mel::Args& args, std::size_t numbers);

/// The transform of an item: the node itself or the parent of a shape; throws when it is neither.
DagNode& transformOf(const SelectionItem& item);

} // namespace host
