#include "graph/node.h"
#include "graph/statusOf.h"
#include "nodes/geometry.h"

#include <maya/MDagPath.h>

#include <utility>

using host::Api;
using host::DagNode;

namespace {

DagNode& last(const MDagPath& path)
{
    DagNode* node = Api::node(path);
    if (!node)
        throw host::Error("The path leads to no node.");
    return *node;
}

MMatrix converted(const Imath::M44d& matrix)
{
    return MMatrix(matrix.x);
}

} // namespace

MDagPath::MDagPath() = default;

MDagPath::MDagPath(const MDagPath& src) : ptr(src.ptr)
{
    if (ptr)
        ptr->retain();
}

MDagPath::~MDagPath()
{
    if (ptr)
        ptr->release();
}

MDagPath& MDagPath::operator=(const MDagPath& src)
{
    MDagPath copy(src);
    std::swap(ptr, copy.ptr);
    return *this;
}

MDagPath& MDagPath::operator=(MDagPath&& other) noexcept
{
    std::swap(ptr, other.ptr);
    return *this;
}

bool MDagPath::operator==(const MDagPath& src) const
{
    return ptr == src.ptr;
}

MStatus MDagPath::getAPathTo(const MObject& node, MDagPath& path)
{
    MStatus status;
    path = getAPathTo(node, &status);
    return status;
}

MDagPath MDagPath::getAPathTo(const MObject& node, MStatus* status)
{
    host::Node* found = Api::node(node);
    DagNode* dag = found ? found->asDag() : nullptr;
    host::report(status, dag ? MStatus::kSuccess : MStatus::kFailure);
    return Api::path(dag);
}

bool MDagPath::hasFn(MFn::Type type, MStatus* status) const
{
    return host::answer(status, false, [&] { return last(*this).hasFn(type); });
}

MFn::Type MDagPath::apiType(MStatus* status) const
{
    return host::answer(status, MFn::kInvalid, [&] { return last(*this).apiType(); });
}

bool MDagPath::isValid(MStatus* status) const
{
    host::report(status, MStatus::kSuccess);
    return Api::node(*this) != nullptr;
}

MObject MDagPath::node(MStatus* status) const
{
    return host::answer(status, MObject(), [&] { return Api::wrap(&last(*this)); });
}

MObject MDagPath::transform(MStatus* status) const
{
    return host::answer(status, MObject(), [&] {
        const DagNode* step = &last(*this);
        while (step->isShape() && step->parent())
            step = step->parent();
        return step->isShape() ? MObject() : Api::wrap(step);
    });
}

unsigned int MDagPath::length(MStatus* status) const
{
    return host::answer(status, 0u, [&] { return last(*this).depth(); });
}

MStatus MDagPath::extendToShape()
{
    return host::statusOf([&] {
        const DagNode& node = last(*this);
        if (node.isShape())
            return;
        DagNode* only = nullptr;
        for (const host::Ref<DagNode>& child : node.children()) {
            if (!child->isShape() || child->isIntermediate())
                continue;
            if (only)
                throw host::Error("'" + node.uniqueName() + "' has several shapes.");
            only = child.get();
        }
        if (!only)
            throw host::Error("'" + node.uniqueName() + "' has no shape.");
        *this = Api::path(only);
    });
}

MStatus MDagPath::numberOfShapesDirectlyBelow(unsigned int& count) const
{
    count = 0;
    return host::statusOf([&] {
        for (const host::Ref<DagNode>& child : last(*this).children())
            count += child->isShape() ? 1u : 0u;
    });
}

MStatus MDagPath::extendToShapeDirectlyBelow(unsigned int position)
{
    return host::statusOf([&] {
        const DagNode& node = last(*this);
        for (const host::Ref<DagNode>& child : node.children()) {
            if (child->isShape() && position-- == 0) {
                *this = Api::path(child.get());
                return;
            }
        }
        throw host::Error("'" + node.uniqueName() + "' has no such shape.");
    });
}

MStatus MDagPath::pop(unsigned int num)
{
    return host::statusOf([&] {
        DagNode* step = &last(*this);
        for (unsigned int left = num; left > 0; --left) {
            if (!step)
                throw host::Error("The path is shorter than that.");
            step = step->parent();
        }
        *this = Api::path(step);
    });
}

unsigned int MDagPath::childCount(MStatus* status) const
{
    return host::answer(status, 0u, [&] { return static_cast<unsigned int>(last(*this).children().size()); });
}

MObject MDagPath::child(unsigned int i, MStatus* status) const
{
    return host::answer(status, MObject(), [&] {
        const auto& children = last(*this).children();
        if (i >= children.size())
            throw host::Error("The node has no such child.");
        return Api::wrap(children[i].get());
    });
}

MMatrix MDagPath::inclusiveMatrix(MStatus* status) const
{
    return host::answer(status, MMatrix(), [&] { return converted(host::worldMatrix(last(*this))); });
}

MMatrix MDagPath::exclusiveMatrix(MStatus* status) const
{
    return host::answer(status, MMatrix(), [&] { return converted(host::parentMatrix(last(*this))); });
}

MMatrix MDagPath::inclusiveMatrixInverse(MStatus* status) const
{
    return inclusiveMatrix(status).inverse();
}

MMatrix MDagPath::exclusiveMatrixInverse(MStatus* status) const
{
    return exclusiveMatrix(status).inverse();
}

MString MDagPath::fullPathName(MStatus* status) const
{
    return host::answer(status, MString(), [&] { return Api::wrap(last(*this).fullPath()); });
}

MString MDagPath::partialPathName(MStatus* status) const
{
    return host::answer(status, MString(), [&] { return Api::wrap(last(*this).partialPath()); });
}
