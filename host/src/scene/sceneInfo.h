#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace host {

/// The units in which a file's numbers are written. The scene itself is always in centimetres and degrees.
struct SceneUnits {
    std::string linear = "centimeter";
    std::string angle = "degree";
    std::string time = "film";
    double centimetres = 1.0; ///< of one linear unit
    double degrees = 1.0;     ///< of one angular unit

    /// Both take the long and the short names of Maya ("meter", "m"); false for a name that is none.
    bool setLinear(const std::string& name);
    bool setAngle(const std::string& name);
};

/// What a file says beside nodes and connections: kept while the scene is open and written back. Owned by
/// the session; file -new resets it.
struct SceneInfo {
    std::string version = "2019"; ///< as in the first line of the file and in requires
    std::string codeset = "UTF-8";
    std::vector<std::string> requirements; ///< whole statements except that for Maya itself, no semicolon
    SceneUnits units;
    std::vector<std::pair<std::string, std::string>> fileInfo; ///< in the order in which they were set

    // Statements that the host does not interpret (references, relationships, instancing ...), as they stood
    // in the file, by where they stood.
    std::vector<std::string> keptHead; ///< in front of the first node
    std::vector<std::string> keptBody; ///< among or behind the nodes
    std::vector<std::string> keptTail; ///< among or behind the connections

    /// Namespaces that were made and have no nodes yet. Files do not hold them.
    std::set<std::string> emptyNamespaces;

    /// Sets or replaces one entry of fileInfo.
    void setFileInfo(const std::string& key, const std::string& value);
};

} // namespace host
