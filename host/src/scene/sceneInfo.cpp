#include "scene/sceneInfo.h"

#include <algorithm>

namespace host {

namespace {

struct Unit {
    const char* longName;
    const char* shortName;
    double size;
};

constexpr Unit kLinear[] = {{"centimeter", "cm", 1.0}, {"millimeter", "mm", 0.1}, {"meter", "m", 100.0},
                            {"kilometer", "km", 1e5},  {"inch", "in", 2.54},      {"foot", "ft", 30.48},
                            {"yard", "yd", 91.44},     {"mile", "mi", 160934.4}};
constexpr Unit kAngular[] = {{"degree", "deg", 1.0},
                             {"radian", "rad", 57.29577951308232},
                             {"minute", "min", 1.0 / 60.0},
                             {"second", "sec", 1.0 / 3600.0}};

template <std::size_t count>
bool choose(const Unit (&units)[count], const std::string& name, std::string& chosen, double& size)
{
    for (const Unit& unit : units) {
        if (name == unit.longName || name == unit.shortName) {
            chosen = unit.longName;
            size = unit.size;
            return true;
        }
    }
    return false;
}

} // namespace

bool SceneUnits::setLinear(const std::string& name)
{
    return choose(kLinear, name, linear, centimetres);
}

bool SceneUnits::setAngle(const std::string& name)
{
    return choose(kAngular, name, angle, degrees);
}

void SceneInfo::setFileInfo(const std::string& key, const std::string& value)
{
    const auto found =
        std::find_if(fileInfo.begin(), fileInfo.end(), [&](const auto& entry) { return entry.first == key; });
    if (found == fileInfo.end())
        fileInfo.emplace_back(key, value);
    else
        found->second = value;
}

} // namespace host
