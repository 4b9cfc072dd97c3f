// Making a tool command and entering it into the undo queue.
#include "morvaneToolCommand/morvaneToolCommand.h"
#include "report.h"

#include <maya/MGlobal.h>

morvaneToolCommand::morvaneToolCommand()
{
    setCommandString("morvaneToolCmd");
}

morvaneToolCommand::~morvaneToolCommand() = default;

void* morvaneToolCommand::creator()
{
    return new morvaneToolCommand;
}

MSyntax morvaneToolCommand::appendSyntax()
{
    return MSyntax();
}

MStatus morvaneToolCommand::doIt(const MArgList&)
{
    return redoIt();
}

MStatus morvaneToolCommand::finalize()
{
    return guarded([this] {
        MArgList journal;
        journal.addArg(commandString());
        return doFinalize(journal);
    });
}

void morvaneToolCommand::setOldRichSel()
{
    MGlobal::getRichSelection(oldRichSel, true);
}

void morvaneToolCommand::setNewRichSel()
{
    MGlobal::getRichSelection(newRichSel, true);
}
