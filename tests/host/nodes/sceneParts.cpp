#include "sceneParts.h"

namespace testing_support {

using host::DagNode;
using host::Node;

Node& SceneParts::node(const std::string& type, const std::string& name)
{
    return scene.create(*scene.types().find(type), name);
}

DagNode& SceneParts::dag(const std::string& type, const std::string& name, DagNode* parent)
{
    return *scene.create(*scene.types().find(type), name, parent).asDag();
}

DagNode& SceneParts::mesh(const host::Points& points, const std::string& name)
{
    DagNode& shape = dag("mesh", name + "Shape", &dag("transform", name));
    auto data = std::make_shared<host::MeshData>();
    data->pointsRef = std::make_shared<host::Points>(points);
    shape.plug("cachedInMesh").setData(data);
    return shape;
}

void SceneParts::set(Node& node, const std::string& attribute, const Imath::V3d& value)
{
    for (unsigned axis = 0; axis < 3; ++axis)
        node.plugByPath(attribute).child(axis).setNumber(value[static_cast<int>(axis)]);
}

void SceneParts::connect(const std::string& source, const std::string& destination)
{
    scene.connect(scene.plug(source), scene.plug(destination));
}

SceneParts::Deformed SceneParts::deform(DagNode& shape, Node& deformer, unsigned index)
{
    DagNode& original = dag("mesh", shape.name() + "Orig", shape.parent());
    original.plug("intermediateObject").setNumber(1.0);
    original.plug("cachedInMesh").setData(shape.plug("cachedInMesh").data());
    scene.connect(original.plug("worldMesh").element(0),
                  deformer.plug("input").element(index).child("inputGeometry"));
    scene.connect(deformer.plug("outputGeometry").element(index), shape.plug("inMesh"));
    return {shape, original};
}

Node& SceneParts::skin(DagNode& shape, const std::vector<DagNode*>& joints,
                       const std::vector<unsigned>& logical)
{
    Node& skin = node("skinCluster");
    deform(shape, skin);
    skin.plug("geomMatrix").setMatrix(host::worldMatrix(shape));
    for (std::size_t i = 0; i < joints.size(); ++i) {
        skin.plug("bindPreMatrix").element(logical[i]).setMatrix(host::worldMatrix(*joints[i]).inverse());
        scene.connect(joints[i]->plug("worldMatrix").element(0), skin.plug("matrix").element(logical[i]));
    }
    return skin;
}

} // namespace testing_support
