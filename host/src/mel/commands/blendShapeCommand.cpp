// blendShape: targets on a base, by live connection; asking and setting weights; adding targets.
#include "graph/graph.h"
#include "mel/commands/commandTargets.h"
#include "mel/commands/deformerCommands.h"
#include "nodes/blendShapeEvaluation.h"
#include "nodes/deformerBuild.h"
#include "nodes/filterAccess.h"
#include "nodes/geometry.h"
#include "nodes/shapeEvaluation.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <algorithm>
#include <cmath>

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

using Shapes = std::vector<Ref<DagNode>>;

/// The visible shapes with points at and below an object, parents first.
void collectShapes(DagNode& node, Shapes& shapes)
{
    if (shapeAttributes(node)) {
        if (!node.isIntermediate())
            shapes.emplace_back(&node);
        return;
    }
    for (const Ref<DagNode>& child : node.children())
        collectShapes(*child, shapes);
}

Shapes shapesBelow(const SelectionItem& item)
{
    Shapes shapes;
    if (DagNode* dag = item.node ? item.node->asDag() : nullptr)
        collectShapes(*dag, shapes);
    if (shapes.empty())
        throw Error("blendShape: " + (item.node ? item.node->uniqueName() : std::string("the selection")) +
                    " has no shape that can be blended.");
    return shapes;
}

/// The base as the deformer is wired: chosen points of one shape, or every shape below an object.
std::vector<DeformedShape> baseShapes(const SelectionItem& item)
{
    if (item.component)
        return deformedShapes(SelectionList{{item}});
    std::vector<DeformedShape> bases;
    for (const Ref<DagNode>& shape : shapesBelow(item))
        bases.push_back({shape, {}});
    return bases;
}

GeometryRef geometryOf(DagNode& shape)
{
    GeometryRef geometry = shapeGeometry(shape);
    if (!geometry)
        throw Error("blendShape: " + shape.uniqueName() + " has no points.");
    return geometry;
}

/// Refuses what can not be blended: other kinds of shapes, and other numbers of points with -topologyCheck.
void requireMatch(const Shapes& targets, const std::vector<DeformedShape>& bases, bool sameTopology)
{
    if (targets.size() != bases.size())
        throw Error("blendShape: " + targets.front()->uniqueName() + " has " +
                    std::to_string(targets.size()) + " shapes to blend, the base " +
                    std::to_string(bases.size()) + ".");
    for (std::size_t i = 0; i < bases.size(); ++i) {
        const GeometryRef target = geometryOf(*targets[i]), base = geometryOf(*bases[i].shape);
        if (target->kind() != base->kind() || (sameTopology && target->count() != base->count()))
            throw Error("blendShape: " + targets[i]->uniqueName() + " does not have the topology of " +
                        bases[i].shape->uniqueName() + ".");
    }
}

/// The name of an object without path and namespace, numbered when the node uses it for something else.
std::string freeAlias(const Node& blend, const std::string& name)
{
    const std::size_t colon = name.find_last_of(":|");
    const std::string plain = colon == std::string::npos ? name : name.substr(colon + 1);
    const auto taken = [&](const std::string& candidate) {
        return blend.findAttribute(candidate) ||
               std::any_of(blend.aliases.begin(), blend.aliases.end(),
                           [&](const auto& entry) { return entry.first == candidate; });
    };
    std::string alias = plain;
    for (int number = 1; taken(alias); ++number)
        alias = plain + std::to_string(number);
    return alias;
}

std::string weightPath(std::uint32_t target)
{
    return "weight[" + std::to_string(target) + "]";
}

std::string aliasOf(const Node& blend, std::uint32_t target)
{
    for (const auto& [alias, attribute] : blend.aliases)
        if (attribute == weightPath(target) || attribute == "w[" + std::to_string(target) + "]")
            return alias;
    return {};
}

/// The weight of a target exists from the start, under the target's name.
void ensureWeight(Session& session, Node& blend, std::uint32_t target, const std::string& name)
{
    const Plug weight = blend.plug("weight").element(target);
    if (!weight.exists())
        session.edits().setNumber(weight, 0.0);
    if (!aliasOf(blend, target).empty())
        return;
    auto aliases = blend.aliases;
    aliases.emplace_back(freeAlias(blend, name), weightPath(target));
    session.edits().setAliases(blend, std::move(aliases));
}

