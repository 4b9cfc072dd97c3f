#pragma once

#include "layers/layerArguments.h"
#include "layers/layerComposer.h"
#include "layers/misbehaviour.h"

#include <maya/MPxCommand.h>

#include <vector>

namespace layers {

/// The layers of one shape. A shape that was deleted keeps its entry; nothing finds it again.
struct ShapeLayers {
    MObject shape;
    BaseWeights base;
    LayerStack stack;
};

/// What the plug-in keeps from call to call; emptied when it is unloaded.
struct LayerData {
    std::vector<ShapeLayers> shapes;
    Misbehaviour misbehaviour = Misbehaviour::kNone;

    static LayerData& instance();
};

/// The command ngst2Layers; README.md lists its forms. Errors name the shape and change nothing.
class LayerCommand : public MPxCommand {
public:
    static void* creator() { return new LayerCommand; }
    MStatus doIt(const MArgList& args) override;

private:
    void query(const LayerArguments& args);
    void queryWeights(const LayerArguments& args, const ShapeLayers& layers, const SkinShape& shape);
    void edit(const LayerArguments& args);
    void editLayer(const LayerArguments& args, ShapeLayers& layers, const SkinShape& shape);
};

} // namespace layers
