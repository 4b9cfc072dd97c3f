#include "mel.h"

#include "report.h"

#include <maya/MCommandResult.h>
#include <maya/MGlobal.h>

MStatus runMel(const MString& command)
{
    return MGlobal::executeCommand(command, false, false);
}

int queryMelInt(const MString& command)
{
    MCommandResult result;
    int value = 0;
    MGlobal::executeCommand(command, result, false, false);
    result.getResult(value);
    return value;
}

void runMelOnIdle(const MString& command)
{
    MGlobal::executeCommandOnIdle(command, false);
}

void symmetrizeSelection()
{
    MGlobal::executeCommand("if (`symmetricModelling -q -symmetry`){SymmetrizeSelection;}", false, true);
}

UndoChunk::UndoChunk()
    : open(MGlobal::executeCommand("undoInfo -openChunk -chunkName \"morvaneToolCmd\"", false, true))
{}

UndoChunk::~UndoChunk()
{
    // Left open it would swallow everything that is done from here on.
    if (open)
        insist([] { return MGlobal::executeCommand("undoInfo -closeChunk", false, true); });
}
