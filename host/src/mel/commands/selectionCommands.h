#pragma once

#include "selection/selectionList.h"

namespace host {

class Session;
namespace mel {
class CommandRegistry;
}

/// Makes a list the active selection, recorded for undo together with a rich selection that was set before.
void recordSelection(Session& session, SelectionList list);

/// softSelect, symmetricModelling, selectMode, selectPref.
void registerSelectionSettings(mel::CommandRegistry& registry);

} // namespace host
