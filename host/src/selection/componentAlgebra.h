#pragma once

#include "selection/component.h"

namespace host {

// Sets of elements of one component type. Results are ascending and without repeats and are complete only if
// they were made so. Where an element has a weight in both, the larger one stays; where only one of the
// components carries weights, the elements of the other count as weight 1.

Ref<Component> united(const Component& a, const Component& b);
/// Elements that are in one of the two only.
Ref<Component> toggled(const Component& a, const Component& b);
/// Elements of `a` that are not in `b`.
Ref<Component> without(const Component& a, const Component& b);
/// Whether every element of `b` is in `a`.
bool contains(const Component& a, const Component& b);

} // namespace host
