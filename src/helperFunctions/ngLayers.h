#pragma once

#include "helperFunctions/valuesText.h"
#include "kernels/redistribution.h"

#include <maya/MDagPath.h>
#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

// Layers of ngSkinTools2, an outside plug-in that is driven only through its command `ngst2Layers`.
// Per-vertex arrays hold one value per vertex of the whole shape, in vertex order. `influence` is always a
// logical index.

/// The paint targets that are no influence.
constexpr const char* kNgMaskTarget = "mask";
constexpr const char* kNgDqTarget = "dq";

/// A layer list that cannot be read: its text names the shape and the reason.
class LayerListError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Whether the command is there now.
bool isNgEnabled();
/// Whether layer data is attached to the skin cluster.
bool hasNgData(MObject& skinCluster);
/// Id of the first layer with that name, or all bits set. Throws LayerListError.
unsigned int getLayerId(MDagPath shape, MString layerName);
/// Whether the layer is a group; false when no layer of the list has the id. Throws LayerListError.
bool layerHasChildren(MDagPath shape, int layerId);

// Reading: a layer without values yet reads as zeros. A failing command is reported and returned; so are
// weights that are not one for each vertex, with an error message.
MStatus getNgMaskWeights(int layerId, MDoubleArray& weights, const MDagPath& shape);
MStatus getNgDqWeights(int layerId, MDoubleArray& weights, const MDagPath& shape);
MStatus getNgInfluenceWeights(int layerId, unsigned int influence, MDoubleArray& weights,
                              const MDagPath& shape);

// Writing: a failing command leaves the layer as it was and is not reported here.
MStatus setNgMaskWeights(int layerId, const MDoubleArray& weights, const MDagPath& shape);
MStatus setNgDqWeights(int layerId, const MDoubleArray& weights, const MDagPath& shape);
MStatus setNgInfluenceWeights(int layerId, unsigned int influence, const MDoubleArray& weights,
                              const MDagPath& shape);

/// Writes one influence and the others after redistribution (see kernels/redistribution.h). `oldAllWeights`
/// holds the weights of all influences before the edit and `allInfluenceIds` their logical indices; logical
/// indices are used as positions, and where one of them is none, the shape is refused with a warning before
/// anything is written.
void setNgInfluenceWeights2(int layerId, unsigned int influence, const MIntArray& allInfluenceIds,
                            const MDoubleArray& newWeights, const MDagPath& shape,
                            const std::vector<MDoubleArray>& oldAllWeights, bool distribute);

/// Writes one array of a layer again and again: what stays as it was is not formatted again.
class NgWeightsWriter {
public:
    /// `oldWeights` as they were before the first write.
    NgWeightsWriter(int layerId, const MString& paintTarget, const MDoubleArray& oldWeights,
                    const MDagPath& shape);
    NgWeightsWriter(int layerId, unsigned int influence, const MDoubleArray& oldWeights,
                    const MDagPath& shape);

    /// As many weights as there were.
    MStatus write(const std::vector<double>& weights);

private:
    int layer;
    MString target;
    MDagPath path;
    ValuesText texts;
    std::string command; ///< kept from write to write for its room
};

/// setNgInfluenceWeights2 for a whole stroke: the old weights are converted once, and the texts of weights
/// that stay as they were are made once.
class NgInfluenceWriter {
public:
    NgInfluenceWriter(int layerId, unsigned int influence, const MIntArray& allInfluenceIds,
                      const std::vector<MDoubleArray>& oldAllWeights, const MDagPath& shape);

    /// Whether every position that a write addresses exists, for `vertexCount` new weights.
    bool canWrite(std::size_t vertexCount) const;
    /// Needs canWrite. Every other influence in the order of the logical indices, the edited one last.
    void write(const std::vector<double>& newWeights, bool distribute);
    /// Needs canWrite. Writes the old weights of all influences; tells whether all were written.
    MStatus restore();

private:
    MStatus writeRow(std::size_t row, const std::vector<double>& weights);

    int layer;
    unsigned int edited;
    MDagPath path;
    InfluenceTable table;
    std::vector<std::unique_ptr<NgWeightsWriter>> writers; ///< of the table's rows; null until needed
};
