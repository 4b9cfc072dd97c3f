#include "graph/node.h"
#include "graph/numericArray.h"
#include "graph/statusOf.h"

#include <maya/MIntArray.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>

#include <algorithm>
#include <new>

using host::Api;
using host::Plug;

namespace {

/// The plug of a handle that stands for an attribute of a node in the scene.
const Plug& usable(const MPlug& handle)
{
    const Plug& plug = Api::plug(handle);
    if (plug.isNull() || !plug.attribute())
        throw host::Error("A plug of no node cannot be used.");
    if (!Api::isThere(*plug.node()))
        throw host::Error("The node '" + plug.node()->name() + "' has been deleted.");
    return plug;
}

} // namespace

MPlug::MPlug()
{
    new (storage) Plug;
}

MPlug::MPlug(const MPlug& in)
{
    new (storage) Plug(Api::plug(in));
}

MPlug::MPlug(const MObject& nodeObject, const MObject& attributeObject)
{
    host::Node* owner = Api::node(nodeObject);
    const auto* definition = dynamic_cast<const host::Attribute*>(Api::object(attributeObject));
    if (owner && definition && owner->owns(*definition))
        new (storage) Plug(owner, definition);
    else
        new (storage) Plug;
}

MPlug::~MPlug()
{
    Api::plug(*this).~Plug();
}

MPlug& MPlug::operator=(const MPlug& other)
{
    if (this != &other)
        Api::plug(*this) = Api::plug(other);
    return *this;
}

bool MPlug::operator==(const MPlug& other) const
{
    return Api::plug(*this) == Api::plug(other);
}

bool MPlug::operator==(const MObject& other) const
{
    const host::Object* wanted = Api::object(other);
    return wanted && Api::plug(*this).attribute() == wanted;
}

bool MPlug::operator!=(const MPlug& other) const
{
    return !(*this == other);
}
bool MPlug::operator!=(const MObject& other) const
{
    return !(*this == other);
}

bool MPlug::isNull(MStatus* status) const
{
    host::report(status, MStatus::kSuccess);
    return Api::plug(*this).isNull();
}

bool MPlug::operator!() const
{
    return isNull();
}

MPlug MPlug::operator[](unsigned int physicalIndex) const
{
    return elementByPhysicalIndex(physicalIndex);
}

MPlug MPlug::operator[](MObject& attr) const
{
    return child(attr);
}

MObject MPlug::node(MStatus* status) const
{
    return host::answer(status, MObject(), [this] { return Api::wrap(usable(*this).node()); });
}

MObject MPlug::attribute(MStatus* status) const
{
    return host::answer(status, MObject(), [this] { return Api::wrap(usable(*this).attribute()); });
}

MString MPlug::name(MStatus* status) const
{
    return host::answer(status, MString(), [this] { return Api::wrap(usable(*this).name()); });
}

MString MPlug::partialName(bool includeNodeName, bool, bool, bool useAlias, bool, bool useLongNames,
                           MStatus* status) const
{
    return host::answer(status, MString(), [&] {
        const Plug& plug = usable(*this);
        std::string path = plug.attributePath(useLongNames).substr(1);
        const std::string longPath = plug.attributePath(true).substr(1);
        const std::string shortPath = plug.attributePath(false).substr(1);
        for (const auto& alias : plug.node()->aliases)
            if (useAlias && (alias.second == longPath || alias.second == shortPath))
                path = alias.first;
        return Api::wrap(includeNodeName ? plug.node()->uniqueName() + "." + path : path);
    });
}

MString MPlug::info(MStatus* status) const
{
    return name(status);
}

bool MPlug::isNetworked(MStatus* status) const
{
    // No plug has a place of its own in the graph before it is connected or set: none is networked.
    return host::answer(status, false, [this] { return usable(*this).isNull(); });
}

bool MPlug::isArray(MStatus* status) const
{
    return host::answer(status, false, [this] { return usable(*this).isArray(); });
}

bool MPlug::isElement(MStatus* status) const
{
    return host::answer(status, false, [this] { return usable(*this).isElement(); });
}

bool MPlug::isCompound(MStatus* status) const
{
    return host::answer(status, false, [this] { return usable(*this).isCompound(); });
}

bool MPlug::isChild(MStatus* status) const
{
    // A chosen element belongs to its array first.
    return host::answer(status, false,
                        [this] { return usable(*this).isChild() && !Api::plug(*this).isElement(); });
}

bool MPlug::isConnected(MStatus* status) const
{
    return host::answer(status, false, [this] {
        const Plug& plug = usable(*this);
        return plug.isDestination() || !plug.destinations().empty();
    });
}

bool MPlug::isLocked(MStatus* status) const
{
    return host::answer(status, false, [this] { return usable(*this).isLocked(); });
}

