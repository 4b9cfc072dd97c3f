#pragma once

#include <maya/MTypes.h>

MAYA_HOST_NAMESPACE_OPEN

/// What a handle can be used as. The numbers change from release to release of the platform: code uses the
/// names only. An object supports its own type and the types that it inherits from.
class MFn {
public:
    MFn() = delete;
    enum Type : int {
        kInvalid = 0,
        kBase = 1,
        kDependencyNode = 4,
        kDagNode = 107,
        kTransform = 110,
        kCurveVarGroup = 116,
        kSurfaceVarGroup = 118,
        kJoint = 121,
        kWorld = 247,
        kShape = 248,
        kCamera = 250,
        kCluster = 251,
        kSoftMod = 252,
        kGeometric = 265,
        kNurbsCurve = 267,
        kLattice = 279,
        kNurbsSurface = 294,
        kMesh = 296,
        kUnknownDag = 316,
        kShadingEngine = 320,
        kGeometryFilt = 334,
        kBlendShape = 336,
        kFFD = 339,
        kSculpt = 342,
        kTweak = 345,
        kWeightGeometryFilt = 346,
        kClusterFilter = 347,
        kSoftModFilter = 348,
        kDeltaMush = 350,
        kWire = 355,
        kGroupId = 356,
        kGroupParts = 357,
        kPolyCube = 438,
        kPolyCylinder = 439,
        kPolySphere = 441,
        kPartition = 456,
        kPluginDependNode = 459,
        kSet = 471,
        kUnknown = 532,
        kComponent = 535,
        kCurveCVComponent = 536,
        kCurveEPComponent = 537,
        kSurfaceCVComponent = 542,
        kLatticeComponent = 546,
        kMeshComponent = 550,
        kMeshEdgeComponent = 551,
        kMeshPolygonComponent = 552,
        kMeshVertComponent = 554,
        kSelectionItem = 561,
        kAttribute = 565,
        kNumericAttribute = 566,
        kEnumAttribute = 572,
        kTypedAttribute = 574,
        kCompoundAttribute = 575,
        kMatrixAttribute = 578,
        kMessageAttribute = 580,
        kPlugin = 581,
        kData = 582,
        kMeshData = 589,
        kNonLinear = 623,
        kSelectionListData = 675,
        kSkinClusterFilter = 686,
        kDagPose = 690,
        kSingleIndexedComponent = 713,
        kDoubleIndexedComponent = 714,
        kTripleIndexedComponent = 715,
    };
};

MAYA_HOST_NAMESPACE_CLOSE
