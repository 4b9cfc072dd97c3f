#pragma once

#include "weightModes/weightStore.h"

#include <vector>

/// Finds the layer of that name on a shape with a skin. The result says why when there is none; it is empty
/// otherwise. Throws LayerListError.
MString findLayer(const MString& layerName, const MDagPath& path, MObject& skinCluster, int& layerId);
/// Says that a layer has child layers and so no weights.
MString groupLayer(const MString& layerName, const MDagPath& path);

/// A layer array of a whole shape with the points of a component picked out: what the layer modes offset.
class WholeShapeWeights {
public:
    /// `oldWeights` spans the shape; the component picks the points, in its element order.
    WholeShapeWeights(const EditRecord& record, const EditedObject& object, const MDoubleArray& oldWeights);

    /// Whether every picked point lies inside the array and has a falloff; tells people when not.
    bool isUsable() const;
    std::size_t pointCount() const { return elements.size(); }
    /// The picked points' new weights, in component order.
    void newWeights(double offset, double* values) const;
    /// The whole array with the picked points offset.
    const std::vector<double>& offsetBy(double offset);
    /// The whole array as it was.
    const std::vector<double>& oldWeights() const { return old; }

private:
    MDagPath path;
    std::vector<double> old;
    std::vector<int> elements;
    bool hasAllElements = true; ///< false when a component did not tell its own
    std::vector<float> soft;
    std::vector<double> values;
};
