#include "view/viewport.h"

#include "graph/graph.h"
#include "nodes/geometry.h"
#include "session.h"
#include "types/error.h"

#include <algorithm>
#include <cmath>

namespace host {

namespace {

constexpr double kMillimetresPerInch = 25.4;

double numberOf(DagNode& node, const char* attribute, double otherwise)
{
    return node.findAttribute(attribute) ? node.plug(attribute).number() : otherwise;
}

/// Half the width and height of what the port shows, at distance 1 (perspective) or at all distances.
struct HalfExtent {
    double width, height;
};

HalfExtent perspectiveExtent(DagNode& camera, double portAspect)
{
    enum FilmFit { kFill, kHorizontal, kVertical, kOverscan };
    const double scale = kMillimetresPerInch * numberOf(camera, "cameraScale", 1.0) /
                         (2.0 * std::max(numberOf(camera, "focalLength", 35.0), 1e-6));
    const double width = scale * numberOf(camera, "horizontalFilmAperture", 1.41732);
    const double height = scale * numberOf(camera, "verticalFilmAperture", 0.94488);
    const bool wide = portAspect * height >= width;
    bool horizontal = wide;
    switch (static_cast<int>(numberOf(camera, "filmFit", kFill))) {
    case kHorizontal:
        horizontal = true;
        break;
    case kVertical:
        horizontal = false;
        break;
    case kOverscan:
        horizontal = !wide;
        break;
    default:
        break;
    }
    if (horizontal)
        return {width, width / portAspect};
    return {height * portAspect, height};
}

bool isOrthographic(DagNode& camera)
{
    return numberOf(camera, "orthographic", 0.0) != 0.0;
}

HalfExtent extentOf(DagNode& camera, double portAspect)
{
    if (!isOrthographic(camera))
        return perspectiveExtent(camera, portAspect);
    const double half = 0.5 * std::max(numberOf(camera, "orthographicWidth", 30.0), 1e-9);
    return {half, half / portAspect};
}

/// The camera's own frame: axes of length 1, whatever its transforms scale by.
Imath::M44d frameOf(DagNode& camera)
{
    Imath::M44d frame = worldMatrix(camera);
    for (int row = 0; row < 3; ++row) {
        const Imath::V3d axis(frame[row][0], frame[row][1], frame[row][2]);
        const double length = axis.length();
        for (int column = 0; column < 3 && length > 0.0; ++column)
            frame[row][column] /= length;
    }
    return frame;
}

struct Clip {
    double x, y, z, w;
};

Clip clipOf(const Imath::V3d& world, const Imath::M44d& toClip)
{
    const auto column = [&](int c) {
        return world.x * toClip[0][c] + world.y * toClip[1][c] + world.z * toClip[2][c] + toClip[3][c];
    };
    return {column(0), column(1), column(2), column(3)};
}

} // namespace

Viewport::Viewport(Session& session) : owner(session) {}

DagNode* Viewport::camera() const
{
    return cameraShape && cameraShape->alive() ? cameraShape.get() : nullptr;
}

void Viewport::lookThrough(DagNode& shape)
{
    if (!shape.hasFn(MFn::kCamera))
        throw Error("lookThru: " + shape.uniqueName() + " is no camera");
    cameraShape = Ref<DagNode>(&shape);
}

void Viewport::resetCamera()
{
    cameraShape = {};
    // Other nodes may have the name below another parent.
    for (Node* const node : owner.graph().findAll("perspShape")) {
        if (node->isDefault && node->asDag())
            cameraShape = Ref<DagNode>(node->asDag());
    }
}

Imath::M44d Viewport::viewMatrix() const
{
    DagNode* shape = camera();
    return shape ? frameOf(*shape).inverse() : Imath::M44d();
}

Imath::M44d Viewport::projectionMatrix() const
{
    DagNode* shape = camera();
    if (!shape)
        return Imath::M44d();
    const HalfExtent half = extentOf(*shape, static_cast<double>(width) / std::max(height, 1));
    const double nearClip = std::max(numberOf(*shape, "nearClipPlane", 0.1), 1e-6);
    const double farClip = std::max(numberOf(*shape, "farClipPlane", 10000.0), nearClip * 1.000001);
    Imath::M44d matrix;
    matrix[0][0] = 1.0 / half.width;
    matrix[1][1] = 1.0 / half.height;
    if (isOrthographic(*shape)) {
        matrix[2][2] = -2.0 / (farClip - nearClip);
        matrix[3][2] = -(farClip + nearClip) / (farClip - nearClip);
        return matrix;
    }
    matrix[2][2] = -(farClip + nearClip) / (farClip - nearClip);
    matrix[2][3] = -1.0;
    matrix[3][2] = -2.0 * farClip * nearClip / (farClip - nearClip);
    matrix[3][3] = 0.0;
    return matrix;
}

ViewProjection Viewport::projection() const
{
    return {viewMatrix() * projectionMatrix(), static_cast<double>(width), static_cast<double>(height)};
}

bool ViewProjection::project(const Imath::V3d& world, Imath::V3d& pixelsAndDepth) const
{
    const Clip clip = clipOf(world, toClip);
    if (!(clip.w > 0.0))
        return false;
    pixelsAndDepth = {0.5 * (clip.x / clip.w + 1.0) * width, 0.5 * (clip.y / clip.w + 1.0) * height,
                      0.5 * (clip.z / clip.w + 1.0)};
    return true;
}

bool ViewProjection::shows(const Imath::V3d& pixelsAndDepth) const
{
    const auto within = [](double value, double most) { return value >= 0.0 && value <= most; };
    return within(pixelsAndDepth.x, width) && within(pixelsAndDepth.y, height) &&
           within(pixelsAndDepth.z, 1.0);
}

bool Viewport::project(const Imath::V3d& world, Imath::V3d& pixelsAndDepth) const
{
    return camera() && projection().project(world, pixelsAndDepth);
}

bool Viewport::worldToView(const Imath::V3d& world, short& x, short& y) const
{
    Imath::V3d at;
    if (!project(world, at))
        return false;
    const auto whole = [](double pixel) {
        return static_cast<short>(std::lround(std::clamp(pixel, -32768.0, 32767.0)));
    };
    x = whole(at.x);
    y = whole(at.y);
    return projection().shows(at);
}

void Viewport::viewToWorld(double x, double y, Imath::V3d& nearPoint, Imath::V3d& farPoint) const
{
    const Imath::M44d toWorld = (viewMatrix() * projectionMatrix()).inverse();
    const double clipX = 2.0 * x / std::max(width, 1) - 1.0, clipY = 2.0 * y / std::max(height, 1) - 1.0;
    nearPoint = Imath::V3d(clipX, clipY, -1.0) * toWorld;
    farPoint = Imath::V3d(clipX, clipY, 1.0) * toWorld;
}

void Viewport::frame(const Imath::V3d& low, const Imath::V3d& high)
{
    DagNode* shape = camera();
    DagNode* transform = shape ? shape->parent() : nullptr;
    if (!transform)
        throw Error("viewFit: the view has no camera");
    const Imath::V3d centre = (low + high) * 0.5;
    const HalfExtent half = extentOf(*shape, static_cast<double>(width) / std::max(height, 1));
    const Imath::M44d frame = frameOf(*shape);
    const Imath::V3d right(frame[0][0], frame[0][1], frame[0][2]), up(frame[1][0], frame[1][1], frame[1][2]),
        backwards(frame[2][0], frame[2][1], frame[2][2]);
    constexpr double kLeast = 0.5;  // a single point is shown with something around it
    constexpr double kFilled = 0.9; // of the port, at most
    double reach = 0.0, distance = 0.0;
    for (int corner = 0; corner < 8; ++corner) {
        Imath::V3d at;
        for (int axis = 0; axis < 3; ++axis)
            at[axis] = std::max((high[axis] - low[axis]) * 0.5, kLeast) * (corner >> axis & 1 ? 1.0 : -1.0);
        const double across =
            std::max(std::abs(at.dot(right)) / half.width, std::abs(at.dot(up)) / half.height);
        reach = std::max(reach, across / kFilled);
        distance = std::max(distance, across / kFilled + at.dot(backwards));
    }
    if (isOrthographic(*shape)) {
        const Plug shown = shape->plug("orthographicWidth");
        shown.setNumber(shown.number() * reach);
        distance = std::max(numberOf(*shape, "centerOfInterest", 5.0), (high - low).length());
    }
    const Imath::V3d local = (centre + backwards * distance) * parentMatrix(*transform).inverse();
    const Plug translate = transform->plug("translate");
    for (unsigned axis = 0; axis < 3; ++axis)
        translate.child(axis).setNumber(local[static_cast<int>(axis)]);
    if (shape->findAttribute("centerOfInterest"))
        shape->plug("centerOfInterest").setNumber(distance);
}

} // namespace host
