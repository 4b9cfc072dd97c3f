#pragma once

#include "mel/limits.h"
#include "mel/stackLimit.h"
#include "types/error.h"

#include <cstddef>
#include <cstdint>

namespace host::mel {

/// What one outermost execution has left, shared by all that nests in it: stack, steps, and room for texts
/// that run texts (a parsed text takes some thirty times its size, and stays until it has run).
class RunBudget {
public:
    explicit RunBudget(const Limits& limits) : stepsLeft(limits.steps) {}
    RunBudget(const RunBudget&) = delete;
    RunBudget& operator=(const RunBudget&) = delete;

    const StackLimit& stack() const { return stackLimit; }

    void spend(std::uint64_t steps)
    {
        if (steps > stepsLeft)
            throw Error("The script runs on for too long.");
        stepsLeft -= steps;
    }

    /// Around the execution of a text that is no file.
    class Nested {
    public:
        Nested(RunBudget& budget, std::size_t characters) : shared(budget), size(characters)
        {
            if (shared.depth >= kFewTexts && shared.characters + size > kMostCharacters)
                throw Error("Maximum recursion depth exceeded.");
            ++shared.depth;
            shared.characters += size;
        }
        ~Nested()
        {
            --shared.depth;
            shared.characters -= size;
        }
        Nested(const Nested&) = delete;
        Nested& operator=(const Nested&) = delete;

    private:
        RunBudget& shared;
        std::size_t size;
    };

private:
    static constexpr int kFewTexts = 16;
    static constexpr std::size_t kMostCharacters = std::size_t{1} << 20;

    StackLimit stackLimit;
    std::uint64_t stepsLeft;
    int depth = 0;
    std::size_t characters = 0;
};

} // namespace host::mel
