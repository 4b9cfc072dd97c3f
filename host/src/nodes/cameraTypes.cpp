#include "nodes/attributeSpecs.h"
#include "nodes/families.h"

namespace host {

namespace {

AttributeSpec pairOf(const char* longName, const char* shortName, AttributeSpec first, AttributeSpec second)
{
    return compoundAttribute(longName, shortName)
        .data("double2")
        .add(std::move(first))
        .add(std::move(second));
}

void addCamera(NodeTypeRegistry& registry)
{
    NodeType& type = registry.add("camera", "shape");
    type.apiType = MFn::kCamera;
    type.add(flagAttribute("renderable", "rnd", true));
    // Apertures in inches, focal length in millimetres, distances in centimetres.
    type.add(pairOf("cameraAperture", "cap", doubleAttribute("horizontalFilmAperture", "hfa", 1.41732),
                    doubleAttribute("verticalFilmAperture", "vfa", 0.94488)));
    type.add(doubleAttribute("lensSqueezeRatio", "lsr", 1.0));
    type.add(AttributeSpec("filmFit", "ff")
                 .enumeration({{"Fill", 0}, {"Horizontal", 1}, {"Vertical", 2}, {"Overscan", 3}}, 1));
    type.add(doubleAttribute("filmFitOffset", "fto"));
    type.add(pairOf("filmOffset", "fio", doubleAttribute("horizontalFilmOffset", "hfo"),
                    doubleAttribute("verticalFilmOffset", "vfo")));
    type.add(doubleAttribute("overscan", "ovr", 1.0));
    type.add(doubleAttribute("focalLength", "fl", 35.0));
    type.add(doubleAttribute("cameraScale", "cs", 1.0));
    type.add(distanceAttribute("nearClipPlane", "ncp", 0.1));
    type.add(distanceAttribute("farClipPlane", "fcp", 10000.0));
    type.add(distanceAttribute("centerOfInterest", "coi", 5.0));
    type.add(flagAttribute("orthographic", "o"));
    type.add(distanceAttribute("orthographicWidth", "ow", 10.0));
    type.add(textAttribute("imageName", "imn"));
    type.add(textAttribute("depthName", "den"));
    type.add(textAttribute("maskName", "man"));
    type.add(textAttribute("homeCommand", "hc"));
    type.add(tripleAttribute("tumblePivot", "tp", AttributeType::kDistance));
    type.add(flagAttribute("displayResolution", "dr"));
    type.add(flagAttribute("displayGateMask", "dgm"));
}

void addLocator(NodeTypeRegistry& registry)
{
    NodeType& type = registry.add("locator", "geometryShape");
    type.apiType = MFn::kShape;
    type.add(tripleAttribute("localPosition", "lp", AttributeType::kDistance));
    type.add(tripleAttribute("localScale", "los", AttributeType::kDouble, 1.0));
}

void addLights(NodeTypeRegistry& registry)
{
    for (const char* name : {"ambientLight", "directionalLight", "pointLight", "spotLight", "areaLight"}) {
        NodeType& type = registry.add(name, "shape");
        type.apiType = MFn::kShape;
        type.add(colorAttribute("color", "cl", 1.0));
        type.add(floatAttribute("intensity", "in", 1.0));
    }
}

} // namespace

void registerCameraTypes(NodeTypeRegistry& registry)
{
    addCamera(registry);
    addLocator(registry);
    addLights(registry);
}

} // namespace host