struct TargetPlace {
    std::uint32_t geometry;
    std::uint32_t target;
    double weight; ///< at which the shape is reached; below 1 it is an in-between
};

/// Connects a shape and keeps its deltas in the node at once, so that it may be deleted in the next line.
void connectTarget(Session& session, Node& blend, DagNode& shape, const TargetPlace& place)
{
    const double item = 5000.0 + std::round(1000.0 * place.weight);
    if (!(item > 5000.0) || item > 1e9)
        throw Error("blendShape: a target cannot be reached at the weight " + std::to_string(place.weight) +
                    ".");
    const Plug group =
        blend.plug("inputTarget").element(place.geometry).child("inputTargetGroup").element(place.target);
    const Plug live = group.child("inputTargetItem").element(static_cast<std::uint32_t>(item)).child(0);
    session.edits().connect(shape.plug(shapeAttributes(shape)->world).element(0), live, true);
    session.edits().replaceBelow(group, [&] {
        const Plug input = blend.plug("input").element(place.geometry).child("inputGeometry");
        if (const auto base = std::dynamic_pointer_cast<const Geometry>(input.data()))
            targetShapes(blend, place.geometry, place.target, *base);
    });
}

void setWeights(Session& session, Node& blend, const Args& args)
{
    for (int use = 0; use < args.uses("weight"); ++use) {
        const int index = args.integer("weight", 0, use);
        const Plug weights = blend.plug("weight");
        const std::vector<std::uint32_t> known = weights.existingIndices();
        if (index < 0 || !std::binary_search(known.begin(), known.end(), static_cast<std::uint32_t>(index)))
            throw Error("blendShape: " + blend.name() + " has no target " + std::to_string(index) + ".");
        session.edits().setNumber(weights.element(static_cast<std::uint32_t>(index)),
                                  args.number("weight", 1, use));
    }
}

Value createBlendShape(Session& session, const Args& args)
{
    if (args.isSet("target") || args.isSet("weightCount"))
        throw Error("blendShape: -target and -weightCount need -query or -edit; new targets are named before "
                    "the base.");
    std::vector<SelectionItem> items = commandTargets(session, args.objectNames()).items;
    const std::vector<DeformedShape> bases = baseShapes(items.back());
    items.pop_back();
    const bool check = args.booleanOr("topologyCheck", true);
    std::vector<Shapes> targets;
    for (const SelectionItem& item : items) {
        targets.push_back(shapesBelow(item));
        requireMatch(targets.back(), bases, check);
    }
    Edits& edits = session.edits();
    Node& blend =
        edits.create(*session.graph().types().find("blendShape"), args.textOr("name", "blendShape1"));
    edits.setNumber(blend.plug("topologyCheck"), check ? 1 : 0);
    if (args.isSet("envelope"))
        edits.setNumber(blend.plug("envelope"), args.number("envelope"));
    wireDeformer(session, blend, bases, placeOf(args));
    for (std::uint32_t target = 0; target < targets.size(); ++target) {
        ensureWeight(session, blend, target, transformOf(items[target]).name());
        for (std::uint32_t geometry = 0; geometry < bases.size(); ++geometry)
            connectTarget(session, blend, *targets[target][geometry], {geometry, target, 1.0});
    }
    setWeights(session, blend, args);
    return mel::StringArray{blend.name()};
}

/// -target base index target weight.
void addTarget(Session& session, Node& blend, const Args& args, int use)
{
    const int index = args.integer("target", 1, use);
    if (index < 0)
        throw Error("blendShape: a target's index must not be negative.");
    const auto named = [&](int argument) {
        return commandTargets(session, {args.text("target", argument, use)}).items.front();
    };
    const SelectionItem target = named(2);
    const std::vector<DeformedShape> bases = baseShapes(named(0));
    const Shapes shapes = shapesBelow(target);
    requireMatch(shapes, bases, blend.plug("topologyCheck").number() != 0.0);
    ensureWeight(session, blend, static_cast<std::uint32_t>(index), transformOf(target).name());
    for (std::size_t i = 0; i < bases.size(); ++i)
        connectTarget(session, blend, *shapes[i],
                      {geometryIndex(blend, *bases[i].shape), static_cast<std::uint32_t>(index),
                       args.number("target", 3, use)});
}

