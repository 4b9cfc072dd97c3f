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

using Names = const TargetNames&;

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

MString defaultLabel(Names names)
{
    return names.deformerStr + ".weights";
}

MString plugLabel(Names names)
{
    return names.deformerStr + "." + names.weightsPlugStr;
}

MString skinLabel(Names names)
{
    return MString("skinCluster") + "." + names.skinInfluenceStr;
}

MString dualQuaternionLabel(Names)
{
    return "skinCluster.dualQuaternion";
}

MString blendShapeName(Names names)
{
    return names.isBlendShape ? names.deformerStr : MString("NULL");
}

MString targetLabel(Names names)
{
    return blendShapeName(names) + " : " + names.targetString;
}

MString baseLabel(Names names)
{
    return blendShapeName(names) + ".baseWeights";
}

MString layerName(Names names)
{
    return MString("ngSkinTools") + "." + names.ngLayerString;
}

MString ngMaskLabel(Names names)
{
    return layerName(names) + ".mask";
}

MString ngDualQuaternionLabel(Names names)
{
    return layerName(names) + ".dualQuaternion";
}

MString ngInfluenceLabel(Names names)
{
    return layerName(names) + "." + names.skinInfluenceStr;
}

MString noTarget(Names)
{
    return MString();
}

MString deformerTarget(Names names)
{
    return names.deformerStr;
}

MString shapeTarget(Names names)
{
    return names.deformerStr + "." + names.targetString;
}

MString influenceTarget(Names names)
{
    return names.skinInfluenceStr;
}

MString layerTarget(Names names)
{
    return names.ngLayerString;
}

MString layerInfluenceTarget(Names names)
{
    return names.ngLayerString + "." + names.skinInfluenceStr;
}

using Need = DeformerNeed;

const ModeRow kRows[kWeightModeCount] = {
    {kDefault, "default", false, false, StorageFamily::kDefaultMap, Need::kNamed, defaultLabel,
     deformerTarget, storeOf<DefaultMapStore>},
    {kPlug, "plug", false, false, StorageFamily::kElementPlug, Need::kNamed, plugLabel, plugLabel,
     storeOfKind<ElementPlugStore, ElementPlugStore::kNamedPlug>},
    {kSkinCluster, "skinCluster", false, true, StorageFamily::kSkinInfluence, Need::kNone, skinLabel,
     influenceTarget, storeOf<SkinInfluenceStore>},
    {kDualQuaternion, "dualQuaternion", false, true, StorageFamily::kBlendWeights, Need::kIfNamed,
     dualQuaternionLabel, noTarget, storeOf<DualQuaternionStore>},
    {kBlendShapeTarget, "blendShapeTarget", false, false, StorageFamily::kElementPlug, Need::kNamed,
     targetLabel, shapeTarget, storeOfKind<ElementPlugStore, ElementPlugStore::kTargetWeights>},
    {kBlendShapeBase, "blendShapeBase", false, false, StorageFamily::kElementPlug, Need::kNamed, baseLabel,
     deformerTarget, storeOfKind<ElementPlugStore, ElementPlugStore::kBaseWeights>},
    {kNgMask, "ngSkinToolsMask", true, true, StorageFamily::kNgLayer, Need::kWithoutLayers, ngMaskLabel,
     layerTarget, storeOfKind<NgLayerStore, NgLayerStore::kMask>},
    {kNgDualQuaternion, "ngSkinToolsDualQuaternion", true, true, StorageFamily::kNgLayer,
     Need::kWithoutLayers, ngDualQuaternionLabel, layerTarget,
     storeOfKind<NgLayerStore, NgLayerStore::kDualQuaternionWeights>},
    {kNgInfluence, "ngSkinToolsInfluence", true, true, StorageFamily::kNgInfluence, Need::kWithoutLayers,
     ngInfluenceLabel, layerInfluenceTarget, storeOf<NgInfluenceStore>},
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
