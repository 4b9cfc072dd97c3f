#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

namespace host::mel {

enum class Type;
class Value;

/// How much scripts and commands may ask of a session. The defaults stop only what no text means in earnest;
/// who runs text that nobody has read lowers them.
struct Limits {
    /// What one outermost execution may do: a statement, a call and each 256 elements or characters that a
    /// call takes or a variable gets are a step.
    std::uint64_t steps = std::numeric_limits<std::uint64_t>::max();
    /// Bytes of elements that nobody has given a value, made by a declared size or by an index beyond the
    /// end.
    std::size_t unwritten = std::size_t{32} << 20;
    std::size_t points = std::size_t{1} << 22; ///< of one new shape
    bool outside = true; ///< files and environment variables can be read and written, libraries loaded
};

/// Of an array type or a matrix.
std::size_t bytesPerElement(Type array);
/// The steps that go with a value: none for a short one.
std::uint64_t stepsOf(const Value& value);

} // namespace host::mel
