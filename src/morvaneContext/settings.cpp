// Setters that do more than store.
#include "morvaneContext/morvaneContext.h"
#include "weightModes/modeTable.h"

MStatus morvaneContext::setDeformerStr(MString name)
{
    if (!(name == deformerStr))
        endStroke();
    const MObjectHandle earlier = activeDeformer;
    if (!checkActiveDeformer(name)) {
        activeDeformer = earlier;
        return MS::kFailure;
    }
    deformerStr = name;
    setHudDisplayString();
    return MS::kSuccess;
}

MStatus morvaneContext::setWeightsPlugStr(MString name)
{
    if (!(name == weightsPlugStr))
        endStroke();
    resolveStoredDeformer();
    if (!checkWeightsPlug(name))
        return MS::kFailure;
    weightsPlugStr = name;
    setHudDisplayString();
    return MS::kSuccess;
}

MStatus morvaneContext::setTargetString(MString name)
{
    resolveStoredDeformer();
    if (liveDeformer().isNull())
        return MS::kFailure;
    targetString = name;
    return MS::kSuccess;
}

void morvaneContext::setWeightMode(WeightMode mode)
{
    if (mode != weightMode) {
        endStroke();
        weightsCopied = false;
        // The mode before may not have looked at the name.
        resolveStoredDeformer();
    }
    weightMode = mode;
    // The layer modes can be named while the layers are there, and the first press works.
    if (modeRow(mode).isLayerMode)
        ngEnabled = true;
    setHudDisplayString();
}

void morvaneContext::setSkinInfluenceStr(MString name)
{
    skinInfluenceStr = name;
    setHudDisplayString();
}

void morvaneContext::setNgLayerString(MString name)
{
    ngLayerString = name;
    setHudDisplayString();
}

void morvaneContext::setTargetIndex(int index)
{
    targetIndex = static_cast<unsigned int>(index);
    setHudDisplayString();
}
