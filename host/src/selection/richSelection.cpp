#include "selection/richSelection.h"

#include "graph/graph.h"
#include "nodes/geometry.h"
#include "selection/falloffCurve.h"
#include "selection/softSelection.h"
#include "selection/symmetry.h"
#include "session.h"

#include <algorithm>

namespace host {

namespace {

bool isPointItem(const SelectionItem& item)
{
    if (!item.component || !item.plug.isNull())
        return false;
    const DagNode* shape = item.node->asDag();
    return shape && pointComponentType(*shape) == item.component->apiType();
}

void sortUnique(std::vector<int>& numbers)
{
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
}

/// One shape on the way: what soft selection starts from, what belongs to the mirrored part, and the result.
struct Entry {
    SoftShape soft;
    std::unique_ptr<MirrorMap> mirror; ///< null without symmetry or for other shapes than meshes
    Ref<Component> selection, symmetry;
};

class RichBuilder {
public:
    RichBuilder(Session& running, const SelectionList& source)
        : session(running), options(running.selection()), list(source)
    {}

    RichSelection build()
    {
        collect();
        if (options.symmetry.enabled)
            for (Entry& entry : entries)
                mirror(entry);
        if (options.soft.enabled && !entries.empty())
            spread();
        else
            for (Entry& entry : entries)
                finish(entry, entry.soft.seeds, {}, entry.soft.mirrored, {});
        return assemble();
    }

private:
    Entry* entryOf(const Node& node)
    {
        const auto found = std::find_if(entries.begin(), entries.end(),
                                        [&](const Entry& entry) { return entry.soft.shape.get() == &node; });
        return found == entries.end() ? nullptr : &*found;
    }

    void collect()
    {
        for (const SelectionItem& item : list.items) {
            if (!isPointItem(item))
                continue;
            Entry* entry = entryOf(*item.node);
            DagNode& shape = *item.node->asDag();
            if (!entry) {
                entries.emplace_back();
                entry = &entries.back();
                entry->soft = softShape(shape);
            }
            const std::vector<int> points = pointIndices(shape, item.component.get());
            entry->soft.seeds.insert(entry->soft.seeds.end(), points.begin(), points.end());
        }
        for (Entry& entry : entries)
            sortUnique(entry.soft.seeds);
    }

    /// Splits the selected points of a mesh into the primary part and its mirror image.
    void mirror(Entry& entry)
    {
        DagNode& shape = *entry.soft.shape;
        if (pointComponentType(shape) != MFn::kMeshVertComponent)
            return;
        entry.mirror = std::make_unique<MirrorMap>(shape, options.symmetry);
        const std::vector<int> selected = entry.soft.seeds;
        std::vector<int> primary, mirrored;
        for (const int vertex : selected) {
            const int image = entry.mirror->of(vertex);
            const bool paired = image >= 0 && image != vertex;
            const bool bothSelected = paired && std::binary_search(selected.begin(), selected.end(), image);
            const bool onOtherSide =
                !entry.mirror->onPositiveSide(vertex) && entry.mirror->onPositiveSide(image);
            if (bothSelected && onOtherSide) {
                mirrored.push_back(vertex);
                continue;
            }
            primary.push_back(vertex);
            if (paired && !bothSelected)
                mirrored.push_back(image);
        }
        sortUnique(mirrored);
        entry.soft.seeds = std::move(primary);
        entry.soft.mirrored = std::move(mirrored);
    }

    void addShapesInReach()
    {
        for (const Ref<Node>& node : session.graph().nodes()) {
            DagNode* shape = node->asDag();
            if (!shape || pointComponentType(*shape) == MFn::kInvalid || !isVisible(*shape) ||
                entryOf(*shape))
                continue;
            entries.emplace_back();
            entries.back().soft = softShape(*shape);
        }
    }

    void spread()
    {
        if (options.soft.falloff == SoftSelectOptions::kGlobal)
            addShapesInReach();
        std::vector<SoftShape> shapes;
        for (Entry& entry : entries)
            shapes.push_back(std::move(entry.soft));
        const double radius = std::max(0.0, options.soft.distance);
        const auto near = seedDistances(shapes, SeedSide::kPrimary, options.soft.falloff, radius);
        const auto far = seedDistances(shapes, SeedSide::kMirrored, options.soft.falloff, radius);
        for (std::size_t at = 0; at < entries.size(); ++at) {
            entries[at].soft = std::move(shapes[at]);
            weigh(entries[at], near[at], far[at], radius);
        }
    }

    void weigh(Entry& entry, const std::vector<double>& near, const std::vector<double>& far, double radius)
    {
        const FalloffCurve curve(options.soft.curve);
        std::vector<int> primary, mirrored;
        std::vector<float> primaryWeights, mirroredWeights;
        for (std::size_t place = 0; place < near.size(); ++place) {
            const double distance = std::min(near[place], far[place]);
            if (distance == kOutOfReach)
                continue;
            const auto weight = static_cast<float>(curve.at(radius > 0.0 ? distance / radius : 0.0));
            if (!(weight > 0.0F))
                continue;
            const int point = entry.soft.points[place];
            const bool seam = entry.mirror && entry.mirror->of(point) == point;
            const bool isPrimary = seam || near[place] <= far[place];
            (isPrimary ? primary : mirrored).push_back(point);
            (isPrimary ? primaryWeights : mirroredWeights).push_back(weight);
        }
        finish(entry, primary, std::move(primaryWeights), mirrored, std::move(mirroredWeights));
    }

    static void finish(Entry& entry, const std::vector<int>& primary, std::vector<float> primaryWeights,
                       const std::vector<int>& mirrored, std::vector<float> mirroredWeights)
    {
        DagNode& shape = *entry.soft.shape;
        if (!primary.empty()) {
            entry.selection = pointComponent(shape, primary);
            entry.selection->weights = std::move(primaryWeights);
        }
        if (!mirrored.empty()) {
            entry.symmetry = pointComponent(shape, mirrored);
            entry.symmetry->weights = std::move(mirroredWeights);
        }
    }

    RichSelection assemble()
    {
        RichSelection rich;
        for (const SelectionItem& item : list.items) {
            if (!isPointItem(item))
                rich.selection.items.push_back(item);
            else
                put(*entryOf(*item.node), rich);
        }
        for (Entry& entry : entries)
            put(entry, rich);
        return rich;
    }

    /// Hands over an entry's components, once.
    static void put(Entry& entry, RichSelection& rich)
    {
        const Ref<Node> node(entry.soft.shape.get());
        if (entry.selection)
            rich.selection.items.push_back({node, std::move(entry.selection), Plug()});
        if (entry.symmetry)
            rich.symmetry.items.push_back({node, std::move(entry.symmetry), Plug()});
    }

    Session& session;
    const SelectionState& options;
    const SelectionList& list;
    std::vector<Entry> entries;
};

} // namespace

RichSelection richSelectionOf(Session& session, const SelectionList& list)
{
    return RichBuilder(session, list).build();
}

} // namespace host
