// Leaves its command and its callback registered when it goes.

#include <maya/MFnPlugin.h>
#include <maya/MPxCommand.h>
#include <maya/MSceneMessage.h>

namespace {

void* makeCommand()
{
    return new MPxCommand;
}

void onExit(void*) {}

} // namespace

MStatus initializePlugin(MObject object)
{
    MFnPlugin plugin(object);
    MSceneMessage::addCallback(MSceneMessage::kMayaExiting, onExit);
    return plugin.registerCommand("forgotten", makeCommand);
}

MStatus uninitializePlugin(MObject)
{
    return MStatus::kSuccess;
}
