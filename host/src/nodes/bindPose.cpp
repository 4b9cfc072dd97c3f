#include "nodes/bindPose.h"

#include "graph/graph.h"
#include "nodes/geometry.h"
#include "nodes/transformMatrix.h"
#include "nodes/transformPlacing.h"
#include "scene/keptXform.h"
#include "session.h"
#include "types/error.h"
#include "types/numberText.h"
#include "undo/edits.h"

#include <ImathMatrixAlgo.h>
#include <ImathQuat.h>

#include <algorithm>
#include <cmath>

namespace host {

namespace {

using Imath::M44d;
using Imath::V3d;

constexpr double kSamePlace = 1e-5;

/// The joints and everything above them, what is above first.
std::vector<DagNode*> withAncestors(const std::vector<DagNode*>& joints)
{
    std::vector<DagNode*> members;
    for (DagNode* const joint : joints) {
        std::vector<DagNode*> path;
        for (DagNode* step = joint; step; step = step->parent())
            path.push_back(step);
        for (auto step = path.rbegin(); step != path.rend(); ++step)
            if (std::find(members.begin(), members.end(), *step) == members.end())
                members.push_back(*step);
    }
    return members;
}

void append(std::string& text, double value)
{
    text += ' ';
    text += generalText(value, 17);
}

void append(std::string& text, const V3d& value)
{
    for (int axis = 0; axis < 3; ++axis)
        append(text, value[axis]);
}

void appendQuaternion(std::string& text, const V3d& degrees)
{
    const Imath::Quatd turn = Imath::extractQuat(rotationMatrix(degrees, 0));
    append(text, turn.v);
    append(text, turn.r);
}

/// The transformation in parts, as scenes keep it in bind poses: the matrix alone would not say what is
/// joint orient and what is rotation.
std::string partsText(DagNode& node)
{
    const TransformParts parts = transformParts(node);
    std::string text = "\"xform\"";
    append(text, parts.scale);
    append(text, parts.rotate * (M_PI / 180.0));
    append(text, parts.rotateOrder);
    append(text, parts.translate);
    append(text, parts.shear);
    append(text, parts.scalePivot);
    append(text, parts.scalePivotTranslate);
    append(text, parts.rotatePivot);
    append(text, parts.rotatePivotTranslate);
    appendQuaternion(text, parts.rotateAxis);
    appendQuaternion(text, parts.jointOrient);
    append(text, parts.inverseScale);
    const bool compensates = node.type().isA("joint") && node.plug("segmentScaleCompensate").number() != 0.0;
    return text + (compensates ? " yes" : " no");
}

auto findMember(const std::vector<PoseMember>& members, const DagNode* node)
{
    return std::find_if(members.begin(), members.end(),
                        [node](const PoseMember& member) { return member.node == node; });
}

void enroll(Session& session, Node& pose, DagNode& node, std::uint32_t index)
{
    Edits& edits = session.edits();
    edits.connect(node.plug("message"), pose.plug("members").element(index));
    const Plug parent = pose.plug("parents").element(index);
    const std::vector<PoseMember> members = membersOf(pose);
    const auto above = findMember(members, node.parent());
    if (node.parent() && above != members.end())
        edits.connect(pose.plug("members").element(above->index), parent);
    else
        edits.connect(pose.plug("world"), parent);
    const Plug place = pose.plug("worldMatrix").element(index);
    edits.setMatrix(place, worldMatrix(node));
    if (node.findAttribute("bindPose") && node.plug("bindPose").destinations().empty()) {
        edits.setMatrix(node.plug("bindPose"), worldMatrix(node));
        edits.connect(node.plug("bindPose"), place);
    }
    // The matrix is read back from the text: scenes keep the text as long as they agree to the last bit.
    const std::string statement =
        "setAttr \".xm[" + std::to_string(index) + "]\" -type \"matrix\" " + partsText(node);
    std::string path;
    M44d matrix;
    if (!readKeptXform(statement, path, matrix))
        throw Error("The pose of " + node.uniqueName() + " cannot be kept.");
    edits.setMatrix(pose.plug("xformMatrix").element(index), matrix);
    pose.keptStatements.push_back(statement);
}

bool hasMembers(Node& pose, const std::vector<DagNode*>& nodes)
{
    const std::vector<PoseMember> members = membersOf(pose);
    return std::all_of(nodes.begin(), nodes.end(),
                       [&](DagNode* node) { return findMember(members, node) != members.end(); });
}

} // namespace

std::vector<Node*> bindPosesOf(Node& node)
{
    std::vector<Node*> poses;
    for (const Plug& user : node.plug("message").destinations()) {
        Node& pose = *user.node();
        if (pose.type().isA("dagPose") && user.attribute()->longName == "members" &&
            pose.plug("bindPose").number() != 0.0)
            poses.push_back(&pose);
    }
    return poses;
}

std::vector<PoseMember> membersOf(Node& pose)
{
    std::vector<PoseMember> members;
    const Plug list = pose.plug("members");
    for (const std::uint32_t index : list.existingIndices()) {
        const Plug source = list.element(index).source();
        if (DagNode* const node = source.isNull() ? nullptr : source.node()->asDag())
            members.push_back({index, node});
    }
    return members;
}

std::vector<DagNode*> strayedFrom(Node& pose)
{
    std::vector<DagNode*> strayed;
    for (const PoseMember& member : membersOf(pose)) {
        const M44d place = pose.plug("xformMatrix").element(member.index).matrix();
        if (!member.node->plug("matrix").matrix().equalWithAbsError(place, kSamePlace))
            strayed.push_back(member.node);
    }
    return strayed;
}

void restorePose(Session& session, Node& pose, bool inWorld)
{
    const Plug places = pose.plug(inWorld ? "worldMatrix" : "xformMatrix");
    for (const PoseMember& member : membersOf(pose)) {
        const M44d place = places.element(member.index).matrix();
        if (inWorld)
            placeInWorld(session, *member.node, place);
        else
            placeLocally(session, *member.node, place);
    }
}

void attachBindPose(Session& session, Node& skin, const std::vector<DagNode*>& joints)
{
    const std::vector<DagNode*> members = withAncestors(joints);
    Edits& edits = session.edits();
    Node* pose = nullptr;
    for (Node* const known : bindPosesOf(*joints.front()))
        if (!pose && hasMembers(*known, members) && strayedFrom(*known).empty())
            pose = known;
    if (!pose) {
        pose = &edits.create(*session.graph().types().find("dagPose"), "bindPose1");
        edits.setNumber(pose->plug("bindPose"), 1);
        for (std::uint32_t index = 0; index < members.size(); ++index)
            enroll(session, *pose, *members[index], index);
    }
    edits.connect(pose->plug("message"), skin.plug("bindPose"));
}

} // namespace host
