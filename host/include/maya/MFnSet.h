#pragma once

#include <maya/MDagPath.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MSelectionList.h>

namespace host {
struct Api;
}

MAYA_HOST_NAMESPACE_OPEN

/// A set of nodes and components.
class MAYA_HOST_EXPORT MFnSet : public MFnDependencyNode {
public:
    MFnSet();
    MFnSet(MObject& object, MStatus* status = nullptr);
    MFnSet(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override;

    /// Flatten replaces sets by their members.
    MStatus getMembers(MSelectionList& members, bool flatten) const;
    MStatus addMember(const MDagPath& obj, const MObject& component = MObject::kNullObj);
    bool isMember(const MDagPath& object, const MObject& component = MObject::kNullObj,
                  MStatus* status = nullptr) const;
    MStatus clear();
    static const char* className() { return "MFnSet"; }

private:
    friend struct host::Api;
};

MAYA_HOST_NAMESPACE_CLOSE
