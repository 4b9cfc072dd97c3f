// Construction, switching the tool on and off, hot keys, heads-up display and the exit callback.
#include "mel.h"
#include "morvaneContext/morvaneContext.h"
#include "report.h"
#include "weightModes/modeTable.h"

#include <maya/MCommandResult.h>
#include <maya/MFn.h>
#include <maya/MPxContext.h>
#include <maya/MSceneMessage.h>
#include <maya/MStringArray.h>

namespace {

MString quoted(const char* command, const MString& name)
{
    return MString(command) + "\"" + name + "\"";
}

/// For use inside a quoted text of a command, which ends with its line: names of layers may hold any
/// character.
MString escaped(const MString& text)
{
    std::string safe;
    for (const char c : std::string(text.asChar())) {
        if (c == '"' || c == '\\')
            safe += '\\';
        if (c == '\n')
            safe += "\\n";
        else if (c == '\r')
            safe += "\\r";
        else
            safe += c;
    }
    return safe.c_str();
}

} // namespace

MCallbackId morvaneContext::mayaClosedCallback = 0;
bool morvaneContext::pluginUnloading = false;

morvaneContext::morvaneContext() : tempHotkeySet(morvaneTemp)
{
    // The user's defaults; those of a bare record suit a tool command.
    clampedMin = true;
    weightMax = 1.0;
    createMayaClosedCallback();
}

morvaneContext::~morvaneContext() = default;

void morvaneContext::getClassName(MString& name) const
{
    guarded("Naming the tool", [&name] {
        name = "morvane";
        return MStatus(MS::kSuccess);
    });
}

void morvaneContext::toolOnSetup(MEvent&)
{
    guarded("Switching the tool on", [this] {
        setImage("morvane.xpm", MPxContext::kImage1);
        MGlobal::executeCommand("selectPref -q -clickDrag", clickDragPref, false, false);
        runMel("selectPref -clickDrag true");
        runMel("selectMode -component");
        setAllowSoftSelect();
        setAllowSymmetry();
        setAllowPreSelectHilight();
        setAllowDoubleClickAction();
        setupCustomHotkeys();
        setUpHUD();
        isCurrent = true;
        showHelp();
        return MStatus(MS::kSuccess);
    });
}

void morvaneContext::toolOffCleanup()
{
    // Whatever becomes of the stroke, people get their hot keys back.
    guarded("Recording the stroke", [this] {
        if (!pluginUnloading)
            endStroke();
        return MStatus(MS::kSuccess);
    });
    isCurrent = false;
    guarded("Switching the tool off", [this] {
        runMelOnIdle(clickDragPref != 0 ? "selectPref -clickDrag true" : "selectPref -clickDrag false");
        cleanupCustomHotkeys();
        cleanupHUD();
        return MStatus(MS::kSuccess);
    });
}

void morvaneContext::setupCustomHotkeys()
{
    MCommandResult setsResult;
    MStringArray sets;
    MGlobal::executeCommand("hotkeySet -q -hotkeySetArray", setsResult, false, false);
    setsResult.getResult(sets);
    for (unsigned int set = 0; set < sets.length(); ++set) {
        if (!(sets[set] == tempHotkeySet))
            continue;
        // Left over from a session that ended badly.
        runMel("hotkeySet -e -current \"Maya_Default\"");
        runMel(quoted("hotkeySet -e -delete ", tempHotkeySet));
    }
    MCommandResult current;
    MGlobal::executeCommand("hotkeySet -q -current", current, false, false);
    current.getResult(previousHotkeySet);
    runMel(quoted("hotkeySet -source ", previousHotkeySet) + " \"" + tempHotkeySet + "\"");
    runMel(quoted("hotkeySet -e -current ", tempHotkeySet));
    runMel("hotkeyCtx - type \"Tool\" -addClient \"morvaneClient\";");
    runMel("hotkey -keyShortcut \"c\" -ctxClient \"morvaneClient\" -name \"MorvaneCopyNameCommand\";");
    runMel("hotkey -keyShortcut \"v\" -ctxClient \"morvaneClient\" -name \"MorvanePasteNameCommand\";");
    runMelOnIdle("hotkeyCtx -type \"Tool\" -currentClient \"morvaneClient\";");
}

void morvaneContext::cleanupCustomHotkeys()
{
    runMel(quoted("hotkeySet -e -current ", previousHotkeySet));
    runMel(quoted("hotkeySet -e -delete ", tempHotkeySet));
}

void morvaneContext::setUpHUD()
{
    runMelOnIdle(MString("if (`headsUpDisplay -ex \"") + morvaneHUD +
                 "\"`){string $hudLabel = (\"Sculpting On:" + escaped(hudDisplayString) +
                 "\");headsUpDisplay -e -vis 1 -label $hudLabel \"" + morvaneHUD + "\";}");
}

void morvaneContext::setHudDisplayString()
{
    hudDisplayString = modeRow(weightMode).label(targetNames());
    runMelOnIdle(MString("if (`headsUpDisplay -q -vis \"") + morvaneHUD +
                 "\"`){string $hudLabel = (\"Sculpting On:" + escaped(hudDisplayString) +
                 "\");headsUpDisplay -e -label $hudLabel \"" + morvaneHUD + "\";}");
}

void morvaneContext::cleanupHUD()
{
    runMelOnIdle(MString("if (`headsUpDisplay - ex \"") + morvaneHUD + "\"`){headsUpDisplay -e -vis 0 \"" +
                 morvaneHUD + "\";}");
}

void morvaneContext::createMayaClosedCallback()
{
    if (mayaClosedCallback == 0)
        mayaClosedCallback = MSceneMessage::addCallback(MSceneMessage::kMayaExiting, mayaClosedFunc, nullptr);
}

void morvaneContext::removeMayaClosedCallback()
{
    if (mayaClosedCallback != 0)
        MMessage::removeCallback(mayaClosedCallback);
    mayaClosedCallback = 0;
}

void morvaneContext::mayaClosedFunc(void*)
{
    guarded("Cleaning up", [] {
        MMessage::removeCallback(mayaClosedCallback);
        if (queryMelInt("hotkeySet -q -exists \"morvaneTemp\"") != 0)
            runMel("hotkeySet -e -delete \"morvaneTemp\"");
        return MStatus(MS::kSuccess);
    });
}
