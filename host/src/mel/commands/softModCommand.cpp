// softMod: a deformer with a handle whose effect falls off around a centre.
#include "graph/graph.h"
#include "mel/commands/commandTargets.h"
#include "mel/commands/deformerCommands.h"
#include "mel/commands/deformerHandles.h"
#include "mel/commands/geometryCommands.h"
#include "nodes/deformerBuild.h"
#include "nodes/geometry.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

void setFalloff(Session& session, Node& deformer, const Args& args)
{
    Edits& edits = session.edits();
    if (args.isSet("falloffRadius")) {
        if (!(args.number("falloffRadius") > 0.0))
            throw Error("softMod: -falloffRadius must be greater than 0.");
        edits.setNumber(deformer.plug("falloffRadius"), args.number("falloffRadius"));
    }
    for (unsigned axis = 0; args.isSet("falloffCenter") && axis < 3; ++axis)
        edits.setNumber(deformer.plug("falloffCenter").child(axis),
                        args.number("falloffCenter", static_cast<int>(axis)));
    if (args.isSet("envelope"))
        edits.setNumber(deformer.plug("envelope"), args.number("envelope"));
    if (args.isSet("relative"))
        edits.setNumber(deformer.plug("relative"), 1);
}

Value querySoftMod(const Args& args, Node& deformer)
{
    for (const char* flag : {"falloffRadius", "envelope"})
        if (args.isSet(flag))
            return deformer.plug(flag).number();
    if (args.isSet("relative"))
        return static_cast<int>(deformer.plug("relative").number());
    if (!args.isSet("falloffCenter"))
        throw Error("softMod -query needs one of -falloffRadius, -falloffCenter, -envelope, -relative.");
    mel::FloatArray centre;
    for (unsigned axis = 0; axis < 3; ++axis)
        centre.push_back(deformer.plug("falloffCenter").child(axis).number());
    return centre;
}

/// A smooth fall from 1 at the centre to 0 at the radius.
void setUsualCurve(Edits& edits, const Plug& curve)
{
    for (std::uint32_t end = 0; end < 2; ++end) {
        edits.setNumber(curve.element(end).child(0), end);
        edits.setNumber(curve.element(end).child(1), 1.0 - end);
        edits.setNumber(curve.element(end).child(2), 2);
    }
}

Value createSoftMod(Session& session, const Args& args)
{
    const std::vector<DeformedShape> shapes = deformedShapes(commandTargets(session, args.objectNames()));
    Edits& edits = session.edits();
    Node& deformer = edits.create(*session.graph().types().find("softMod"), args.textOr("name", "softMod1"));
    const Imath::V3d middle = centreOf(shapes);
    const Imath::V3d centre = args.isSet("falloffCenter") ? args.vector("falloffCenter") : middle;
    for (unsigned axis = 0; axis < 3; ++axis)
        edits.setNumber(deformer.plug("falloffCenter").child(axis), centre[static_cast<int>(axis)]);
    setUsualCurve(edits, deformer.plug("falloffCurve"));
    setFalloff(session, deformer, args);
    wireDeformer(session, deformer, shapes, placeOf(args));
    for (std::uint32_t index = 0; index < shapes.size(); ++index)
        edits.setMatrix(deformer.plug("geomMatrix").element(index), worldMatrix(*shapes[index].shape));
    Node& handle =
        createHandle(session, deformer, centre, {"softModHandle", "softModTransforms", "softModXforms"});
    selectOnly(session, handle);
    return mel::StringArray{deformer.name(), handle.uniqueName()};
}

Value softModCommand(Session& session, const Args& args)
{
    if (!args.query() && !args.edit())
        return createSoftMod(session, args);
    if (args.objects().size() != 1)
        throw Error("softMod: name the softMod to query or edit.");
    Node& deformer = deformerNamed(session, args, args.objectNames().front(), "softMod");
    if (args.query())
        return querySoftMod(args, deformer);
    setFalloff(session, deformer, args);
    return {};
}

} // namespace

void registerSoftModCommand(mel::CommandRegistry& registry)
{
    registry.add(
        withPlaceFlags(CommandSpec("softMod")
                           .flag("n", "name", {ArgType::kString})
                           .flag("frd", "falloffRadius", {ArgType::kFloat})
                           .flag("fc", "falloffCenter", {ArgType::kFloat, ArgType::kFloat, ArgType::kFloat})
                           .flag("rel", "relative")
                           .flag("en", "envelope", {ArgType::kFloat})
                           .objects(0)
                           .query()
                           .edit()
                           .undoable()),
        softModCommand);
}

} // namespace host
