#pragma once

#include "selection/selectionState.h"

namespace host {

/// The rich selection of a list under the session's soft-selection and symmetry options (see RichSelection
/// and SelectionState::rich). Items that are no point components (objects, edges, faces, plugs) stay in
/// `selection` as they are. Point components come out ascending, one item per shape, in the order in which
/// the shapes first appear; shapes reached by global falloff only follow in scene order. With soft selection
/// every element has a weight, and elements of weight 0 are left out.
/// Throws host::Error for topological symmetry.
RichSelection richSelectionOf(Session& session, const SelectionList& list);

} // namespace host
