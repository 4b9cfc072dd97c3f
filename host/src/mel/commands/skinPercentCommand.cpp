// skinPercent: asking and setting skin weights of points.
#include "graph/graph.h"
#include "mel/commands/deformerCommands.h"
#include "session.h"
#include "types/api.h"
#include "types/error.h"
#include "undo/edits.h"

#include <maya/MDagPath.h>
#include <maya/MDagPathArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MIntArray.h>

#include <algorithm>

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

/// A skin and its influences in physical order.
class Skin {
public:
    explicit Skin(Node& node) : functions(Api::wrap(&node)) { functions.influenceObjects(influences); }

    unsigned int physicalIndex(Session& session, const std::string& name) const
    {
        const Node& joint = session.graph().get(name);
        for (unsigned int index = 0; index < influences.length(); ++index)
            if (Api::node(influences[index]) == &joint)
                return index;
        throw Error("skinPercent: " + name + " is no influence.");
    }
    unsigned int count() const { return influences.length(); }
    MIntArray allColumns() const
    {
        MIntArray columns;
        for (unsigned int column = 0; column < count(); ++column)
            columns.append(static_cast<int>(column));
        return columns;
    }
    bool isLocked(unsigned int column) const
    {
        Node& joint = *Api::node(influences[column]);
        return joint.findAttribute("lockInfluenceWeights") &&
               joint.plug("lockInfluenceWeights").number() != 0.0;
    }

    MDoubleArray weights(const ShapePoints& at) const
    {
        MDoubleArray values;
        unsigned int columns = 0;
        if (!functions.getWeights(Api::path(at.shape.get()), component(at), values, columns))
            throw Error("skinPercent: " + at.shape->uniqueName() + " is not deformed by this skinCluster.");
        return values;
    }
    void set(const ShapePoints& at, MIntArray columns, MDoubleArray values, bool normalize)
    {
        if (!functions.setWeights(Api::path(at.shape.get()), component(at), columns, values, normalize))
            throw Error("skinPercent: the weights of " + at.shape->uniqueName() + " cannot be set.");
    }

private:
    static MObject component(const ShapePoints& at)
    {
        return Api::wrap(pointComponent(*at.shape, at.points).get());
    }

    MFnSkinCluster functions;
    MDagPathArray influences;
};

Value query(Session& session, const Args& args, const Skin& skin, const std::vector<ShapePoints>& points)
{
    mel::FloatArray all;
    const bool one = args.isSet("transform");
    const unsigned int asked = one ? skin.physicalIndex(session, args.text("transform")) : 0;
    for (const ShapePoints& each : points) {
        const MDoubleArray weights = skin.weights(each);
        for (unsigned int k = 0; k < weights.length(); ++k)
            if ((!one || k % skin.count() == asked) && !(weights[k] < args.numberOr("ignoreBelow", -1.0)))
                all.push_back(weights[k]);
    }
    if (one && all.size() == 1)
        return all.front();
    return all;
}

/// Each point's weights scaled to the sum 1; those of locked influences stay and the others share the rest.
MDoubleArray scaledToOne(MDoubleArray rows, const Skin& skin, bool wanted)
{
    for (unsigned int first = 0; wanted && first < rows.length(); first += skin.count()) {
        double locked = 0.0, free = 0.0;
        for (unsigned int k = 0; k < skin.count(); ++k)
            (skin.isLocked(k) ? locked : free) += rows[first + k];
        for (unsigned int k = 0; free > 0.0 && k < skin.count(); ++k)
            if (!skin.isLocked(k))
                rows[first + k] *= std::max(0.0, 1.0 - locked) / free;
    }
    return rows;
}

/// -transformValue pairs with -zeroRemainingInfluences: the rows hold nothing else, whatever is locked.
void setValuesAlone(Session& session, const Args& args, Skin& skin, const ShapePoints& at)
{
    MDoubleArray rows(static_cast<unsigned int>(at.points.size()) * skin.count(), 0.0);
    const MDoubleArray before = skin.weights(at);
    for (int use = 0; use < args.uses("transformValue"); ++use) {
        const unsigned int column = skin.physicalIndex(session, args.text("transformValue", 0, use));
        for (unsigned int k = column; k < rows.length(); k += skin.count())
            rows[k] =
                (args.booleanOr("relative", false) ? before[k] : 0.0) + args.number("transformValue", 1, use);
    }
    skin.set(at, skin.allColumns(), scaledToOne(rows, skin, args.booleanOr("normalize", true)), false);
}

