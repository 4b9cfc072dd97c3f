#include "graph/node.h"
#include "graph/statusOf.h"
#include "nodes/filterAccess.h"
#include "nodes/filterHandles.h"
#include "nodes/shapeEvaluation.h"
#include "selection/component.h"

#include <maya/MFnGeometryFilter.h>
#include <maya/MObjectArray.h>

using host::Api;

namespace {

using ShapeOf = host::DagNode* (*)(host::Node&, std::uint32_t);

MStatus shapes(const MFnBase& set, ShapeOf shapeOf, MObjectArray& objects)
{
    return host::statusOf([&] {
        host::Node& filter = host::filterOf(set);
        objects.clear();
        for (const std::uint32_t index : host::filterIndices(filter))
            if (const host::DagNode* shape = shapeOf(filter, index))
                objects.append(Api::wrap(shape));
    });
}

MObject shapeAt(const MFnBase& set, ShapeOf shapeOf, unsigned int index, MStatus* status)
{
    return host::answer(status, MObject(), [&] {
        const host::DagNode* shape = shapeOf(host::filterOf(set), index);
        if (!shape)
            throw host::Error("The deformer has no geometry " + std::to_string(index) + ".");
        return Api::wrap(shape);
    });
}

} // namespace

MFnGeometryFilter::MFnGeometryFilter() = default;

MFnGeometryFilter::MFnGeometryFilter(MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFnGeometryFilter::MFnGeometryFilter(const MObject& object, MStatus* status)
{
    host::report(status, setObject(object));
}

MFn::Type MFnGeometryFilter::type() const
{
    return MFn::kGeometryFilt;
}

MStatus MFnGeometryFilter::getInputGeometry(MObjectArray& objects) const
{
    return shapes(*this, host::inputShape, objects);
}

MStatus MFnGeometryFilter::getOutputGeometry(MObjectArray& objects) const
{
    return shapes(*this, host::outputShape, objects);
}

MObject MFnGeometryFilter::inputShapeAtIndex(unsigned int index, MStatus* status) const
{
    return shapeAt(*this, host::inputShape, index, status);
}

MObject MFnGeometryFilter::outputShapeAtIndex(unsigned int index, MStatus* status) const
{
    return shapeAt(*this, host::outputShape, index, status);
}

unsigned int MFnGeometryFilter::indexForOutputShape(const MObject& shape, MStatus* status) const
{
    const auto* node = dynamic_cast<host::DagNode*>(Api::node(shape));
    if (!node || !host::shapeAttributes(*node)) {
        host::report(status, MStatus::kInvalidParameter);
        return 0;
    }
    return host::answer(status, 0u, [&] {
        const auto index = host::filterIndexOf(host::filterOf(*this), *node);
        if (!index)
            throw host::Error("The shape is not deformed by this deformer.");
        return static_cast<unsigned int>(*index);
    });
}

MObject MFnGeometryFilter::deformerSet(MStatus* status) const
{
    return host::answer(status, MObject(), [&] {
        const host::Node* set = host::filterSet(host::filterOf(*this));
        if (!set)
            throw host::Error("The deformer has no set.");
        return Api::wrap(set);
    });
}

MObject MFnGeometryFilter::getComponentAtIndex(unsigned int index, MStatus* status)
{
    return host::answer(status, MObject(), [&] {
        host::Node& filter = host::filterOf(*this);
        host::DagNode* shape = host::outputShape(filter, index);
        if (!shape)
            throw host::Error("The deformer has no geometry " + std::to_string(index) + ".");
        return Api::wrap(host::pointComponent(*shape, host::filterMembers(filter, index)).get());
    });
}
