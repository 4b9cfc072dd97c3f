#pragma once

#include <maya/MFnBase.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

namespace host {
struct Api;
}

typedef void* (*MCreatorFunction)();
typedef MSyntax (*MCreateSyntaxFunction)();

MAYA_HOST_EXPORT MStatus initializePlugin(MObject plugin);
MAYA_HOST_EXPORT MStatus uninitializePlugin(MObject plugin);

#ifndef MNoVersionString
#define MAYA_HOST_TEXT_OF(number) #number
#define MAYA_HOST_TEXT(number) MAYA_HOST_TEXT_OF(number)
/// The interface that the plug-in was built against: the host looks it up before it runs anything of the
/// file. One source file of a plug-in defines it, by including this header.
extern "C" MAYA_HOST_EXPORT const char MApiVersion[];
const char MApiVersion[] = MAYA_HOST_TEXT(MAYA_API_VERSION);
#undef MAYA_HOST_TEXT
#undef MAYA_HOST_TEXT_OF
#endif

MAYA_HOST_NAMESPACE_OPEN

/// What a plug-in calls from its two entry points to register what it brings.
class MAYA_HOST_EXPORT MFnPlugin : public MFnBase {
public:
    MFnPlugin();
    MFnPlugin(MObject& object, const char* vendor = "Unknown", const char* version = "Unknown",
              const char* requiredApiVersion = "Any", MStatus* status = nullptr);
    ~MFnPlugin();
    MFn::Type type() const override;

    MString vendor(MStatus* status = nullptr) const;
    MString version(MStatus* status = nullptr) const;
    MString apiVersion(MStatus* status = nullptr) const;
    MString name(MStatus* status = nullptr) const;
    MString loadPath(MStatus* status = nullptr) const;
    static MObject findPlugin(const MString& pluginName);

    MStatus registerCommand(const MString& commandName, MCreatorFunction creatorFunction,
                            MCreateSyntaxFunction createSyntaxFunction = nullptr);
    MStatus deregisterCommand(const MString& commandName);
    /// The second form also brings the command that the tool leaves on the undo queue; deregister it as a
    /// pair.
    MStatus registerContextCommand(const MString& commandName, MCreatorFunction creatorFunction);
    MStatus registerContextCommand(const MString& commandName, MCreatorFunction creatorFunction,
                                   const MString& toolCmdName, MCreatorFunction toolCmdCreator,
                                   MCreateSyntaxFunction toolCmdSyntax = nullptr);
    MStatus deregisterContextCommand(const MString& commandName);
    MStatus deregisterContextCommand(const MString& commandName, const MString& toolCmdName);
    static const char* className() { return "MFnPlugin"; }

private:
    friend struct host::Api;
};

MAYA_HOST_NAMESPACE_CLOSE
