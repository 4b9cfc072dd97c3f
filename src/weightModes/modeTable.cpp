#include "weightModes/modeTable.h"

#include "weightModes/defaultMapStore.h"
#include "weightModes/dualQuaternionStore.h"
#include "weightModes/elementPlugStore.h"
#include "weightModes/ngInfluenceStore.h"
#include "weightModes/ngLayerStore.h"
#include "weightModes/skinInfluenceStore.h"

const MString weightModeString[kWeightModeCount] = {
    "default",        "plug",   "skinCluster",      "dualQuaternion", "blendShapeTarget",
    "blendShapeBase", "ngMask", "ngDualQuaternion", "ngInfluence"};

namespace {

using Parts = const LabelParts&;

/// The one object of a kind of store, made when first asked for.
template <typename Store>
const WeightStore& storeOf()
{
    static const Store store;
    return store;
}

template <typename Store, typename Store::Kind kind>
const WeightStore& storeOfKind()
{
    static const Store store(kind);
    return store;
}

MString defaultLabel(Parts parts)
{
    return parts.deformerStr + ".weights";
}

MString plugLabel(Parts parts)
{
    return parts.deformerStr + "." + parts.weightsPlugStr;
}

MString skinLabel(Parts parts)
{
    return MString("skinCluster") + "." + parts.skinInfluenceStr;
}

MString dualQuaternionLabel(Parts)
{
    return "skinCluster.dualQuaternion";
}

MString blendShapeName(Parts parts)
{
    return parts.isBlendShape ? parts.deformerStr : MString("NULL");
}

MString targetLabel(Parts parts)
{
    return blendShapeName(parts) + " : " + parts.targetString;
}

MString baseLabel(Parts parts)
{
    return blendShapeName(parts) + ".baseWeights";
}

MString layerName(Parts parts)
{
    return MString("ngSkinTools") + "." + parts.ngLayerString;
}

MString ngMaskLabel(Parts parts)
{
    return layerName(parts) + ".mask";
}

MString ngDualQuaternionLabel(Parts parts)
{
    return layerName(parts) + ".dualQuaternion";
}

MString ngInfluenceLabel(Parts parts)
{
    return layerName(parts) + "." + parts.skinInfluenceStr;
}

const ModeRow kRows[kWeightModeCount] = {
    {kDefault, "default", false, false, StorageFamily::kDefaultMap, defaultLabel, storeOf<DefaultMapStore>},
    {kPlug, "plug", false, false, StorageFamily::kElementPlug, plugLabel,
     storeOfKind<ElementPlugStore, ElementPlugStore::kNamedPlug>},
    {kSkinCluster, "skinCluster", false, true, StorageFamily::kSkinInfluence, skinLabel,
     storeOf<SkinInfluenceStore>},
    {kDualQuaternion, "dualQuaternion", false, true, StorageFamily::kBlendWeights, dualQuaternionLabel,
     storeOf<DualQuaternionStore>},
    {kBlendShapeTarget, "blendShapeTarget", false, false, StorageFamily::kElementPlug, targetLabel,
     storeOfKind<ElementPlugStore, ElementPlugStore::kTargetWeights>},
    {kBlendShapeBase, "blendShapeBase", false, false, StorageFamily::kElementPlug, baseLabel,
     storeOfKind<ElementPlugStore, ElementPlugStore::kBaseWeights>},
    {kNgMask, "ngSkinToolsMask", true, true, StorageFamily::kNgLayer, ngMaskLabel,
     storeOfKind<NgLayerStore, NgLayerStore::kMask>},
    {kNgDualQuaternion, "ngSkinToolsDualQuaternion", true, true, StorageFamily::kNgLayer,
     ngDualQuaternionLabel, storeOfKind<NgLayerStore, NgLayerStore::kDualQuaternionWeights>},
    {kNgInfluence, "ngSkinToolsInfluence", true, true, StorageFamily::kNgInfluence, ngInfluenceLabel,
     storeOf<NgInfluenceStore>},
};

} // namespace

const ModeRow& modeRow(WeightMode mode)
{
    return kRows[mode];
}

const ModeRow* findModeByEditName(const MString& name, bool ngEnabled)
{
    for (const ModeRow& row : kRows) {
        if (name == row.editName && (ngEnabled || !row.isLayerMode))
            return &row;
    }
    return nullptr;
}
