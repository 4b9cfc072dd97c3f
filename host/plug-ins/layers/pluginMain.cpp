#include "layers/layerCommand.h"

#include <maya/MFnPlugin.h>

MStatus initializePlugin(MObject plugin)
{
    MFnPlugin registry(plugin, "Stand-in", "1.0", "Any");
    return registry.registerCommand("ngst2Layers", layers::LayerCommand::creator);
}

MStatus uninitializePlugin(MObject plugin)
{
    layers::LayerData::instance() = layers::LayerData();
    MFnPlugin registry(plugin);
    return registry.deregisterCommand("ngst2Layers");
}
