#include "layers/layerList.h"

#include <cstdio>

namespace layers {

namespace {

std::string quoted(const std::string& text)
{
    std::string json = "\"";
    for (const char c : text) {
        char escape[8];
        if (c == '"' || c == '\\') {
            json += '\\';
            json += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned int>(c));
            json += escape;
        } else {
            json += c;
        }
    }
    return json + '"';
}

std::string number(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

std::string idText(int id, Misbehaviour misbehaviour)
{
    switch (misbehaviour) {
    case Misbehaviour::kIdIsText:
        return quoted(std::to_string(id));
    case Misbehaviour::kIdIsFraction:
        return std::to_string(id) + ".5";
    case Misbehaviour::kIdIsHuge:
        return std::to_string(id + 4294967296LL);
    case Misbehaviour::kVanishedId:
        return std::to_string(id + 1000);
    default:
        return std::to_string(id);
    }
}

std::string arrayOf(const LayerStack& stack, int parent, Misbehaviour misbehaviour);

std::string childrenText(const LayerStack& stack, int id, Misbehaviour misbehaviour)
{
    return misbehaviour == Misbehaviour::kChildrenIsText ? quoted("none") : arrayOf(stack, id, misbehaviour);
}

std::string objectOf(const LayerStack& stack, const Layer& layer, Misbehaviour misbehaviour)
{
    std::string json = "{\"enabled\": true";
    if (misbehaviour != Misbehaviour::kNoId)
        json += ", \"id\": " + idText(layer.id, misbehaviour);
    if (misbehaviour != Misbehaviour::kNoName)
        json += ", \"name\": " +
                (misbehaviour == Misbehaviour::kNameIsNumber ? number(layer.id) : quoted(layer.name));
    json += ", \"opacity\": " + number(layer.opacity) +
            ", \"parentId\": " + (layer.parent == kTopLevel ? "null" : std::to_string(layer.parent));
    if (misbehaviour != Misbehaviour::kNoChildren)
        json += ", \"children\": " + childrenText(stack, layer.id, misbehaviour);
    return json + "}";
}

std::string arrayOf(const LayerStack& stack, int parent, Misbehaviour misbehaviour)
{
    std::string json = "[";
    for (const Layer* layer : stack.childrenOf(parent)) {
        if (json.size() > 1)
            json += ", ";
        json += objectOf(stack, *layer, misbehaviour);
    }
    return json + "]";
}

} // namespace

std::string layerList(const LayerStack& stack, Misbehaviour misbehaviour)
{
    switch (misbehaviour) {
    case Misbehaviour::kBrokenList: {
        const std::string whole = arrayOf(stack, kTopLevel, Misbehaviour::kNone);
        return whole.substr(0, whole.size() / 2);
    }
    case Misbehaviour::kListIsObject:
        return "{\"layers\": " + arrayOf(stack, kTopLevel, Misbehaviour::kNone) + "}";
    case Misbehaviour::kListOfNumbers:
        return "[1, 2, 3]";
    default:
        return arrayOf(stack, kTopLevel, misbehaviour);
    }
}

} // namespace layers
