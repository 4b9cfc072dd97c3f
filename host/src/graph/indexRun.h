#pragma once

#include <cstddef>
#include <cstdint>

namespace host {

/// Whether indices follow one another; there is at least one. Without an early end, so that the compiler
/// takes several at a time.
inline bool isRun(const int* indices, std::size_t count)
{
    const auto first = static_cast<std::uint32_t>(indices[0]);
    std::uint32_t off = 0;
    for (std::size_t k = 0; k < count; ++k)
        off |= static_cast<std::uint32_t>(indices[k]) ^ (first + static_cast<std::uint32_t>(k));
    return off == 0;
}

} // namespace host
