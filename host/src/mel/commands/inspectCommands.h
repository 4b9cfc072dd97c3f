#pragma once

#include "graph/plug.h"
#include "mel/value.h"

namespace host {
namespace mel {
class CommandRegistry;
}

// The families that registerInspectCommands is made of.
void registerListCommands(
    mel::CommandRegistry& registry); ///< ls, listRelatives, listConnections, listHistory
void registerAttributeQueries(mel::CommandRegistry& registry); ///< getAttr, attributeQuery, listAttr

/// The word that getAttr -type and attributeQuery -attributeType use: "double3", "doubleAngle", "matrix" ...
std::string attributeTypeWord(const Attribute& attribute);

} // namespace host
