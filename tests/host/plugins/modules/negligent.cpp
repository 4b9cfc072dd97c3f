// Leaves its command and its callback registered when it goes; TIDY removes the callback when it is called,
// and must not be asked to uninitialize by a program that ends.

#include <maya/MFnPlugin.h>
#include <maya/MPxCommand.h>
#include <maya/MSceneMessage.h>

#ifdef TIDY
#define COMMAND "tidied"
#else
#define COMMAND "forgotten"
#endif

namespace {

void* makeCommand()
{
    return new MPxCommand;
}

MCallbackId callback = 0;

void onExit(void*)
{
#ifdef TIDY
    MMessage::removeCallback(callback);
#endif
}

} // namespace

MStatus initializePlugin(MObject object)
{
    MFnPlugin plugin(object);
    callback = MSceneMessage::addCallback(MSceneMessage::kMayaExiting, onExit);
    return plugin.registerCommand(COMMAND, makeCommand);
}

MStatus uninitializePlugin(MObject)
{
#ifdef TIDY
    return MStatus::kFailure;
#else
    return MStatus::kSuccess;
#endif
}
