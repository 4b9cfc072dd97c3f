#include "weightModes/pointLive.h"

#include "report.h"

bool fitsFalloff(const EditRecord& record, const EditedObject& object, std::size_t valueCount)
{
    const bool fits = object.index < record.softSelectWeights.size() &&
                      record.softSelectWeights[object.index].length() >= valueCount;
    if (!fits)
        refuseObject(object.path, kUnequalArrays);
    return fits;
}
