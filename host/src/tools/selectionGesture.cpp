#include "tools/selectionGesture.h"

#include "graph/graph.h"
#include "selection/picking.h"
#include "selection/selectionState.h"
#include "session.h"
#include "tools/toolApi.h"
#include "undo/edits.h"
#include "undo/undoQueue.h"

#include <cstdlib>

namespace host {

namespace {

constexpr int kClickPixels = 2;

std::string selectText(const SelectionList& list)
{
    if (list.items.empty())
        return "select -cl";
    std::string text = "select -r";
    for (std::size_t item = 0; item < list.items.size(); ++item) {
        for (const std::string& part : list.texts(item))
            text += " " + part;
    }
    return text;
}

bool sameTexts(const SelectionList& a, const SelectionList& b)
{
    return selectText(a) == selectText(b);
}

SelectionList combined(const SelectionList& before, const SelectionList& picked, int modifiers)
{
    const bool shift = (modifiers & Event::kShift) != 0;
    const bool control = (modifiers & Event::kControl) != 0;
    if (!shift && !control)
        return picked;
    SelectionList list = before;
    if (shift && control)
        list.combine(picked, SelectionList::Merge::kNormal);
    else
        list.combine(picked, shift ? SelectionList::Merge::kXor : SelectionList::Merge::kRemove);
    return list;
}

SelectionList pick(Session& session, const SelectionGesture& gesture)
{
    if (!isMarquee(gesture))
        return pickPoint(session, gesture.lastX, gesture.lastY, true);
    const PixelRectangle rectangle{static_cast<double>(gesture.startX), static_cast<double>(gesture.startY),
                                   static_cast<double>(gesture.lastX), static_cast<double>(gesture.lastY)};
    return pickRectangle(session, rectangle, false);
}

/// Whether the press is on something that is selected.
bool hitsSelected(Session& session, const Event& event)
{
    const SelectionList hit = pickPoint(session, event.x, event.y, true);
    const SelectionList& active = session.selection().active();
    return !hit.items.empty() && active.holds(hit.items.front());
}

} // namespace

bool isMarquee(const SelectionGesture& gesture)
{
    return std::abs(gesture.lastX - gesture.startX) >= kClickPixels ||
           std::abs(gesture.lastY - gesture.startY) >= kClickPixels;
}

void beginSelecting(Session& session, SelectionGesture& gesture, const Event& event)
{
    gesture.pressed = true;
    gesture.selecting = event.button == Event::kLeft &&
                        (gesture.movesNothing || event.modifiers != 0 || !hitsSelected(session, event));
    gesture.startX = gesture.lastX = event.x;
    gesture.startY = gesture.lastY = event.y;
    gesture.modifiers = event.modifiers;
}

void continueSelecting(SelectionGesture& gesture, const Event& event)
{
    gesture.lastX = event.x;
    gesture.lastY = event.y;
}

void finishSelecting(Session& session, SelectionGesture& gesture, const Event& event)
{
    continueSelecting(gesture, event);
    const bool selects = gesture.pressed && gesture.selecting;
    gesture.pressed = false;
    if (!selects)
        return;
    SelectionState& selection = session.selection();
    const SelectionList before = selection.active();
    const SelectionState::Snapshot earlier = selection.snapshot();
    SelectionList after = combined(before, pick(session, gesture), gesture.modifiers);
    if (gesture.symmetry && selection.symmetry.enabled)
        after = symmetrized(session, after);
    if (sameTexts(before, after))
        return;
    const UndoQueue::CommandScope scope(session.undo(), selectText(after));
    session.edits().perform([after](Session& target) { target.selection().setActive(after); },
                            [earlier](Session& target) { target.selection().restore(earlier); });
}

} // namespace host
