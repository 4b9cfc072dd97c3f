#include "report.h"

#include <iostream>
#include <maya/MGlobal.h>

MStatus apiError(const MStatus& status, const char* source, int line)
{
    std::cerr << "\nAPI error detected in " << source << " at line " << line << std::endl;
    status.perror("");
    return status;
}

void refuseObject(const MDagPath& path, const char* reason)
{
    const MString name = path.isValid() ? path.fullPathName() : MString("An edited object");
    MGlobal::displayWarning(name + ": " + reason);
}

void reportException(const char* what)
{
    MGlobal::displayError(MString("morvane: ") + what);
}
