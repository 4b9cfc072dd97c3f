#include "nodes/handleMotion.h"

#include "graph/node.h"
#include "nodes/attributeSpecs.h"

namespace host {

AttributeSpec handleMatrices(const char* longName, const char* shortName)
{
    return compoundAttribute(longName, shortName)
        .add(matrixAttribute("preMatrix", "pre"))
        .add(matrixAttribute("weightedMatrix", "wt"))
        .add(matrixAttribute("postMatrix", "post"));
}

void computeHandleMatrices(Node& handle, const Plug& transforms)
{
    DagNode* transform = handle.asDag() ? handle.asDag()->parent() : nullptr;
    if (!transform)
        return;
    // Read so that it is up to date: only then does a change above reach what is computed here.
    handle.plug("worldMatrix").element(0).matrix();
    handle.storeMatrix(transforms.child(0), transform->plug("parentInverseMatrix").element(0).matrix());
    handle.storeMatrix(transforms.child(1),
                       transform->plug("matrix").matrix() * transform->plug("offsetParentMatrix").matrix());
    handle.storeMatrix(transforms.child(2), transform->plug("parentMatrix").element(0).matrix());
}

Imath::M44d handleMotion(Node& deformer, const Plug& transforms)
{
    const Imath::M44d bindPre = deformer.plug("bindPreMatrix").matrix();
    if (deformer.plug("relative").number() == 0.0 || !transforms.isDestination())
        return bindPre * deformer.plug("matrix").matrix();
    return transforms.child(0).matrix() * bindPre * transforms.child(1).matrix() *
           transforms.child(2).matrix();
}

} // namespace host
