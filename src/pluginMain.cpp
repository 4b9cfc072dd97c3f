// The plug-in's door: what happens when it is loaded and unloaded.
#include "mel.h"
#include "morvaneContext/morvaneContext.h"
#include "morvaneContextCommand.h"
#include "morvaneToolCommand/morvaneToolCommand.h"
#include "report.h"

#include <maya/MFnPlugin.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

// Everything else of the library is hidden, and not every release's header declares the entry points.
#ifdef _WIN32
#define MORVANE_ENTRY_POINT __declspec(dllexport)
#else
#define MORVANE_ENTRY_POINT __attribute__((visibility("default")))
#endif

namespace {

const char* const kContextCommand = "morvaneContext";
const char* const kToolCommand = "morvaneToolCmd";

/// A runtime command and the name command through which a hot key reaches it.
struct KeyCommand {
    const char* exists;
    const char* runTimeCommand;
    const char* nameCommand;
};

// The blanks and tabs inside belong to the texts: scripts compare them.
const KeyCommand kKeyCommands[] = {
    {"runTimeCommand -q -exists \"morvaneCopy\"",
     "runTimeCommand -annotation \"Copies the weights in the morvane context\" -commandLanguage \"mel\" "
     "-command(\"string $x = `getPanel - withFocus`;if (`substring $x 1 10` == "
     "\\\"modelPanel\\\"){morvaneContext -e -copy true morvaneContext1;}\") -hotkeyCtx \"morvaneClient\" "
     "-category \"Morvane\" -default true morvaneCopy;",
     "\t\tnameCommand\t\t- annotation \"MorvaneCopyNameCommand\"\t\t- sourceType \"mel\"\t\t- "
     "command(\"morvaneCopy\")\t\tMorvaneCopyNameCommand;"},
    {"runTimeCommand -q -exists \"morvanePaste\"",
     "runTimeCommand -annotation \"Pastes the weights in the morvane context\" -commandLanguage \"mel\" "
     "-command(\"string $x = `getPanel - withFocus`;if (`substring $x 1 10` == "
     "\\\"modelPanel\\\"){morvaneContext -e -paste true morvaneContext1;}\") -hotkeyCtx \"morvaneClient\" "
     "-category \"Morvane\" -default true morvanePaste;",
     "\t\tnameCommand\t\t- annotation \"MorvanePasteNameCommand\"\t\t- sourceType \"mel\"\t\t- "
     "command(\"morvanePaste\")\t\tMorvanePasteNameCommand;"},
};

/// They stay when the plug-in is unloaded and are not defined twice.
void createRunTimeCommands()
{
    for (const KeyCommand& command : kKeyCommands) {
        if (queryMelInt(command.exists) != 0)
            continue;
        runMel(command.runTimeCommand);
        runMel(command.nameCommand);
    }
}

/// The display in which the tool shows what is sculpted; invisible until the tool is switched on.
void createHUD()
{
    runMelOnIdle(MString("$lastOccupiedBlock = `headsUpDisplay -lastOccupiedBlock 7`;$lastOccupiedBlock = "
                         "$lastOccupiedBlock + 1;headsUpDisplay -vis 0 -s 7 -b $lastOccupiedBlock \"") +
                 morvaneHUD + "\";");
}

MStatus load(MObject& plugin)
{
    MFnPlugin registry(plugin, "Morvane developers", "4.0", "Any");
    // What follows happens whether or not the names could be registered.
    registry.registerContextCommand(kContextCommand, morvaneContextCommand::creator, kToolCommand,
                                    morvaneToolCommand::creator, morvaneToolCommand::appendSyntax);
    runMel("morvaneContext");
    createRunTimeCommands();
    createHUD();
    return MS::kSuccess;
}

MStatus unload(MObject& plugin)
{
    MFnPlugin registry(plugin, "Unknown", "Unknown", "Any");
    morvaneContext::setUnloading(true);
    const MStatus status = registry.deregisterContextCommand(kContextCommand, kToolCommand);
    morvaneContext::setUnloading(false);
    if (!status)
        return apiError(status, kPluginSource, 46);
    // A callback into an unloaded library would bring the platform down.
    morvaneContext::removeMayaClosedCallback();
    if (queryMelInt(MString("hotkeySet -q -exists \"") + morvaneTemp + "\"") != 0)
        runMel(MString("hotkeySet -e -delete \"") + morvaneTemp + "\"");
    return MS::kSuccess;
}

} // namespace

MORVANE_ENTRY_POINT MStatus initializePlugin(MObject obj)
{
    return guarded(
        "Loading", [&obj] { return load(obj); }, [&obj] { unload(obj); });
}

MORVANE_ENTRY_POINT MStatus uninitializePlugin(MObject obj)
{
    return guarded("Unloading", [&obj] { return unload(obj); });
}
