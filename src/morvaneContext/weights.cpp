// Reading the weights of a selection, by mode.
#include "morvaneContext/morvaneContext.h"
#include "weightModes/modeTable.h"

MStatus morvaneContext::getWeights(MSelectionList& sel, std::vector<SkinRowsRef>& skinRows,
                                   std::vector<MDoubleArray>& influenceWeights,
                                   std::vector<MDoubleArray>& blendWeights, std::vector<MFloatArray>& weights,
                                   MObjectArray& skinClusters, MIntArray& influenceCounts,
                                   MIntArray& influenceIds, MIntArray&, std::vector<MDoubleArray>& ngWeights,
                                   std::vector<std::vector<MDoubleArray>>& allInfluenceNgWeights)
{
    const WeightReading reading = {*this,
                                   ngEnabled,
                                   sel,
                                   skinClusters,
                                   influenceIds,
                                   skinRows,
                                   influenceWeights,
                                   blendWeights,
                                   weights,
                                   influenceCounts,
                                   ngWeights,
                                   allInfluenceNgWeights,
                                   explaining.unread};
    explaining.unread = Reason();
    const MStatus status = modeRow(weightMode).store().read(reading);
    if (explaining.unread.always)
        warn(explaining.unread.text);
    return status;
}

MStatus morvaneContext::getOldWeights()
{
    return getWeights(validSel, oldSkinRows, oldInfluenceWeights, oldBlendWeights, oldWeights,
                      validSkinClusters, oldIndexArray, skinInfluenceIds, ngInfluenceIds, oldNgWeights,
                      oldAllInfluenceNgWeight);
}