/// What a target is called: the object that is connected, or its alias when that has been deleted.
std::string targetName(Node& blend, std::uint32_t target)
{
    const Plug inputs = blend.plug("inputTarget");
    for (const std::uint32_t geometry : inputs.existingIndices()) {
        const Plug items =
            inputs.element(geometry).child("inputTargetGroup").element(target).child("inputTargetItem");
        const std::vector<std::uint32_t> known = items.existingIndices();
        for (auto item = known.rbegin(); item != known.rend(); ++item) {
            const Plug source = items.element(*item).child("inputGeomTarget").source();
            DagNode* shape = source.isNull() ? nullptr : source.node()->asDag();
            if (shape)
                return shape->parent() ? shape->parent()->uniqueName() : shape->uniqueName();
        }
    }
    const std::string alias = aliasOf(blend, target);
    return alias.empty() ? weightPath(target) : alias;
}

Value queryBlendShape(const Args& args, Node& blend)
{
    const Plug weights = blend.plug("weight");
    const std::vector<std::uint32_t> indices = weights.existingIndices();
    if (args.isSet("weightCount"))
        return static_cast<int>(indices.size());
    if (args.isSet("envelope"))
        return blend.plug("envelope").number();
    if (args.isSet("topologyCheck"))
        return static_cast<int>(blend.plug("topologyCheck").number());
    if (args.isSet("weight")) {
        mel::FloatArray values;
        for (const std::uint32_t index : indices)
            values.push_back(weights.element(index).number());
        return values;
    }
    mel::StringArray names;
    if (args.isSet("target")) {
        for (const std::uint32_t index : indices)
            names.push_back(targetName(blend, index));
        return names;
    }
    if (args.isSet("geometry")) {
        for (const std::uint32_t index : filterIndices(blend))
            if (DagNode* shape = outputShape(blend, index))
                names.push_back(shape->uniqueName());
        return names;
    }
    throw Error("blendShape -query needs one of -target, -weight, -weightCount, -geometry, -envelope, "
                "-topologyCheck.");
}

Value blendShapeCommand(Session& session, const Args& args)
{
    if (!args.query() && !args.edit())
        return createBlendShape(session, args);
    if (args.objects().size() != 1)
        throw Error("blendShape: name the blendShape to query or edit.");
    Node& blend = deformerNamed(session, args, args.objectNames().front(), "blendShape");
    if (args.query())
        return queryBlendShape(args, blend);
    for (const char* flag : {"name", "useComponentTags", "frontOfChain", "weightCount", "geometry"})
        if (args.isSet(flag))
            throw Error(std::string("blendShape: -") + flag + " cannot be edited.");
    if (args.isSet("topologyCheck"))
        session.edits().setNumber(blend.plug("topologyCheck"), args.boolean("topologyCheck") ? 1 : 0);
    if (args.isSet("envelope"))
        session.edits().setNumber(blend.plug("envelope"), args.number("envelope"));
    for (int use = 0; use < args.uses("target"); ++use)
        addTarget(session, blend, args, use);
    setWeights(session, blend, args);
    return {};
}

} // namespace

void registerBlendShapeCommand(mel::CommandRegistry& registry)
{
    registry.add(
        withPlaceFlags(
            CommandSpec("blendShape")
                .flag("n", "name", {ArgType::kString})
                .flag("t", "target", {ArgType::kString, ArgType::kInt, ArgType::kString, ArgType::kFloat})
                .multi()
                .flag("w", "weight", {ArgType::kInt, ArgType::kFloat})
                .multi()
                .flag("wc", "weightCount")
                .flag("g", "geometry")
                .flag("en", "envelope", {ArgType::kFloat})
                .flag("tc", "topologyCheck", {ArgType::kBool})
                .objects(0)
                .query()
                .edit()
                .undoable()),
        blendShapeCommand);
}

} // namespace host
