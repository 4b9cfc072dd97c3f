#pragma once

/// Declares every class of the interface, for code that only names them. On the platform the classes live in
/// a versioned namespace, so plug-ins include this header rather than declaring the classes themselves.
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
class MMatrix;
class MMessage;
class MObject;
class MObjectArray;
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
