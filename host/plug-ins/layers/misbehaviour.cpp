#include "layers/misbehaviour.h"

#include <stdexcept>

namespace layers {

namespace {

struct Row {
    const char* name;
    Misbehaviour kind;
};

const Row kRows[] = {
    {"none", Misbehaviour::kNone},
    {"failingList", Misbehaviour::kFailingList},
    {"failingRead", Misbehaviour::kFailingRead},
    {"failingCount", Misbehaviour::kFailingCount},
    {"failingWrite", Misbehaviour::kFailingWrite},
    {"brokenList", Misbehaviour::kBrokenList},
    {"listIsObject", Misbehaviour::kListIsObject},
    {"listOfNumbers", Misbehaviour::kListOfNumbers},
    {"noName", Misbehaviour::kNoName},
    {"noId", Misbehaviour::kNoId},
    {"noChildren", Misbehaviour::kNoChildren},
    {"nameIsNumber", Misbehaviour::kNameIsNumber},
    {"idIsText", Misbehaviour::kIdIsText},
    {"idIsFraction", Misbehaviour::kIdIsFraction},
    {"idIsHuge", Misbehaviour::kIdIsHuge},
    {"childrenIsText", Misbehaviour::kChildrenIsText},
    {"tooFewWeights", Misbehaviour::kTooFewWeights},
    {"tooManyWeights", Misbehaviour::kTooManyWeights},
    {"vanishedId", Misbehaviour::kVanishedId},
};

} // namespace

Misbehaviour misbehaviourNamed(const std::string& name)
{
    for (const Row& row : kRows) {
        if (name == row.name)
            return row.kind;
    }
    throw std::runtime_error("there is no misbehaviour \"" + name + "\"");
}

} // namespace layers
