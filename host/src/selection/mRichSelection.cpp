#include <maya/MRichSelection.h>

#include "selection/selectionState.h"
#include "types/api.h"

using host::Api;

MRichSelection::MRichSelection() : selection(std::make_unique<host::RichSelection>()) {}

MRichSelection::MRichSelection(const MRichSelection& src)
    : selection(std::make_unique<host::RichSelection>(*src.selection))
{}

MRichSelection::~MRichSelection() = default;

MStatus MRichSelection::getSelection(MSelectionList& primary) const
{
    Api::list(primary) = selection->selection;
    return MS::kSuccess;
}

MStatus MRichSelection::getSymmetry(MSelectionList& symmetry) const
{
    Api::list(symmetry) = selection->symmetry;
    return MS::kSuccess;
}

MStatus MRichSelection::setSelection(const MSelectionList& primary)
{
    selection->selection = Api::list(primary);
    return MS::kSuccess;
}

MStatus MRichSelection::clear()
{
    *selection = {};
    return MS::kSuccess;
}
