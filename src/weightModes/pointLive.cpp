#include "weightModes/pointLive.h"

#include "report.h"
#include "weightModes/modeTable.h"

bool fitsFalloff(const EditRecord& record, const EditedObject& object, std::size_t valueCount)
{
    const bool fits = object.index < record.softSelectWeights.size() &&
                      record.softSelectWeights[object.index].length() >= valueCount;
    if (!fits)
        refuseObject(object.path, kUnequalArrays);
    return fits;
}

ClampSettings liveClampsOf(const EditRecord& record)
{
    return modeRow(record.weightMode).liveUnitClamp ? unitClamp() : record.clamps();
}
