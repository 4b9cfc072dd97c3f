#include "nodes/filterInput.h"

#include "graph/node.h"
#include "graph/numericArray.h"
#include "types/error.h"

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <algorithm>
#include <fnmatch.h>
#include <sstream>

namespace host {

namespace {

/// "left, nose*": the points of all tags that match one of the patterns.
PointGroup taggedPoints(const Geometry& geometry, const std::string& expression)
{
    std::string words = expression;
    std::replace(words.begin(), words.end(), ',', ' ');
    std::istringstream patterns(words);
    std::vector<std::string> components;
    for (std::string pattern; patterns >> pattern;) {
        if (pattern.find_first_of("!&|^()-") != std::string::npos)
            throw Error("The component tag expression '" + expression + "' is not understood.");
        if (!geometry.tags)
            continue;
        for (const auto& [tag, contents] : *geometry.tags)
            if (fnmatch(pattern.c_str(), tag.c_str(), 0) == 0)
                components.insert(components.end(), contents.begin(), contents.end());
    }
    return pointGroup(geometry, components);
}

} // namespace

PointGroup memberPoints(const Plug& element, const Geometry& geometry)
{
    const int id = static_cast<int>(element.child("groupId").number());
    if (id != 0 && geometry.groups) {
        const auto found = geometry.groups->find(id);
        if (found != geometry.groups->end())
            return found->second;
    }
    const std::string expression = element.child("componentTagExpression").text();
    if (!expression.empty() && expression != "*")
        return taggedPoints(geometry, expression);
    PointGroup everything;
    everything.all = true;
    return everything;
}

void computeFilter(Node& node, const Attribute& output, void (*deform)(Node&, FilterInput&))
{
    const Plug inputs = node.plug("input");
    const Plug outputs(&node, &output);
    const double envelope = node.plug("envelope").number();
    const bool idle = envelope == 0.0 || node.plug("nodeState").number() == 1.0;
    for (const std::uint32_t index : inputs.existingIndices()) {
        const Plug element = inputs.element(index);
        FilterInput input;
        input.geometry = std::dynamic_pointer_cast<const Geometry>(element.child("inputGeometry").data());
        if (!input.geometry || idle) {
            node.storeData(outputs.element(index), input.geometry);
            continue;
        }
        PointGroup group = memberPoints(element, *input.geometry);
        input.index = index;
        input.envelope = envelope;
        input.all = group.all;
        input.members = std::move(group.points);
        while (!input.members.empty() &&
               static_cast<std::size_t>(input.members.back()) >= input.geometry->count())
            input.members.pop_back();
        auto points = std::make_shared<Points>(input.geometry->points());
        input.points = points.get();
        deform(node, input);
        const std::shared_ptr<Geometry> result = input.geometry->copy();
        result->pointsRef = std::move(points);
        node.storeData(outputs.element(index), result);
    }
}

void forEachMember(const FilterInput& input,
                   const std::function<void(std::size_t first, std::size_t end)>& change)
{
    constexpr std::size_t kGrain = 1024;
    tbb::parallel_for(tbb::blocked_range<std::size_t>(0, input.count(), kGrain),
                      [&](const tbb::blocked_range<std::size_t>& run) { change(run.begin(), run.end()); });
}

const NumericArray* filterWeights(Node& node, std::uint32_t index)
{
    const Plug weights = node.plug("weightList").element(index).child(0);
    return weights.numbers();
}

} // namespace host
