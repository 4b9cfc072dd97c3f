#include "selection/component.h"

#include "graph/node.h"
#include "types/error.h"

#include <algorithm>
#include <cctype>
#include <map>

namespace host {

namespace {

struct Range {
    int first, last;
};

/// The words that component texts of a shape may begin with, by type.
MFn::Type typeOfWord(const DagNode& shape, const std::string& word)
{
    const MFn::Type points = pointComponentType(shape);
    const bool mesh = points == MFn::kMeshVertComponent;
    if (word == "vtx")
        return mesh ? points : MFn::kInvalid;
    if (word == "e")
        return mesh ? MFn::kMeshEdgeComponent : MFn::kInvalid;
    if (word == "f")
        return mesh ? MFn::kMeshPolygonComponent : MFn::kInvalid;
    if (word == "cv")
        return points == MFn::kCurveCVComponent || points == MFn::kSurfaceCVComponent ? points
                                                                                      : MFn::kInvalid;
    if (word == "pt")
        return points == MFn::kLatticeComponent ? points : MFn::kInvalid;
    return MFn::kInvalid;
}

const char* wordOfType(MFn::Type type)
{
    switch (type) {
    case MFn::kMeshVertComponent:
        return "vtx";
    case MFn::kMeshEdgeComponent:
        return "e";
    case MFn::kMeshPolygonComponent:
        return "f";
    case MFn::kLatticeComponent:
        return "pt";
    default:
        return "cv";
    }
}

/// Reads "[...]" groups from a text, one after another.
class RangeReader {
public:
    RangeReader(const std::string& shapeName, const std::string& componentText)
        : shape(shapeName), text(componentText), at(componentText.find('['))
    {}

    bool done() const { return at >= text.size(); }

    Range next(int size)
    {
        expect('[');
        Range range{0, size - 1};
        if (at < text.size() && text[at] == '*') {
            ++at;
        } else if (at < text.size() && text[at] == ':') {
            ++at;
            range.last = atEnd() ? size - 1 : number();
        } else {
            range.first = number();
            range.last = range.first;
            if (at < text.size() && text[at] == ':') {
                ++at;
                range.last = atEnd() ? size - 1 : number();
            }
        }
        expect(']');
        if (range.first > range.last)
            std::swap(range.first, range.last);
        if (range.first >= size)
            fail("is outside the shape");
        range.last = std::min(range.last, size - 1);
        return range;
    }

