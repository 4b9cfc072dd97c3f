#include "types/api.h"

#include <maya/MItSelectionList.h>

namespace {

/// Whether there is a shape of that type right below the node.
bool hasShapeOf(const MDagPath& path, MFn::Type type)
{
    MDagPath shape(path);
    return path.hasFn(MFn::kTransform) && shape.extendToShape() && shape.hasFn(type);
}

} // namespace

MItSelectionList::MItSelectionList(const MSelectionList& source, MFn::Type filter, MStatus* status)
    : list(source), wanted(filter)
{
    host::report(status, reset());
}

MItSelectionList::~MItSelectionList() = default;

bool MItSelectionList::isDone(MStatus* status)
{
    host::report(status, MStatus::kSuccess);
    return item >= list.length();
}

MStatus MItSelectionList::next()
{
    if (isDone())
        return MStatus::kFailure;
    ++item;
    skip();
    return MStatus::kSuccess;
}

MStatus MItSelectionList::reset()
{
    item = 0;
    skip();
    return MStatus::kSuccess;
}

MStatus MItSelectionList::setFilter(MFn::Type filter)
{
    wanted = filter;
    return reset();
}

/// To the next item that passes, starting with the current one.
void MItSelectionList::skip()
{
    while (item < list.length() && !passes())
        ++item;
}

bool MItSelectionList::passes() const
{
    if (wanted == MFn::kInvalid)
        return true;
    MDagPath path;
    MObject component, node;
    if (list.getDagPath(item, path, component))
        return (!component.isNull() && component.hasFn(wanted)) || path.node().hasFn(wanted) ||
               (component.isNull() && hasShapeOf(path, wanted));
    return list.getDependNode(item, node) && node.hasFn(wanted);
}

MStatus MItSelectionList::getDependNode(MObject& depNode)
{
    return list.getDependNode(item, depNode);
}

MStatus MItSelectionList::getDagPath(MDagPath& dagPath, MObject& component)
{
    return list.getDagPath(item, dagPath, component);
}

MStatus MItSelectionList::getDagPath(MDagPath& dagPath)
{
    MObject component;
    return list.getDagPath(item, dagPath, component);
}

MStatus MItSelectionList::getPlug(MPlug& plug)
{
    return list.getPlug(item, plug);
}

MStatus MItSelectionList::getStrings(MStringArray& array)
{
    return list.getSelectionStrings(item, array);
}

MItSelectionList::selItemType MItSelectionList::itemType(MStatus* status)
{
    MPlug plug;
    MDagPath path;
    MObject object;
    host::report(status, isDone() ? MStatus::kFailure : MStatus::kSuccess);
    if (list.getPlug(item, plug))
        return kPlugSelectionItem;
    if (list.getDagPath(item, path, object))
        return kDagSelectionItem;
    return list.getDependNode(item, object) ? kDNselectionItem : kUnknownItem;
}

bool MItSelectionList::hasComponents(MStatus* status) const
{
    MDagPath path;
    MObject component;
    list.getDagPath(item, path, component);
    host::report(status, MStatus::kSuccess);
    return !component.isNull();
}
