#include "mel/command.h"
#include "mel/commands/selectionCommands.h"
#include "selection/falloffCurve.h"
#include "selection/selectionState.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <array>
#include <type_traits>

namespace host {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

namespace {

/// Sets one of the selection's options or groups of options, recorded for undo. New soft-selection or
/// symmetry options make a rich selection that was set before void.
template <class Options>
void record(Session& session, Options SelectionState::*member, const Options& after)
{
    const auto set = [member](const Options& options) {
        return [member, options](Session& target) {
            target.selection().*member = options;
            if constexpr (std::is_class_v<Options>)
                target.selection().optionsChanged();
        };
    };
    session.edits().perform(set(after), set(session.selection().*member));
}

double notNegative(const Args& args, const std::string& flag)
{
    const double number = args.number(flag);
    if (!(number >= 0.0))
        throw Error(args.commandName() + ": -" + flag + " cannot be negative");
    return number;
}

[[noreturn]] void queryWithoutFlag(const Args& args)
{
    throw Error(args.commandName() + ": the query needs a flag that says what to tell");
}

Value querySoftSelect(const SoftSelectOptions& options, const Args& args)
{
    if (args.isSet("softSelectEnabled"))
        return options.enabled;
    if (args.isSet("softSelectFalloff"))
        return static_cast<int>(options.falloff);
    if (args.isSet("softSelectDistance"))
        return options.distance;
    if (args.isSet("softSelectCurve"))
        return falloffCurveText(options.curve);
    queryWithoutFlag(args);
}

Value softSelect(Session& session, const Args& args)
{
    if (args.query())
        return querySoftSelect(session.selection().soft, args);
    SoftSelectOptions options = session.selection().soft;
    if (args.isSet("softSelectReset"))
        options = SoftSelectOptions();
    options.enabled = args.booleanOr("softSelectEnabled", options.enabled);
    if (args.isSet("softSelectFalloff")) {
        const int falloff = args.integer("softSelectFalloff");
        if (falloff < SoftSelectOptions::kVolume || falloff > SoftSelectOptions::kObject)
            throw Error("softSelect: -softSelectFalloff takes 0 (volume), 1 (surface), 2 (global) or 3 "
                        "(object), not " +
                        std::to_string(falloff));
        options.falloff = static_cast<SoftSelectOptions::Falloff>(falloff);
    }
    if (args.isSet("softSelectDistance"))
        options.distance = notNegative(args, "softSelectDistance");
    if (args.isSet("softSelectCurve"))
        options.curve = parseFalloffCurve(args.text("softSelectCurve"));
    record(session, &SelectionState::soft, options);
    return {};
}

constexpr std::array<const char*, 3> kAboutNames = {"object", "world", "topo"};
constexpr std::array<const char*, 3> kAxisNames = {"x", "y", "z"};

int choice(const Args& args, const std::string& flag, const std::array<const char*, 3>& names)
{
    const std::string given = args.text(flag);
    for (std::size_t at = 0; at < names.size(); ++at)
        if (given == names[at])
            return static_cast<int>(at);
    throw Error(args.commandName() + ": -" + flag + " takes " + names[0] + ", " + names[1] + " or " +
                names[2] + ", not " + given);
}

Value querySymmetry(const SymmetryOptions& options, const Args& args)
{
    if (args.isSet("symmetry"))
        return options.enabled;
    if (args.isSet("about"))
        return kAboutNames[static_cast<std::size_t>(options.about)];
    if (args.isSet("axis"))
        return kAxisNames[static_cast<std::size_t>(options.axis)];
    if (args.isSet("tolerance"))
        return options.tolerance;
    if (args.isSet("preserveSeam"))
        return options.preserveSeam;
    if (args.isSet("seamTolerance"))
        return options.seamTolerance;
    if (args.isSet("topoSymmetry"))
        return false;
    queryWithoutFlag(args);
}

Value symmetricModelling(Session& session, const Args& args)
{
    if (args.query())
        return querySymmetry(session.selection().symmetry, args);
    SymmetryOptions options = session.selection().symmetry;
    if (args.isSet("reset"))
        options = SymmetryOptions();
    options.enabled = args.booleanOr("symmetry", options.enabled);
    if (args.isSet("about"))
        options.about = static_cast<SymmetryOptions::About>(choice(args, "about", kAboutNames));
    if (options.about == SymmetryOptions::kTopology || args.booleanOr("topoSymmetry", false))
        throw Error("symmetricModelling: topological symmetry is not supported (use -about object or world)");
    if (args.isSet("axis"))
        options.axis = choice(args, "axis", kAxisNames);
    if (args.isSet("tolerance"))
        options.tolerance = notNegative(args, "tolerance");
    options.preserveSeam = args.booleanOr("preserveSeam", options.preserveSeam);
    if (args.isSet("seamTolerance"))
        options.seamTolerance = notNegative(args, "seamTolerance");
    record(session, &SelectionState::symmetry, options);
    return {};
}

Value selectMode(Session& session, const Args& args)
{
    SelectionState& selection = session.selection();
    if (args.query()) {
        if (args.isSet("component"))
            return selection.componentMode;
        if (args.isSet("object"))
            return !selection.componentMode;
        queryWithoutFlag(args);
    }
    if (args.isSet("component") == args.isSet("object"))
        throw Error("selectMode needs one of -component and -object");
    record(session, &SelectionState::componentMode, args.isSet("component"));
    return {};
}

Value selectPref(Session& session, const Args& args)
{
    SelectionState& selection = session.selection();
    if (args.query()) {
        if (args.isSet("clickDrag"))
            return selection.clickDrag;
        if (args.isSet("preSelectHilite"))
            return selection.preselectHilite;
        if (args.isSet("clickBoxSize"))
            return selection.clickBoxSize;
        if (args.isSet("trackSelectionOrder"))
            return selection.trackOrder;
        queryWithoutFlag(args);
    }
    if (args.isSet("clickBoxSize")) {
        const int size = args.integer("clickBoxSize");
        if (size < 1)
            throw Error("selectPref: -clickBoxSize must be at least 1, not " + std::to_string(size));
        record(session, &SelectionState::clickBoxSize, size);
    }
    if (args.isSet("clickDrag"))
        record(session, &SelectionState::clickDrag, args.boolean("clickDrag"));
    if (args.isSet("preSelectHilite"))
        record(session, &SelectionState::preselectHilite, args.boolean("preSelectHilite"));
    if (args.isSet("trackSelectionOrder"))
        record(session, &SelectionState::trackOrder, args.boolean("trackSelectionOrder"));
    return {};
}

} // namespace

void registerSelectionSettings(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("softSelect")
                     .flag("sse", "softSelectEnabled", {ArgType::kBool})
                     .flag("ssf", "softSelectFalloff", {ArgType::kInt})
                     .flag("ssd", "softSelectDistance", {ArgType::kFloat})
                     .flag("ssc", "softSelectCurve", {ArgType::kString})
                     .flag("ssr", "softSelectReset")
                     .query()
                     .edit()
                     .undoable(),
                 softSelect);
    registry.add(CommandSpec("symmetricModelling")
                     .flag("s", "symmetry", {ArgType::kBool})
                     .flag("a", "about", {ArgType::kString})
                     .flag("ax", "axis", {ArgType::kString})
                     .flag("t", "tolerance", {ArgType::kFloat})
                     .flag("ps", "preserveSeam", {ArgType::kBool})
                     .flag("st", "seamTolerance", {ArgType::kFloat})
                     .flag("ts", "topoSymmetry", {ArgType::kBool})
                     .flag("r", "reset")
                     .query()
                     .edit()
                     .undoable(),
                 symmetricModelling);
    registry.add(CommandSpec("selectMode").flag("co", "component").flag("o", "object").query().undoable(),
                 selectMode);
    registry.add(CommandSpec("selectPref")
                     .flag("cld", "clickDrag", {ArgType::kBool})
                     .flag("psh", "preSelectHilite", {ArgType::kBool})
                     .flag("cbs", "clickBoxSize", {ArgType::kInt})
                     .flag("tso", "trackSelectionOrder", {ArgType::kBool})
                     .query()
                     .undoable(),
                 selectPref);
}

} // namespace host
