#include "helperFunctions/componentPoints.h"

#include "helperFunctions/helperFunctions.h"

#include <maya/MFnDoubleIndexedComponent.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnTripleIndexedComponent.h>

namespace {

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
        MFnDoubleIndexedComponent(component).getElements(one, two);
    else if (kind == MFn::kLatticeComponent)
        MFnTripleIndexedComponent(component).getElements(one, two, three);
    else if (kind != MFn::kInvalid)
        MFnSingleIndexedComponent(component).getElements(one);
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
        set.addElements(one, two);
        return component;
    }
    if (kind == MFn::kLatticeComponent) {
        MIntArray two = picked(second, count, positionAt);
        MIntArray three = picked(third, count, positionAt);
        MFnTripleIndexedComponent set;
        MObject component = set.create(kind);
        set.addElements(one, two, three);
        return component;
    }
    MFnSingleIndexedComponent set;
    MObject component = set.create(kind);
    set.addElements(one);
    return component;
}
