#include "selection/componentHandle.h"

#include <maya/MFnDoubleIndexedComponent.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnTripleIndexedComponent.h>

#include <algorithm>

using host::componentOf;

namespace {

MObject created(MFnBase& set, MFn::Type type, unsigned dimension, MStatus* status)
{
    const host::Ref<host::Component> component = host::newComponent(type, dimension);
    if (!component) {
        host::report(status, MS::kInvalidParameter);
        return MObject();
    }
    MObject handle = host::Api::wrap(component.get());
    host::report(status, set.setObject(handle));
    return handle;
}

/// The indices of the element at a position, or null when there is none.
const int* elementAt(const host::Component& component, int index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= component.count())
        return nullptr;
    return component.elements.data() + static_cast<std::size_t>(index) * component.dimension();
}

/// The sizes of a complete component; kFailure when it is none.
MStatus completeSizes(const MFnBase& set, std::initializer_list<int*> sizes)
{
    const host::Component* component = componentOf(set);
    if (!component || !component->complete)
        return MS::kFailure;
    const int* from = component->completeSize;
    for (int* size : sizes)
        *size = *from++;
    return MS::kSuccess;
}

MStatus fill(const MFnBase& set, std::initializer_list<int> sizes)
{
    host::Component* component = componentOf(set);
    if (!component)
        return MS::kFailure;
    if (std::any_of(sizes.begin(), sizes.end(), [](int size) { return size < 0; }))
        return MS::kInvalidParameter;
    fillComplete(*component, sizes);
    return MS::kSuccess;
}

MStatus append(const MFnBase& set, std::initializer_list<int> indices)
{
    host::Component* component = componentOf(set);
    if (!component)
        return MS::kFailure;
    appendElement(*component, indices);
    return MS::kSuccess;
}

} // namespace

MFnSingleIndexedComponent::MFnSingleIndexedComponent() = default;