/// -transformValue pairs: the influences' new values for every point, or steps with -relative.
void setValues(Session& session, const Args& args, Skin& skin, const ShapePoints& at)
{
    const bool normalize = args.booleanOr("normalize", true);
    const MDoubleArray before = skin.weights(at);
    MIntArray columns;
    MDoubleArray values;
    for (int use = 0; use < args.uses("transformValue"); ++use)
        columns.append(static_cast<int>(skin.physicalIndex(session, args.text("transformValue", 0, use))));
    for (unsigned int point = 0; point < at.points.size(); ++point)
        for (int use = 0; use < args.uses("transformValue"); ++use) {
            const auto column = static_cast<unsigned int>(columns[static_cast<unsigned int>(use)]);
            const double value = args.number("transformValue", 1, use);
            values.append(args.booleanOr("relative", false) ? before[point * skin.count() + column] + value
                                                            : value);
        }
    skin.set(at, columns, values, normalize);
}

/// -normalize alone: each point's weights scaled to the sum 1.
void normalize(Skin& skin, const ShapePoints& at)
{
    skin.set(at, skin.allColumns(), scaledToOne(skin.weights(at), skin, true), false);
}

/// -pruneWeights: smaller weights go, except those of locked influences and where nothing else would be left.
void prune(const Args& args, Skin& skin, const ShapePoints& at)
{
    const double limit = args.number("pruneWeights");
    MDoubleArray values = skin.weights(at);
    for (unsigned int first = 0; first < values.length(); first += skin.count()) {
        double rest = 0.0;
        for (unsigned int k = 0; k < skin.count(); ++k)
            rest += skin.isLocked(k) || values[first + k] >= limit ? values[first + k] : 0.0;
        for (unsigned int k = 0; rest > 0.0 && k < skin.count(); ++k)
            if (!skin.isLocked(k) && values[first + k] < limit)
                values[first + k] = 0.0;
    }
    skin.set(at, skin.allColumns(), scaledToOne(values, skin, args.booleanOr("normalize", true)), false);
}

std::vector<std::uint32_t> rowsOf(const std::vector<ShapePoints>& shapes)
{
    std::vector<std::uint32_t> rows;
    for (const ShapePoints& each : shapes)
        rows.insert(rows.end(), each.points.begin(), each.points.end());
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

Value skinPercentCommand(Session& session, const Args& args)
{
    std::vector<std::string> names = args.objectNames();
    if (names.empty())
        throw Error("skinPercent: name the skinCluster.");
    Node& node = deformerNamed(session, args, names.front(), "skinCluster");
    names.erase(names.begin());
    const std::vector<ShapePoints> points = shapePoints(session, names);
    Skin skin(node);
    if (args.query())
        return query(session, args, skin, points);
    if (!args.isSet("transformValue") && !args.isSet("pruneWeights") && !args.booleanOr("normalize", false))
        throw Error(
            "skinPercent needs -transformValue, -pruneWeights or -normalize, or -query with -transform "
            "or -value.");
    session.edits().replaceElements(node.plug("weightList"), rowsOf(points), [&] {
        for (const ShapePoints& each : points) {
            if (args.isSet("transformValue") && args.booleanOr("zeroRemainingInfluences", false))
                setValuesAlone(session, args, skin, each);
            else if (args.isSet("transformValue"))
                setValues(session, args, skin, each);
            if (args.isSet("pruneWeights"))
                prune(args, skin, each);
            else if (!args.isSet("transformValue"))
                normalize(skin, each);
        }
    });
    return {};
}

} // namespace

void registerSkinPercentCommand(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("skinPercent")
                     .flag("tv", "transformValue", {ArgType::kString, ArgType::kFloat})
                     .multi()
                     .flag("t", "transform", {ArgType::kString})
                     .queryArgs()
                     .flag("v", "value")
                     .flag("ib", "ignoreBelow", {ArgType::kFloat})
                     .queryArgs()
                     .flag("prw", "pruneWeights", {ArgType::kFloat})
                     .flag("zri", "zeroRemainingInfluences", {ArgType::kBool})
                     .flag("nrm", "normalize", {ArgType::kBool})
                     .flag("r", "relative", {ArgType::kBool})
                     .objects(1)
                     .query()
                     .undoable(),
                 skinPercentCommand);
}

} // namespace host
