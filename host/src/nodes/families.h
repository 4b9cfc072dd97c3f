#pragma once

namespace host {

class NodeTypeRegistry;

// The node types by family, registered in this order: later ones derive from earlier ones.
void registerBaseTypes(NodeTypeRegistry& registry);       ///< node, dagNode, shape and what lies between
void registerTransformTypes(NodeTypeRegistry& registry);  ///< transform, joint
void registerShapeTypes(NodeTypeRegistry& registry);      ///< mesh, nurbsCurve, nurbsSurface, lattice
void registerCameraTypes(NodeTypeRegistry& registry);     ///< camera, locator, lights as plain shapes
void registerGroupTypes(NodeTypeRegistry& registry);      ///< groupId, groupParts, objectSet, shadingEngine
void registerPolyTypes(NodeTypeRegistry& registry);       ///< polyPlane, polyCube, polySphere, polyCylinder
void registerFilterTypes(NodeTypeRegistry& registry);     ///< geometryFilter, weightGeometryFilter, tweak
void registerClusterTypes(NodeTypeRegistry& registry);    ///< cluster, clusterHandle
void registerSkinTypes(NodeTypeRegistry& registry);       ///< skinCluster, dagPose
void registerBlendShapeTypes(NodeTypeRegistry& registry); ///< blendShape
void registerSoftModTypes(NodeTypeRegistry& registry);    ///< softMod, softModHandle
void registerLatticeDeformerTypes(NodeTypeRegistry& registry); ///< ffd
void registerMaskedOffsetTypes(NodeTypeRegistry& registry);    ///< maskedOffset, a deformer with two maps

} // namespace host
