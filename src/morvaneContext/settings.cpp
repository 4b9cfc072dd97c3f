// Setters that do more than store.
#include "morvaneContext/morvaneContext.h"

MStatus morvaneContext::setDeformerStr(MString name)
{
    if (!(name == deformerStr))
        endStroke();
    if (!checkActiveDeformer(name))
        return MS::kFailure;
    deformerStr = name;
    setHudDisplayString();
    return MS::kSuccess;
}

MStatus morvaneContext::setWeightsPlugStr(MString name)
{
    if (!(name == weightsPlugStr))
        endStroke();
    if (!checkWeightsPlug(name))
        return MS::kFailure;
    weightsPlugStr = name;
    setHudDisplayString();
    return MS::kSuccess;
}

MStatus morvaneContext::setTargetString(MString name)
{
    if (activeDeformer.isNull())
        return MS::kFailure;
    targetString = name;
    return MS::kSuccess;
}

void morvaneContext::setWeightMode(WeightMode mode)
{
    if (mode != weightMode) {
        endStroke();
        weightsCopied = false;
    }
    weightMode = mode;
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
