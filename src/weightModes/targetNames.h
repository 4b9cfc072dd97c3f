#pragma once

#include <maya/MString.h>

/// What people call the things that the tool edits, as they gave the names.
struct TargetNames {
    MString deformerStr;
    MString weightsPlugStr;
    MString skinInfluenceStr;
    MString targetString;
    MString ngLayerString;
    bool isBlendShape; ///< the resolved deformer is one
};
