#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

// What a drag event must cost at least: the new weights worked out from those of the press and put where they
// belong, in plain arrays. Each call is one event, at one of two offsets in turn.

namespace bench {

/// new = old + offset * falloff, held to 0..1, in doubles. In blocks, because compilers turn a loop that
/// clamps and narrows at once into branches, which would make the bare side look slow.
template <class Weight>
class PlainClamp {
public:
    /// The weights go up and down by `reach` in turn.
    explicit PlainClamp(const std::vector<double>& weights, double reach = 0.2)
        : old(weights.begin(), weights.end()), soft(weights.size(), 1.0f), result(weights.size()),
          offset(reach)
    {}

    void run()
    {
        forEachBlock([this](std::size_t first, const double* block, std::size_t length) {
            for (std::size_t k = 0; k < length; ++k)
                result[first + k] = static_cast<Weight>(block[k]);
        });
    }

    /// Gives `use(first, values, count)` the new weights, block by block.
    template <class Use>
    void forEachBlock(const Use& use)
    {
        offset = -offset;
        std::array<double, 256> block;
        for (std::size_t first = 0; first < old.size(); first += block.size()) {
            const std::size_t length = std::min(block.size(), old.size() - first);
            for (std::size_t k = 0; k < length; ++k) {
                const double value =
                    static_cast<double>(old[first + k]) + offset * static_cast<double>(soft[first + k]);
                const double raised = value < 0.0 ? 0.0 : value;
                block[k] = 1.0 < raised ? 1.0 : raised;
            }
            use(first, block.data(), length);
        }
    }

private:
    std::vector<Weight> old;
    std::vector<float> soft;
    std::vector<Weight> result;
    double offset;
};

/// The same, each weight stored by the index of its vertex.
class PlainStore {
public:
    explicit PlainStore(std::vector<double> weights)
        : clamp(weights), vertices(weights.size()), result(weights.size())
    {
        for (std::size_t k = 0; k < vertices.size(); ++k)
            vertices[k] = static_cast<int>(k);
    }

    void run()
    {
        clamp.forEachBlock([this](std::size_t first, const double* block, std::size_t length) {
            for (std::size_t k = 0; k < length; ++k)
                result[static_cast<std::size_t>(vertices[first + k])] = static_cast<float>(block[k]);
        });
    }

private:
    PlainClamp<float> clamp;
    std::vector<int> vertices;
    std::vector<float> result;
};

} // namespace bench