MFnSingleIndexedComponent::MFnSingleIndexedComponent(MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFnSingleIndexedComponent::MFnSingleIndexedComponent(const MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFn::Type MFnSingleIndexedComponent::type() const
{
    return MFn::kSingleIndexedComponent;
}

MObject MFnSingleIndexedComponent::create(MFn::Type compType, MStatus* status)
{
    return created(*this, compType, 1, status);
}

MStatus MFnSingleIndexedComponent::addElement(int element)
{
    return append(*this, {element});
}

MStatus MFnSingleIndexedComponent::addElements(MIntArray& elements)
{
    if (!componentOf(*this))
        return MS::kFailure;
    for (unsigned int at = 0; at < elements.length(); ++at)
        append(*this, {elements[at]});
    return MS::kSuccess;
}

int MFnSingleIndexedComponent::element(int index, MStatus* status) const
{
    const host::Component* component = componentOf(*this, status);
    const int* found = component ? elementAt(*component, index) : nullptr;
    if (component && !found)
        host::report(status, MS::kInvalidParameter);
    return found ? *found : 0;
}

int MFnSingleIndexedComponent::elementMax(MStatus* status) const
{
    const host::Component* component = componentOf(*this, status);
    if (!component || component->elements.empty()) {
        host::report(status, MS::kFailure);
        return 0;
    }
    return *std::max_element(component->elements.begin(), component->elements.end());
}

MStatus MFnSingleIndexedComponent::getElements(MIntArray& elements) const
{
    const host::Component* component = componentOf(*this);
    if (!component)
        return MS::kFailure;
    elements = indicesIn(*component, 0);
    return MS::kSuccess;
}

MStatus MFnSingleIndexedComponent::setCompleteData(int numElements)
{
    return fill(*this, {numElements});
}

MStatus MFnSingleIndexedComponent::getCompleteData(int& numElements) const
{
    return completeSizes(*this, {&numElements});
}

MFnDoubleIndexedComponent::MFnDoubleIndexedComponent() = default;

MFnDoubleIndexedComponent::MFnDoubleIndexedComponent(MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFnDoubleIndexedComponent::MFnDoubleIndexedComponent(const MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFn::Type MFnDoubleIndexedComponent::type() const
{
    return MFn::kDoubleIndexedComponent;
}

MObject MFnDoubleIndexedComponent::create(MFn::Type compType, MStatus* status)
{
    return created(*this, compType, 2, status);
}

MStatus MFnDoubleIndexedComponent::addElement(int uIndex, int vIndex)
{
    return append(*this, {uIndex, vIndex});
}

MStatus MFnDoubleIndexedComponent::addElements(const MIntArray& uIndexArray, const MIntArray& vIndexArray)
{
    if (!componentOf(*this))
        return MS::kFailure;
    if (uIndexArray.length() != vIndexArray.length())
        return MS::kInvalidParameter;
    for (unsigned int at = 0; at < uIndexArray.length(); ++at)
        append(*this, {uIndexArray[at], vIndexArray[at]});
    return MS::kSuccess;
}

MStatus MFnDoubleIndexedComponent::getElement(int index, int& uIndex, int& vIndex) const
{
    const host::Component* component = componentOf(*this);
    const int* found = component ? elementAt(*component, index) : nullptr;
    if (!found)
        return component ? MS::kInvalidParameter : MS::kFailure;
    uIndex = found[0];
    vIndex = found[1];
    return MS::kSuccess;
}

MStatus MFnDoubleIndexedComponent::getElements(MIntArray& uIndexArray, MIntArray& vIndexArray) const
{
    const host::Component* component = componentOf(*this);
    if (!component)
        return MS::kFailure;
    uIndexArray = indicesIn(*component, 0);
    vIndexArray = indicesIn(*component, 1);
    return MS::kSuccess;
}

MStatus MFnDoubleIndexedComponent::setCompleteData(int maxU, int maxV)
{
    return fill(*this, {maxU, maxV});
}

MStatus MFnDoubleIndexedComponent::getCompleteData(int& maxU, int& maxV) const
{
    return completeSizes(*this, {&maxU, &maxV});
}

MFnTripleIndexedComponent::MFnTripleIndexedComponent() = default;

MFnTripleIndexedComponent::MFnTripleIndexedComponent(MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFnTripleIndexedComponent::MFnTripleIndexedComponent(const MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFn::Type MFnTripleIndexedComponent::type() const
{
    return MFn::kTripleIndexedComponent;
}

MObject MFnTripleIndexedComponent::create(MFn::Type compType, MStatus* status)
{
    return created(*this, compType, 3, status);
}

MStatus MFnTripleIndexedComponent::addElement(int sIndex, int tIndex, int uIndex)
{
    return append(*this, {sIndex, tIndex, uIndex});
}

MStatus MFnTripleIndexedComponent::addElements(const MIntArray& sIndexArray, const MIntArray& tIndexArray,
                                               const MIntArray& uIndexArray)
{
    if (!componentOf(*this))
        return MS::kFailure;
    if (sIndexArray.length() != tIndexArray.length() || sIndexArray.length() != uIndexArray.length())
        return MS::kInvalidParameter;
    for (unsigned int at = 0; at < sIndexArray.length(); ++at)
        append(*this, {sIndexArray[at], tIndexArray[at], uIndexArray[at]});
    return MS::kSuccess;
}

MStatus MFnTripleIndexedComponent::getElement(int index, int& sIndex, int& tIndex, int& uIndex) const
{
    const host::Component* component = componentOf(*this);
    const int* found = component ? elementAt(*component, index) : nullptr;
    if (!found)
        return component ? MS::kInvalidParameter : MS::kFailure;
    sIndex = found[0];
    tIndex = found[1];
    uIndex = found[2];
    return MS::kSuccess;
}

MStatus MFnTripleIndexedComponent::getElements(MIntArray& sIndexArray, MIntArray& tIndexArray,
                                               MIntArray& uIndexArray) const
{
    const host::Component* component = componentOf(*this);
    if (!component)
        return MS::kFailure;
    sIndexArray = indicesIn(*component, 0);
    tIndexArray = indicesIn(*component, 1);
    uIndexArray = indicesIn(*component, 2);
    return MS::kSuccess;
}

MStatus MFnTripleIndexedComponent::setCompleteData(int maxS, int maxT, int maxU)
{
    return fill(*this, {maxS, maxT, maxU});
}

MStatus MFnTripleIndexedComponent::getCompleteData(int& maxS, int& maxT, int& maxU) const
{
    return completeSizes(*this, {&maxS, &maxT, &maxU});
}
