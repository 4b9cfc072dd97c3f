// Registers a command, then refuses to start: by a status, or by an exception when built so.

#include <maya/MFnPlugin.h>
#include <maya/MPxCommand.h>

#include <stdexcept>

namespace {

void* makeCommand()
{
    return new MPxCommand;
}

} // namespace

MStatus initializePlugin(MObject object)
{
    MFnPlugin plugin(object);
    plugin.registerCommand("neverThere", makeCommand);
#ifdef THROWS
    throw std::runtime_error("the moon is full");
#else
    return MStatus::kInsufficientMemory;
#endif
}

MStatus uninitializePlugin(MObject)
{
    return MStatus::kSuccess;
}
