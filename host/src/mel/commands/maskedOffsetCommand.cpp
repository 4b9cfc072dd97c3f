// maskedOffset: a deformer with a second weight map, on what is named or selected.
#include "graph/graph.h"
#include "mel/commands/commandTargets.h"
#include "mel/commands/deformerCommands.h"
#include "nodes/deformerBuild.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

void setOffset(Session& session, Node& deformer, const Args& args)
{
    for (int axis = 0; args.isSet("offset") && axis < 3; ++axis)
        session.edits().setNumber(deformer.plug("offset").child(static_cast<unsigned>(axis)),
                                  args.number("offset", axis));
}

Value maskedOffsetCommand(Session& session, const Args& args)
{
    if (args.query() || args.edit()) {
        if (args.objects().size() != 1 || !args.isSet("offset"))
            throw Error("maskedOffset: -query and -edit take -offset and the name of one maskedOffset.");
        Node& deformer = deformerNamed(session, args, args.objectNames().front(), "maskedOffset");
        if (args.edit()) {
            setOffset(session, deformer, args);
            return {};
        }
        mel::FloatArray offset;
        for (unsigned axis = 0; axis < 3; ++axis)
            offset.push_back(deformer.plug("offset").child(axis).number());
        return offset;
    }
    const std::vector<DeformedShape> shapes = deformedShapes(commandTargets(session, args.objectNames()));
    Node& deformer = session.edits().create(*session.graph().types().find("maskedOffset"),
                                            args.textOr("name", "maskedOffset1"));
    setOffset(session, deformer, args);
    wireDeformer(session, deformer, shapes, placeOf(args));
    return mel::StringArray{deformer.name()};
}

} // namespace

void registerMaskedOffsetCommand(mel::CommandRegistry& registry)
{
    registry.add(withPlaceFlags(CommandSpec("maskedOffset")
                                    .flag("n", "name", {ArgType::kString})
                                    .flag("o", "offset", {ArgType::kFloat, ArgType::kFloat, ArgType::kFloat})
                                    .objects(0)
                                    .query()
                                    .edit()
                                    .undoable()),
                 maskedOffsetCommand);
}

} // namespace host
