// Computations that nest deeply. Each output asks for what feeds it while it is computed; where a history is
// thousands of nodes long, that is done from the far end on, with a list instead of the call stack.
#include "graph/graphParts.h"

#include <algorithm>
#include <set>

namespace host {

namespace {

using Freshness = RootState::Freshness;

bool affects(const NodeType& type, const Attribute& input, const Attribute& output)
{
    const auto& affected = type.affectedBy(input.childIndex);
    return std::find(affected.begin(), affected.end(), &output) != affected.end();
}

/// What is out of date behind an output, the far end first.
class Behind {
public:
    using Place = std::pair<Node*, const Attribute*>; ///< a root attribute of a node

    explicit Behind(const Place& output)
    {
        seen.insert(output);
        waiting.push_back({output, true});
        expand(output);
        run();
        order.pop_back(); // the output itself
    }

    std::vector<Place> order;

private:
    struct Visit {
        Place place;
        bool expanded;
    };

    void run()
    {
        while (!waiting.empty()) {
            const Visit visit = waiting.back();
            if (visit.expanded) {
                if (visit.place.second->flags.output)
                    order.push_back(visit.place);
                waiting.pop_back();
                continue;
            }
            waiting.back().expanded = true;
            expand(visit.place);
        }
    }

    void expand(const Place& place)
    {
        Node& node = *place.first;
        const Attribute& root = *place.second;
        for (const Link* link : node.state().inputs) {
            const Attribute& fed = link->destination.attribute()->root();
            if (&fed == &root || affects(node.type(), fed, root))
                add(*link->source.node(), link->source.attribute()->root());
        }
        if (!root.flags.output)
            return;
        for (const Ref<Attribute>& other : node.type().roots)
            if (other->flags.output && affects(node.type(), *other, root))
                add(node, *other);
        DagNode* const parent = node.asDag() ? node.asDag()->parent() : nullptr;
        if (parent && parent->type().dagOutput)
            add(*parent, *parent->type().dagOutput);
    }

    void add(Node& node, const Attribute& root)
    {
        const RootState* state = node.state().findRoot(root);
        const bool stands =
            state && (state->freshness == Freshness::kClean || state->freshness == Freshness::kComputing ||
                      state->freshness == Freshness::kStale);
        if (root.flags.output ? stands : !state || state->feeding == 0)
            return;
        if (seen.insert({&node, &root}).second)
            waiting.push_back({{&node, &root}, false});
    }

    std::set<Place> seen;
    std::vector<Visit> waiting;
};

} // namespace

/// Each failure is remembered for as long as the outermost pull lasts, so that what follows it fails at once.
void Graph::pull(Node& node, const Attribute& output)
{
    auto& failures = parts->failures;
    const auto known = failures.find({&node, &output});
    if (known != failures.end())
        std::rethrow_exception(known->second);
    const Behind dirtyOnes({&node, &output});
    const bool outermost = parts->pulls++ == 0;
    for (const auto& [behind, root] : dirtyOnes.order) {
        if (!behind->isDirty(*root) || failures.count({behind, root}) != 0)
            continue;
        try {
            behind->evaluateAlone(*root);
        } catch (...) {
            failures.emplace(std::make_pair(behind, root), std::current_exception());
        }
    }
    --parts->pulls;
    if (outermost)
        failures.clear();
}

} // namespace host
