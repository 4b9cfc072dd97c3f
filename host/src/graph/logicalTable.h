#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace host {

/// Values by logical index, to be looked up often. Room follows the number of values, however far their
/// indices lie apart: small indices are found at once, others by search.
template <class Value>
class LogicalTable {
public:
    /// `otherwise` is what an index without a value gives.
    explicit LogicalTable(Value otherwise) : none(otherwise) {}

    void set(std::uint32_t logical, Value value)
    {
        if (logical >= kDense) {
            far.insert_or_assign(logical, value);
            return;
        }
        if (logical >= dense.size())
            dense.resize(logical + std::size_t{1}, none);
        dense[logical] = value;
    }
    Value operator[](std::uint32_t logical) const
    {
        if (logical < dense.size())
            return dense[logical];
        return far.empty() ? none : search(logical);
    }

private:
    static constexpr std::uint32_t kDense = 4096;

    Value search(std::uint32_t logical) const
    {
        const auto found = far.find(logical);
        return found == far.end() ? none : found->second;
    }

    std::vector<Value> dense;
    std::map<std::uint32_t, Value> far;
    Value none;
};

} // namespace host
