#pragma once

#include <maya/MSelectionList.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <memory>

namespace host {
struct Api;
struct RichSelection;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

/// The selection with its soft falloff and, apart, its mirrored part. It can be copied by construction only:
/// the platform has no safe assignment.
class MAYA_HOST_EXPORT MRichSelection {
public:
    MRichSelection();
    MRichSelection(const MRichSelection& src);
    MRichSelection& operator=(const MRichSelection&) = delete;
    virtual ~MRichSelection();

    /// Replace what the list held; the list is empty when there is nothing.
    MStatus getSelection(MSelectionList& selection) const;
    MStatus getSymmetry(MSelectionList& symmetry) const;
    MStatus setSelection(const MSelectionList& selection);
    MStatus clear();
    static const char* className() { return "MRichSelection"; }

private:
    friend struct host::Api;
    std::unique_ptr<host::RichSelection> selection;
};

MAYA_HOST_NAMESPACE_CLOSE
