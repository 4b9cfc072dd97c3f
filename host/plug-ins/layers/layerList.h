#pragma once

#include "layers/layerStack.h"
#include "layers/misbehaviour.h"

#include <string>

namespace layers {

/// The layers as JSON: an array of the top level's layers, the lowest first; each holds the layers in it as
/// "children". UTF-8.
std::string layerList(const LayerStack& stack, Misbehaviour misbehaviour);

} // namespace layers
