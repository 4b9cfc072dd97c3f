#include "layers/skinShape.h"

#include <maya/MDagPathArray.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MItGeometry.h>
#include <maya/MObjectArray.h>
#include <maya/MPlugArray.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace layers {

namespace {

const char* const kDataType = "ngst2SkinLayerData";

void require(const MStatus& status, const char* what)
{
    if (!status)
        throw std::runtime_error(what);
}

MObject skinOf(const MDagPath& path)
{
    MObject root = path.node();
    MItDependencyGraph walk(root, MFn::kSkinClusterFilter, MItDependencyGraph::kUpstream,
                            MItDependencyGraph::kDepthFirst, MItDependencyGraph::kNodeLevel);
    for (; !walk.isDone(); walk.next()) {
        MObject skin = walk.currentItem();
        MObjectArray outputs;
        MFnSkinCluster(skin).getOutputGeometry(outputs);
        if (outputs.length() != 0 && outputs[0] == root)
            return skin;
    }
    throw std::runtime_error("it has no skin");
}

/// Counted on the shape that goes into the skin: counting on the skinned one would deform it, at every call.
unsigned int vertexCount(const MObject& skin, const MDagPath& path)
{
    const MFnSkinCluster filter(skin);
    const MObject input = filter.inputShapeAtIndex(filter.indexForOutputShape(path.node()));
    MDagPath before;
    if (input.isNull() || !MDagPath::getAPathTo(input, before))
        throw std::runtime_error("its skin has no input");
    return static_cast<unsigned int>(MItGeometry(before).count());
}

MObject wholeShape(const MDagPath& path, unsigned int count)
{
    MFnSingleIndexedComponent vertices;
    MObject component = vertices.create(path.node().hasFn(MFn::kNurbsCurve) ? MFn::kCurveCVComponent
                                                                            : MFn::kMeshVertComponent);
    vertices.setCompleteData(static_cast<int>(count));
    return component;
}

bool hasDataNode(const MObject& skin)
{
    MPlugArray fed;
    MFnDependencyNode(skin).findPlug("message", false).connectedTo(fed, false, true);
    for (unsigned int plug = 0; plug < fed.length(); ++plug) {
        if (MFnDependencyNode(fed[plug].node()).typeName() == kDataType)
            return true;
    }
    return false;
}

MStringArray dataNodes()
{
    MStringArray names;
    require(MGlobal::executeCommand(MString("ls -type ") + kDataType, names),
            "the layer data cannot be listed");
    return names;
}

/// The name of the data node that a scene file brings.
MString importDataNode()
{
    namespace fs = std::filesystem;
    const fs::path file = fs::temp_directory_path() / ("layerData" + std::to_string(getpid()) + ".ma");
    std::ofstream(file) << "//Maya ASCII 2022 scene\nrequires maya \"2022\";\ncreateNode " << kDataType
                        << " -n \"" << kDataType
                        << "1\";\n\taddAttr -ci true -sn \"skc\" -ln \"skinCluster\" -at \"message\";\n";
    const MStringArray before = dataNodes();
    const MStatus imported = MGlobal::executeCommand(MString("file -i \"") + file.string().c_str() + "\"");
    fs::remove(file);
    require(imported, "the layer data cannot be imported");
    const MStringArray after = dataNodes();
    for (unsigned int name = 0; name < after.length(); ++name) {
        bool isNew = true;
        for (unsigned int known = 0; known < before.length(); ++known)
            isNew = isNew && !(before[known] == after[name]);
        if (isNew)
            return after[name];
    }
    throw std::runtime_error("the layer data was not created");
}

} // namespace

MDagPath shapePath(const MString& fullPath)
{
    const std::string quoted = std::string("\"") + fullPath.asChar() + "\": ";
    MSelectionList list;
    MDagPath path;
    if (!list.add(fullPath) || !list.getDagPath(0, path))
        throw std::runtime_error(quoted + "there is no such object");
    if (path.fullPathName() != fullPath)
        throw std::runtime_error(quoted + "a full path is needed");
    if (!path.node().hasFn(MFn::kMesh) && !path.node().hasFn(MFn::kNurbsCurve))
        throw std::runtime_error(quoted + "it is no shape with vertices");
    return path;
}

SkinShape skinShape(const MDagPath& path)
{
    SkinShape shape;
    shape.path = path;
    shape.skin = skinOf(path);
    shape.vertexCount = vertexCount(shape.skin, path);
    shape.allVertices = wholeShape(path, shape.vertexCount);
    const MFnSkinCluster skin(shape.skin);
    MDagPathArray influences;
    skin.influenceObjects(influences);
    for (unsigned int influence = 0; influence < influences.length(); ++influence)
        shape.logicalIndices.push_back(static_cast<int>(skin.indexForInfluenceObject(influences[influence])));
    return shape;
}

void attachDataNode(const SkinShape& shape)
{
    if (hasDataNode(shape.skin))
        return;
    const MString node = importDataNode();
    require(MGlobal::executeCommand(MString("connectAttr ") + MFnDependencyNode(shape.skin).name() +
                                    ".message " + node + ".skinCluster"),
            "the layer data cannot be connected");
}

} // namespace layers
