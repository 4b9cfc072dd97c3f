#include <maya/MFnComponent.h>

#include "selection/componentAlgebra.h"
#include "selection/componentHandle.h"

using host::componentOf;

MFnComponent::MFnComponent() = default;

MFnComponent::MFnComponent(MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFnComponent::MFnComponent(const MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFn::Type MFnComponent::type() const
{
    return MFn::kComponent;
}

int MFnComponent::elementCount(MStatus* status) const
{
    const host::Component* component = componentOf(*this, status);
    return component ? static_cast<int>(component->count()) : 0;
}

MFn::Type MFnComponent::componentType(MStatus* status) const
{
    const host::Component* component = componentOf(*this, status);
    return component ? component->apiType() : MFn::kInvalid;
}

bool MFnComponent::isEmpty(MStatus* status) const
{
    const host::Component* component = componentOf(*this, status);
    return !component || component->count() == 0;
}

bool MFnComponent::isEqual(MObject& other, MStatus* status) const
{
    const host::Component* mine = componentOf(*this, status);
    const auto* theirs = dynamic_cast<const host::Component*>(host::Api::object(other));
    return mine && theirs && mine->apiType() == theirs->apiType() && contains(*mine, *theirs) &&
           contains(*theirs, *mine);
}

bool MFnComponent::isComplete(MStatus* status) const
{
    const host::Component* component = componentOf(*this, status);
    return component && component->complete;
}

MStatus MFnComponent::setComplete(bool complete)
{
    host::Component* component = componentOf(*this);
    if (!component)
        return MS::kFailure;
    component->complete = complete;
    return MS::kSuccess;
}

bool MFnComponent::hasWeights() const
{
    const host::Component* component = componentOf(*this);
    return component && !component->weights.empty();
}

MWeight MFnComponent::weight(int index, MStatus* status) const
{
    MWeight weight;
    const host::Component* component = componentOf(*this, status);
    if (!component)
        return weight;
    const auto at = static_cast<std::size_t>(index);
    if (index < 0 || at >= component->count()) {
        host::report(status, MS::kInvalidParameter);
        return weight;
    }
    if (at < component->weights.size())
        weight.setInfluence(component->weights[at]);
    if (at < component->seams.size())
        weight.setSeam(component->seams[at]);
    return weight;
}

MStatus MFnComponent::setWeight(int index, const MWeight& weight)
{
    host::Component* component = componentOf(*this);
    if (!component)
        return MS::kFailure;
    const auto at = static_cast<std::size_t>(index);
    if (index < 0 || at >= component->count())
        return MS::kInvalidParameter;
    component->weights.resize(component->count(), 1.0F);
    component->seams.resize(component->count(), 0.0F);
    component->weights[at] = weight.influence();
    component->seams[at] = weight.seam();
    return MS::kSuccess;
}

MStatus MFnComponent::setWeights(const MWeight& weight)
{
    host::Component* component = componentOf(*this);
    if (!component)
        return MS::kFailure;
    component->weights.assign(component->count(), weight.influence());
    component->seams.assign(component->count(), weight.seam());
    return MS::kSuccess;
}
