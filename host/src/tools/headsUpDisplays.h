#pragma once

#include <map>
#include <string>
#include <vector>

namespace host {

/// The text blocks that a view shows along its upper and lower edge.
///
/// Sections 0 to 4 are the columns of the upper edge from left to right, 5 to 9 those of the lower edge;
/// block 0 of a section is nearest to the edge, and each place holds at most one display.
class HeadsUpDisplays {
public:
    static constexpr int kSections = 10;

    enum class Size { kSmall, kMedium, kLarge };
    struct Display {
        std::string name;
        int section = 0;
        int block = 0;
        bool visible = true;
        std::string label;
        Size labelSize = Size::kSmall;
        Size blockSize = Size::kSmall;
        Size dataSize = Size::kSmall;
        int labelWidth = 0; ///< pixels that the label is cut to; 0 = as wide as it is
        int dataWidth = 0;
        int id = 0;          ///< given by add(), never used twice
        std::string command; ///< MEL whose result is shown after the label; empty = only the label
    };

    /// Throws host::Error: a name that is taken, a place that is taken, a section that does not exist.
    Display& add(Display display);
    Display* find(const std::string& name);
    Display& get(const std::string& name); ///< throws for an unknown name
    void remove(const std::string& name);  ///< throws for an unknown name
    bool removeAt(int section, int block); ///< false when the place is free
    /// Moves a display; throws as add() does and then changes nothing.
    void move(Display& display, int section, int block);

    /// -1 for an empty section, so that the block after the last one is always this plus 1.
    int lastOccupiedBlock(int section) const;
    int nextFreeBlock(int section) const; ///< the lowest block that is free
    std::vector<std::string> names() const;
    /// Displays of a section from the edge inwards.
    std::vector<const Display*> inSection(int section) const;

private:
    void checkPlace(int section, int block, const Display* except) const;
    std::map<std::string, Display> displays;
    int lastId = 0;
};

} // namespace host
