#pragma once

#include "session.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzzing {

/// A session for made-up input, which says nothing.
class FuzzHost {
public:
    /// Runs the preparation, which must succeed.
    explicit FuzzHost(const std::string& preparation = {});

    host::Session session;

    /// Runs MEL, then what waits for idle. Errors are what most inputs end with.
    void mel(const std::string& text);
    void idle();
};

inline std::string textOf(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

} // namespace fuzzing
