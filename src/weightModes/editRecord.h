#pragma once

#include "kernels/clamp.h"
#include "weightModes/influenceMatch.h"
#include "weightModes/keptNodes.h"
#include "weightModes/skinRows.h"
#include "weightModes/weightMode.h"

#include <maya/MDagPath.h>
#include <maya/MDoubleArray.h>
#include <maya/MFloatArray.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MObjectArray.h>
#include <maya/MObjectHandle.h>
#include <maya/MPlug.h>
#include <maya/MSelectionList.h>
#include <vector>

/// What one edit works on: the target, the selected points and their weights when it began. The context fills
/// one per press; a tool command owns a value copy of it, from which it redoes and undoes without asking the
/// scene.
///
/// Every per-object array holds entry n for item n of `validSel`; the arrays are only ever appended together.
/// A column that the mode does not use stays empty. Values per point are in component order, except the layer
/// arrays, which span the whole shape and are indexed by vertex.
struct EditRecord {
    WeightMode weightMode = kDefault;
    bool clampedMin = false;
    bool clampedMax = false;
    double weightMin = 0.0;
    double weightMax = 0.0;
    bool distributeWeightsNg = true; ///< spread a change of a layer influence over the other influences

    MObjectHandle activeDeformer; ///< of nothing when none is resolved
    /// Mode kPlug: the per-geometry weights attribute, without a geometry index. Never a networked plug; to
    /// be touched while the deformer is there only.
    MPlug weightsPlug;
    /// Always null: the array above `weightsPlug` is taken from the plug itself. Kept in the record as a
    /// plain field.
    MObject weightListAttr;
    MDagPath skinInfluence; ///< to be read through liveInfluence()
    MObjectHandle influenceNode;
    unsigned int targetIndex = 0; ///< blend shape target, logical index
    double offsetValue = 0.0;     ///< the stroke's offset, times falloff added to the old weights

    MSelectionList validSel;                       ///< the edited objects, each with its component
    std::vector<MFloatArray> softSelectWeights;    ///< falloff, 0..1, per point
    MObjectArray validSkinClusters;                ///< skin modes and layer modes
    KeptNodes validShapes;                         ///< of the edited objects
    KeptNodes validHolders;                        ///< the nodes that hold their weights: skin or deformer
    MIntArray skinInfluenceIds;                    ///< physical index of the influence
    MIntArray ngInfluenceIds;                      ///< logical index of the influence
    MIntArray ngLayerIds;                          ///< layer id
    std::vector<MIntArray> allInfluenceLogicalIds; ///< of every influence, in physical order

    std::vector<MFloatArray> oldWeights; ///< default map, plug and blend shape modes
    /// The edited influence. In the layer modes, the layer array that undo puts back, whole shape.
    std::vector<MDoubleArray> oldInfluenceWeights;
    std::vector<SkinRowsRef> oldSkinRows; ///< mode kSkinCluster: all influences of the points
    /// Mode kNgInfluence: all influences, influence after influence (physical order), each a whole-shape
    /// block.
    std::vector<MDoubleArray> oldSkinWeights;
    std::vector<MDoubleArray> oldBlendWeights;
    std::vector<MDoubleArray> oldNgWeights; ///< mask or dual-quaternion weights, whole shape
    std::vector<std::vector<MDoubleArray>> oldAllInfluenceNgWeight; ///< per influence (physical), whole shape

    MObject liveDeformer() const { return liveNode(activeDeformer); }
    /// Empty when the influence is gone.
    MDagPath liveInfluence() const { return influenceNode.isValid() ? skinInfluence : MDagPath(); }
    void chooseInfluence(const MDagPath& path)
    {
        skinInfluence = path;
        influenceNode = path.isValid() ? path.node() : MObject();
    }
    /// Remembers the nodes of the edited objects, once `validSel` and `validSkinClusters` are filled.
    void keepObjects();
    /// Whether an edited object and what holds its weights are still in the scene.
    bool isThere(unsigned int index) const
    {
        return !liveNode(validShapes, index).isNull() && !liveNode(validHolders, index).isNull();
    }

    ClampSettings clamps() const { return {clampedMin, clampedMax, weightMin, weightMax}; }
};

/// What a paste writes, beside the target's own record.
struct PasteRecord {
    /// Per target object. Plain modes: one value per point. Skin: point-major rows of all influences. Layer
    /// mask and dual quaternion: whole shape.
    std::vector<MFloatArray> pasteWeights;
    std::vector<std::vector<MDoubleArray>>
        pasteNgAllInfluenceWeights; ///< per object, per influence, whole shape
    /// Per target object, in the layouts of pasteWeights: what a paste vertex by vertex writes instead, in
    /// full precision. Empty otherwise, and in the modes that store single precision.
    std::vector<MDoubleArray> pasteValues;
    std::vector<bool> refusedObjects; ///< objects for which neither the paste nor its undo writes anything
};

/// What a copy took; the arrays have the layouts of the record's old weights.
struct CopyBuffer {
    MSelectionList copiedSel;
    std::vector<MFloatArray> copiedSoftSelectWeights;
    std::vector<MFloatArray> copiedWeights;
    std::vector<MDoubleArray> copiedInfluenceWeights;
    std::vector<MDoubleArray> copiedSkinWeights; ///< point * influences + physical index
    std::vector<MDoubleArray> copiedBlendWeights;
    KeptNodes copiedSkinClusters;
    KeptNodes copiedShapes;                           ///< of the items of copiedSel
    std::vector<InfluenceNames> copiedInfluenceNames; ///< of those skins, as they were called then
    MIntArray copiedIndexArray;                       ///< per object, its number of influences
    WeightMode copiedWeightMode = kDefault;           ///< mode of the last copy that succeeded
    std::vector<MDoubleArray> copiedNgWeights;
    std::vector<std::vector<MDoubleArray>> copiedAllInfluenceNgWeights;
};
