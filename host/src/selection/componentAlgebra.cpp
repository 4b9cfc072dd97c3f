#include "selection/componentAlgebra.h"

#include <algorithm>
#include <array>

namespace host {

namespace {

struct Entry {
    std::array<int, 3> key;
    float weight;
};

/// Elements in ascending order, each once.
std::vector<Entry> sorted(const Component& component)
{
    const unsigned dimension = component.dimension();
    const std::size_t count = component.count();
    std::vector<Entry> entries(count, Entry{{0, 0, 0}, 1.0F});
    for (std::size_t n = 0; n < count; ++n) {
        std::copy_n(component.elements.begin() + static_cast<std::ptrdiff_t>(n * dimension), dimension,
                    entries[n].key.begin());
        if (n < component.weights.size())
            entries[n].weight = component.weights[n];
    }
    const auto before = [dimension](const Entry& a, const Entry& b) {
        if (a.key != b.key)
            return elementBefore(a.key.data(), b.key.data(), dimension);
        return a.weight > b.weight;
    };
    if (!std::is_sorted(entries.begin(), entries.end(), before))
        std::sort(entries.begin(), entries.end(), before);
    entries.erase(std::unique(entries.begin(), entries.end(),
                              [](const Entry& a, const Entry& b) { return a.key == b.key; }),
                  entries.end());
    return entries;
}

struct Keep {
    bool onlyA, both, onlyB;
};

Ref<Component> combined(const Component& a, const Component& b, Keep keep)
{
    const std::vector<Entry> left = sorted(a), right = sorted(b);
    const unsigned dimension = a.dimension();
    const bool weighted = !a.weights.empty() || !b.weights.empty();
    Ref<Component> out(new Component(a.apiType()));
    const auto put = [&](const Entry& entry, float weight) {
        out->elements.insert(out->elements.end(), entry.key.begin(), entry.key.begin() + dimension);
        if (weighted)
            out->weights.push_back(weight);
    };
    auto l = left.begin();
    auto r = right.begin();
    while (l != left.end() || r != right.end()) {
        const bool fromLeft =
            r == right.end() || (l != left.end() && elementBefore(l->key.data(), r->key.data(), dimension));
        const bool same = l != left.end() && r != right.end() && l->key == r->key;
        if (same) {
            if (keep.both)
                put(*l, std::max(l->weight, r->weight));
            ++l;
            ++r;
        } else if (fromLeft) {
            if (keep.onlyA)
                put(*l, l->weight);
            ++l;
        } else {
            if (keep.onlyB)
                put(*r, r->weight);
            ++r;
        }
    }
    return out;
}

} // namespace

Ref<Component> united(const Component& a, const Component& b)
{
    return combined(a, b, {true, true, true});
}

Ref<Component> toggled(const Component& a, const Component& b)
{
    return combined(a, b, {true, false, true});
}

Ref<Component> without(const Component& a, const Component& b)
{
    return combined(a, b, {true, false, false});
}

bool contains(const Component& a, const Component& b)
{
    return without(b, a)->count() == 0;
}

} // namespace host
