#pragma once

#include "common.h"

#include <cstddef>
#include <maya/MObject.h>
#include <string>
#include <vector>

/// What the influences of a skin are called, in physical order.
struct InfluenceNames {
    std::vector<std::string> paths; ///< full DAG paths
    std::size_t count() const { return paths.size(); }
    /// The last part of a path, with its namespace.
    std::string name(std::size_t influence) const;
};

InfluenceNames influenceNames(const MObject& skinCluster);

/// Carries rows of weights from one skin's influences over to another's: an influence goes to the one with
/// the same path, or else to the first with the same name that none has gone to. What belongs to influences
/// that the target lacks is given to the others of the row, in proportion.
class InfluenceMatch {
public:
    InfluenceMatch(const InfluenceNames& from, const InfluenceNames& to);

    std::size_t sourceCount() const { return targets.size(); }
    /// `source` holds one weight per influence of the source; `target` is filled with one per influence of
    /// the target, all of them zero or carried over. False, with `target` as it was, when the row has weight
    /// and nothing of it can be carried over.
    bool carryOver(const double* source, double* target) const;
    /// Whether an influence has weight in the row, but no place in the target.
    bool isLost(std::size_t influence, const double* source) const;

private:
    std::vector<std::size_t> targets; ///< per influence of the source, its place in the target
    std::size_t targetCount;
};
