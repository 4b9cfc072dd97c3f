#pragma once

#include <string>

namespace layers {

/// Ways in which the command can break its contract, for tests of those who rely on it.
enum class Misbehaviour {
    kNone,
    kFailingList,   ///< the layer list cannot be queried
    kFailingRead,   ///< weights cannot be queried
    kFailingCount,  ///< nothing was ever painted, and the vertices cannot be counted either
    kFailingWrite,  ///< weights cannot be edited
    kBrokenList,    ///< the layer list is no JSON
    kListIsObject,  ///< the layer list is no array
    kListOfNumbers, ///< its entries are no objects
    kNoName,        ///< its entries lack a key
    kNoId,
    kNoChildren,
    kNameIsNumber, ///< a value of its entries has the wrong type
    kIdIsText,
    kIdIsFraction,
    kIdIsHuge, ///< beyond 32 bits
    kChildrenIsText,
    kTooFewWeights,  ///< a read gives one number less
    kTooManyWeights, ///< a read gives one number more
    kVanishedId      ///< the list tells ids that no layer has
};

/// Throws std::runtime_error for a kind that does not exist.
Misbehaviour misbehaviourNamed(const std::string& name);

} // namespace layers