MStatus MPlug::setLocked(bool locked)
{
    return host::statusOf([&] { usable(*this).setLocked(locked); });
}

unsigned int MPlug::logicalIndex(MStatus* status) const
{
    return host::answer(status, 0u, [this] {
        const Plug& plug = usable(*this);
        if (!plug.isElement())
            throw host::Error("'" + plug.name() + "' is no element of an array.");
        return plug.logicalIndex();
    });
}

MStatus MPlug::selectAncestorLogicalIndex(unsigned int index, const MObject& attribute)
{
    return host::statusOf([&] {
        const Plug& plug = usable(*this);
        const host::Object* wanted = Api::object(attribute);
        const host::Attribute* step = plug.attribute();
        while (wanted && step && step != wanted)
            step = step->parent;
        if (!step || !step->flags.array || index >= Plug::kAnyIndex)
            throw host::Error("'" + plug.name() + "' lies in no such array.");
        Api::plug(*this).setIndex(step->ownIndexSlot(), index);
    });
}

MPlug MPlug::elementByLogicalIndex(unsigned int index, MStatus* status) const
{
    MPlug element(*this); // the only answer, so that it is made in place: this runs once per weight
    Plug& plug = Api::plug(element);
    const bool good = !plug.isNull() && plug.node()->alive() && plug.isArray() && index < Plug::kAnyIndex;
    if (good)
        plug.setIndex(plug.attribute()->ownIndexSlot(), index);
    else
        plug = Plug();
    host::report(status, good ? MStatus::kSuccess : MStatus::kFailure);
    return element;
}

MPlug MPlug::elementByPhysicalIndex(unsigned int physicalIndex, MStatus* status) const
{
    return host::answer(status, MPlug(), [&] {
        const Plug& plug = usable(*this);
        if (physicalIndex >= plug.numElements())
            throw host::Error("'" + plug.name() + "' has no element " + std::to_string(physicalIndex) + ".");
        const host::NumericArray* numbers = plug.numbers();
        const bool plain = numbers && numbers->size() == plug.numElements();
        const std::uint32_t logical =
            plain ? numbers->logicalOfPhysical(physicalIndex) : plug.existingIndices()[physicalIndex];
        return Api::wrap(plug.element(logical));
    });
}

unsigned int MPlug::numElements(MStatus* status) const
{
    return host::answer(status, 0u,
                        [this] { return static_cast<unsigned int>(usable(*this).numElements()); });
}

unsigned int MPlug::evaluateNumElements(MStatus* status)
{
    return host::answer(status, 0u, [this] {
        const Plug& plug = usable(*this);
        const host::Attribute& root = plug.attribute()->root();
        if (root.flags.output)
            plug.node()->evaluate(root);
        return static_cast<unsigned int>(plug.numElements());
    });
}

unsigned int MPlug::getExistingArrayAttributeIndices(MIntArray& indices, MStatus* status)
{
    indices.clear();
    return host::answer(status, 0u, [&] {
        for (const std::uint32_t logical : usable(*this).existingIndices())
            indices.append(static_cast<int>(logical));
        return indices.length();
    });
}

MPlug MPlug::child(MObject& attr, MStatus* status) const
{
    return host::answer(status, MPlug(), [&] {
        const Plug& plug = usable(*this);
        for (unsigned position = 0; position < plug.attribute()->children.size(); ++position)
            if (plug.attribute()->children[position].get() == Api::object(attr))
                return Api::wrap(plug.child(position));
        throw host::Error("'" + plug.name() + "' has no such child.");
    });
}

MPlug MPlug::child(unsigned int index, MStatus* status) const
{
    return host::answer(status, MPlug(), [&] { return Api::wrap(usable(*this).child(index)); });
}

unsigned int MPlug::numChildren(MStatus* status) const
{
    return host::answer(status, 0u, [this] {
        const Plug& plug = usable(*this);
        return static_cast<unsigned int>(plug.attribute()->children.size());
    });
}

MPlug MPlug::parent(MStatus* status) const
{
    return host::answer(status, MPlug(), [this] { return Api::wrap(usable(*this).parent()); });
}

MPlug MPlug::array(MStatus* status) const
{
    return host::answer(status, MPlug(), [this] { return Api::wrap(usable(*this).array()); });
}

bool MPlug::connectedTo(MPlugArray& array, bool asDst, bool asSrc, MStatus* status) const
{
    array.clear();
    return host::answer(status, false, [&] {
        const Plug& plug = usable(*this);
        const Plug feeding = asDst ? plug.source() : Plug();
        if (!feeding.isNull())
            array.append(Api::wrap(feeding));
        if (asSrc)
            for (const Plug& fed : plug.destinations())
                array.append(Api::wrap(fed));
        return array.length() > 0;
    });
}
