#include "render/overlayText.h"

#include "mel/interpreter.h"
#include "session.h"
#include "tools/headsUpDisplays.h"
#include "tools/tools.h"
#include "types/error.h"
#include "view/drawRecord.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace workbench {

namespace {

using Display = host::HeadsUpDisplays::Display;

constexpr Color kText = {0.93F, 0.95F, 0.97F, 1.0F};
constexpr float kMargin = 14.0F;

Color colorOf(const float (&color)[4])
{
    return {color[0], color[1], color[2], color[3]};
}

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
    const ImU32 color = packed(colorOf(line.color));
    const float width = std::max(1.0F, line.width);
    const Dashes dashes = dashesOf(line.style);
    const float length = std::hypot(to.x - from.x, to.y - from.y);
    if (dashes.piece <= 0.0F || length <= 0.0F) {
        pen.list.AddLine(from, to, color, width);
        return;
    }
    const ImVec2 step((to.x - from.x) / length, (to.y - from.y) / length);
    for (float at = 0.0F; at < length; at += dashes.piece + dashes.gap) {
        const float end = std::min(length, at + dashes.piece);
        pen.list.AddLine(ImVec2(from.x + step.x * at, from.y + step.y * at),
                         ImVec2(from.x + step.x * end, from.y + step.y * end), color, width);
    }
}

int pixelsOf(host::HeadsUpDisplays::Size size)
{
    switch (size) {
    case host::HeadsUpDisplays::Size::kSmall:
        return Fonts::kSmall;
    case host::HeadsUpDisplays::Size::kMedium:
        return Fonts::kMedium;
    case host::HeadsUpDisplays::Size::kLarge:
        break;
    }
    return Fonts::kLarge;
}

std::string textOf(host::Session& session, const Display& display)
{
    if (display.command.empty())
        return display.label;
    try {
        return display.label + " " + session.mel().execute(display.command).toString();
    } catch (const host::Error&) {
        // The picture has no place for messages; a display whose command fails shows its label alone.
        return display.label;
    }
}

/// The left end of a text in the column of its section: the outer columns hug the edge, the others are
/// centred.
float leftOf(const OverlayPen& pen, int section, float textWidth)
{
    const int column = section % 5;
    if (column == 0)
        return kMargin;
    if (column == 4)
        return pen.width() - kMargin - textWidth;
    return pen.width() * 0.25F * static_cast<float>(column) - textWidth * 0.5F;
}

/// A label where it stands on the screen.
struct Label {
    const host::DrawRecord::Text* text;
    ImVec2 corner, size;
    double depth; ///< 0 near to 1 far

    bool overlaps(const Label& other) const
    {
        return corner.x < other.corner.x + other.size.x && other.corner.x < corner.x + size.x &&
               corner.y < other.corner.y + other.size.y && other.corner.y < corner.y + size.y;
    }
};

std::vector<Label> labelsOf(const OverlayPen& pen, const host::DrawRecord& drawing)
{
    std::vector<Label> labels;
    for (const host::DrawRecord::Text& text : drawing.texts) {
        Label label{&text, {}, pen.textSize(text.text, static_cast<int>(text.fontSize)), 0.0};
        if (!placeOf(pen, text.position, text.screenSpace, label.corner))
            continue;
        Imath::V3d pixels(0, 0, 0);
        if (!text.screenSpace && pen.projection.project(text.position, pixels))
            label.depth = pixels.z;
        label.corner.x -= label.size.x * 0.5F * static_cast<float>(text.align);
        label.corner.y -= label.size.y;
        labels.push_back(label);
    }
    return labels;
}

} // namespace

void drawToolDrawing(OverlayPen& pen, host::Session& session)
{
    const host::DrawRecord& drawing = session.drawing();
    for (const host::DrawRecord::Line& line : drawing.lines) {
        ImVec2 from, to;
        if (placeOf(pen, line.from, line.screenSpace, from) && placeOf(pen, line.to, line.screenSpace, to))
            drawLine(pen, from, to, line);
    }
    std::vector<Label> labels = labelsOf(pen, drawing);
    std::stable_sort(labels.begin(), labels.end(),
                     [](const Label& a, const Label& b) { return a.depth < b.depth; });
    std::vector<const Label*> placed;
    for (const Label& label : labels) {
        const bool covered = std::any_of(placed.begin(), placed.end(),
                                         [&](const Label* other) { return label.overlaps(*other); });
        if (covered)
            continue;
        placed.push_back(&label);
        pen.text(label.corner, label.text->text, static_cast<int>(label.text->fontSize),
                 colorOf(label.text->color));
    }
}

void drawHeadsUp(OverlayPen& pen, host::Session& session)
{
    for (int section = 0; section < host::HeadsUpDisplays::kSections; ++section) {
        const bool top = section < 5;
        float y = top ? kMargin : pen.height() - kStatusHeight - kMargin;
        for (const Display* display : session.tools().headsUp().inSection(section)) {
            if (!display->visible)
                continue;
            const int pixels = pixelsOf(display->labelSize);
            const std::string text = textOf(session, *display);
            const ImVec2 size = pen.textSize(text, pixels);
            const float lineHeight = size.y + 5.0F;
            if (!top)
                y -= lineHeight;
            pen.text(ImVec2(leftOf(pen, section, size.x), y), text, pixels, kText);
            if (top)
                y += lineHeight;
        }
    }
}

void drawStatusLine(OverlayPen& pen, host::Session& session)
{
    const float top = pen.height() - kStatusHeight;
    pen.list.AddRectFilled(ImVec2(0, top), ImVec2(pen.width(), pen.height()),
                           packed({0.09F, 0.095F, 0.105F, 0.92F}));
    pen.list.AddLine(ImVec2(0, top), ImVec2(pen.width(), top), packed({1.0F, 1.0F, 1.0F, 0.10F}));
    ImFont* font = pen.fonts.size(Fonts::kSmall);
    const float y = std::round(top + (kStatusHeight - font->FontSize) * 0.5F);
    const host::Tools& tools = session.tools();
    pen.list.AddText(font, font->FontSize, ImVec2(kMargin, y), packed({0.84F, 0.86F, 0.89F, 1.0F}),
                     tools.helpText.c_str());
    const float nameWidth = pen.textSize(tools.current(), Fonts::kSmall).x;
    pen.list.AddText(font, font->FontSize, ImVec2(std::round(pen.width() - kMargin - nameWidth), y),
                     packed({0.58F, 0.63F, 0.70F, 1.0F}), tools.current().c_str());
}

} // namespace workbench
