#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// What a layer list tells of one layer. Of a field that comes twice the last one counts.
struct LayerEntry {
    enum class Field { kMissing, kWrong, kGood }; ///< wrong: of another kind than it should be
    Field nameField = Field::kMissing;
    Field idField = Field::kMissing;
    Field childrenField = Field::kMissing;
    std::string name;
    std::int64_t id = 0; ///< beyond the range of an id when it was larger than this holds
    bool hasChildren = false;
};

/// Reads a layer list, an array of objects in JSON, without building it: taking down a built one asks for
/// memory, and nothing could be done when there is none. Throws std::exception with the reason.
std::vector<LayerEntry> readLayerEntries(const std::string& text);
