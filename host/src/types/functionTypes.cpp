#include "types/functionTypes.h"

namespace host {

namespace {

struct NamedType {
    MFn::Type type;
    const char* name;
};

constexpr NamedType kNames[] = {
    {MFn::kInvalid, "kInvalid"},
    {MFn::kBase, "kBase"},
    {MFn::kDependencyNode, "kDependencyNode"},
    {MFn::kDagNode, "kDagNode"},
    {MFn::kTransform, "kTransform"},
    {MFn::kCurveVarGroup, "kCurveVarGroup"},
    {MFn::kSurfaceVarGroup, "kSurfaceVarGroup"},
    {MFn::kJoint, "kJoint"},
    {MFn::kWorld, "kWorld"},
    {MFn::kShape, "kShape"},
    {MFn::kCamera, "kCamera"},
    {MFn::kCluster, "kCluster"},
    {MFn::kSoftMod, "kSoftMod"},
    {MFn::kGeometric, "kGeometric"},
    {MFn::kNurbsCurve, "kNurbsCurve"},
    {MFn::kLattice, "kLattice"},
    {MFn::kNurbsSurface, "kNurbsSurface"},
    {MFn::kMesh, "kMesh"},
    {MFn::kUnknownDag, "kUnknownDag"},
    {MFn::kShadingEngine, "kShadingEngine"},
    {MFn::kGeometryFilt, "kGeometryFilt"},
    {MFn::kBlendShape, "kBlendShape"},
    {MFn::kFFD, "kFFD"},
    {MFn::kSculpt, "kSculpt"},
    {MFn::kTweak, "kTweak"},
    {MFn::kWeightGeometryFilt, "kWeightGeometryFilt"},
    {MFn::kClusterFilter, "kClusterFilter"},
    {MFn::kSoftModFilter, "kSoftModFilter"},
    {MFn::kDeltaMush, "kDeltaMush"},
    {MFn::kWire, "kWire"},
    {MFn::kGroupId, "kGroupId"},
    {MFn::kGroupParts, "kGroupParts"},
    {MFn::kPolyCube, "kPolyCube"},
    {MFn::kPolyCylinder, "kPolyCylinder"},
    {MFn::kPolySphere, "kPolySphere"},
    {MFn::kPartition, "kPartition"},
    {MFn::kPluginDependNode, "kPluginDependNode"},
    {MFn::kSet, "kSet"},
    {MFn::kUnknown, "kUnknown"},
    {MFn::kComponent, "kComponent"},
    {MFn::kCurveCVComponent, "kCurveCVComponent"},
    {MFn::kCurveEPComponent, "kCurveEPComponent"},
    {MFn::kSurfaceCVComponent, "kSurfaceCVComponent"},
    {MFn::kLatticeComponent, "kLatticeComponent"},
    {MFn::kMeshComponent, "kMeshComponent"},
    {MFn::kMeshEdgeComponent, "kMeshEdgeComponent"},
    {MFn::kMeshPolygonComponent, "kMeshPolygonComponent"},
    {MFn::kMeshVertComponent, "kMeshVertComponent"},
    {MFn::kSelectionItem, "kSelectionItem"},
    {MFn::kAttribute, "kAttribute"},
    {MFn::kNumericAttribute, "kNumericAttribute"},
    {MFn::kEnumAttribute, "kEnumAttribute"},
    {MFn::kTypedAttribute, "kTypedAttribute"},
    {MFn::kCompoundAttribute, "kCompoundAttribute"},
    {MFn::kMatrixAttribute, "kMatrixAttribute"},
    {MFn::kMessageAttribute, "kMessageAttribute"},
    {MFn::kPlugin, "kPlugin"},
    {MFn::kData, "kData"},
    {MFn::kMeshData, "kMeshData"},
    {MFn::kNonLinear, "kNonLinear"},
    {MFn::kSelectionListData, "kSelectionListData"},
    {MFn::kSkinClusterFilter, "kSkinClusterFilter"},
    {MFn::kDagPose, "kDagPose"},
    {MFn::kSingleIndexedComponent, "kSingleIndexedComponent"},
    {MFn::kDoubleIndexedComponent, "kDoubleIndexedComponent"},
    {MFn::kTripleIndexedComponent, "kTripleIndexedComponent"},
};

} // namespace

const char* functionTypeName(MFn::Type type)
{
    for (const NamedType& named : kNames) {
        if (named.type == type)
            return named.name;
    }
    return "kInvalid";
}

} // namespace host
