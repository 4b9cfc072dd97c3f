#include "nodes/registerTypes.h"

#include "nodes/families.h"

namespace host {

void registerNodeTypes(NodeTypeRegistry& registry)
{
    registerBaseTypes(registry);
    registerTransformTypes(registry);
    registerShapeTypes(registry);
    registerCameraTypes(registry);
    registerGroupTypes(registry);
    registerPolyTypes(registry);
    registerFilterTypes(registry);
    registerClusterTypes(registry);
    registerSkinTypes(registry);
    registerBlendShapeTypes(registry);
    registerMaskedOffsetTypes(registry);
    registerSoftModTypes(registry);
    registerLatticeDeformerTypes(registry);
}

} // namespace host
