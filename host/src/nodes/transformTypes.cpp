#include "nodes/attributeSpecs.h"
#include "nodes/families.h"

#include <string>
#include <vector>

namespace host {

namespace {

AttributeSpec shear()
{
    return compoundAttribute("shear", "sh")
        .data("double3")
        .add(doubleAttribute("shearXY", "shxy"))
        .add(doubleAttribute("shearXZ", "shxz"))
        .add(doubleAttribute("shearYZ", "shyz"));
}

AttributeSpec keyableTriple(const char* longName, const char* shortName, AttributeType type, double value)
{
    return AttributeSpec(longName, shortName, AttributeType::kCompound).keyable().triple(type, value);
}

/// Limits of translation, rotation and scale and their switches; kept, the stand-in does not clamp.
void addLimits(NodeType& type)
{
    struct Limit {
        const char* name;
        const char* shortName;
        AttributeType type;
        double value;
    };
    const Limit limits[] = {{"minTransLimit", "mntl", AttributeType::kDistance, -1.0},
                            {"maxTransLimit", "mxtl", AttributeType::kDistance, 1.0},
                            {"minRotLimit", "mnrl", AttributeType::kAngle, -45.0},
                            {"maxRotLimit", "mxrl", AttributeType::kAngle, 45.0},
                            {"minScaleLimit", "mnsl", AttributeType::kDouble, -1.0},
                            {"maxScaleLimit", "mxsl", AttributeType::kDouble, 1.0}};
    for (const Limit& limit : limits) {
        type.add(tripleAttribute(limit.name, limit.shortName, limit.type, limit.value));
        AttributeSpec enable(std::string(limit.name) + "Enable", std::string(limit.shortName) + "e",
                             AttributeType::kCompound);
        for (const char* axis : {"X", "Y", "Z"}) {
            const char lower = static_cast<char>(axis[0] - 'A' + 'a');
            enable.add(AttributeSpec(std::string(limit.name) + axis + "Enable",
                                     std::string(limit.shortName).substr(0, 3) + lower + "e",
                                     AttributeType::kBool));
        }
        type.add(std::move(enable));
    }
}

void addTransform(NodeTypeRegistry& registry)
{
    NodeType& type = registry.add("transform", "dagNode");
    type.apiType = MFn::kTransform;
    type.add(keyableTriple("translate", "t", AttributeType::kDistance, 0.0));
    type.add(keyableTriple("rotate", "r", AttributeType::kAngle, 0.0));
    type.add(AttributeSpec("rotateOrder", "ro")
                 .enumeration({{"xyz", 0}, {"yzx", 1}, {"zxy", 2}, {"xzy", 3}, {"yxz", 4}, {"zyx", 5}}));
    type.add(keyableTriple("scale", "s", AttributeType::kDouble, 1.0));
    type.add(shear());
    const char* pivots[][2] = {{"rotatePivot", "rp"},
                               {"rotatePivotTranslate", "rpt"},
                               {"scalePivot", "sp"},
                               {"scalePivotTranslate", "spt"}};
    for (const auto& pivot : pivots)
        type.add(tripleAttribute(pivot[0], pivot[1], AttributeType::kDistance));
    type.add(tripleAttribute("rotateAxis", "ra", AttributeType::kAngle));
    type.add(matrixAttribute("xformMatrix", "xm").output());
    type.add(flagAttribute("inheritsTransform", "it", true));
    addLimits(type);
    type.add(flagAttribute("displayHandle", "dh"));
    type.add(tripleAttribute("selectHandle", "hdl", AttributeType::kDistance));
    type.add(flagAttribute("displayRotatePivot", "drp"));
    type.add(flagAttribute("displayScalePivot", "dsp"));
    type.add(flagAttribute("displayLocalAxis", "dla"));
    type.affectAll({"translate", "rotate", "rotateOrder", "scale", "shear", "rotatePivot",
                    "rotatePivotTranslate", "scalePivot", "scalePivotTranslate", "rotateAxis"},
                   {"matrix", "inverseMatrix", "xformMatrix", "worldMatrix", "worldInverseMatrix"});
    type.affectAll({"inheritsTransform", "offsetParentMatrix"}, {"worldMatrix", "worldInverseMatrix"});
}

void addJoint(NodeTypeRegistry& registry)
{
    NodeType& type = registry.add("joint", "transform");
    type.apiType = MFn::kJoint;
    type.add(tripleAttribute("jointOrient", "jo", AttributeType::kAngle));
    type.add(flagAttribute("segmentScaleCompensate", "ssc", true));
    type.add(tripleAttribute("inverseScale", "is", AttributeType::kDouble, 1.0));
    type.add(matrixAttribute("bindPose", "bps"));
    type.add(floatAttribute("radius", "radi", 1.0));
    type.add(AttributeSpec("drawStyle", "ds")
                 .enumeration({{"Bone", 0}, {"Multi-child as Box", 1}, {"None", 2}, {"Joint", 3}}));
    type.add(
        AttributeSpec("side", "sd").enumeration({{"Center", 0}, {"Left", 1}, {"Right", 2}, {"None", 3}}));
    type.add(AttributeSpec("type", "typ", AttributeType::kEnum));
    type.add(textAttribute("otherType", "oty"));
    type.add(flagAttribute("drawLabel", "dl"));
    type.add(tripleAttribute("preferredAngle", "pa", AttributeType::kAngle));
    type.add(tripleAttribute("stiffness", "st", AttributeType::kFloat));
    type.affectAll({"jointOrient", "segmentScaleCompensate", "inverseScale"},
                   {"matrix", "inverseMatrix", "xformMatrix", "worldMatrix", "worldInverseMatrix"});
}

} // namespace

void registerTransformTypes(NodeTypeRegistry& registry)
{
    addTransform(registry);
    addJoint(registry);
}

} // namespace host
