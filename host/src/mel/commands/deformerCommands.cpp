#include "mel/commands/deformerCommands.h"

#include "graph/graph.h"
#include "mel/commands/commandTargets.h"
#include "mel/commands/register.h"
#include "nodes/shapeEvaluation.h"
#include "session.h"
#include "types/error.h"

namespace host {

Node& deformerNamed(Session& session, const mel::Args& args, const std::string& name, const char* type)
{
    Node& node = session.graph().get(name);
    if (!node.type().isA(type))
        throw Error(args.commandName() + ": " + name + " is no " + type + ".");
    return node;
}

std::vector<ShapePoints> shapePoints(Session& session, const std::vector<std::string>& names)
{
    std::vector<ShapePoints> all;
    for (const SelectionItem& item : commandTargets(session, names).items) {
        DagNode* shape = item.node ? componentShape(*item.node) : nullptr;
        if (!shape)
            throw Error("Not a shape with points: " + (item.node ? item.node->uniqueName() : std::string()));
        all.push_back({Ref<DagNode>(shape), pointIndices(*shape, item.component.get())});
    }
    return all;
}

std::uint32_t geometryIndex(Node& deformer, DagNode& shape)
{
    // From the shape upstream: the deformer may be followed by others.
    Plug feeding = shape.plug(shapeAttributes(shape)->input).source();
    while (!feeding.isNull() && feeding.node() != &deformer) {
        Node& node = *feeding.node();
        if (node.type().name == "groupParts")
            feeding = node.plug("inputGeometry").source();
        else if (node.type().isA("geometryFilter") && feeding.isElement())
            feeding = node.plug("input").element(feeding.logicalIndex()).child("inputGeometry").source();
        else
            break;
    }
    if (feeding.isNull() || feeding.node() != &deformer || !feeding.isElement())
        throw Error(deformer.uniqueName() + " does not deform " + shape.uniqueName() + ".");
    return feeding.logicalIndex();
}

mel::CommandSpec withPlaceFlags(mel::CommandSpec spec)
{
    return spec.flag("uct", "useComponentTags", {mel::ArgType::kBool}).flag("foc", "frontOfChain");
}

DeformerPlace placeOf(const mel::Args& args)
{
    const bool tagged = args.booleanOr("useComponentTags", false);
    return {tagged ? Membership::kComponentTags : Membership::kSet, args.isSet("frontOfChain")};
}

void registerDeformerCommands(mel::CommandRegistry& registry)
{
    registerClusterCommands(registry);
    registerBlendShapeCommand(registry);
    registerMaskedOffsetCommand(registry);
    registerSkinClusterCommand(registry);
    registerSkinPercentCommand(registry);
    registerSetCommands(registry);
    registerSoftModCommand(registry);
    registerLatticeCommand(registry);
    registerDagPoseCommand(registry);
}

} // namespace host
