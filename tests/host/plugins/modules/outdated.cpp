// A plug-in that was built against the interface of another year.

#define MNoVersionString
#include <maya/MFnPlugin.h>

extern "C" MAYA_HOST_EXPORT const char MApiVersion[];
const char MApiVersion[] = "20190000";

MStatus initializePlugin(MObject)
{
    return MStatus::kSuccess;
}

MStatus uninitializePlugin(MObject)
{
    return MStatus::kSuccess;
}
