// After an event that has thrown: what it did is taken back, and the tool waits for the next one.
#include "morvaneContext/morvaneContext.h"
#include "morvaneToolCommand/morvaneToolCommand.h"
#include "report.h"

void morvaneContext::takeBackPress()
{
    restorePressSelection();
    discardCommand();
    clearData();
    // The rest of the drag has nothing to sculpt, and must not select instead.
    contextMode = kSculptMode;
}

void morvaneContext::takeBackDrag()
{
    for (const std::unique_ptr<LiveObject>& live : liveObjects) {
        if (live == nullptr)
            continue;
        insist([&] { return dragCompleted ? live->write(completeOffset) : live->restore(); });
    }
    offsetValue = completeOffset;
    strokeWritten = dragCompleted;
}

void morvaneContext::takeBackRelease()
{
    // A command that has been handed over can be undone: it stands.
    const bool isRecorded = toolCommand == nullptr;
    if (!isRecorded && contextMode == kSculptMode && strokeWritten)
        restorePressWeights();
    if (!isRecorded && contextMode == kSelectMode)
        restorePressSelection();
    discardCommand();
    liveObjects.clear();
    strokeWritten = false;
}

void morvaneContext::restorePressSelection()
{
    if (!pressSelectionKnown)
        return;
    insist([this] { return MGlobal::setActiveSelectionList(pressSelection, MGlobal::kReplaceList); });
}