    [[noreturn]] void fail(const std::string& why) const
    {
        throw Error("No object matches name: " + shape + "." + text + " (" + why + ")");
    }

private:
    bool atEnd() const { return at < text.size() && text[at] == ']'; }
    void expect(char c)
    {
        if (at >= text.size() || text[at] != c)
            fail(std::string("'") + c + "' is missing");
        ++at;
    }
    int number()
    {
        const std::size_t start = at;
        long value = 0;
        while (at < text.size() && std::isdigit(static_cast<unsigned char>(text[at])) &&
               value < 1'000'000'000)
            value = value * 10 + (text[at++] - '0');
        if (at == start)
            fail("an index is missing");
        return static_cast<int>(std::min(value, 2'000'000'000L));
    }

    const std::string shape;
    const std::string text;
    std::size_t at;
};

void fill(Component& component, const std::vector<Range>& ranges)
{
    if (ranges.size() == 1) {
        for (int k = ranges[0].first; k <= ranges[0].last; ++k)
            component.elements.push_back(k);
        return;
    }
    if (ranges.size() == 2) {
        for (int u = ranges[0].first; u <= ranges[0].last; ++u)
            for (int v = ranges[1].first; v <= ranges[1].last; ++v)
                component.elements.insert(component.elements.end(), {u, v});
        return;
    }
    for (int u = ranges[2].first; u <= ranges[2].last; ++u)
        for (int t = ranges[1].first; t <= ranges[1].last; ++t)
            for (int s = ranges[0].first; s <= ranges[0].last; ++s)
                component.elements.insert(component.elements.end(), {s, t, u});
}

std::string rangeText(int first, int last)
{
    return first == last ? "[" + std::to_string(first) + "]"
                         : "[" + std::to_string(first) + ":" + std::to_string(last) + "]";
}

/// Texts of a run of ascending or free single indices.
std::vector<std::string> runs(const std::vector<int>& indices)
{
    std::vector<std::string> texts;
    for (std::size_t at = 0; at < indices.size();) {
        std::size_t end = at + 1;
        while (end < indices.size() && indices[end] == indices[end - 1] + 1)
            ++end;
        texts.push_back(rangeText(indices[at], indices[end - 1]));
        at = end;
    }
    return texts;
}

using Element = std::array<int, 3>;

/// Joins elements into boxes: equal sets of the later indices under neighbouring values of the first index
/// become one range.
std::vector<std::string> boxes(const std::vector<Element>& elements, unsigned index, unsigned dimension)
{
    std::map<int, std::vector<Element>> below;
    for (const Element& element : elements)
        below[element[index]].push_back(element);
    if (index + 1 == dimension) {
        std::vector<int> values;
        values.reserve(below.size());
        for (const auto& entry : below)
            values.push_back(entry.first);
        return runs(values);
    }
    std::vector<std::string> texts, open;
    int first = 0, last = -2;
    const auto flush = [&] {
        for (const std::string& rest : open)
            texts.push_back(rangeText(first, last) + rest);
    };
    for (const auto& [value, members] : below) {
        std::vector<std::string> rest = boxes(members, index + 1, dimension);
        if (value != last + 1 || rest != open) {
            flush();
            first = value;
            open = std::move(rest);
        }
        last = value;
    }
    flush();
    return texts;
}

std::vector<Element> elementsOf(const Component& component)
{
    std::vector<Element> out(component.count(), Element{0, 0, 0});
    const unsigned dimension = component.dimension();
    for (std::size_t n = 0; n < out.size(); ++n)
        std::copy_n(component.elements.begin() + static_cast<std::ptrdiff_t>(n * dimension), dimension,
                    out[n].begin());
    return out;
}

} // namespace

bool looksLikeComponent(const DagNode& shape, const std::string& text)
{
    return typeOfWord(shape, text.substr(0, text.find('['))) != MFn::kInvalid;
}

Ref<Component> parseComponent(DagNode& shape, const std::string& text)
{
    RangeReader reader(shape.name(), text);
    const MFn::Type type = typeOfWord(shape, text.substr(0, text.find('[')));
    if (type == MFn::kInvalid)
        reader.fail("the shape has no such components");
    Ref<Component> component(new Component(type));
    const std::array<int, 3> size = componentSizes(shape, type);
    std::vector<Range> ranges;
    for (unsigned k = 0; k < component->dimension(); ++k) {
        // "cv" alone and "pt[1]" mean everything in the directions that are not named.
        ranges.push_back(reader.done() ? Range{0, size[k] - 1} : reader.next(size[k]));
    }
    if (!reader.done())
        reader.fail("too many indices");
    fill(*component, ranges);
    if (component->elements.empty())
        reader.fail("the shape has no points");
    return component;
}

std::vector<std::string> componentTexts(const DagNode&, const Component& component)
{
    std::vector<std::string> texts = component.dimension() == 1
                                         ? runs(component.elements)
                                         : boxes(elementsOf(component), 0, component.dimension());
    for (std::string& text : texts)
        text.insert(0, wordOfType(component.apiType()));
    return texts;
}

std::vector<std::string> elementTexts(const DagNode&, const Component& component)
{
    std::vector<std::string> texts;
    for (std::size_t at = 0; at < component.elements.size(); at += component.dimension()) {
        std::string text = wordOfType(component.apiType());
        for (unsigned k = 0; k < component.dimension(); ++k)
            text += "[" + std::to_string(component.elements[at + k]) + "]";
        texts.push_back(std::move(text));
    }
    return texts;
}

} // namespace host
