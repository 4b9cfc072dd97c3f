// lattice: a free-form deformation with its lattice and its base.
#include "graph/graph.h"
#include "mel/commands/commandTargets.h"
#include "mel/commands/deformerCommands.h"
#include "mel/commands/deformerHandles.h"
#include "mel/commands/geometryCommands.h"
#include "nodes/deformerBuild.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <ImathBox.h>

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

const std::vector<ArgType> kDivisions{ArgType::kInt, ArgType::kInt, ArgType::kInt};
const char* const kDivisionNames[] = {"sDivisions", "tDivisions", "uDivisions"};

void requireSupported(const Args& args)
{
    if (args.isSet("ldivisions"))
        throw Error("lattice: -ldivisions (local influence) is not supported; every lattice point reaches "
                    "everything inside.");
    if (args.integerOr("outsideLattice", 0) != 0)
        throw Error("lattice: only -outsideLattice 0 (points inside) is supported.");
    if (args.query() || !args.isSet("divisions"))
        return;
    for (int axis = 0; axis < 3; ++axis)
        if (args.integer("divisions", axis) < 2 || args.integer("divisions", axis) > 20)
            throw Error("lattice: -divisions must be 2 to 20 in each direction.");
}

/// A transform over the space that the lattice fills, with its shape.
DagNode& createBox(Session& session, const std::string& name, const char* type, const Imath::Box3d& space)
{
    Edits& edits = session.edits();
    const NodeTypeRegistry& types = session.graph().types();
    DagNode& transform = *edits.create(*types.find("transform"), name).asDag();
    DagNode& shape = *edits.create(*types.find(type), transform.name() + "Shape", &transform).asDag();
    const Imath::V3d size = space.size(), centre = space.center();
    for (unsigned axis = 0; axis < 3; ++axis) {
        const int k = static_cast<int>(axis);
        edits.setNumber(transform.plug("translate").child(axis), centre[k]);
        edits.setNumber(transform.plug("scale").child(axis), size[k] > 0.0 ? size[k] : 1.0);
    }
    return shape;
}

Node& latticeShapeOf(Node& deformer)
{
    const Plug source = deformer.plug("deformedLatticePoints").source();
    if (source.isNull())
        throw Error("lattice: " + deformer.name() + " has no lattice.");
    return *source.node();
}

Value queryOrEdit(Session& session, const Args& args)
{
    if (args.objects().size() != 1)
        throw Error("lattice: name the ffd to query or edit.");
    Node& deformer = deformerNamed(session, args, args.objectNames().front(), "ffd");
    if (args.isSet("envelope")) {
        if (args.query())
            return deformer.plug("envelope").number();
        session.edits().setNumber(deformer.plug("envelope"), args.number("envelope"));
    }
    if (!args.isSet("divisions"))
        return {};
    Node& shape = latticeShapeOf(deformer);
    if (args.edit() &&
        (!shape.plug("latticeInput").source().isNull() || shape.plug("controlPoints").numElements() > 0))
        throw Error("lattice: the divisions of a lattice that has been changed cannot be edited.");
    mel::IntArray divisions;
    for (int axis = 0; axis < 3; ++axis) {
        const Plug division = shape.plug(kDivisionNames[axis]);
        if (args.edit())
            session.edits().setNumber(division, args.integer("divisions", axis));
        divisions.push_back(static_cast<int>(division.number()));
    }
    return args.query() ? Value(divisions) : Value();
}

Value latticeCommand(Session& session, const Args& args)
{
    requireSupported(args);
    if (args.query() || args.edit())
        return queryOrEdit(session, args);
    const std::vector<DeformedShape> shapes = deformedShapes(commandTargets(session, args.objectNames()));
    const Imath::Box3d space = args.booleanOr("objectCentered", false)
                                   ? boxAround(shapes)
                                   : Imath::Box3d(Imath::V3d(-0.5), Imath::V3d(0.5));
    Edits& edits = session.edits();
    Node& deformer = edits.create(*session.graph().types().find("ffd"), args.textOr("name", "ffd1"));
    edits.setNumber(deformer.plug("local"), 0);
    if (args.isSet("envelope"))
        edits.setNumber(deformer.plug("envelope"), args.number("envelope"));
    DagNode& lattice = createBox(session, deformer.name() + "Lattice", "lattice", space);
    DagNode& base = createBox(session, deformer.name() + "Base", "baseLattice", space);
    for (int axis = 0; args.isSet("divisions") && axis < 3; ++axis)
        edits.setNumber(lattice.plug(kDivisionNames[axis]), args.integer("divisions", axis));
    edits.connect(lattice.plug("latticeOutput"), deformer.plug("deformedLatticePoints"));
    edits.connect(lattice.plug("worldMatrix").element(0), deformer.plug("deformedLatticeMatrix"));
    edits.connect(base.plug("worldMatrix").element(0), deformer.plug("baseLatticeMatrix"));
    wireDeformer(session, deformer, shapes, placeOf(args));
    selectOnly(session, *lattice.parent());
    return mel::StringArray{deformer.name(), lattice.parent()->uniqueName(), base.parent()->uniqueName()};
}

} // namespace

void registerLatticeCommand(mel::CommandRegistry& registry)
{
    registry.add(withPlaceFlags(CommandSpec("lattice")
                                    .flag("n", "name", {ArgType::kString})
                                    .flag("dv", "divisions", kDivisions)
                                    .flag("oc", "objectCentered", {ArgType::kBool})
                                    .flag("ldv", "ldivisions", kDivisions)
                                    .flag("ol", "outsideLattice", {ArgType::kInt})
                                    .flag("en", "envelope", {ArgType::kFloat})
                                    .objects(0)
                                    .query()
                                    .edit()
                                    .undoable()),
                 latticeCommand);
}

} // namespace host
