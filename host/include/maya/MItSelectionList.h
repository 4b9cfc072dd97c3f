#pragma once

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MSelectionList.h>
#include <maya/MStatus.h>
#include <maya/MStringArray.h>
#include <maya/MTypes.h>

MAYA_HOST_NAMESPACE_OPEN

/// Walks over the items of a selection list that pass a filter. A filter for shapes also takes a transform
/// with such a shape below it. The list may be changed or destroyed meanwhile: the walk has its own copy.
class MAYA_HOST_EXPORT MItSelectionList {
public:
    enum selItemType {
        kUnknownItem = -1,
        kDagSelectionItem = 0,
        kAnimSelectionItem = 1,
        kDNselectionItem = 2,
        kPlugSelectionItem = 3,
    };

    MItSelectionList(const MSelectionList& list, MFn::Type = MFn::kInvalid, MStatus* status = nullptr);
    MItSelectionList(const MItSelectionList&) = delete;
    MItSelectionList& operator=(const MItSelectionList&) = delete;
    virtual ~MItSelectionList();

    bool isDone(MStatus* status = nullptr);
    MStatus next();
    MStatus reset();
    /// The item as a node, as a path, as a plug, as texts; kFailure when it is no such thing.
    MStatus getDependNode(MObject& depNode);
    MStatus getDagPath(MDagPath& dagPath, MObject& component);
    MStatus getDagPath(MDagPath& dagPath);
    MStatus getPlug(MPlug& plug);
    MStatus getStrings(MStringArray& array);
    selItemType itemType(MStatus* status = nullptr);
    bool hasComponents(MStatus* status = nullptr) const;
    /// Starts again.
    MStatus setFilter(MFn::Type filter);
    static const char* className() { return "MItSelectionList"; }

private:
    bool passes() const;
    void skip();

    MSelectionList list;
    MFn::Type wanted;
    unsigned int item = 0;
};

MAYA_HOST_NAMESPACE_CLOSE
