#include "helperFunctions/componentPoints.h"

#include "helperFunctions/helperFunctions.h"
#include "report.h"

#include <maya/MFnDoubleIndexedComponent.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnTripleIndexedComponent.h>

namespace {

const char* const kUnread = "selected points cannot be read";
const char* const kUnmade = "points to write cannot be gathered";

template <typename PositionAt>
MIntArray picked(const std::vector<int>& indices, std::size_t count, const PositionAt& positionAt)
{
    MIntArray result(static_cast<unsigned int>(count));
    for (std::size_t k = 0; k < count; ++k)
        result[static_cast<unsigned int>(k)] = indices[positionAt(k)];
    return result;
}

} // namespace

ComponentPoints::ComponentPoints(const MObject& component) : kind(pointKind(component))
{
    MIntArray one, two, three;
    if (kind == MFn::kSurfaceCVComponent)
        require(MFnDoubleIndexedComponent(component).getElements(one, two), kUnread);
    else if (kind == MFn::kLatticeComponent)
        require(MFnTripleIndexedComponent(component).getElements(one, two, three), kUnread);
    else if (kind != MFn::kInvalid)
        require(MFnSingleIndexedComponent(component).getElements(one), kUnread);
    first = toVector(one);
    second = toVector(two);
    third = toVector(three);
}

MObject ComponentPoints::part(const std::vector<unsigned int>& positions) const
{
    return make(positions.size(), [&positions](std::size_t k) { return positions[k]; });
}

MObject ComponentPoints::run(std::size_t position, std::size_t count) const
{
    return make(count, [position](std::size_t k) { return position + k; });
}

template <typename PositionAt>
MObject ComponentPoints::make(std::size_t count, const PositionAt& positionAt) const
{
    MIntArray one = picked(first, count, positionAt);
    if (kind == MFn::kSurfaceCVComponent) {
        MIntArray two = picked(second, count, positionAt);
        MFnDoubleIndexedComponent set;
        MObject component = set.create(kind);
        require(set.addElements(one, two), kUnmade);
        return component;
    }
    if (kind == MFn::kLatticeComponent) {
        MIntArray two = picked(second, count, positionAt);
        MIntArray three = picked(third, count, positionAt);
        MFnTripleIndexedComponent set;
        MObject component = set.create(kind);
        require(set.addElements(one, two, three), kUnmade);
        return component;
    }
    MFnSingleIndexedComponent set;
    MObject component = set.create(kind);
    require(set.addElements(one), kUnmade);
    return component;
}
