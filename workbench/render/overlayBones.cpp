#include "render/overlayBones.h"

#include "render/overlayText.h"

#include <algorithm>
#include <cmath>

namespace workbench {

namespace {

constexpr Color kBone = {0.80F, 0.86F, 0.98F, 0.80F};
constexpr Color kSelectedBone = {0.45F, 0.95F, 0.68F, 0.95F};
constexpr Color kEditedBone = {1.0F, 0.82F, 0.35F, 1.0F};

Color colorOf(const SceneView::Bone& bone)
{
    if (bone.highlighted)
        return kEditedBone;
    return bone.selected ? kSelectedBone : kBone;
}

/// A long kite from the upper joint to the lower one.
void drawKite(OverlayPen& pen, ImVec2 from, ImVec2 to, const Color& color)
{
    const float dx = to.x - from.x, dy = to.y - from.y;
    const float length = std::hypot(dx, dy);
    const float mark = pen.mark();
    if (length < 2.0F * mark)
        return;
    const float half = std::min(7.0F * mark, 0.10F * length) / length;
    const ImVec2 shoulder(from.x + dx * 0.16F, from.y + dy * 0.16F);
    const ImVec2 left(shoulder.x - dy * half, shoulder.y + dx * half);
    const ImVec2 right(shoulder.x + dy * half, shoulder.y - dx * half);
    Color inside = color;
    inside[3] *= 0.22F;
    pen.list.AddQuadFilled(from, left, to, right, packed(inside));
    pen.list.AddQuad(from, left, to, right, packed({0.05F, 0.06F, 0.10F, 0.5F}), 2.6F * mark);
    pen.list.AddQuad(from, left, to, right, packed(color), 1.2F * mark);
}

void drawJoint(OverlayPen& pen, ImVec2 at, const Color& color)
{
    const float mark = pen.mark(), radius = 4.5F * mark;
    pen.list.AddCircleFilled(at, radius, packed({0.08F, 0.09F, 0.13F, 0.70F}), 20);
    pen.list.AddCircle(at, radius, packed(color), 20, 1.4F * mark);
    pen.list.AddCircleFilled(at, 1.5F * mark, packed(color), 10);
}

} // namespace

void drawBones(OverlayPen& pen, const SceneView& view)
{
    for (const SceneView::Bone& bone : view.bones) {
        ImVec2 from, to;
        if (bone.hasParent && pen.onScreen(bone.from, from) && pen.onScreen(bone.to, to))
            drawKite(pen, from, to, kBone);
    }
    for (const bool highlighted : {false, true}) {
        for (const SceneView::Bone& bone : view.bones) {
            ImVec2 at;
            if (bone.highlighted == highlighted && pen.onScreen(bone.to, at))
                drawJoint(pen, at, colorOf(bone));
        }
    }
}

void drawAxes(OverlayPen& pen, const Imath::M44d& toCamera)
{
    const float mark = pen.mark(), length = 24.0F * mark;
    constexpr Color kColors[3] = {
        {0.95F, 0.38F, 0.36F, 1.0F}, {0.50F, 0.86F, 0.42F, 1.0F}, {0.42F, 0.62F, 1.0F, 1.0F}};
    const char* const names[3] = {"x", "y", "z"};
    const Box box = axesBox(pen);
    const ImVec2 origin(box.left + box.width * 0.5F, box.top + box.height * 0.5F);
    for (int axis = 0; axis < 3; ++axis) {
        // Row vectors: the axis in camera space is the row of the matrix.
        const double* row = toCamera[axis];
        const ImVec2 end(origin.x + static_cast<float>(row[0]) * length,
                         origin.y - static_cast<float>(row[1]) * length);
        pen.list.AddLine(origin, end, packed(kColors[axis]), 2.0F * mark);
        const ImVec2 size = pen.textSize(names[axis], Fonts::kSmall);
        const ImVec2 beyond(origin.x + (end.x - origin.x) * 1.35F - size.x * 0.5F,
                            origin.y + (end.y - origin.y) * 1.35F - size.y * 0.55F);
        pen.text(beyond, names[axis], Fonts::kSmall, kColors[axis]);
    }
}

} // namespace workbench
