#pragma once

#include <cstddef>
#include <cstdint>

namespace host {

// Arrays are dense as long as that costs no more than some times what they hold; a single element far out
// must not cost its index.

/// Below this, elements lie densely whatever else there is.
constexpr std::uint32_t kAlwaysDense = 1024;
/// Places that one element may take up.
constexpr std::uint32_t kMostSpread = 64;

/// Whether a dense array that holds `count` elements may reach as far as `logical`.
inline bool mayLieDensely(std::uint32_t logical, std::size_t count)
{
    return logical < kAlwaysDense || logical / kMostSpread <= count;
}

} // namespace host
