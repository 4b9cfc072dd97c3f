#pragma once

#include "common.h"
#include "weightModes/targetNames.h"
#include "weightModes/weightMode.h"

class WeightStore;

/// Names of the weight modes in queries, by WeightMode. The three layer modes are edited under other names.
extern const MString weightModeString[kWeightModeCount];

/// The kinds of place where weights live.
enum class StorageFamily { kDefaultMap, kElementPlug, kSkinInfluence, kBlendWeights, kNgLayer, kNgInfluence };

/// What a mode wants of the deformer's name.
enum class DeformerNeed {
    kNamed,        ///< it must name a deformer
    kIfNamed,      ///< the skins are found object by object: a name, if there is one, must be a deformer's
    kNone,         ///< not looked at
    kWithoutLayers ///< not looked at while ngSkinTools2 is there
};

/// One weight mode: everything in which it differs from the others, apart from what its store does.
struct ModeRow {
    WeightMode mode;
    const char* editName; ///< as the edit flag of the context command accepts it
    bool isLayerMode;     ///< needs ngSkinTools2; the live stroke and its redo always hold it to 0..1
    /// The live stroke holds the weights to 0..1 whatever the clamp settings. The redo of a stroke does so in
    /// the layer modes only and follows the settings in all others; the difference is meant.
    bool liveUnitClamp;
    StorageFamily family;
    DeformerNeed deformerNeed;
    MString (*label)(const TargetNames& names);  ///< in the heads-up display
    MString (*target)(const TargetNames& names); ///< in undo entries, after the mode; may be empty
    const WeightStore& (*store)();
};

const ModeRow& modeRow(WeightMode mode);

/// The mode that the edit flag means by this name, or null. Layer modes are known only while ngSkinTools2 is
/// there.
const ModeRow* findModeByEditName(const MString& name, bool ngEnabled);
