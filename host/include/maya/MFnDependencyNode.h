#pragma once

#include <maya/MFnBase.h>
#include <maya/MPlug.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

namespace host {
struct Api;
}

MAYA_HOST_NAMESPACE_OPEN

/// A node of the dependency graph.
class MAYA_HOST_EXPORT MFnDependencyNode : public MFnBase {
public:
    MFnDependencyNode();
    MFnDependencyNode(MObject& object, MStatus* status = nullptr);
    MFnDependencyNode(const MObject& object, MStatus* status = nullptr);
    MFn::Type type() const override;

    MString name(MStatus* status = nullptr) const;
    MString setName(const MString& name, bool createNamespace = false, MStatus* status = nullptr);
    MString typeName(MStatus* status = nullptr) const;
    /// Long or short name, path of a compound child, or alias. kInvalidParameter when there is no such
    /// attribute.
    MPlug findPlug(const MObject& attr, bool wantNetworkedPlug, MStatus* status = nullptr) const;
    MPlug findPlug(const MString& attrName, bool wantNetworkedPlug, MStatus* status = nullptr) const;
    /// Obsolete: a networked plug is wanted.
    MPlug findPlug(const MObject& attr, MStatus* status = nullptr) const;
    MPlug findPlug(const MString& attrName, MStatus* status = nullptr) const;
    MObject attribute(const MString& attrName, MStatus* status = nullptr) const;
    bool hasAttribute(const MString& name, MStatus* status = nullptr) const;
    /// Pairs of alias and attribute name such as `weight[3]`, in the order in which they were made; false
    /// when there are none.
    bool getAliasList(MStringArray& strArray, MStatus* status = nullptr);
    static const char* className() { return "MFnDependencyNode"; }

private:
    friend struct host::Api;
};

MAYA_HOST_NAMESPACE_CLOSE
