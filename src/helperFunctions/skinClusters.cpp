#include "helperFunctions/helperFunctions.h"

#include "report.h"

#include <maya/MDagPathArray.h>
#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnGeometryFilter.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MObjectArray.h>
#include <maya/MStringArray.h>

MObject getSkinCluster(MDagPath& shape, MStatus& status)
{
    status = MS::kFailure;
    MObject root = shape.node();
    MItDependencyGraph walk(root, MFn::kSkinClusterFilter, MItDependencyGraph::kUpstream,
                            MItDependencyGraph::kDepthFirst, MItDependencyGraph::kNodeLevel);
    for (; !walk.isDone(); walk.next()) {
        MObject skinCluster = walk.currentItem();
        MObjectArray outputs;
        MFnGeometryFilter(skinCluster).getOutputGeometry(outputs);
        if (outputs.length() == 0)
            return MObject();
        if (outputs[0] == root) {
            status = MS::kSuccess;
            return skinCluster;
        }
    }
    return MObject();
}

int convertTargetToIndex(MObject blendShape, MString targetName)
{
    MStringArray aliases;
    MFnDependencyNode node(blendShape);
    if (!node.getAliasList(aliases))
        return -1;
    for (unsigned int entry = 0; entry + 1 < aliases.length(); ++entry) {
        if (!(aliases[entry] == targetName))
            continue;
        const MString attribute = aliases[entry + 1];
        const int open = attribute.index('[');
        const int close = attribute.rindex(']');
        if (open < 0 || close <= open + 1)
            return -1;
        return attribute.substring(open + 1, close - 1).asInt();
    }
    return -1;
}

unsigned int getPhysicalIndex(const MObject& skinCluster, const MDagPath& influence)
{
    MDagPathArray influences;
    const unsigned int count = MFnSkinCluster(skinCluster).influenceObjects(influences);
    for (unsigned int physical = 0; physical < count; ++physical) {
        if (influences[physical] == influence)
            return physical;
    }
    return kNotFound;
}

int selectionListIndexOf(const MSelectionList& list, const MDagPath& path)
{
    const MObject node = path.node();
    for (unsigned int item = 0; item < list.length(); ++item) {
        MDagPath itemPath;
        MObject component;
        if (list.getDagPath(item, itemPath, component) && itemPath.node() == node)
            return static_cast<int>(item);
    }
    return -1;
}

MIntArray getAllLogicalIndices(const MObject& skinCluster)
{
    const MFnSkinCluster skin(skinCluster);
    MDagPathArray influences;
    const unsigned int count = skin.influenceObjects(influences);
    MIntArray logical;
    for (unsigned int physical = 0; physical < count; ++physical) {
        MStatus status;
        logical.append(static_cast<int>(skin.indexForInfluenceObject(influences[physical], &status)));
        require(status, "an influence does not tell its index");
    }
    return logical;
}

MIntArray allPhysicalIndices(const MFnSkinCluster& skin)
{
    MDagPathArray influences;
    const unsigned int count = skin.influenceObjects(influences);
    MIntArray physical(count);
    for (unsigned int index = 0; index < count; ++index)
        physical[index] = static_cast<int>(index);
    return physical;
}

MString shapeName(const MDagPath& shape)
{
    MDagPath transform(shape);
    if (transform.length() > 1)
        transform.pop();
    return transform.partialPathName();
}

MString nodeName(const MObject& node)
{
    return MFnDependencyNode(node).name();
}
