// Making a tool command and entering it into the undo queue.
#include "helperFunctions/helperFunctions.h"
#include "morvaneToolCommand/morvaneToolCommand.h"
#include "report.h"

#include <algorithm>
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

/// What redo and undo do not need, or can make again, is not kept: undo queues are long.
void morvaneToolCommand::pack()
{
    if (!selectionChanged) {
        oldSel.clear();
        oldRichSel.clear();
    }
    // The rows hold the edited influence too.
    if (!oldSkinRows.empty())
        oldInfluenceWeights.clear();
    packFalloffs();
}

/// Without soft selection the falloff is 1 everywhere.
void morvaneToolCommand::packFalloffs()
{
    packedFalloffs.assign(softSelectWeights.size(), 0);
    for (std::size_t index = 0; index < softSelectWeights.size(); ++index) {
        const std::vector<float> values = toVector(softSelectWeights[index]);
        if (values.empty() || std::any_of(values.begin(), values.end(),
                                          [&values](float value) { return value != values.front(); }))
            continue;
        packedFalloffs[index] = static_cast<unsigned int>(values.size());
        softSelectWeights[index] = MFloatArray(1, values.front());
    }
}

void morvaneToolCommand::unpackFalloffs()
{
    for (std::size_t index = 0; index < packedFalloffs.size(); ++index) {
        if (packedFalloffs[index] != 0)
            softSelectWeights[index] = MFloatArray(packedFalloffs[index], softSelectWeights[index][0]);
    }
    packedFalloffs.clear();
}

MStatus morvaneToolCommand::finalize()
{
    return guarded("Recording an undo step", [this] {
        pack();
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
