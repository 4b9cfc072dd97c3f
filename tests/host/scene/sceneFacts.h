#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace testing_support {

/// What a Maya ASCII file says, taken apart to single values whatever form they stand in: by element of
/// arrays, row and column of weights, face of meshes. Found from the words of the file alone.
struct SceneFacts {
    std::map<std::string, std::vector<std::string>> values; ///< "body.vt[3]" -> words
    std::set<std::string> flags;                            ///< "body.tx -l on"
    std::set<std::string> nodes;                            ///< "mesh bodyShape -p body", uuids, locks
    std::set<std::string> attributes;                       ///< "body -at bool -ln liw ..."
    std::multiset<std::string> connections;                 ///< "a.b -> c.d"
    std::multiset<std::string> others;                      ///< requires, fileInfo, relationship ...
};

SceneFacts readFacts(const std::string& path);

/// Whether the words say the same: numbers to single precision, yes and on alike.
bool sameWords(const std::vector<std::string>& a, const std::vector<std::string>& b);

} // namespace testing_support
