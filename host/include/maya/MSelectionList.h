#pragma once

#include <maya/MDagPath.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MTypes.h>

#include <memory>

namespace host {
struct Api;
struct SelectionList;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

/// An ordered list of nodes, paths with or without components, and plugs. Copies are deep.
class MAYA_HOST_EXPORT MSelectionList {
public:
    enum MergeStrategy : int {
        kMergeNormal = 0,
        kXORWithList = 1,
        kRemoveFromList = 2,
    };

    MSelectionList();
    MSelectionList(const MSelectionList& src);
    MSelectionList(MSelectionList&& other) noexcept;
    virtual ~MSelectionList();
    MSelectionList& operator=(const MSelectionList& other);
    MSelectionList& operator=(MSelectionList&& other) noexcept;

    MStatus clear();
    bool isEmpty(MStatus* status = nullptr) const;
    unsigned int length(MStatus* status = nullptr) const;

    /// By name: wild cards and component syntax; fails, changing nothing, when nothing matches.
    MStatus add(const MString& matchString, const bool searchChildNamespacesToo = false);
    /// With mergeWithExisting components of the same shape unite with the item there is.
    MStatus add(const MDagPath& object, const MObject& component = MObject::kNullObj,
                const bool mergeWithExisting = false);
    MStatus add(const MObject& object, const bool mergeWithExisting = false);
    MStatus add(const MPlug& plug, const bool mergeWithExisting = false);
    MStatus remove(unsigned int index);

    MStatus getDependNode(unsigned int index, MObject& depNode) const;
    /// Fails for items that are no path. The component is null when the item is the whole node.
    MStatus getDagPath(unsigned int index, MDagPath& dagPath, MObject& component = MObject::kNullObj) const;
    MStatus getPlug(unsigned int index, MPlug& plug) const;
    MStatus getSelectionStrings(MStringArray& array) const;
    MStatus getSelectionStrings(unsigned int index, MStringArray& array) const;
    bool hasItem(const MObject& item, MStatus* status = nullptr) const;
    bool hasItem(const MDagPath& item, const MObject& component = MObject::kNullObj,
                 MStatus* status = nullptr) const;
    MStatus merge(const MSelectionList& other, const MergeStrategy strategy = kMergeNormal);
    MStatus merge(const MDagPath& object, const MObject& component = MObject::kNullObj,
                  const MergeStrategy strategy = kMergeNormal);
    static const char* className() { return "MSelectionList"; }

private:
    friend struct host::Api;
    std::unique_ptr<host::SelectionList> list;
};

MAYA_HOST_NAMESPACE_CLOSE
