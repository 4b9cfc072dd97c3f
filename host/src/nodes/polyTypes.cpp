#include "nodes/attributeSpecs.h"
#include "nodes/families.h"

#include "graph/node.h"
#include "nodes/primitives.h"

#include <ImathMatrixAlgo.h>
#include <ImathQuat.h>

#include <algorithm>

namespace host {

namespace {

using Build = std::shared_ptr<MeshData> (*)(Node&);

double size(Node& node, const char* name)
{
    return node.plug(name).number();
}

int divisions(Node& node, const char* name, int least = 1)
{
    return std::max(least, static_cast<int>(node.plug(name).number()));
}

/// Primitives are built around the y axis and turned the shortest way to the one asked for.
void turn(Node& node, MeshData& mesh)
{
    const Plug plug = node.plug("axis");
    const Imath::V3d axis(plug.child(0).number(), plug.child(1).number(), plug.child(2).number());
    const Imath::V3d up(0.0, 1.0, 0.0);
    if (axis.length2() == 0.0 || (axis.x == 0.0 && axis.z == 0.0 && axis.y > 0.0))
        return;
    const Imath::M44d rotation = Imath::rotationMatrix(up, axis.normalized());
    auto points = std::make_shared<Points>(mesh.points());
    for (Imath::V3d& point : *points)
        point = point * rotation;
    mesh.pointsRef = std::move(points);
}

template <Build build>
void computePrimitive(Node& node, const Attribute& output)
{
    const std::shared_ptr<MeshData> mesh = build(node);
    turn(node, *mesh);
    node.storeData(Plug(&node, &output), mesh);
}

std::shared_ptr<MeshData> buildPlane(Node& node)
{
    return planeMesh(size(node, "width"), size(node, "height"), divisions(node, "subdivisionsWidth"),
                     divisions(node, "subdivisionsHeight"));
}

std::shared_ptr<MeshData> buildCube(Node& node)
{
    return cubeMesh({size(node, "width"), size(node, "height"), size(node, "depth")},
                    divisions(node, "subdivisionsWidth"), divisions(node, "subdivisionsHeight"),
                    divisions(node, "subdivisionsDepth"));
}

std::shared_ptr<MeshData> buildSphere(Node& node)
{
    return sphereMesh(size(node, "radius"), divisions(node, "subdivisionsAxis", 3),
                      divisions(node, "subdivisionsHeight", 2));
}

std::shared_ptr<MeshData> buildCylinder(Node& node)
{
    return cylinderMesh(size(node, "radius"), size(node, "height"), divisions(node, "subdivisionsAxis", 3),
                        divisions(node, "subdivisionsHeight"), divisions(node, "subdivisionsCaps", 0));
}

struct Parameter {
    const char* name;
    const char* shortName;
    double value;
    bool whole; ///< a number of subdivisions
};

template <Build build>
void addPrimitive(NodeTypeRegistry& registry, const char* name, MFn::Type apiType,
                  const std::vector<Parameter>& parameters)
{
    NodeType& type = registry.add(name, "node");
    type.apiType = apiType;
    type.add(AttributeSpec("axis", "ax", AttributeType::kCompound)
                 .add(doubleAttribute("axisX", "axx"))
                 .add(doubleAttribute("axisY", "axy", 1.0))
                 .add(doubleAttribute("axisZ", "axz")));
    for (const Parameter& parameter : parameters)
        type.add(parameter.whole ? longAttribute(parameter.name, parameter.shortName, parameter.value)
                                 : doubleAttribute(parameter.name, parameter.shortName, parameter.value));
    type.add(shortAttribute("createUVs", "cuv", 2.0));
    type.add(dataAttribute("output", "out", "mesh").output());
    type.affect("axis", "output");
    for (const Parameter& parameter : parameters)
        type.affect(parameter.name, "output");
    type.compute = computePrimitive<build>;
}

} // namespace

void registerPolyTypes(NodeTypeRegistry& registry)
{
    addPrimitive<buildPlane>(registry, "polyPlane", MFn::kDependencyNode,
                             {{"width", "w", 1.0, false},
                              {"height", "h", 1.0, false},
                              {"subdivisionsWidth", "sw", 10.0, true},
                              {"subdivisionsHeight", "sh", 10.0, true}});
    addPrimitive<buildCube>(registry, "polyCube", MFn::kPolyCube,
                            {{"width", "w", 1.0, false},
                             {"height", "h", 1.0, false},
                             {"depth", "d", 1.0, false},
                             {"subdivisionsWidth", "sw", 1.0, true},
                             {"subdivisionsHeight", "sh", 1.0, true},
                             {"subdivisionsDepth", "sd", 1.0, true}});
    addPrimitive<buildSphere>(registry, "polySphere", MFn::kPolySphere,
                              {{"radius", "r", 1.0, false},
                               {"subdivisionsAxis", "sa", 20.0, true},
                               {"subdivisionsHeight", "sh", 20.0, true}});
    addPrimitive<buildCylinder>(registry, "polyCylinder", MFn::kPolyCylinder,
                                {{"radius", "r", 1.0, false},
                                 {"height", "h", 2.0, false},
                                 {"subdivisionsAxis", "sa", 20.0, true},
                                 {"subdivisionsHeight", "sh", 1.0, true},
                                 {"subdivisionsCaps", "sc", 1.0, true}});
}

} // namespace host
