// Making a tool command and entering it into the undo queue.
#include "morvaneToolCommand/morvaneToolCommand.h"
#include "report.h"

#include <maya/MGlobal.h>

namespace {

const char* const kName = "morvaneToolCmd";

} // namespace

morvaneToolCommand::morvaneToolCommand()
{
    setCommandString(kName);
}

morvaneToolCommand::~morvaneToolCommand() = default;

void* morvaneToolCommand::creator()
{
    morvaneToolCommand* command = nullptr;
    guarded("Making an undo step", [&command] {
        command = new morvaneToolCommand;
        return MStatus(MS::kSuccess);
    });
    return command;
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
    return guarded("Recording an undo step", [this] {
        MArgList journal;
        journal.addArg(MString(kName));
        return doFinalize(journal);
    });
}

void morvaneToolCommand::describe(const MString& edit)
{
    setCommandString(MString(kName) + " " + edit);
}

void morvaneToolCommand::empty()
{
    static_cast<EditRecord&>(*this) = EditRecord();
    static_cast<PasteRecord&>(*this) = PasteRecord();
    oldSel.clear();
    newSel.clear();
    oldRichSel.clear();
    newRichSel.clear();
}

void morvaneToolCommand::setOldRichSel()
{
    MGlobal::getRichSelection(oldRichSel, true);
}

void morvaneToolCommand::setNewRichSel()
{
    MGlobal::getRichSelection(newRichSel, true);
}
