#include "weightModes/influenceMatch.h"

#include <algorithm>
#include <maya/MDagPathArray.h>
#include <maya/MFnSkinCluster.h>

namespace {

constexpr std::size_t kNone = ~static_cast<std::size_t>(0);

bool isZero(double weight)
{
    return !(weight < 0.0) && !(weight > 0.0);
}

} // namespace

std::string InfluenceNames::name(std::size_t influence) const
{
    const std::string& path = paths[influence];
    return path.substr(path.rfind('|') + 1);
}

InfluenceNames influenceNames(const MObject& skinCluster)
{
    InfluenceNames names;
    MDagPathArray influences;
    const unsigned int count = MFnSkinCluster(skinCluster).influenceObjects(influences);
    for (unsigned int influence = 0; influence < count; ++influence)
        names.paths.emplace_back(influences[influence].fullPathName().asChar());
    return names;
}

InfluenceMatch::InfluenceMatch(const InfluenceNames& from, const InfluenceNames& to)
    : targets(from.count(), kNone), targetCount(to.count())
{
    std::vector<bool> taken(to.count(), false);
    const auto match = [&](std::size_t influence, const auto& isSame) {
        for (std::size_t place = 0; place < to.count() && targets[influence] == kNone; ++place) {
            if (taken[place] || !isSame(place))
                continue;
            targets[influence] = place;
            taken[place] = true;
        }
    };
    // All paths before any name: a name must not take what another influence is itself.
    for (std::size_t influence = 0; influence < from.count(); ++influence)
        match(influence, [&](std::size_t place) { return to.paths[place] == from.paths[influence]; });
    for (std::size_t influence = 0; influence < from.count(); ++influence)
        match(influence, [&](std::size_t place) { return to.name(place) == from.name(influence); });
}

bool InfluenceMatch::carryOver(const double* source, double* target) const
{
    double carried = 0.0, lost = 0.0;
    for (std::size_t influence = 0; influence < targets.size(); ++influence)
        (targets[influence] == kNone ? lost : carried) += source[influence];
    if (!isZero(lost) && !(carried > 0.0))
        return false;
    std::fill_n(target, targetCount, 0.0);
    for (std::size_t influence = 0; influence < targets.size(); ++influence) {
        if (targets[influence] == kNone)
            continue;
        const double weight = source[influence];
        target[targets[influence]] = isZero(lost) ? weight : weight * ((carried + lost) / carried);
    }
    return true;
}

bool InfluenceMatch::isLost(std::size_t influence, const double* source) const
{
    return targets[influence] == kNone && !isZero(source[influence]);
}
