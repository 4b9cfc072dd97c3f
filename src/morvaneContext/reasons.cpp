// Why a press or a drag changes nothing, said once per press where people look: as a warning and in the help
// line.
#include "helperFunctions/helperFunctions.h"
#include "morvaneContext/morvaneContext.h"
#include "report.h"
#include "weightModes/modeTable.h"

#include <maya/MStringArray.h>

namespace {

const char* const helpString =
    "Click and drag vertices to adjust the weightmap. Hold control for more precision.";

/// Points as scripts write them: sheet.vtx[7].
MString componentName(const MDagPath& path, const MObject& component)
{
    MSelectionList list;
    MStringArray names;
    list.add(path, component, false);
    list.getSelectionStrings(names);
    if (names.length() == 0)
        return shapeName(path);
    const int dot = names[0].index('.');
    return dot < 0 ? names[0]
                   : shapeName(path) + names[0].substring(dot, static_cast<int>(names[0].length()) - 1);
}

} // namespace

MString verticesWanted(const MDagPath& path, const MObject& component)
{
    return "Vertices are wanted: edges and faces such as " + componentName(path, component) +
           " cannot be sculpted.";
}

void morvaneContext::showHelp()
{
    setHelpString(helpString);
    helpShowsReason = false;
}

void morvaneContext::startExplaining()
{
    explaining = Explaining();
    if (helpShowsReason)
        showHelp();
}

void morvaneContext::warn(const MString& reason)
{
    MGlobal::displayWarning(reason);
    putIntoHelpLine(reason);
}

/// Also notes that this press has said why.
void morvaneContext::putIntoHelpLine(const MString& reason)
{
    explaining.said = true;
    if (!isCurrent)
        return;
    setHelpString(reason);
    helpShowsReason = true;
}

void morvaneContext::sayWhy()
{
    if (!explaining.said && explaining.pending.length() != 0)
        warn(explaining.pending);
}

/// A copy or a paste that leaves part of the selection alone.
void morvaneContext::warnOfWrongComponents()
{
    if (explaining.wrongComponents.length() != 0)
        warn(explaining.wrongComponents);
}

/// What the platform's own texts lack: which name it was.
MString morvaneContext::whyNoDeformer() const
{
    if (modeRow(weightMode).isLayerMode)
        return kNoLayers;
    if (deformerStr.length() == 0)
        return kNoDeformer;
    MSelectionList list;
    if (!list.add(deformerStr))
        return "There is no deformer named " + deformerStr + " in the scene.";
    return deformerStr + " is not a deformer.";
}

/// Why a press on a point found nothing to edit.
MString morvaneContext::whyNothingToEdit() const
{
    if (explaining.unresolved.length() != 0)
        return explaining.unresolved;
    if (explaining.skipped.length() != 0)
        return explaining.skipped;
    if (clickComponent.hasFn(MFn::kSurfaceCVComponent))
        return "Points of NURBS surfaces cannot be sculpted.";
    return explaining.editsMembers ? whyNoMember() : MString("Nothing that can be sculpted is selected.");
}

MString morvaneContext::whyNoMember() const
{
    const MString deformer = nodeName(liveDeformer());
    if (selectionListIndexOf(deformerMembers, clickDagPath) < 0)
        return deformer + " does not deform " + shapeName(clickDagPath) + ".";
    return componentName(clickDagPath, clickComponent) + " is not a member of " + deformer + ".";
}

/// Why a drag that follows this press will not do what people mean; empty when it will.
MString morvaneContext::whatHinders() const
{
    const bool moves = explaining.probed && directionVector.length() >= kNoLength;
    if (moves)
        return obstacle(moves);
    if (explaining.skipped.length() != 0)
        return explaining.skipped;
    if (explaining.editsMembers && !validSel.hasItem(clickDagPath, clickComponent))
        return whyNoMember();
    const MString point = componentName(clickDagPath, clickComponent);
    if (!explaining.probed)
        return "The weight of " + point + " cannot be changed: it is locked or connected.";
    const MString special = obstacle(moves);
    if (special.length() != 0)
        return special;
    return point + " does not move with " + hudDisplayString +
           " in this pose. Pose it, or turn the deformer on, so that the weight shows.";
}

MString morvaneContext::obstacle(bool moves) const
{
    const ClickedPoint point = {clickDagPath, clickComponent, 0};
    return modeRow(weightMode)
        .store()
        .obstacle(*this, point, componentName(clickDagPath, clickComponent), moves);
}
