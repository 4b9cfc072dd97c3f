#include "weightModes/wholeShape.h"

#include "helperFunctions/helperFunctions.h"
#include "helperFunctions/ngLayers.h"
#include "report.h"

MString findLayer(const MString& layerName, const MDagPath& path, MObject& skinCluster, int& layerId)
{
    if (!hasNgData(skinCluster))
        return shapeName(path) + " has no ngSkinTools2 layers.";
    const unsigned int layer = getLayerId(path, layerName);
    layerId = static_cast<int>(layer);
    if (layer != kNotFound)
        return MString();
    return layerName.length() == 0 ? MString("No layer has been chosen: name one with the flag -ngLayer.")
                                   : shapeName(path) + " has no layer named " + layerName + ".";
}

MString groupLayer(const MString& layerName, const MDagPath& path)
{
    return "The layer " + layerName + " of " + shapeName(path) +
           " is a group of layers: it has no weights of its own.";
}

WholeShapeWeights::WholeShapeWeights(const EditRecord& record, const EditedObject& object,
                                     const MDoubleArray& oldWeights)
    : path(object.path), old(toVector(oldWeights)), elements(componentElements(object.component)), values(old)
{
    hasAllElements = !elements.empty() || object.component.isNull();
    if (object.index < record.softSelectWeights.size())
        soft = toVector(record.softSelectWeights[object.index]);
}

bool WholeShapeWeights::isUsable() const
{
    bool usable = elements.size() <= soft.size() && hasAllElements;
    for (int element : elements)
        usable = usable && element >= 0 && static_cast<std::size_t>(element) < old.size();
    if (!usable)
        refuseObject(path, kUnequalArrays);
    return usable;
}

void WholeShapeWeights::newWeights(double offset, double* result) const
{
    for (std::size_t point = 0; point < elements.size(); ++point)
        result[point] = offsetUnit(old[static_cast<std::size_t>(elements[point])],
                                   static_cast<double>(soft[point]), offset);
}

const std::vector<double>& WholeShapeWeights::offsetBy(double offset)
{
    for (std::size_t point = 0; point < elements.size(); ++point) {
        const auto vertex = static_cast<std::size_t>(elements[point]);
        values[vertex] = offsetUnit(old[vertex], static_cast<double>(soft[point]), offset);
    }
    return values;
}
