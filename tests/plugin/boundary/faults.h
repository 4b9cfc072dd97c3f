#pragma once

#include <cstddef>
#include <string>

namespace testing_support {

// What a loaded library asks for while it is watched, counted; one of it can be made to fail.

enum class FaultKind {
    kAllocation, ///< a call of operator new out of the library's own code
    kInterface   ///< a call of the interface that answers with a status or gives one out
};

/// Watches the library from here on until it is destroyed. Only one exists at a time.
class FaultWatch {
public:
    /// The library by the end of its file name. Number `fails` (from 1) fails; 0: none.
    FaultWatch(const std::string& library, FaultKind kind, std::size_t fails = 0);
    ~FaultWatch();
    FaultWatch(const FaultWatch&) = delete;
    FaultWatch& operator=(const FaultWatch&) = delete;

    std::size_t count() const;
    /// Whether the chosen one was reached.
    bool hasFailed() const;
};

/// For the stand-ins of the interface's calls: whether this one fails, told by where it is called from.
bool interfaceCallFails(const void* caller);
/// The interface's own function of the one that calls this.
void* realFunction();

} // namespace testing_support
