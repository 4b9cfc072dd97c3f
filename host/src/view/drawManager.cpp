#include <maya/MUIDrawManager.h>

#include "session.h"
#include "trace.h"
#include "types/api.h"
#include "types/numberText.h"
#include "view/drawRecord.h"

#include <maya/MColor.h>
#include <maya/MPoint.h>
#include <maya/MString.h>

#include <algorithm>

MAYA_HOST_NAMESPACE_OPEN
namespace MHWRender {

namespace {

/// The shortest text that reads back as the same number.
template <class Number>
std::string shortest(Number number, int mostDigits)
{
    std::string text;
    for (int digits = 6; digits <= mostDigits; ++digits) {
        text = host::generalText(static_cast<double>(number), digits);
        if (static_cast<Number>(host::leadingNumber(text)) == number)
            break;
    }
    return text;
}

std::string word(double number)
{
    return " " + shortest(number, 17);
}
std::string word(float number)
{
    return " " + shortest(number, 9);
}

/// A line of the record of what plug-ins asked for, made only when somebody listens.
template <class Text>
void traced(Text&& text)
{
    host::Trace& trace = host::Session::current().trace();
    if (trace.on())
        trace.draw(text());
}

Imath::V3d position(const MPoint& point)
{
    return {point.x, point.y, point.z};
}

std::string quoted(const MString& text)
{
    return " \"" + host::Trace::escaped(host::Api::text(text)) + "\" ";
}

void addText(host::DrawRecord& record, const MPoint& at, const MString& text, int align, bool screenSpace)
{
    if (!record.pen.open)
        return;
    host::DrawRecord::Text entry;
    entry.position = position(at);
    entry.text = host::Api::text(text);
    entry.align = align;
    std::copy(std::begin(record.pen.color), std::end(record.pen.color), entry.color);
    entry.fontSize = record.pen.fontSize;
    entry.screenSpace = screenSpace;
    record.texts.push_back(std::move(entry));
}

void addLine(host::DrawRecord& record, const MPoint& from, const MPoint& to, bool screenSpace)
{
    if (!record.pen.open)
        return;
    host::DrawRecord::Line entry;
    entry.from = position(from);
    entry.to = position(to);
    std::copy(std::begin(record.pen.color), std::end(record.pen.color), entry.color);
    entry.style = record.pen.lineStyle;
    entry.width = record.pen.lineWidth;
    entry.screenSpace = screenSpace;
    record.lines.push_back(entry);
}

} // namespace

void MUIDrawManager::beginDrawable(Selectability selectability, unsigned int selectionName)
{
    record->pen = {};
    record->pen.open = true;
    ++record->drawables;
    traced([&] {
        return "beginDrawable selectable=" + std::to_string(selectability) +
               " name=" + std::to_string(selectionName);
    });
}

void MUIDrawManager::endDrawable()
{
    record->pen = {};
    traced([] { return std::string("endDrawable"); });
}

void MUIDrawManager::setColor(const MColor& color)
{
    record->pen.color[0] = color.r;
    record->pen.color[1] = color.g;
    record->pen.color[2] = color.b;
    record->pen.color[3] = color.a;
    traced([&] { return "setColor" + word(color.r) + word(color.g) + word(color.b) + word(color.a); });
}

void MUIDrawManager::setLineStyle(LineStyle style)
{
    record->pen.lineStyle = style;
    traced([&] { return "setLineStyle " + std::to_string(style); });
}

void MUIDrawManager::setLineWidth(float value)
{
    record->pen.lineWidth = value;
    traced([&] { return "setLineWidth" + word(value); });
}

void MUIDrawManager::setFontSize(const unsigned int fontSize)
{
    record->pen.fontSize = fontSize;
    traced([&] { return "setFontSize " + std::to_string(fontSize); });
}

void MUIDrawManager::line(const MPoint& startPoint, const MPoint& endPoint)
{
    addLine(*record, startPoint, endPoint, false);
    traced([&] {
        return "line" + word(startPoint.x) + word(startPoint.y) + word(startPoint.z) + word(endPoint.x) +
               word(endPoint.y) + word(endPoint.z);
    });
}

void MUIDrawManager::line2d(const MPoint& startPoint, const MPoint& endPoint)
{
    addLine(*record, startPoint, endPoint, true);
    traced([&] {
        return "line2d" + word(startPoint.x) + word(startPoint.y) + word(endPoint.x) + word(endPoint.y);
    });
}

void MUIDrawManager::text(const MPoint& at, const MString& label, TextAlignment alignment, const int*,
                          const MColor*, bool)
{
    addText(*record, at, label, alignment, false);
    traced([&] {
        return "text" + word(at.x) + word(at.y) + word(at.z) + quoted(label) + std::to_string(alignment);
    });
}

void MUIDrawManager::text2d(const MPoint& at, const MString& label, TextAlignment alignment, const int*,
                            const MColor*, bool)
{
    addText(*record, at, label, alignment, true);
    traced([&] { return "text2d" + word(at.x) + word(at.y) + quoted(label) + std::to_string(alignment); });
}

} // namespace MHWRender
MAYA_HOST_NAMESPACE_CLOSE
