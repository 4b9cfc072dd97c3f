#pragma once

#include "selection/component.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace host {

/// Points of a shape by index. Where a component's elements are the points themselves, as those of meshes and
/// curves are, the list is the component's own array: calls for a million points copy none.
class PointList {
public:
    PointList() = default;
    explicit PointList(std::vector<int> points) : own(std::move(points)) {}
    /// Of a component with one index per element; it must stay as it is while the list is in use.
    explicit PointList(Ref<const Component> component) : shared(std::move(component)) {}

    const int* data() const { return list().data(); }
    std::size_t size() const { return list().size(); }
    int operator[](std::size_t position) const { return list()[position]; }

private:
    const std::vector<int>& list() const { return shared ? shared->elements : own; }

    Ref<const Component> shared;
    std::vector<int> own;
};

} // namespace host
