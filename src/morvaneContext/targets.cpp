// Which deformer, which attribute and which of its points a mode works on.
#include "helperFunctions/ngLayers.h"
#include "morvaneContext/morvaneContext.h"
#include "report.h"
#include "weightModes/elementPlugStore.h"
#include "weightModes/modeTable.h"

#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnGeometryFilter.h>
#include <maya/MFnSet.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnTripleIndexedComponent.h>
#include <maya/MItGeometry.h>
#include <maya/MTypes.h>

namespace {

/// All points of a shape. Surfaces give none: their points are not sculpted.
MObject allPoints(const MDagPath& path)
{
    MItGeometry iterator(path);
    if (iterator.isDone())
        return MObject();
    const MObject first = iterator.currentItem();
    if (first.hasFn(MFn::kLatticeComponent)) {
        MFnTripleIndexedComponent points;
        MObject component = points.create(MFn::kLatticeComponent);
        for (; !iterator.isDone(); iterator.next()) {
            MIntArray s, t, u;
            MFnTripleIndexedComponent(iterator.currentItem()).getElements(s, t, u);
            if (s.length() == 1)
                points.addElement(s[0], t[0], u[0]);
        }
        return component;
    }
    MFn::Type kind = MFn::kInvalid;
    if (first.hasFn(MFn::kMeshVertComponent))
        kind = MFn::kMeshVertComponent;
    else if (first.hasFn(MFn::kCurveCVComponent))
        kind = MFn::kCurveCVComponent;
    if (kind == MFn::kInvalid)
        return MObject();
    MFnSingleIndexedComponent points;
    MObject component = points.create(kind);
    points.setCompleteData(iterator.count());
    return component;
}

/// The points of one output geometry that the deformer works on, as far as the platform tells; all of them
/// otherwise.
MObject deformedPoints(MFnGeometryFilter& filter, unsigned int geometry, const MDagPath& path)
{
#if MAYA_API_VERSION >= 20220000
    MStatus status;
    MObject component = filter.getComponentAtIndex(geometry, &status);
    if (status && !component.isNull())
        return component;
#else
    static_cast<void>(filter);
    static_cast<void>(geometry);
#endif
    return allPoints(path);
}

/// Members of a deformer without a set: newer releases keep them in component tags.
void getTaggedMembers(MFnGeometryFilter& filter, MSelectionList& members)
{
    MObjectArray shapes;
    filter.getOutputGeometry(shapes);
    for (unsigned int shape = 0; shape < shapes.length(); ++shape) {
        MDagPath path;
        MStatus status;
        const unsigned int geometry = filter.indexForOutputShape(shapes[shape], &status);
        if (!status || !MDagPath::getAPathTo(shapes[shape], path))
            continue;
        const MObject component = deformedPoints(filter, geometry, path);
        if (!component.isNull())
            members.add(path, component, false);
    }
}

/// The node of that name if it is a deformer, null otherwise.
MObject findDeformer(const MString& name)
{
    MSelectionList list;
    MObject node;
    if (name.length() == 0 || !list.add(name) || !list.getDependNode(0, node))
        return MObject();
    return node.hasFn(MFn::kGeometryFilt) ? node : MObject();
}

bool needsDeformer(const ModeRow& row, const MString& name, bool ngEnabled)
{
    switch (row.deformerNeed) {
    case DeformerNeed::kNone:
        return false;
    case DeformerNeed::kIfNamed:
        return name.length() != 0;
    case DeformerNeed::kWithoutLayers:
        return !ngEnabled;
    case DeformerNeed::kNamed:
        break;
    }
    return true;
}

} // namespace

MStatus morvaneContext::checkActiveDeformer(MString deformerName)
{
    // These modes find their data object by object.
    if (!needsDeformer(modeRow(weightMode), deformerName, ngEnabled))
        return MS::kSuccess;
    activeDeformer = MObject();
    MSelectionList list;
    MStatus status = list.add(deformerName);
    if (!status)
        return apiError(status, kContextSource, 201);
    MObject node;
    status = list.getDependNode(0, node);
    if (!status)
        return apiError(status, kContextSource, 205);
    if (!node.hasFn(MFn::kGeometryFilt))
        return MS::kFailure;
    activeDeformer = node;
    return MS::kSuccess;
}

MStatus morvaneContext::checkWeightsPlug(MString plugName)
{
    return resolveWeightsPlug(*this, plugName);
}

void morvaneContext::resolveStoredDeformer()
{
    activeDeformer = findDeformer(deformerStr);
}

TargetNames morvaneContext::targetNames() const
{
    return {deformerStr,  weightsPlugStr, skinInfluenceStr,
            targetString, ngLayerString,  liveDeformer().hasFn(MFn::kBlendShape)};
}

MString morvaneContext::describeEdit(const char* operation) const
{
    const MString target = modeRow(weightMode).target(targetNames());
    const MString text = MString(operation) + " " + weightModeString[weightMode];
    return target.length() == 0 ? text : text + " " + target;
}

void morvaneContext::getMembers()
{
    deformerMembers.clear();
    MFnGeometryFilter filter(liveDeformer());
    MStatus status;
    const MObject set = filter.deformerSet(&status);
    if (status && !set.isNull())
        MFnSet(set).getMembers(deformerMembers, false);
    else
        getTaggedMembers(filter, deformerMembers);
}

// The outputs are the caller's: the fields of a press, or those of a copy.
void morvaneContext::getValidActiveSel(MSelectionList& selectedObjects, std::vector<MFloatArray>& falloffs,
                                       MObjectArray& skinClusters)
{
    MRichSelection rich;
    MSelectionList halves[2];
    MGlobal::getRichSelection(rich, true);
    rich.getSelection(halves[0]);
    rich.getSymmetry(halves[1]);
    const Resolution found = modeRow(weightMode).store().resolve({*this, ngEnabled, targetNames()});
    if (found.reason.always)
        warn(found.reason.text);
    explaining.unresolved = found.reason.text;
    explaining.editsMembers = found.rule == SelectionRule::kMembers;
    if (found.targetIndex >= 0)
        setTargetIndex(found.targetIndex);
    if (found.rule == SelectionRule::kMembers) {
        getMembers();
        for (const MSelectionList& half : halves)
            analyzeSel(half, selectedObjects, falloffs);
    } else if (found.rule == SelectionRule::kSkinned) {
        try {
            for (const MSelectionList& half : halves)
                analyzeSelSkin(half, selectedObjects, falloffs, skinClusters);
        } catch (const LayerListError& failure) {
            // Nothing is edited then: half a selection would be worse than none.
            MGlobal::displayError(failure.what());
            putIntoHelpLine(failure.what());
            selectedObjects.clear();
            falloffs.clear();
            skinClusters.clear();
            clearColumns();
        }
    }
}
