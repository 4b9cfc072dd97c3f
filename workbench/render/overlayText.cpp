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
using Kind = PlacedText::Kind;

constexpr Color kText = {0.93F, 0.95F, 0.97F, 1.0F};
constexpr Color kStatusText = {0.84F, 0.86F, 0.89F, 1.0F};
constexpr Color kToolText = {0.58F, 0.63F, 0.70F, 1.0F};
constexpr float kMargin = 14.0F, kLabelGap = 2.0F, kTextGap = 4.0F; // at a scale of 1

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

PlacedText placed(Kind kind, const OverlayFrame& frame, const std::string& text, int pixels,
                  const Color& color)
{
    const ImVec2 size = frame.textSize(text, pixels);
    return {kind, text, {0, 0, size.x, size.y}, pixels, color};
}

/// The help text has the line; the tool's name stands at its right end when both fit.
void placeStatus(TextLayout& layout, const OverlayFrame& frame, const host::Tools& tools)
{
    const float margin = kMargin * frame.unit(), top = frame.height() - statusHeight(frame);
    layout.take({0, top, frame.width(), statusHeight(frame)});
    const auto put = [&](PlacedText text, float left) {
        text.box.left = left;
        text.box.top = std::round(top + (statusHeight(frame) - text.box.height) * 0.5F);
        layout.texts.push_back(std::move(text));
    };
    const float room = frame.width() - 2 * margin;
    const std::string help = frame.fitted(tools.helpText, Fonts::kSmall, room);
    if (!help.empty())
        put(placed(Kind::kStatus, frame, help, Fonts::kSmall, kStatusText), margin);
    const PlacedText name = placed(Kind::kToolName, frame, tools.current(), Fonts::kSmall, kToolText);
    if (frame.textSize(help, Fonts::kSmall).x + name.box.width + 2 * margin <= room)
        put(name, frame.width() - margin - name.box.width);
}

void placeLegend(TextLayout& layout, const OverlayFrame& frame, const SceneView& view)
{
    const LegendPlace legend = legendPlace(frame, view);
    if (!legend.shown)
        return;
    const float gap = 5.0F * frame.unit();
    const std::pair<const char*, float> ticks[] = {{"1", 0.0F}, {"0.5", 0.5F}, {"0", 1.0F}};
    for (const auto& [number, down] : ticks) {
        PlacedText text = placed(Kind::kLegend, frame, number, Fonts::kSmall, kText);
        text.box.left = legend.bar.left - gap - text.box.width;
        text.box.top = legend.bar.top + legend.bar.height * down - text.box.height * 0.5F;
        layout.place(text, 0);
    }
    layout.take(legend.bar);
    if (legend.outsiders.height <= 0)
        return;
    PlacedText text = placed(Kind::kLegend, frame, "no member", Fonts::kSmall, kText);
    text.box.left = legend.outsiders.left - gap - text.box.width;
    text.box.top = legend.outsiders.top + (legend.outsiders.height - text.box.height) * 0.5F;
    layout.place(text, 0);
    layout.take(legend.outsiders);
}

/// The left end of a text in the column of its section: the outer columns hug the edge, the others are
/// centred, and none leaves the picture.
float leftOf(const OverlayFrame& frame, int section, float textWidth)
{
    const int column = section % 5;
    const float margin = kMargin * frame.unit(), last = frame.width() - margin - textWidth;
    if (column == 0)
        return margin;
    if (column == 4)
        return last;
    return std::clamp(frame.width() * 0.25F * static_cast<float>(column) - textWidth * 0.5F, margin,
                      std::max(margin, last));
}

/// One section: its displays from the edge inwards, further in where another section's text is in the way.
void placeSection(TextLayout& layout, const OverlayFrame& frame, host::Session& session, int section)
{
    const bool top = section < 5;
    const float margin = kMargin * frame.unit(), between = 5.0F * frame.unit();
    float edge = top ? margin : frame.height() - statusHeight(frame) - margin;
    for (const Display* display : session.tools().headsUp().inSection(section)) {
        if (!display->visible)
            continue;
        const int pixels = pixelsOf(display->labelSize);
        const std::string whole = textOf(session, *display);
        PlacedText text = placed(Kind::kHeadsUp, frame,
                                 frame.fitted(whole, pixels, frame.width() - 2 * margin), pixels, kText);
        text.box.left = leftOf(frame, section, text.box.width);
        const float step = text.box.height + between;
        for (bool done = text.text.empty(); !done && edge >= 0 && edge <= frame.height();) {
            text.box.top = top ? edge : edge - step;
            done = layout.place(text, kTextGap * frame.unit());
            edge += top ? step : -step;
        }
    }
}

