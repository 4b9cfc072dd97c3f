#include "nodes/attributeSpecs.h"
#include "nodes/families.h"

#include "graph/node.h"
#include "nodes/falloffRamp.h"
#include "nodes/handleMotion.h"
#include "nodes/transformMatrix.h"
#include "nodes/weightedMembers.h"
#include "types/error.h"

namespace host {

namespace {

void computeSoftModHandle(Node& node, const Attribute& output)
{
    if (output.longName != "softModTransforms")
        return computeDagMatrices(node, output);
    computeHandleMatrices(node, Plug(&node, &output));
}

/// How much of the motion reaches a place, by its distance from the centre in world space.
class Falloff {
public:
    explicit Falloff(Node& node)
        : curve(node.plug("falloffCurve")), radius(node.plug("falloffRadius").number())
    {
        if (node.plug("falloffMode").number() != 0.0)
            throw Error("'" + node.uniqueName() + ".falloffMode': only volume is computed.");
        const char* const axes[] = {"falloffInX", "falloffInY", "falloffInZ"};
        for (int axis = 0; axis < 3; ++axis) {
            centre[axis] = node.plug("falloffCenter").child(static_cast<unsigned>(axis)).number();
            used[axis] = node.plug(axes[axis]).number() != 0.0 ? 1.0 : 0.0;
        }
    }

    double at(const Imath::V3d& place) const
    {
        const double distance = ((place - centre) * used).length();
        if (distance >= radius)
            return curve.at(1.0);
        return curve.at(distance / radius);
    }

private:
    FalloffRamp curve;
    double radius;
    Imath::V3d centre;
    Imath::V3d used; ///< 1 per axis that counts
};

/// A point of weight w at a place with falloff f ends at p + envelope * w * f * (p * motion - p).
void deformBySoftMod(Node& node, FilterInput& input)
{
    const GeometryFrame frame(node.plug("geomMatrix").element(input.index).matrix());
    const Imath::M44d motion = frame.to * handleMotion(node, node.plug("softModXforms")) * frame.from;
    const Falloff falloff(node);
    moveMembers(node, input, [&](Imath::V3d& point, double share) {
        const double reach = falloff.at(transformed(point, frame.to));
        point += share * reach * (transformed(point, motion) - point);
    });
}

void computeSoftMod(Node& node, const Attribute& output)
{
    computeFilter(node, output, deformBySoftMod);
}

AttributeSpec falloffCurve()
{
    return compoundAttribute("falloffCurve", "fcurve")
        .add(floatAttribute("falloffCurve_Position", "fcurvep"))
        .add(floatAttribute("falloffCurve_FloatValue", "fcurvefv"))
        .add(shortAttribute("falloffCurve_Interp", "fcurvei"))
        .array();
}

} // namespace

void registerSoftModTypes(NodeTypeRegistry& registry)
{
    NodeType& handle = registry.add("softModHandle", "shape");
    handle.apiType = MFn::kSoftMod;
    handle.add(handleMatrices("softModTransforms", "x").output());
    handle.add(tripleAttribute("origin", "or", AttributeType::kDistance));
    handle.add(messageAttribute("weightedNode", "wn"));
    handle.affect("worldMatrix", "softModTransforms");
    handle.compute = computeSoftModHandle;

    NodeType& type = registry.add("softMod", "weightGeometryFilter");
    type.apiType = MFn::kSoftModFilter;
    type.add(flagAttribute("relative", "rel"));
    type.add(matrixAttribute("bindPreMatrix", "pm"));
    type.add(matrixAttribute("geomMatrix", "gm").array());
    type.add(matrixAttribute("matrix", "ma"));
    type.add(handleMatrices("softModXforms", "x"));
    type.add(flagAttribute("bindState", "bs"));
    type.add(doubleAttribute("falloffRadius", "fr", 5.0).keyable());
    type.add(falloffCurve());
    type.add(tripleAttribute("falloffCenter", "fc", AttributeType::kDistance));
    type.add(flagAttribute("falloffInX", "fx", true));
    type.add(flagAttribute("falloffInY", "fy", true));
    type.add(flagAttribute("falloffInZ", "fz", true));
    type.add(shortAttribute("falloffMode", "fom"));
    type.affectAll({"relative", "bindPreMatrix", "geomMatrix", "matrix", "softModXforms", "falloffRadius",
                    "falloffCurve", "falloffCenter", "falloffInX", "falloffInY", "falloffInZ", "falloffMode"},
                   {"outputGeometry"});
    type.compute = computeSoftMod;
}

} // namespace host
