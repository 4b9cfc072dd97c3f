#pragma once

#include "types/error.h"

#include <cstddef>

namespace host::mel {

/// Turns run-away recursion of a script into an error before the program's own stack is used up. Made where
/// the outermost execution begins and asked wherever execution can nest.
class StackLimit {
public:
    StackLimit() : base(here()) {}

    /// Throws host::Error when more than kMostBytes lie between the beginning and here.
    void check() const
    {
        const char* const top = here();
        const std::ptrdiff_t used = top < base ? base - top : top - base;
        if (used > kMostBytes)
            throw Error("Maximum recursion depth exceeded.");
    }

private:
    // Half of the usual 8 MB is left to what commands need themselves.
    static constexpr std::ptrdiff_t kMostBytes = 4 * 1024 * 1024;

    static const char* here() { return static_cast<const char*>(__builtin_frame_address(0)); }

    const char* base;
};

} // namespace host::mel
