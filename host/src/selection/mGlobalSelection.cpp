#include <maya/MGlobal.h>

#include "selection/picking.h"
#include "selection/selectionState.h"
#include "session.h"
#include "types/api.h"
#include "undo/edits.h"
#include "undo/undoQueue.h"

#include <maya/MRichSelection.h>

#include <exception>
#include <utility>

using host::Api;
using host::SelectionList;

namespace {

SelectionList adjusted(const SelectionList& current, const SelectionList& change,
                       MGlobal::ListAdjustment adjustment)
{
    SelectionList list = current;
    switch (adjustment) {
    case MGlobal::kXORWithList:
        list.combine(change, SelectionList::Merge::kXor);
        return list;
    case MGlobal::kAddToList:
        list.combine(change, SelectionList::Merge::kNormal);
        return list;
    case MGlobal::kRemoveFromList:
        list.combine(change, SelectionList::Merge::kRemove);
        return list;
    case MGlobal::kAddToHeadOfList:
        list = change;
        list.combine(current, SelectionList::Merge::kNormal);
        return list;
    default:
        return change;
    }
}

/// Runs with the state of the current session. No session or a refusal inside the host is kFailure.
template <class Work>
MStatus withSession(Work&& work)
{
    host::Session* session = host::Session::currentOrNull();
    if (!session)
        return MS::kFailure;
    try {
        return work(*session);
    } catch (const std::exception&) {
        return MS::kFailure;
    }
}

MStatus adjust(host::Session& session, const SelectionList& change, MGlobal::ListAdjustment adjustment)
{
    host::SelectionState& selection = session.selection();
    selection.setActive(adjusted(selection.active(), change, adjustment));
    return MS::kSuccess;
}

} // namespace

MStatus MGlobal::getActiveSelectionList(MSelectionList& dest, bool)
{
    return withSession([&](host::Session& session) -> MStatus {
        Api::list(dest) = session.selection().active();
        return MS::kSuccess;
    });
}

MStatus MGlobal::setActiveSelectionList(const MSelectionList& src, ListAdjustment adjustment)
{
    return withSession(
        [&](host::Session& session) -> MStatus { return adjust(session, Api::list(src), adjustment); });
}

MStatus MGlobal::selectCommand(const MSelectionList& src, ListAdjustment adjustment)
{
    return withSession([&](host::Session& session) -> MStatus {
        const host::SelectionState::Snapshot before = session.selection().snapshot();
        SelectionList list = adjusted(session.selection().active(), Api::list(src), adjustment);
        const host::UndoQueue::CommandScope scope(session.undo(), "select");
        session.edits().perform(
            [list = std::move(list)](host::Session& target) { target.selection().setActive(list); },
            [before](host::Session& target) { target.selection().restore(before); });
        return MS::kSuccess;
    });
}

MStatus MGlobal::getSelectionListByName(const MString& name, MSelectionList& list)
{
    return list.add(name);
}

MStatus MGlobal::selectByName(const MString& name, ListAdjustment adjustment)
{
    MSelectionList found;
    const MStatus status = found.add(name);
    return status ? setActiveSelectionList(found, adjustment) : status;
}

MStatus MGlobal::unselectByName(const MString& name)
{
    return selectByName(name, kRemoveFromList);
}

MStatus MGlobal::clearSelectionList()
{
    return withSession([&](host::Session& session) -> MStatus { return adjust(session, {}, kReplaceList); });
}

MStatus MGlobal::getRichSelection(MRichSelection& dest, bool defaultToActiveSelection)
{
    return withSession([&](host::Session& session) -> MStatus {
        host::SelectionState& selection = session.selection();
        if (!defaultToActiveSelection && !selection.hasRich()) {
            Api::rich(dest) = {};
            return MS::kFailure;
        }
        Api::rich(dest) = selection.rich();
        return MS::kSuccess;
    });
}

MStatus MGlobal::setRichSelection(const MRichSelection& src)
{
    return withSession([&](host::Session& session) -> MStatus {
        session.selection().setRich(Api::rich(src));
        return MS::kSuccess;
    });
}

MStatus MGlobal::selectFromScreen(const short& x_pos, const short& y_pos, ListAdjustment adjustment,
                                  SelectionMethod method)
{
    return withSession([&](host::Session& session) -> MStatus {
        return adjust(session, host::pickPoint(session, x_pos, y_pos, method == kSurfaceSelectMethod),
                      adjustment);
    });
}

MStatus MGlobal::selectFromScreen(const short& start_x, const short& start_y, const short& end_x,
                                  const short& end_y, ListAdjustment adjustment, SelectionMethod method)
{
    return withSession([&](host::Session& session) -> MStatus {
        const host::PixelRectangle rectangle{double(start_x), double(start_y), double(end_x), double(end_y)};
        return adjust(session, host::pickRectangle(session, rectangle, method == kSurfaceSelectMethod),
                      adjustment);
    });
}

MStatus MGlobal::getPreselectionHiliteList(MSelectionList& list)
{
    return withSession([&](host::Session& session) -> MStatus {
        host::SelectionState& selection = session.selection();
        selection.preselection.prune();
        Api::list(list) = selection.preselectHilite ? selection.preselection : SelectionList();
        return MS::kSuccess;
    });
}

MStatus MGlobal::setPreselectionHiliteList(const MSelectionList& list)
{
    return withSession([&](host::Session& session) -> MStatus {
        session.selection().preselection = Api::list(list);
        return MS::kSuccess;
    });
}
