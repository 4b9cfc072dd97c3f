#include "tools/headsUpDisplays.h"

#include "types/error.h"

#include <algorithm>

namespace host {

void HeadsUpDisplays::checkPlace(int section, int block, const Display* except) const
{
    if (section < 0 || section >= kSections)
        throw Error("Section " + std::to_string(section) + " does not exist; sections are 0 to 9.");
    if (block < 0)
        throw Error("Block " + std::to_string(block) + " does not exist; blocks count from 0.");
    for (const auto& [name, display] : displays) {
        if (&display != except && display.section == section && display.block == block)
            throw Error("Block " + std::to_string(block) + " of section " + std::to_string(section) +
                        " is occupied by '" + name + "'.");
    }
}

HeadsUpDisplays::Display& HeadsUpDisplays::add(Display display)
{
    if (display.name.empty())
        throw Error("A heads-up display needs a name.");
    if (find(display.name))
        throw Error("Heads-up display '" + display.name + "' already exists.");
    checkPlace(display.section, display.block, nullptr);
    const std::string name = display.name;
    display.id = ++lastId;
    return displays.emplace(name, std::move(display)).first->second;
}

HeadsUpDisplays::Display* HeadsUpDisplays::find(const std::string& name)
{
    const auto found = displays.find(name);
    return found == displays.end() ? nullptr : &found->second;
}

HeadsUpDisplays::Display& HeadsUpDisplays::get(const std::string& name)
{
    Display* display = find(name);
    if (!display)
        throw Error("Heads-up display '" + name + "' does not exist.");
    return *display;
}

void HeadsUpDisplays::remove(const std::string& name)
{
    get(name);
    displays.erase(name);
}

bool HeadsUpDisplays::removeAt(int section, int block)
{
    const auto found = std::find_if(displays.begin(), displays.end(), [&](const auto& entry) {
        return entry.second.section == section && entry.second.block == block;
    });
    if (found == displays.end())
        return false;
    displays.erase(found);
    return true;
}

void HeadsUpDisplays::move(Display& display, int section, int block)
{
    checkPlace(section, block, &display);
    display.section = section;
    display.block = block;
}

int HeadsUpDisplays::lastOccupiedBlock(int section) const
{
    int last = -1;
    for (const auto& entry : displays) {
        if (entry.second.section == section)
            last = std::max(last, entry.second.block);
    }
    return last;
}

int HeadsUpDisplays::nextFreeBlock(int section) const
{
    int block = 0;
    for (const Display* display : inSection(section)) {
        if (display->block != block)
            break;
        ++block;
    }
    return block;
}

std::vector<std::string> HeadsUpDisplays::names() const
{
    std::vector<std::string> names;
    for (const auto& entry : displays)
        names.push_back(entry.first);
    return names;
}

std::vector<const HeadsUpDisplays::Display*> HeadsUpDisplays::inSection(int section) const
{
    std::vector<const Display*> found;
    for (const auto& entry : displays) {
        if (entry.second.section == section)
            found.push_back(&entry.second);
    }
    std::sort(found.begin(), found.end(),
              [](const Display* a, const Display* b) { return a->block < b->block; });
    return found;
}

} // namespace host
