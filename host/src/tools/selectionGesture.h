#pragma once

namespace host {

class Session;
struct Event;
struct SelectionGesture;

/// The selecting that MPxSelectionContext does by itself, with the left button. A press without keys on what
/// is selected already does not select: there the tool does its own work. Otherwise, no key replaces the
/// selection, Shift toggles, Control removes, both add. A release less than two pixels from the press is a
/// click and takes what is in front under the cursor; otherwise the rectangle takes all that is inside it.
/// The change is one entry of the undo queue; with symmetry on (and allowed) it is symmetrised.
void beginSelecting(Session& session, SelectionGesture& gesture, const Event& event);
void continueSelecting(SelectionGesture& gesture, const Event& event);
void finishSelecting(Session& session, SelectionGesture& gesture, const Event& event);

/// Whether the press has moved far enough to be a marquee.
bool isMarquee(const SelectionGesture& gesture);

} // namespace host
