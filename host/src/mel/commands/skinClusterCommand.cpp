// skinCluster: binding a shape to joints, asking and changing the influences.
#include "graph/graph.h"
#include "graph/weightRows.h"
#include "mel/commands/commandTargets.h"
#include "mel/commands/deformerCommands.h"
#include "mel/commands/geometryCommands.h"
#include "mel/commands/nodeCommands.h"
#include "nodes/bindPose.h"
#include "nodes/deformerBuild.h"
#include "nodes/geometry.h"
#include "nodes/geometryHistory.h"
#include "nodes/shapeEvaluation.h"
#include "nodes/skinWeights.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

namespace host {

namespace {

using Imath::V3d;
using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

/// What a bone fills in space: a line from its joint to the next.
struct Bone {
    V3d from, to;
    double distance(const V3d& point) const
    {
        const V3d along = to - from;
        const double length2 = along.dot(along);
        const double t = length2 > 0 ? std::clamp((point - from).dot(along) / length2, 0.0, 1.0) : 0.0;
        return (from + along * t - point).length();
    }
};

/// The bones of one influence: to each child joint. The last joint of a chain has a bone that goes on as the
/// one before it does; without it the points beyond would be as near to that one.
std::vector<Bone> bonesOf(const DagNode& joint)
{
    const V3d from = worldMatrix(joint).translation();
    std::vector<Bone> bones;
    for (const Ref<DagNode>& child : joint.children())
        if (!child->isShape())
            bones.push_back({from, worldMatrix(*child).translation()});
    if (bones.empty() && joint.parent())
        bones.push_back({from, from + (from - worldMatrix(*joint.parent()).translation())});
    if (bones.empty())
        bones.push_back({from, from});
    return bones;
}

std::vector<std::vector<Bone>> bonesOf(const std::vector<DagNode*>& joints)
{
    std::vector<std::vector<Bone>> bones;
    bones.reserve(joints.size());
    for (const DagNode* joint : joints)
        bones.push_back(bonesOf(*joint));
    return bones;
}

struct Binding {
    int maxInfluences = 5;
    double dropoff = 4.0;
};

/// Weights of one point: one over the distance to each bone, to the power of the drop-off rate, for the
/// nearest `maxInfluences` bones, in proportion.
std::vector<std::pair<std::uint32_t, double>>
boundWeights(const V3d& point, const std::vector<std::vector<Bone>>& bones, const Binding& binding)
{
    std::vector<std::pair<double, std::uint32_t>> near;
    for (std::uint32_t index = 0; index < bones.size(); ++index) {
        double distance = bones[index].front().distance(point);
        for (const Bone& bone : bones[index])
            distance = std::min(distance, bone.distance(point));
        near.emplace_back(distance, index);
    }
    std::sort(near.begin(), near.end());
    near.resize(std::min(near.size(), static_cast<std::size_t>(binding.maxInfluences)));
    const double nearest = std::max(near.front().first, 1e-9);
    double sum = 0;
    std::vector<std::pair<std::uint32_t, double>> weights;
    for (const auto& [distance, index] : near) {
        const double weight = std::pow(nearest / std::max(distance, 1e-9), binding.dropoff);
        if (weight < 1e-4)
            continue;
        weights.emplace_back(index, weight);
        sum += weight;
    }
    for (auto& weight : weights)
        weight.second /= sum;
    return weights;
}

void connectInfluence(Session& session, Node& skin, std::uint32_t index, DagNode& joint)
{
    Edits& edits = session.edits();
    edits.setMatrix(skin.plug("bindPreMatrix").element(index), worldMatrix(joint).inverse());
    edits.connect(joint.plug("worldMatrix").element(0), skin.plug("matrix").element(index));
    if (!joint.findAttribute("lockInfluenceWeights")) {
        Ref<Attribute> lock = AttributeSpec("lockInfluenceWeights", "liw", AttributeType::kBool).take();
        lock->flags.dynamic = true;
        edits.addAttribute(joint, lock);
    }
    edits.connect(joint.plug("lockInfluenceWeights"), skin.plug("lockWeights").element(index));
}

/// Joints and the one shape among what the command was given.
struct Parts {
    std::vector<DagNode*> joints;
    SelectionList shape;
};

void addWithChildren(DagNode& joint, std::vector<DagNode*>& joints)
{
    if (std::find(joints.begin(), joints.end(), &joint) == joints.end())
        joints.push_back(&joint);
    for (const Ref<DagNode>& child : joint.children())
        if (child->type().isA("joint"))
            addWithChildren(*child, joints);
}

Parts sorted(const SelectionList& targets, bool onlyNamed)
{
    Parts parts;
    for (const SelectionItem& item : targets.items) {
        DagNode* dag = item.node ? item.node->asDag() : nullptr;
        if (!dag)
            throw Error("skinCluster: " + item.node->uniqueName() + " is neither a joint nor a shape.");
        if (dag->isShape() || componentShape(*dag))
            parts.shape.items.push_back(item);
        else if (onlyNamed)
            parts.joints.push_back(dag);
        else
            addWithChildren(*dag, parts.joints);
    }
    if (parts.joints.empty() || parts.shape.items.size() != 1)
        throw Error("skinCluster needs joints and one shape.");
    return parts;
}

void refuseSecondSkin(DagNode& shape)
{
    for (Node* deformer : deformersOf(shape))
        if (deformer->type().isA("skinCluster"))
            throw Error(shape.uniqueName() + " is already connected to the skinCluster " + deformer->name() +
                        ".");
}

void requireDistance(const Args& args)
{
    if (args.integerOr("weightDistribution", 0) != 0)
        throw Error("skinCluster: only -weightDistribution 0 (distance) is supported.");
}

Value createSkin(Session& session, const Args& args)
{
    const Parts parts = sorted(commandTargets(session, args.objectNames()), args.isSet("toSelectedBones"));
    const std::vector<DeformedShape> shapes = deformedShapes(parts.shape);
    DagNode& shape = *shapes.front().shape;
    refuseSecondSkin(shape);
    requireDistance(args);
    if (args.integerOr("bindMethod", 0) != 0)
        throw Error("skinCluster: only -bindMethod 0 (closest distance) is supported.");
    Binding binding;
    binding.maxInfluences = std::max(1, args.integerOr("maximumInfluences", 5));
    binding.dropoff = args.numberOr("dropoffRate", 4.0);

    Edits& edits = session.edits();
    Node& skin =
        edits.create(*session.graph().types().find("skinCluster"), args.textOr("name", "skinCluster1"));
    edits.setNumber(skin.plug("maxInfluences"), binding.maxInfluences);
    edits.setNumber(skin.plug("maintainMaxInfluences"), args.booleanOr("obeyMaxInfluences", true) ? 1 : 0);
    edits.setNumber(skin.plug("dropoffRate"), binding.dropoff);
    edits.setNumber(skin.plug("normalizeWeights"), args.integerOr("normalizeWeights", 1));
    edits.setNumber(skin.plug("skinningMethod"), args.integerOr("skinMethod", 0));
    edits.setMatrix(skin.plug("geomMatrix"), worldMatrix(shape));
    const std::vector<V3d> points = pointPositions(shape, nullptr, true);
    wireDeformer(session, skin, shapes, placeOf(args));
    for (std::uint32_t index = 0; index < parts.joints.size(); ++index)
        connectInfluence(session, skin, index, *parts.joints[index]);
    attachBindPose(session, skin, parts.joints);

    const std::vector<std::vector<Bone>> bones = bonesOf(parts.joints);
    const Plug list = skin.plug("weightList");
    edits.replaceBelow(list, [&] {
        WeightRows& rows = list.makeRows();
        for (std::uint32_t point = 0; point < points.size(); ++point)
            for (const auto& [influence, weight] : boundWeights(points[point], bones, binding))
                rows.set(point, influence, weight);
        list.changed();
    });
    return mel::StringArray{skin.name()};
}

/// The influences that have weight on some point.
mel::StringArray weightedInfluences(Node& skin)
{
    std::set<std::uint32_t> columns;
    if (const WeightRows* const rows = skin.plug("weightList").rows())
        for (const std::uint32_t row : rows->rowIndices())
            for (const WeightRows::Entry entry : rows->row(row))
                if (entry.weight != 0.0)
                    columns.insert(entry.column);
    mel::StringArray names;
    const SkinInfluences influences(skin);
    for (std::size_t physical = 0; physical < influences.count(); ++physical)
        if (columns.count(influences.logical[physical]) != 0)
            names.push_back(influences.nodes[physical]->uniqueName());
    return names;
}

Value querySkin(const Args& args, Node& skin)
{
    mel::StringArray names;
    if (args.isSet("influence")) {
        for (const DagNode* influence : SkinInfluences(skin).nodes)
            names.push_back(influence->uniqueName());
        return names;
    }
    if (args.isSet("weightedInfluence"))
        return weightedInfluences(skin);
    if (args.isSet("geometry")) {
        for (const Ref<Node>& node : skin.graph().nodes())
            if (DagNode* shape = node->asDag();
                shape && !shape->isIntermediate() && indexInHistory(*shape, skin))
                names.push_back(shape->uniqueName());
        return names;
    }
    for (const char* flag : {"normalizeWeights", "skinMethod"})
        if (args.isSet(flag))
            return static_cast<int>(
                skin.plug(std::string(flag) == "skinMethod" ? "skinningMethod" : flag).number());
    for (const auto& [flag, attribute] :
         {std::pair("maximumInfluences", "maxInfluences"), std::pair("bindMethod", "bindMethod"),
          std::pair("obeyMaxInfluences", "maintainMaxInfluences"),
          std::pair("weightDistribution", "weightDistribution")})
        if (args.isSet(flag))
            return static_cast<int>(skin.plug(attribute).number());
    if (args.isSet("dropoffRate"))
        return skin.plug("dropoffRate").number();
    throw Error("skinCluster -query needs one of -influence, -weightedInfluence, -geometry, "
                "-normalizeWeights, -skinMethod, -maximumInfluences, -obeyMaxInfluences, -dropoffRate, "
                "-bindMethod, -weightDistribution.");
}

std::vector<std::uint32_t> rowsWith(const Plug& weightList, std::uint32_t influence)
{
    std::vector<std::uint32_t> found;
    if (const WeightRows* const rows = weightList.rows())
        for (const std::uint32_t row : rows->rowIndices())
            if (rows->has(row, influence))
                found.push_back(row);
    return found;
}

/// Takes an influence out. Its logical index stays free, the others keep theirs; the weight it had goes to
/// the others of each vertex in proportion.
void removeInfluence(Session& session, Node& skin, const std::string& name)
{
    const SkinInfluences influences(skin);
    const DagNode* const joint = session.graph().get(name).asDag();
    const std::uint32_t physical = joint ? influences.physical(*joint) : SkinInfluences::kNone;
    if (physical == SkinInfluences::kNone)
        throw Error("skinCluster: " + name + " is no influence of " + skin.name() + ".");
    const std::uint32_t column = influences.logical[physical];
    const Plug list = skin.plug("weightList");
    const std::vector<std::uint32_t> weighted = rowsWith(list, column);
    session.edits().replaceElements(list, weighted, [&] {
        WeightRows& rows = list.makeRows();
        for (const std::uint32_t row : weighted) {
            const double gone = rows.get(row, column);
            rows.erase(row, column);
            const WeightRows::Span span = rows.row(row);
            const std::vector<WeightRows::Entry> rest(span.begin(), span.end());
            double sum = 0;
            for (const WeightRows::Entry& entry : rest)
                sum += entry.weight;
            for (const WeightRows::Entry& entry : rest)
                if (sum > 0)
                    rows.set(row, entry.column, entry.weight * (1 + gone / sum));
        }
        list.changed();
    });
    for (const char* attribute : {"matrix", "lockWeights"}) {
        const Plug element = skin.plug(attribute).element(column);
        if (!element.source().isNull())
            session.edits().disconnect(element.source(), element);
        session.edits().unset(element);
    }
    session.edits().unset(skin.plug("bindPreMatrix").element(column));
}

Value editSkin(Session& session, const Args& args, Node& skin)
{
    if (args.isSet("unbind")) {
        deleteNodes(session, {&skin});
        return {};
    }
    requireDistance(args);
    if (args.isSet("dropoffRate"))
        session.edits().setNumber(skin.plug("dropoffRate"), args.number("dropoffRate"));
    if (args.isSet("obeyMaxInfluences"))
        session.edits().setNumber(skin.plug("maintainMaxInfluences"), args.boolean("obeyMaxInfluences"));
    if (args.isSet("addInfluence")) {
        DagNode* joint = session.graph().get(args.text("addInfluence")).asDag();
        if (!joint || joint->isShape())
            throw Error("skinCluster: " + args.text("addInfluence") + " is no joint or transform.");
        if (SkinInfluences(skin).physical(*joint) != SkinInfluences::kNone)
            throw Error("skinCluster: " + args.text("addInfluence") + " is an influence already.");
        const std::vector<std::uint32_t> used = skin.plug("matrix").existingIndices();
        connectInfluence(session, skin, used.empty() ? 0 : used.back() + 1, *joint);
        if (args.isSet("lockWeights"))
            session.edits().setNumber(joint->plug("lockInfluenceWeights"),
                                      args.boolean("lockWeights") ? 1 : 0);
        if (args.numberOr("weight", 0.0) != 0.0)
            throw Error(
                "skinCluster: an influence is added with -weight 0; use skinPercent to give it weight.");
    }
    if (args.isSet("removeInfluence"))
        removeInfluence(session, skin, args.text("removeInfluence"));
    if (args.isSet("normalizeWeights"))
        session.edits().setNumber(skin.plug("normalizeWeights"), args.integer("normalizeWeights"));
    if (args.isSet("skinMethod"))
        session.edits().setNumber(skin.plug("skinningMethod"), args.integer("skinMethod"));
    if (args.isSet("maximumInfluences"))
        session.edits().setNumber(skin.plug("maxInfluences"), args.integer("maximumInfluences"));
    return {};
}

/// The skinCluster that -query or -edit means: named itself, or in the history of the named shape.
Node& skinFor(Session& session, const std::string& name)
{
    Node& node = session.graph().get(name);
    if (node.type().isA("skinCluster"))
        return node;
    if (DagNode* shape = componentShape(node))
        for (Node* deformer : deformersOf(*shape))
            if (deformer->type().isA("skinCluster"))
                return *deformer;
    throw Error("skinCluster: " + name + " has no skinCluster.");
}

Value skinClusterCommand(Session& session, const Args& args)
{
    if (!args.query() && !args.edit())
        return createSkin(session, args);
    if (args.objects().size() != 1)
        throw Error("skinCluster: name the skinCluster to query or edit.");
    Node& skin = skinFor(session, args.objectNames().front());
    return args.query() ? querySkin(args, skin) : editSkin(session, args, skin);
}

} // namespace

void registerSkinClusterCommand(mel::CommandRegistry& registry)
{
    registry.add(withPlaceFlags(CommandSpec("skinCluster")
                                    .flag("n", "name", {ArgType::kString})
                                    .flag("tsb", "toSelectedBones")
                                    .flag("bm", "bindMethod", {ArgType::kInt})
                                    .flag("mi", "maximumInfluences", {ArgType::kInt})
                                    .flag("omi", "obeyMaxInfluences", {ArgType::kBool})
                                    .flag("dr", "dropoffRate", {ArgType::kFloat})
                                    .flag("nw", "normalizeWeights", {ArgType::kInt})
                                    .flag("sm", "skinMethod", {ArgType::kInt})
                                    .flag("ai", "addInfluence", {ArgType::kString})
                                    .flag("ri", "removeInfluence", {ArgType::kString})
                                    .flag("lw", "lockWeights", {ArgType::kBool})
                                    .flag("wt", "weight", {ArgType::kFloat})
                                    .flag("inf", "influence")
                                    .flag("wi", "weightedInfluence")
                                    .flag("wd", "weightDistribution", {ArgType::kInt})
                                    .flag("ub", "unbind")
                                    .flag("g", "geometry")
                                    .objects(0)
                                    .query()
                                    .edit()
                                    .undoable()),
                 skinClusterCommand);
}

} // namespace host
