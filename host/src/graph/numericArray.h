#pragma once

#include <cstdint>
#include <map>
#include <vector>

namespace host {

/// The elements of an array attribute of numbers: dense with an occupancy mark, so that a missing element
/// reads as the default and a million elements are read and written at memory speed. Logical indices far
/// beyond the dense part (blend-shape item indices, for example) go to an ordered side table.
///
/// Values are doubles, or floats when constructed so (attributes of type kFloat): then set() narrows.
class NumericArray {
public:
    NumericArray(double defaultValue, bool singlePrecision) : fallback(defaultValue), single(singlePrecision)
    {}

    double get(std::uint32_t logical) const;
    bool has(std::uint32_t logical) const;
    void set(std::uint32_t logical, double value);
    void erase(std::uint32_t logical);
    void clear();

    /// Number of existing elements.
    std::size_t size() const { return occupied; }
    /// One past the largest existing logical index; 0 when empty.
    std::uint32_t logicalEnd() const;
    /// Existing logical indices, ascending.
    std::vector<std::uint32_t> indices() const;
    /// Logical index of the element of the given rank; the caller checks rank < size().
    std::uint32_t logicalOfPhysical(std::size_t rank) const;

    double defaultValue() const { return fallback; }
    bool singlePrecision() const { return single; }

    /// Bulk access, out[i] = get(ids[i]); ids == nullptr means 0 ... count-1. Nothing is created by reading.
    /// Ids that follow one another are copied as a block.
    void gather(const int* ids, std::size_t count, double* out) const;
    void gather(const int* ids, std::size_t count, float* out) const;
    /// Bulk write, set(ids[i], values[i]).
    void scatter(const int* ids, std::size_t count, const double* values);
    void scatter(const int* ids, std::size_t count, const float* values);

private:
    template <class Number>
    void gatherNumbers(const int* ids, std::size_t count, Number* out) const;
    template <class Number>
    void scatterNumbers(const int* ids, std::size_t count, const Number* values);
    bool isDenseRun(const int* ids, std::size_t count) const;
    void markRun(std::size_t first, std::size_t count);
    bool dense(std::uint32_t logical) const;
    void grow(std::uint32_t logical);

    std::vector<double> doubles;
    std::vector<float> floats;
    std::vector<std::uint8_t> marks; ///< one per dense element
    std::map<std::uint32_t, double> far;
    std::size_t occupied = 0;
    double fallback;
    bool single;
};

} // namespace host
