#pragma once

#include "session.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzzing {

/// A session for made-up input: it says nothing, reads and writes no files, loads no libraries, and gives up
/// scripts that run on and geometry that would only cost time.
class FuzzHost {
public:
    /// Runs the preparation, which must succeed, without these limits.
    explicit FuzzHost(const std::string& preparation = {});

    host::Session session;

    /// Runs MEL, then what waits for idle. Errors are what most inputs end with.
    void mel(const std::string& text);
    void idle();
};

/// Keeps a plug-in of this build in memory when a session unloads it: the fuzzer goes on counting in it.
/// Returns false when it cannot be loaded.
bool keepLoaded(const std::string& name);

inline std::string textOf(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

} // namespace fuzzing
