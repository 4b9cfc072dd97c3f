#pragma once

#include "selection/component.h"
#include "types/api.h"

#include <maya/MFnBase.h>
#include <maya/MIntArray.h>

#include <initializer_list>

namespace host {

// What the component function sets share. Sets fail with kFailure while they are attached to nothing.

/// The component that a set is attached to, or null.
Component* componentOf(const MFnBase& set);
Component* componentOf(const MFnBase& set, MStatus* status);

/// A new component of a type with that many indices per element; null when the type has another number or is
/// no component type.
Ref<Component> newComponent(MFn::Type type, unsigned dimension);

/// Appends an element; one that carries weights gets weight 1.
void appendElement(Component& component, std::initializer_list<int> indices);
/// Makes it stand for all elements of a shape of these sizes, listed in the host's order.
void fillComplete(Component& component, std::initializer_list<int> sizes);
/// The indices of all elements in one direction, in element order.
MIntArray indicesIn(const Component& component, unsigned direction);

} // namespace host
