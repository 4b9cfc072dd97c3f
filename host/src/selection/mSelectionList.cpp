#include <maya/MSelectionList.h>

#include "graph/graph.h"
#include "selection/selectionList.h"
#include "session.h"
#include "types/api.h"
#include "types/error.h"

#include <maya/MStringArray.h>

using host::Api;
using host::SelectionItem;

// Components are copied on their way in and out, so that a list is a value: nobody can change what it holds
// through a handle.

namespace {

/// What a path with a component stands for. Components belong to the shape: a transform's are its shape's.
bool itemOf(const MDagPath& path, const MObject& component, SelectionItem& item)
{
    host::DagNode* node = Api::node(path);
    if (!node)
        return false;
    if (component.isNull()) {
        item.node = host::Ref<host::Node>(node);
        return true;
    }
    const auto* elements = dynamic_cast<const host::Component*>(Api::object(component));
    host::DagNode* shape = host::componentShape(*node);
    if (!elements || !shape)
        return false;
    item.node = host::Ref<host::Node>(shape);
    item.component = elements->clone();
    return true;
}

const SelectionItem* itemAt(const host::SelectionList& list, unsigned int index)
{
    if (index >= list.items.size())
        return nullptr;
    const SelectionItem& item = list.items[index];
    const host::Node* node = item.plug.isNull() ? item.node.get() : item.plug.node();
    return node && node->alive() ? &item : nullptr;
}

host::SelectionList::Merge mergeOf(MSelectionList::MergeStrategy strategy)
{
    switch (strategy) {
    case MSelectionList::kXORWithList:
        return host::SelectionList::Merge::kXor;
    case MSelectionList::kRemoveFromList:
        return host::SelectionList::Merge::kRemove;
    default:
        return host::SelectionList::Merge::kNormal;
    }
}

} // namespace

MSelectionList::MSelectionList() : list(std::make_unique<host::SelectionList>()) {}

MSelectionList::MSelectionList(const MSelectionList& src)
    : list(std::make_unique<host::SelectionList>(*src.list))
{}

MSelectionList::MSelectionList(MSelectionList&& other) noexcept
    : list(std::make_unique<host::SelectionList>())
{
    list.swap(other.list);
}

MSelectionList::~MSelectionList() = default;

MSelectionList& MSelectionList::operator=(const MSelectionList& other)
{
    *list = host::SelectionList(*other.list);
    return *this;
}

MSelectionList& MSelectionList::operator=(MSelectionList&& other) noexcept
{
    list.swap(other.list);
    return *this;
}

MStatus MSelectionList::clear()
{
    list->items.clear();
    return MS::kSuccess;
}

bool MSelectionList::isEmpty(MStatus* status) const
{
    host::report(status, MS::kSuccess);
    return list->items.empty();
}

unsigned int MSelectionList::length(MStatus* status) const
{
    host::report(status, MS::kSuccess);
    return static_cast<unsigned int>(list->items.size());
}

MStatus MSelectionList::add(const MString& matchString, const bool searchChildNamespacesToo)
{
    host::Session* session = host::Session::currentOrNull();
    if (!session)
        return MS::kFailure;
    try {
        list->addPattern(session->graph(), Api::text(matchString), searchChildNamespacesToo);
    } catch (const host::Error&) {
        return MS::kInvalidParameter;
    }
    return MS::kSuccess;
}

MStatus MSelectionList::add(const MDagPath& object, const MObject& component, const bool mergeWithExisting)
{
    SelectionItem item;
    if (!itemOf(object, component, item))
        return MS::kInvalidParameter;
    list->add(std::move(item), mergeWithExisting);
    return MS::kSuccess;
}

MStatus MSelectionList::add(const MObject& object, const bool mergeWithExisting)
{
    host::Node* node = Api::node(object);
    if (!node)
        return MS::kInvalidParameter;
    list->add({host::Ref<host::Node>(node), {}, host::Plug()}, mergeWithExisting);
    return MS::kSuccess;
}

MStatus MSelectionList::add(const MPlug& plug, const bool mergeWithExisting)
{
    const host::Plug& wanted = Api::plug(plug);
    if (wanted.isNull() || !wanted.node()->alive())
        return MS::kInvalidParameter;
    list->add({host::Ref<host::Node>(wanted.node()), {}, wanted}, mergeWithExisting);
    return MS::kSuccess;
}

MStatus MSelectionList::remove(unsigned int index)
{
    if (index >= list->items.size())
        return MS::kInvalidParameter;
    list->items.erase(list->items.begin() + static_cast<std::ptrdiff_t>(index));
    return MS::kSuccess;
}

MStatus MSelectionList::getDependNode(unsigned int index, MObject& depNode) const
{
    const SelectionItem* item = itemAt(*list, index);
    if (!item)
        return MS::kFailure;
    depNode = Api::wrap(item->plug.isNull() ? item->node.get() : item->plug.node());
    return MS::kSuccess;
}

MStatus MSelectionList::getDagPath(unsigned int index, MDagPath& dagPath, MObject& component) const
{
    const SelectionItem* item = itemAt(*list, index);
    host::DagNode* node = item && item->plug.isNull() ? item->node->asDag() : nullptr;
    if (!node)
        return MS::kFailure;
    dagPath = Api::path(node);
    // The default argument is the shared null object: it must stay null.
    if (&component != &MObject::kNullObj)
        component = item->component ? Api::wrap(item->component->clone().get()) : MObject();
    return MS::kSuccess;
}

MStatus MSelectionList::getPlug(unsigned int index, MPlug& plug) const
{
    const SelectionItem* item = itemAt(*list, index);
    if (!item || item->plug.isNull())
        return MS::kFailure;
    plug = Api::wrap(item->plug);
    return MS::kSuccess;
}

MStatus MSelectionList::getSelectionStrings(MStringArray& array) const
{
    array.clear();
    for (unsigned int index = 0; index < list->items.size(); ++index) {
        MStringArray texts;
        if (!getSelectionStrings(index, texts))
            continue;
        for (unsigned int at = 0; at < texts.length(); ++at)
            array.append(texts[at]);
    }
    return MS::kSuccess;
}

MStatus MSelectionList::getSelectionStrings(unsigned int index, MStringArray& array) const
{
    array.clear();
    if (!itemAt(*list, index))
        return MS::kFailure;
    array = Api::wrap(list->texts(index, host::SelectionList::Owner::kShape));
    return MS::kSuccess;
}

bool MSelectionList::hasItem(const MObject& item, MStatus* status) const
{
    host::Node* node = Api::node(item);
    host::report(status, node ? MS::kSuccess : MS::kInvalidParameter);
    return node && list->holds({host::Ref<host::Node>(node), {}, host::Plug()});
}

bool MSelectionList::hasItem(const MDagPath& item, const MObject& component, MStatus* status) const
{
    SelectionItem wanted;
    const bool usable = itemOf(item, component, wanted);
    host::report(status, usable ? MS::kSuccess : MS::kInvalidParameter);
    return usable && list->holds(wanted);
}

MStatus MSelectionList::merge(const MSelectionList& other, const MergeStrategy strategy)
{
    const host::SelectionList source = *other.list; // it may be this list
    list->combine(source, mergeOf(strategy));
    return MS::kSuccess;
}

MStatus MSelectionList::merge(const MDagPath& object, const MObject& component, const MergeStrategy strategy)
{
    host::SelectionList source;
    source.items.emplace_back();
    if (!itemOf(object, component, source.items.back()))
        return MS::kInvalidParameter;
    list->combine(source, mergeOf(strategy));
    return MS::kSuccess;
}
