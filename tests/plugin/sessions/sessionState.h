#pragma once

#include "session.h"

#include <map>
#include <set>
#include <string>
#include <tuple>

namespace testing_support {

/// All that a step may change and that undo must bring back: the scene as text, and what is selected.
std::string stateOf(host::Session& session);
std::string sceneOf(const std::string& state); ///< the scene alone

/// Every weight that is stored in a deformer, by its array and the point it belongs to.
using StoredWeights = std::map<std::tuple<std::string, int, unsigned>, double>;
StoredWeights storedWeights(host::Session& session);
/// The first that is no finite number; empty when all are.
std::string notFinite(const StoredWeights& weights);
/// Points of which some weight is different.
std::set<int> changedPoints(const StoredWeights& before, const StoredWeights& after);

/// The points of all shapes that are selected by components.
std::set<int> selectedPoints(host::Session& session);

/// The first line in which two texts differ, of both; empty when they are alike.
std::string firstDifference(const std::string& before, const std::string& after);

/// The text of the scene after it has been saved, opened in a session of its own and saved again.
class Reopening {
public:
    Reopening();
    std::string operator()(const std::string& text);

private:
    host::Session session;
    std::string path;
};

} // namespace testing_support