/// A label of the tool on its way into the layout.
struct Label {
    PlacedText placed;
    float rank;
    double depth; ///< 0 near to 1 far
};

bool labelOf(const OverlayFrame& frame, const host::DrawRecord::Text& text, Label& label)
{
    label.placed = placed(Kind::kLabel, frame, text.text, static_cast<int>(text.fontSize),
                          {text.color[0], text.color[1], text.color[2], text.color[3]});
    Imath::V3d pixels = text.position;
    if (text.screenSpace)
        pixels.z = 0;
    else if (!frame.projection.project(text.position, pixels))
        return false;
    const ImVec2 at = frame.fromPort(pixels.x, pixels.y);
    Box& box = label.placed.box;
    box.left = std::round(at.x - box.width * 0.5F * static_cast<float>(text.align));
    box.top = std::round(at.y - box.height);
    label.depth = pixels.z;
    return box.left < frame.width() && box.left + box.width > 0 && box.top < frame.height() &&
           box.top + box.height > 0;
}

/// The label that matters most moves a little rather than go, when another text stands in its place.
void placeAside(TextLayout& layout, const OverlayFrame& frame, PlacedText text)
{
    const float gap = kLabelGap * frame.unit();
    const Box wanted = text.box;
    for (int ring = 1; ring <= 3; ++ring) {
        const float x = (wanted.width + gap) * static_cast<float>(ring);
        const float y = (wanted.height + gap) * static_cast<float>(ring);
        const std::pair<float, float> steps[] = {{0, -y}, {0, y}, {-x, 0}, {x, 0}, {-x, -y}, {x, -y}};
        for (const auto& [right, down] : steps) {
            text.box.left = wanted.left + right;
            text.box.top = wanted.top + down;
            if (layout.place(text, gap))
                return;
        }
    }
}

void placeLabels(TextLayout& layout, const OverlayFrame& frame, const host::DrawRecord& drawing,
                 const std::vector<float>& ranks)
{
    std::vector<Label> labels;
    for (std::size_t k = 0; k < drawing.texts.size(); ++k) {
        Label label{{}, ranks.size() == drawing.texts.size() ? ranks[k] : 0.0F, 0.0};
        if (labelOf(frame, drawing.texts[k], label))
            labels.push_back(std::move(label));
    }
    std::stable_sort(labels.begin(), labels.end(), [](const Label& a, const Label& b) {
        return a.rank > b.rank || (a.rank == b.rank && a.depth < b.depth);
    });
    bool first = true;
    for (Label& label : labels) {
        if (!layout.place(label.placed, kLabelGap * frame.unit()) && first)
            placeAside(layout, frame, label.placed);
        first = false;
    }
}

} // namespace

float statusHeight(const OverlayFrame& frame)
{
    return std::round(24.0F * frame.unit());
}

Box axesBox(const OverlayFrame& frame)
{
    const float size = 76.0F * frame.mark();
    return {4.0F * frame.unit(), frame.height() - statusHeight(frame) - size, size, size};
}

LegendPlace legendPlace(const OverlayFrame& frame, const SceneView& view)
{
    const float unit = frame.unit();
    const float height = std::clamp(frame.height() * 0.24F, 48.0F * unit, 130.0F * unit);
    LegendPlace place;
    // A picture that is nearly all legend would say nothing.
    place.shown = view.showsWeights && frame.height() > 2.6F * height && frame.width() > 220.0F * unit;
    const float side = 10.0F * unit, right = frame.width() - kMargin * unit;
    place.bar = {right - side, frame.height() * 0.45F - height * 0.5F, side, height};
    if (view.showsOutsiders)
        place.outsiders = {right - side, place.bar.top + height + 16.0F * unit, side, side};
    return place;
}

std::vector<PlacedText> placeTexts(const OverlayFrame& frame, host::Session& session, const SceneView& view)
{
    TextLayout layout;
    placeStatus(layout, frame, session.tools());
    layout.take(axesBox(frame));
    placeLegend(layout, frame, view);
    for (int section = 0; section < host::HeadsUpDisplays::kSections; ++section)
        placeSection(layout, frame, session, section);
    placeLabels(layout, frame, session.drawing(), view.labelRanks);
    return layout.texts;
}

} // namespace workbench
