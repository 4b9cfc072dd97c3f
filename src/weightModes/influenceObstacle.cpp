#include "weightModes/influenceObstacle.h"

#include "helperFunctions/helperFunctions.h"

#include <maya/MDagPathArray.h>
#include <maya/MFnDependencyNode.h>

namespace {

bool isLocked(const MDagPath& influence)
{
    MStatus status;
    const MPlug lock = MFnDependencyNode(influence.node()).findPlug("lockInfluenceWeights", false, &status);
    return status && lock.asBool();
}

bool normalizes(const MFnSkinCluster& skin)
{
    MStatus status;
    const MPlug normalization = skin.findPlug("normalizeWeights", false, &status);
    return !status || normalization.asInt() != 0;
}

} // namespace

MString influenceObstacle(const MDagPath& edited, const ClickedPoint& point, const MString& name, bool moves)
{
    MStatus status;
    MDagPath shape = point.path;
    const MObject skinCluster = getSkinCluster(shape, status);
    MDoubleArray row;
    unsigned int count = 0;
    const MFnSkinCluster skin(skinCluster);
    if (!status || !skin.getWeights(point.path, point.component, row, count))
        return MString();
    MDagPathArray influences;
    skin.influenceObjects(influences);
    bool anyLocked = false;
    for (unsigned int influence = 0; influence < row.length() && influence < influences.length();
         ++influence) {
        if (!(row[influence] > 0.0) || influences[influence] == edited)
            continue;
        if (!isLocked(influences[influence]))
            return MString();
        anyLocked = true;
    }
    const MString editedName = edited.partialPathName();
    if (anyLocked && normalizes(skin))
        return "Every other influence that has weight on " + name + " is locked: none can make room for " +
               editedName + ".";
    return moves || anyLocked ? MString()
                              : editedName + " has all the weight of " + name +
                                    ": there is no other influence to take from or to give to.";
}
