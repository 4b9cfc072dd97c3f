#include "graph/connectable.h"

#include "graph/attribute.h"

#include <algorithm>
#include <array>

namespace host {

namespace {

bool isGeometry(const std::string& dataType)
{
    static const std::array<const char*, 5> kinds = {"geometry", "mesh", "nurbsCurve", "nurbsSurface",
                                                     "lattice"};
    return std::find(kinds.begin(), kinds.end(), dataType) != kinds.end();
}

bool goTogether(const std::string& source, const std::string& destination)
{
    if (source == destination || source.empty() || destination.empty())
        return true;
    return isGeometry(source) && isGeometry(destination) &&
           (source == "geometry" || destination == "geometry");
}

} // namespace

bool isConnectable(const Attribute& source, const Attribute& destination)
{
    if (source.type == AttributeType::kOpaque || destination.type == AttributeType::kOpaque ||
        destination.type == AttributeType::kMessage)
        return true;
    if (source.isNumber() && destination.isNumber())
        return true;
    if (source.type != destination.type)
        return false;
    if (source.type == AttributeType::kData)
        return goTogether(source.dataType, destination.dataType);
    return source.type != AttributeType::kCompound ||
           std::equal(source.children.begin(), source.children.end(), destination.children.begin(),
                      destination.children.end(), [](const Ref<Attribute>& a, const Ref<Attribute>& b) {
                          return a->flags.array == b->flags.array && isConnectable(*a, *b);
                      });
}

} // namespace host
