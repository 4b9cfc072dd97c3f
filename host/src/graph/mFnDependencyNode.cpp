#include "graph/graph.h"
#include "graph/statusOf.h"

#include <maya/MFnAttribute.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MStringArray.h>

using host::Api;

namespace {

host::Node& nodeOf(const MFnBase& set)
{
    auto* node = dynamic_cast<host::Node*>(Api::object(set));
    if (!node || !node->alive())
        throw host::Error("The function set is attached to no node.");
    return *node;
}

const host::Attribute& attributeOf(const MFnBase& set)
{
    const auto* attribute = dynamic_cast<const host::Attribute*>(Api::object(set));
    if (!attribute)
        throw host::Error("The function set is attached to no attribute.");
    return *attribute;
}

} // namespace

MFnDependencyNode::MFnDependencyNode() = default;

MFnDependencyNode::MFnDependencyNode(MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFnDependencyNode::MFnDependencyNode(const MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFn::Type MFnDependencyNode::type() const
{
    return MFn::kDependencyNode;
}

MString MFnDependencyNode::name(MStatus* status) const
{
    return host::answer(status, MString(), [this] { return Api::wrap(nodeOf(*this).name()); });
}

MString MFnDependencyNode::setName(const MString& name, bool, MStatus* status)
{
    return host::answer(status, MString(), [&] {
        host::Node& node = nodeOf(*this);
        node.graph().rename(node, Api::text(name));
        return Api::wrap(node.name());
    });
}

MString MFnDependencyNode::typeName(MStatus* status) const
{
    return host::answer(status, MString(), [this] { return Api::wrap(nodeOf(*this).type().name); });
}

MPlug MFnDependencyNode::findPlug(const MObject& attr, bool, MStatus* status) const
{
    MStatus result = MStatus::kSuccess;
    MPlug plug = host::answer(&result, MPlug(), [&] {
        MPlug found(Api::wrap(&nodeOf(*this)), attr);
        if (found.isNull())
            result = MStatus::kInvalidParameter;
        return found;
    });
    host::report(status, result && plug.isNull() ? MStatus(MStatus::kInvalidParameter) : result);
    return plug;
}

MPlug MFnDependencyNode::findPlug(const MString& attrName, bool, MStatus* status) const
{
    MStatus attached;
    host::Node* node = host::answer<host::Node*>(&attached, nullptr, [this] { return &nodeOf(*this); });
    if (!node) {
        host::report(status, attached);
        return MPlug();
    }
    MStatus found;
    MPlug plug =
        host::answer(&found, MPlug(), [&] { return Api::wrap(node->plugByPath(Api::text(attrName))); });
    host::report(status, found ? found : MStatus(MStatus::kInvalidParameter));
    return plug;
}

MPlug MFnDependencyNode::findPlug(const MObject& attr, MStatus* status) const
{
    return findPlug(attr, true, status);
}

MPlug MFnDependencyNode::findPlug(const MString& attrName, MStatus* status) const
{
    return findPlug(attrName, true, status);
}

MObject MFnDependencyNode::attribute(const MString& attrName, MStatus* status) const
{
    MStatus attached;
    const host::Attribute* found = host::answer<const host::Attribute*>(
        &attached, nullptr, [&] { return nodeOf(*this).findAttribute(Api::text(attrName)); });
    host::report(status, attached && !found ? MStatus(MStatus::kInvalidParameter) : attached);
    return Api::wrap(found);
}

bool MFnDependencyNode::hasAttribute(const MString& name, MStatus* status) const
{
    return host::answer(status, false,
                        [&] { return nodeOf(*this).findAttribute(Api::text(name)) != nullptr; });
}

bool MFnDependencyNode::getAliasList(MStringArray& strArray, MStatus* status)
{
    strArray.clear();
    return host::answer(status, false, [&] {
        for (const auto& alias : nodeOf(*this).aliases) {
            strArray.append(Api::wrap(alias.first));
            strArray.append(Api::wrap(alias.second));
        }
        return strArray.length() > 0;
    });
}

MFnAttribute::MFnAttribute() = default;

MFnAttribute::MFnAttribute(MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFnAttribute::MFnAttribute(const MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFn::Type MFnAttribute::type() const
{
    return MFn::kAttribute;
}

MString MFnAttribute::name(MStatus* status) const
{
    return host::answer(status, MString(), [this] { return Api::wrap(attributeOf(*this).longName); });
}

MString MFnAttribute::shortName(MStatus* status) const
{
    return host::answer(status, MString(), [this] { return Api::wrap(attributeOf(*this).shortName); });
}

bool MFnAttribute::isArray(MStatus* status) const
{
    return host::answer(status, false, [this] { return attributeOf(*this).flags.array; });
}

MObject MFnAttribute::parent(MStatus* status) const
{
    return host::answer(status, MObject(), [this] { return Api::wrap(attributeOf(*this).parent); });
}
