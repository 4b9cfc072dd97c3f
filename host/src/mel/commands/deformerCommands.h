#pragma once

#include "mel/command.h"
#include "nodes/deformerBuild.h"
#include "selection/selectionList.h"

#include <string>
#include <vector>

namespace host {

class Node;
class Session;

// Shared by the deformer families.

/// The node of that name and type (or a type derived from it); throws naming command and node.
Node& deformerNamed(Session& session, const mel::Args& args, const std::string& name, const char* type);

/// The shape and point indices of each component (or whole shape) among the named or selected ones.
struct ShapePoints {
    Ref<DagNode> shape;
    std::vector<int> points;
};
std::vector<ShapePoints> shapePoints(Session& session, const std::vector<std::string>& names);

/// The flags -useComponentTags and -frontOfChain of the commands that make deformers, and what they say.
mel::CommandSpec withPlaceFlags(mel::CommandSpec spec);
DeformerPlace placeOf(const mel::Args& args);

/// Logical index of a shape among a deformer's outputs; throws when the deformer does not deform it.
std::uint32_t geometryIndex(Node& deformer, DagNode& shape);

void registerClusterCommands(mel::CommandRegistry& registry);     ///< cluster, percent
void registerBlendShapeCommand(mel::CommandRegistry& registry);   ///< blendShape
void registerMaskedOffsetCommand(mel::CommandRegistry& registry); ///< maskedOffset
void registerSkinClusterCommand(mel::CommandRegistry& registry);  ///< skinCluster
void registerSkinPercentCommand(mel::CommandRegistry& registry);  ///< skinPercent
void registerSoftModCommand(mel::CommandRegistry& registry);      ///< softMod
void registerLatticeCommand(mel::CommandRegistry& registry);      ///< lattice
void registerSetCommands(mel::CommandRegistry& registry);         ///< sets
void registerDagPoseCommand(mel::CommandRegistry& registry);      ///< dagPose

} // namespace host
