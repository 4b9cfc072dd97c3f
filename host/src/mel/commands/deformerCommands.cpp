#include "mel/commands/deformerCommands.h"

#include "graph/graph.h"
#include "mel/commands/commandTargets.h"
#include "mel/commands/register.h"
#include "nodes/geometryHistory.h"
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
    const auto index = indexInHistory(shape, deformer);
    if (!index)
        throw Error(deformer.uniqueName() + " does not deform " + shape.uniqueName() + ".");
    return *index;
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
