#pragma once

#include "graph/numericArray.h"
#include "nodes/filterInput.h"

namespace host {

/// Calls `move(point, share)` for every member of the input, which `share` of the way may be moved: the
/// envelope times the weight that the deformer stores for it. The rules of forEachMember hold.
template <class Move>
void moveMembers(Node& deformer, FilterInput& input, const Move& move)
{
    const NumericArray* weights = filterWeights(deformer, input.index);
    forEachMember(input, [&](std::size_t first, std::size_t end) {
        for (std::size_t member = first; member < end; ++member) {
            const std::size_t id = input.point(member);
            const double weight = weights ? weights->get(static_cast<std::uint32_t>(id)) : 1.0;
            move((*input.points)[id], input.envelope * weight);
        }
    });
}

} // namespace host
