#include "helperFunctions/helperFunctions.h"

#include "report.h"

#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MItGeometry.h>

MDoubleArray floatToDouble(const MFloatArray& values)
{
    std::vector<double> wide(values.length());
    values.get(wide.data());
    return MDoubleArray(wide.data(), values.length());
}

MFloatArray doubleToFloat(const MDoubleArray& values)
{
    const std::vector<double> wide = toVector(values);
    return MFloatArray(wide.data(), values.length());
}

std::vector<float> toVector(const MFloatArray& values)
{
    std::vector<float> result(values.length());
    values.get(result.data());
    return result;
}

std::vector<double> toVector(const MDoubleArray& values)
{
    std::vector<double> result(values.length());
    values.get(result.data());
    return result;
}

std::vector<int> toVector(const MIntArray& values)
{
    std::vector<int> result(values.length());
    values.get(result.data());
    return result;
}

std::vector<int> vertexIndices(const MDagPath& path, const MObject& component)
{
    std::vector<int> indices;
    MStatus status;
    MObject points = component;
    MItGeometry iterator(path, points, &status);
    if (!status)
        return indices;
    for (; !iterator.isDone(); iterator.next()) {
        indices.push_back(iterator.index(&status));
        require(status, "a point does not tell its index");
    }
    return indices;
}

std::vector<int> componentElements(const MObject& component)
{
    MIntArray elements;
    MStatus status;
    const MFnSingleIndexedComponent points(component, &status);
    if (status)
        require(points.getElements(elements), "selected points cannot be read");
    return toVector(elements);
}

MFn::Type pointKind(const MObject& component)
{
    for (MFn::Type kind : {MFn::kMeshVertComponent, MFn::kCurveCVComponent, MFn::kSurfaceCVComponent,
                           MFn::kLatticeComponent}) {
        if (component.hasFn(kind))
            return kind;
    }
    return MFn::kInvalid;
}
