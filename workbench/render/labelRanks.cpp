#include "render/labelRanks.h"

#include "selection/component.h"
#include "selection/selectionState.h"
#include "session.h"
#include "view/drawRecord.h"

#include <algorithm>

namespace workbench {

namespace {

constexpr float kPressedRank = 2.0F;

void addPoints(std::vector<StrokePoint>& points, const host::SelectionList& list)
{
    for (const host::SelectionItem& item : list.items) {
        host::DagNode* shape = item.node && item.component ? host::componentShape(*item.node) : nullptr;
        if (!shape)
            continue;
        const std::vector<int> indices = host::pointIndices(*shape, item.component.get());
        const std::vector<float>& weights = item.component->weights;
        for (std::size_t k = 0; k < indices.size(); ++k)
            points.push_back({shape, indices[k], weights.size() == indices.size() ? weights[k] : 1.0F});
    }
}

/// The points that have labels: all of the selection, or those of them that the deformer works on.
std::vector<StrokePoint> labelledPoints(const host::RichSelection& rich, const WeightMaps& maps,
                                        std::size_t texts)
{
    std::vector<StrokePoint> points;
    addPoints(points, rich.selection);
    addPoints(points, rich.symmetry);
    if (points.size() == texts)
        return points;
    const auto hasNoWeight = [&](const StrokePoint& point) {
        const auto map = maps.find(point.shape);
        return map == maps.end() || !map->second.isMember(static_cast<std::size_t>(point.point));
    };
    points.erase(std::remove_if(points.begin(), points.end(), hasNoWeight), points.end());
    if (points.size() != texts)
        points.clear();
    return points;
}

} // namespace

std::vector<float> labelRanks(host::Session& session, const WeightMaps& maps, const PressWatch* press)
{
    const std::size_t texts = session.drawing().texts.size();
    if (texts == 0)
        return {};
    const std::vector<StrokePoint> points =
        labelledPoints(press ? press->selection() : session.selection().rich(), maps, texts);
    std::vector<float> ranks;
    ranks.reserve(points.size());
    for (const StrokePoint& point : points)
        ranks.push_back(point.falloff);
    const std::size_t pressed = press ? press->pressedOf(points) : points.size();
    if (pressed < ranks.size())
        ranks[pressed] = kPressedRank;
    return ranks;
}

} // namespace workbench
