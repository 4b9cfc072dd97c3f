#pragma once

/// What the tool edits. The values are stored and index tables of the modes.
enum WeightMode : int {
    kDefault = 0,          ///< the default weight map of the deformer
    kPlug = 1,             ///< a named weights attribute of the deformer
    kSkinCluster = 2,      ///< skin weights of one influence
    kDualQuaternion = 3,   ///< dual-quaternion blend weights of a skin
    kBlendShapeTarget = 4, ///< weights of one blend shape target
    kBlendShapeBase = 5,   ///< base weights of a blend shape
    kNgMask = 6,           ///< mask of an ngSkinTools2 layer
    kNgDualQuaternion = 7, ///< dual-quaternion weights of an ngSkinTools2 layer
    kNgInfluence = 8       ///< influence weights of an ngSkinTools2 layer
};

constexpr int kWeightModeCount = 9;
