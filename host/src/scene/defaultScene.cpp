#include "scene/defaultScene.h"

#include "graph/graph.h"
#include "scene/maText.h"

#include <string>
#include <vector>

namespace host {

namespace {

struct DefaultNode {
    const char* name;
    const char* type;
};

// Files name these with a leading colon and never make them.
constexpr DefaultNode kNodes[] = {{"time1", "time"},
                                  {"sequenceManager1", "sequenceManager"},
                                  {"hardwareRenderingGlobals", "hardwareRenderingGlobals"},
                                  {"renderPartition", "partition"},
                                  {"characterPartition", "partition"},
                                  {"renderGlobalsList1", "renderGlobalsList"},
                                  {"defaultLightList1", "lightList"},
                                  {"lightList1", "lightList"},
                                  {"defaultShaderList1", "defaultShaderList"},
                                  {"postProcessList1", "postProcessList"},
                                  {"defaultRenderUtilityList1", "defaultRenderUtilityList"},
                                  {"defaultTextureList1", "defaultTextureList"},
                                  {"defaultRenderingList1", "defaultRenderingList"},
                                  {"lambert1", "lambert"},
                                  {"standardSurface1", "standardSurface"},
                                  {"openPBR_shader1", "openPBRSurface"},
                                  {"particleCloud1", "particleCloud"},
                                  {"shaderGlow1", "shaderGlow"},
                                  {"initialShadingGroup", "shadingEngine"},
                                  {"initialParticleSE", "shadingEngine"},
                                  {"initialMaterialInfo", "materialInfo"},
                                  {"defaultRenderGlobals", "renderGlobals"},
                                  {"defaultRenderQuality", "renderQuality"},
                                  {"defaultResolution", "resolution"},
                                  {"defaultLightSet", "objectSet"},
                                  {"defaultObjectSet", "objectSet"},
                                  {"defaultViewColorManager", "viewColorManager"},
                                  {"defaultColorMgtGlobals", "colorManagementGlobals"},
                                  {"hardwareRenderGlobals", "hardwareRenderGlobals"},
                                  {"defaultHardwareRenderGlobals", "hwRenderGlobals"},
                                  {"ikSystem", "ikSystem"},
                                  {"hyperGraphInfo", "hyperGraphInfo"},
                                  {"hyperGraphLayout", "hyperLayout"},
                                  {"globalCacheControl", "globalCacheControl"},
                                  {"strokeGlobals", "strokeGlobals"},
                                  {"dynController1", "dynController"}};

struct DefaultCamera {
    const char* name;
    double translate[3], rotate[3]; ///< centimetres, degrees
    double centreOfInterest;
    bool orthographic;
    const char* home; ///< letter of the viewSet command that brings the camera back
};

constexpr DefaultCamera kCameras[] = {
    {"persp", {28, 21, 28}, {-27.938352729602379, 44.999999999999972, 0}, 44.82186966202994, false, "p"},
    {"top", {0, 1000.1, 0}, {-90, 0, 0}, 1000.1, true, "t"},
    {"front", {0, 0, 1000.1}, {0, 0, 0}, 1000.1, true, "f"},
    {"side", {1000.1, 0, 0}, {0, 90, 0}, 1000.1, true, "s"}};

const NodeType& typeOf(Graph& graph, const std::string& name)
{
    const NodeType* known = graph.types().find(name);
    return known ? *known : graph.types().findOrKeep(name, false, false);
}

/// A camera attribute that the host does not interpret stays with the node as the text of a file.
void setNumber(Node& node, const char* attribute, double value)
{
    if (node.findAttribute(attribute))
        node.plug(attribute).setNumber(value);
    else
        node.keptStatements.push_back(std::string("setAttr \".") + attribute + "\" " + maNumber(value));
}

void setText(Node& node, const char* attribute, const std::string& value)
{
    if (node.findAttribute(attribute))
        node.plug(attribute).setText(value);
    else
        node.keptStatements.push_back(std::string("setAttr \".") + attribute + "\" -type \"string\" " +
                                      maQuoted(value));
}

void setVector(Node& node, const char* attribute, const double (&value)[3])
{
    const Plug plug = node.plug(attribute);
    if (value[0] == 0.0 && value[1] == 0.0 && value[2] == 0.0)
        return;
    for (unsigned axis = 0; axis < 3; ++axis)
        plug.child(axis).setNumber(value[axis]);
}

void createCamera(Graph& graph, const DefaultCamera& camera)
{
    const std::string name = camera.name;
    Node& transform = graph.create(typeOf(graph, "transform"), name);
    setNumber(transform, "v", 0);
    setVector(transform, "t", camera.translate);
    setVector(transform, "r", camera.rotate);
    Node& shape = graph.create(typeOf(graph, "camera"), name + "Shape", transform.asDag());
    setNumber(shape, "v", 0);
    if (camera.orthographic) {
        setNumber(shape, "rnd", 0);
        setNumber(shape, "o", 1);
        setNumber(shape, "ow", 30);
    } else {
        setNumber(shape, "fl", 34.999999999999993);
    }
    setNumber(shape, "coi", camera.centreOfInterest);
    setText(shape, "imn", name);
    setText(shape, "den", name + "_depth");
    setText(shape, "man", name + "_mask");
    setText(shape, "hc", std::string("viewSet -") + camera.home + " %camera");
    for (Node* const node : {&transform, &shape})
        node->isDefault = node->shared = true;
}

} // namespace

void createDefaultNodes(Graph& graph)
{
    for (const DefaultCamera& camera : kCameras)
        createCamera(graph, camera);
    for (const DefaultNode& entry : kNodes)
        graph.create(typeOf(graph, entry.type), entry.name).isDefault = true;
    Node& linker = graph.create(typeOf(graph, "lightLinker"), "lightLinker1");
    linker.isDefault = linker.shared = true;
}

} // namespace host
