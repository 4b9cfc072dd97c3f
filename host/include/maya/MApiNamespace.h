#pragma once

/// Declares every class of the interface, for code that only names them.
///
/// The classes live in a namespace that is named after the release, as on the platform, so that libraries
/// built against different releases cannot be mixed up. It is not an inline namespace: using declarations
/// bring the names to the outside. A plug-in therefore includes this header or the class's own, and never
/// declares a class itself: at global scope that would be another class, and an error.
#define MAYA_HOST_NAMESPACE_OPEN                                                                             \
    namespace Autodesk {                                                                                     \
    namespace Maya {                                                                                         \
    namespace OpenMaya20220000 {
#define MAYA_HOST_NAMESPACE_CLOSE                                                                            \
    }                                                                                                        \
    }                                                                                                        \
    }

MAYA_HOST_NAMESPACE_OPEN

class M3dView;
class MArgDatabase;
class MArgList;
class MArgParser;
class MColor;
class MCommandResult;
class MDagPath;
class MDagPathArray;
class MDoubleArray;
class MEvent;
class MFloatArray;
class MFn;
class MFnAttribute;
class MFnBase;
class MFnComponent;
class MFnDependencyNode;
class MFnDoubleIndexedComponent;
class MFnGeometryFilter;
class MFnPlugin;
class MFnSet;
class MFnSingleIndexedComponent;
class MFnSkinCluster;
class MFnTripleIndexedComponent;
class MFnWeightGeometryFilter;
class MGlobal;
class MIntArray;
class MItDependencyGraph;
class MItGeometry;
class MItSelectionList;
class MMatrix;
class MMessage;
class MObject;
class MObjectArray;
class MObjectHandle;
class MPlug;
class MPlugArray;
class MPoint;
class MPointArray;
class MPxCommand;
class MPxContext;
class MPxContextCommand;
class MPxSelectionContext;
class MPxToolCommand;
class MRichSelection;
class MSceneMessage;
class MSelectionList;
class MSpace;
class MStatus;
class MString;
class MStringArray;
class MSyntax;
class MUintArray;
class MVector;
class MWeight;

namespace MHWRender {
class MFrameContext;
class MUIDrawManager;
} // namespace MHWRender

MAYA_HOST_NAMESPACE_CLOSE

using Autodesk::Maya::OpenMaya20220000::M3dView;
using Autodesk::Maya::OpenMaya20220000::MArgDatabase;
using Autodesk::Maya::OpenMaya20220000::MArgList;
using Autodesk::Maya::OpenMaya20220000::MArgParser;
using Autodesk::Maya::OpenMaya20220000::MColor;
using Autodesk::Maya::OpenMaya20220000::MCommandResult;
using Autodesk::Maya::OpenMaya20220000::MDagPath;
using Autodesk::Maya::OpenMaya20220000::MDagPathArray;
using Autodesk::Maya::OpenMaya20220000::MDoubleArray;
using Autodesk::Maya::OpenMaya20220000::MEvent;
using Autodesk::Maya::OpenMaya20220000::MFloatArray;
using Autodesk::Maya::OpenMaya20220000::MFn;
using Autodesk::Maya::OpenMaya20220000::MFnAttribute;
using Autodesk::Maya::OpenMaya20220000::MFnBase;
using Autodesk::Maya::OpenMaya20220000::MFnComponent;
using Autodesk::Maya::OpenMaya20220000::MFnDependencyNode;
using Autodesk::Maya::OpenMaya20220000::MFnDoubleIndexedComponent;
using Autodesk::Maya::OpenMaya20220000::MFnGeometryFilter;
using Autodesk::Maya::OpenMaya20220000::MFnPlugin;
using Autodesk::Maya::OpenMaya20220000::MFnSet;
using Autodesk::Maya::OpenMaya20220000::MFnSingleIndexedComponent;
using Autodesk::Maya::OpenMaya20220000::MFnSkinCluster;
using Autodesk::Maya::OpenMaya20220000::MFnTripleIndexedComponent;
using Autodesk::Maya::OpenMaya20220000::MFnWeightGeometryFilter;
using Autodesk::Maya::OpenMaya20220000::MGlobal;
using Autodesk::Maya::OpenMaya20220000::MIntArray;
using Autodesk::Maya::OpenMaya20220000::MItDependencyGraph;
using Autodesk::Maya::OpenMaya20220000::MItGeometry;
using Autodesk::Maya::OpenMaya20220000::MItSelectionList;
using Autodesk::Maya::OpenMaya20220000::MMatrix;
using Autodesk::Maya::OpenMaya20220000::MMessage;
using Autodesk::Maya::OpenMaya20220000::MObject;
using Autodesk::Maya::OpenMaya20220000::MObjectArray;
using Autodesk::Maya::OpenMaya20220000::MObjectHandle;
using Autodesk::Maya::OpenMaya20220000::MPlug;
using Autodesk::Maya::OpenMaya20220000::MPlugArray;
using Autodesk::Maya::OpenMaya20220000::MPoint;
using Autodesk::Maya::OpenMaya20220000::MPointArray;
using Autodesk::Maya::OpenMaya20220000::MPxCommand;
using Autodesk::Maya::OpenMaya20220000::MPxContext;
using Autodesk::Maya::OpenMaya20220000::MPxContextCommand;
using Autodesk::Maya::OpenMaya20220000::MPxSelectionContext;
using Autodesk::Maya::OpenMaya20220000::MPxToolCommand;
using Autodesk::Maya::OpenMaya20220000::MRichSelection;
using Autodesk::Maya::OpenMaya20220000::MSceneMessage;
using Autodesk::Maya::OpenMaya20220000::MSelectionList;
using Autodesk::Maya::OpenMaya20220000::MSpace;
using Autodesk::Maya::OpenMaya20220000::MStatus;
using Autodesk::Maya::OpenMaya20220000::MString;
using Autodesk::Maya::OpenMaya20220000::MStringArray;
using Autodesk::Maya::OpenMaya20220000::MSyntax;
using Autodesk::Maya::OpenMaya20220000::MUintArray;
using Autodesk::Maya::OpenMaya20220000::MVector;
using Autodesk::Maya::OpenMaya20220000::MWeight;

namespace MHWRender {
using Autodesk::Maya::OpenMaya20220000::MHWRender::MFrameContext;
using Autodesk::Maya::OpenMaya20220000::MHWRender::MUIDrawManager;
} // namespace MHWRender
