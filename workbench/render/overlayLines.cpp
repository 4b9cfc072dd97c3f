#include "render/overlayLines.h"

#include "session.h"
#include "view/drawRecord.h"

#include <algorithm>
#include <cmath>

namespace workbench {

namespace {

constexpr Color kRim = {0.03F, 0.03F, 0.04F, 0.65F};

bool placeOf(const OverlayPen& pen, const Imath::V3d& position, bool screenSpace, ImVec2& at)
{
    if (!screenSpace)
        return pen.onScreen(position, at);
    at = pen.fromPort(position.x, position.y);
    return true;
}

/// A line in pieces: how long they and the gaps are, by MUIDrawManager::LineStyle; none = one piece.
struct Dashes {
    float piece, gap;
};
Dashes dashesOf(int style)
{
    switch (style) {
    case 1:
        return {1.5F, 3.0F};
    case 2:
        return {5.0F, 4.0F};
    case 3:
        return {9.0F, 6.0F};
    case 4:
        return {1.5F, 5.0F};
    default:
        return {0.0F, 0.0F};
    }
}

void drawLine(OverlayPen& pen, ImVec2 from, ImVec2 to, const host::DrawRecord::Line& line)
{
    const ImU32 color = packed({line.color[0], line.color[1], line.color[2], line.color[3]});
    const float width = std::max(1.0F, line.width) * pen.unit();
    const Dashes dashes = dashesOf(line.style);
    const float piece = dashes.piece * pen.unit(), gap = dashes.gap * pen.unit();
    const float length = std::hypot(to.x - from.x, to.y - from.y);
    if (piece <= 0.0F || length <= 0.0F) {
        pen.list.AddLine(from, to, color, width);
        return;
    }
    const ImVec2 step((to.x - from.x) / length, (to.y - from.y) / length);
    for (float at = 0.0F; at < length; at += piece + gap) {
        const float end = std::min(length, at + piece);
        pen.list.AddLine(ImVec2(from.x + step.x * at, from.y + step.y * at),
                         ImVec2(from.x + step.x * end, from.y + step.y * end), color, width);
    }
}

void drawRim(OverlayPen& pen, const Box& box)
{
    const float out = pen.unit();
    pen.list.AddRectFilled(ImVec2(box.left - out, box.top - out),
                           ImVec2(box.left + box.width + out, box.top + box.height + out), packed(kRim));
}

} // namespace

void drawToolLines(OverlayPen& pen, host::Session& session)
{
    for (const host::DrawRecord::Line& line : session.drawing().lines) {
        ImVec2 from, to;
        if (placeOf(pen, line.from, line.screenSpace, from) && placeOf(pen, line.to, line.screenSpace, to))
            drawLine(pen, from, to, line);
    }
}

void drawLegend(OverlayPen& pen, const LegendPlace& place)
{
    if (!place.shown)
        return;
    drawRim(pen, place.bar);
    constexpr int kPieces = 20;
    for (int piece = 0; piece < kPieces; ++piece) {
        const auto down = [&](int index) { return static_cast<float>(index) / kPieces; };
        const ImU32 upper = packed(weightColor(1.0F - down(piece)));
        const ImU32 lower = packed(weightColor(1.0F - down(piece + 1)));
        const ImVec2 from(place.bar.left, place.bar.top + place.bar.height * down(piece));
        const ImVec2 to(place.bar.left + place.bar.width, place.bar.top + place.bar.height * down(piece + 1));
        pen.list.AddRectFilledMultiColor(from, to, upper, upper, lower, lower);
    }
    if (place.outsiders.height <= 0)
        return;
    const Box& box = place.outsiders;
    drawRim(pen, box);
    pen.list.AddRectFilled(ImVec2(box.left, box.top), ImVec2(box.left + box.width, box.top + box.height),
                           packed(kOutsiderColor));
}

void drawStatusGround(OverlayPen& pen)
{
    const float top = pen.height() - statusHeight(pen);
    pen.list.AddRectFilled(ImVec2(0, top), ImVec2(pen.width(), pen.height()),
                           packed({0.09F, 0.095F, 0.105F, 0.92F}));
    pen.list.AddLine(ImVec2(0, top), ImVec2(pen.width(), top), packed({1.0F, 1.0F, 1.0F, 0.10F}), pen.unit());
}

} // namespace workbench
