#include "layers/layerStack.h"

#include <algorithm>
#include <stdexcept>

namespace layers {

const Layer& LayerStack::get(int id) const
{
    const auto found =
        std::find_if(layers.begin(), layers.end(), [id](const Layer& layer) { return layer.id == id; });
    if (found == layers.end())
        throw std::runtime_error("there is no layer " + std::to_string(id));
    return *found;
}

Layer& LayerStack::get(int id)
{
    return const_cast<Layer&>(static_cast<const LayerStack*>(this)->get(id));
}

std::vector<const Layer*> LayerStack::childrenOf(int id) const
{
    std::vector<const Layer*> children;
    for (const Layer& layer : layers) {
        if (layer.parent == id)
            children.push_back(&layer);
    }
    return children;
}

int LayerStack::add(const std::string& name, int parent)
{
    requireParent(parent);
    Layer layer;
    layer.id = ++lastId;
    layer.name = name;
    layer.parent = parent;
    layers.push_back(std::move(layer));
    return lastId;
}

void LayerStack::setParent(int id, int parent)
{
    Layer& layer = get(id);
    requireParent(parent);
    for (int above = parent; above != kTopLevel; above = get(above).parent) {
        if (above == id)
            throw std::runtime_error("a layer cannot lie below itself");
    }
    layer.parent = parent;
}

void LayerStack::remove(int id)
{
    const int parent = get(id).parent;
    for (Layer& layer : layers) {
        if (layer.parent == id)
            layer.parent = parent;
    }
    layers.erase(std::remove_if(layers.begin(), layers.end(), [id](const Layer& l) { return l.id == id; }),
                 layers.end());
}

void LayerStack::requireParent(int parent) const
{
    if (parent != kTopLevel)
        get(parent);
}

} // namespace layers
