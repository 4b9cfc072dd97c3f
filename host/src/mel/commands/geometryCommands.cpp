// polyPlane, polyCube, polySphere, polyCylinder, curve, nurbsPlane: shapes to work on. The shapes keep their
// points themselves; construction history (-constructionHistory on) is accepted and not made.
#include "mel/commands/geometryCommands.h"

#include "mel/command.h"
#include "mel/commands/nodeCommands.h"
#include "mel/interpreter.h"
#include "nodes/primitives.h"
#include "session.h"
#include "types/error.h"
#include "undo/edits.h"

#include <ImathMatrixAlgo.h>

#include <algorithm>

namespace host {

namespace {

using Imath::V3d;
using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

const std::vector<ArgType> kThree{ArgType::kFloat, ArgType::kFloat, ArgType::kFloat};

/// A transform with a shape that stores `geometry`; recorded, selected, and shaded as new shapes are.
Value createShape(Session& session, const Args& args, const std::string& defaultName, const char* type,
                  const char* store, std::shared_ptr<const Geometry> geometry)
{
    Graph& graph = session.graph();
    Edits& edits = session.edits();
    std::string name = args.textOr("name", "");
    for (int number = 1; name.empty(); ++number)
        if (graph.match(defaultName + std::to_string(number)).empty())
            name = defaultName + std::to_string(number);
    DagNode& transform = *edits.create(*graph.types().find("transform"), name, nullptr).asDag();
    Node& shape = edits.create(*graph.types().find(type), customaryShapeName(transform.name()), &transform);
    edits.setData(shape.plug(store), std::move(geometry));
    Node* shading = graph.find("initialShadingGroup");
    if (shading && shading->findAttribute("dagSetMembers") && std::string(type) != "nurbsCurve") {
        const Plug members = shading->plug("dagSetMembers");
        edits.connect(shape.plug("instObjGroups").element(0), members.element(graph.nextAvailable(members)));
    }
    selectOnly(session, transform);
    return mel::StringArray{transform.uniqueName()};
}

/// Turns geometry made about the y axis to the axis that -axis asks for.
std::shared_ptr<Geometry> turned(const Args& args, std::shared_ptr<Geometry> geometry)
{
    if (!args.isSet("axis"))
        return geometry;
    const V3d axis = args.vector("axis");
    if (axis.length() == 0)
        throw Error(args.commandName() + ": -axis must not be zero.");
    const Imath::M44d turn = Imath::rotationMatrix(V3d(0, 1, 0), axis.normalized());
    auto points = std::make_shared<Points>(geometry->points());
    for (V3d& point : *points)
        point = point * turn;
    geometry->pointsRef = std::move(points);
    return geometry;
}

int subdivisions(const Args& args, const char* flag, int otherwise, int least = 1)
{
    const int count = args.integerOr(flag, otherwise);
    if (count < least || count > 100000)
        throw Error(args.commandName() + ": -" + flag + " must be at least " + std::to_string(least) + ".");
    return count;
}

/// Before anything is made: a few digits too many must not take the memory of the machine.
void requireFew(Session& session, const Args& args, double points)
{
    const std::size_t most = session.mel().limits.points;
    if (points > static_cast<double>(most))
        throw Error(args.commandName() + ": a shape can have " + std::to_string(most) + " points at most.");
}

double positive(const Args& args, const char* flag, double otherwise)
{
    const double size = args.numberOr(flag, otherwise);
    if (!(size > 0))
        throw Error(args.commandName() + ": -" + flag + " must be greater than 0.");
    return size;
}

Value polyPlane(Session& session, const Args& args)
{
    const int sx = subdivisions(args, "subdivisionsX", 10), sy = subdivisions(args, "subdivisionsY", 10);
    requireFew(session, args, (sx + 1.0) * (sy + 1.0));
    return createShape(
        session, args, "pPlane", "mesh", "cachedInMesh",
        turned(args, planeMesh(positive(args, "width", 1), positive(args, "height", 1), sx, sy)));
}

Value polyCube(Session& session, const Args& args)
{
    const V3d size(positive(args, "width", 1), positive(args, "height", 1), positive(args, "depth", 1));
    const int sx = subdivisions(args, "subdivisionsX", 1), sy = subdivisions(args, "subdivisionsY", 1),
              sz = subdivisions(args, "subdivisionsZ", 1);
    requireFew(session, args, 2.0 * (sx * (sy + 1.0) + sy * (sz + 1.0) + sz * (sx + 1.0)));
    return createShape(session, args, "pCube", "mesh", "cachedInMesh",
                       turned(args, cubeMesh(size, sx, sy, sz)));
}

Value polySphere(Session& session, const Args& args)
{
    const int sx = subdivisions(args, "subdivisionsX", 20, 3),
              sy = subdivisions(args, "subdivisionsY", 20, 3);
    requireFew(session, args, static_cast<double>(sx) * sy);
    return createShape(session, args, "pSphere", "mesh", "cachedInMesh",
                       turned(args, sphereMesh(positive(args, "radius", 1), sx, sy)));
}

Value polyCylinder(Session& session, const Args& args)
{
    const int sx = subdivisions(args, "subdivisionsX", 20, 3), sy = subdivisions(args, "subdivisionsY", 1),
              rings = subdivisions(args, "subdivisionsZ", 1, 0);
    requireFew(session, args, sx * (sy + 2.0 * rings + 1.0) + 2.0);
    return createShape(
        session, args, "pCylinder", "mesh", "cachedInMesh",
        turned(args, cylinderMesh(positive(args, "radius", 1), positive(args, "height", 2), sx, sy, rings)));
}

/// Knots 0 ... spans with the ends repeated, `cvs + degree - 1` in all.
std::vector<double> clampedKnots(int cvs, int degree)
{
    std::vector<double> knots;
    const int spans = cvs - degree;
    const int count = cvs + degree - 1;
    knots.reserve(static_cast<std::size_t>(count));
    for (int k = 0; k < count; ++k)
        knots.push_back(std::clamp(k - degree + 1, 0, spans));
    return knots;
}

/// The knots of -knot, one use each, which may not fall; without them those of an even curve.
std::vector<double> givenKnots(const Args& args, int cvs, int degree)
{
    if (!args.isSet("knot"))
        return clampedKnots(cvs, degree);
    std::vector<double> knots;
    for (int use = 0; use < args.uses("knot"); ++use)
        knots.push_back(args.number("knot", 0, use));
    const auto wanted = static_cast<std::size_t>(cvs + degree - 1);
    if (knots.size() != wanted)
        throw Error("curve: " + std::to_string(cvs) + " points of degree " + std::to_string(degree) +
                    " need " + std::to_string(wanted) + " knots, not " + std::to_string(knots.size()) + ".");
    if (!std::is_sorted(knots.begin(), knots.end()))
        throw Error("curve: the knots must not fall.");
    return knots;
}

Value curveCommand(Session& session, const Args& args)
{
    auto curve = std::make_shared<CurveData>();
    auto points = std::make_shared<Points>();
    for (int use = 0; use < args.uses("point"); ++use)
        points->emplace_back(args.number("point", 0, use), args.number("point", 1, use),
                             args.number("point", 2, use));
    curve->degree = args.integerOr("degree", 3);
    const int cvs = static_cast<int>(points->size());
    if (curve->degree < 1)
        throw Error("curve: the degree must be at least 1.");
    if (cvs <= curve->degree)
        throw Error("curve: " + std::to_string(cvs) + " points are too few for a curve of degree " +
                    std::to_string(curve->degree) + ".");
    curve->spans = cvs - curve->degree;
    curve->knots = givenKnots(args, cvs, curve->degree);
    curve->pointsRef = std::move(points);
    return createShape(session, args, "curve", "nurbsCurve", "cached", std::move(curve))
        .toStringArray()
        .front();
}

Value spaceLocator(Session& session, const Args& args)
{
    Graph& graph = session.graph();
    Edits& edits = session.edits();
    DagNode& transform =
        *edits.create(*graph.types().find("transform"), args.textOr("name", "locator1"), nullptr).asDag();
    Node& shape =
        edits.create(*graph.types().find("locator"), customaryShapeName(transform.name()), &transform);
    const V3d position = args.isSet("position") ? args.vector("position") : V3d(0);
    for (unsigned axis = 0; axis < 3; ++axis)
        edits.setNumber(shape.plug("localPosition").child(axis), position[static_cast<int>(axis)]);
    selectOnly(session, transform);
    return mel::StringArray{transform.uniqueName()};
}

Value nurbsPlane(Session& session, const Args& args)
{
    auto surface = std::make_shared<SurfaceData>();
    const int degree = subdivisions(args, "degree", 3);
    surface->degreeU = surface->degreeV = degree;
    surface->numU = subdivisions(args, "patchesU", 1) + degree;
    surface->numV = subdivisions(args, "patchesV", 1) + degree;
    requireFew(session, args, static_cast<double>(surface->numU) * surface->numV);
    surface->knotsU = clampedKnots(surface->numU, degree);
    surface->knotsV = clampedKnots(surface->numV, degree);
    const double width = positive(args, "width", 1);
    const double length = width * positive(args, "lengthRatio", 1);
    // Control points over the knots' averages, so that the surface is an even plane.
    const auto spread = [degree](const std::vector<double>& knots, int k) {
        double sum = 0;
        for (int i = 0; i < degree; ++i)
            sum += knots[static_cast<std::size_t>(k) + static_cast<std::size_t>(i)];
        return sum / degree / knots.back() - 0.5;
    };
    auto points = std::make_shared<Points>();
    for (int u = 0; u < surface->numU; ++u)
        for (int v = 0; v < surface->numV; ++v)
            points->emplace_back(width * spread(surface->knotsU, u), 0.0,
                                 -length * spread(surface->knotsV, v));
    surface->pointsRef = std::move(points);
    return createShape(session, args, "nurbsPlane", "nurbsSurface", "cached",
                       turned(args, std::move(surface)));
}

CommandSpec shapeSpec(const char* name)
{
    return CommandSpec(name)
        .flag("n", "name", {ArgType::kString})
        .flag("ch", "constructionHistory", {ArgType::kBool})
        .flag("o", "object", {ArgType::kBool})
        .undoable();
}

/// The flags that a primitive has, beside those of every shape: sizes as floats, subdivisions as ints.
CommandSpec polySpec(const char* name, std::vector<std::pair<const char*, const char*>> sizes,
                     std::vector<std::pair<const char*, const char*>> counts)
{
    CommandSpec spec = shapeSpec(name);
    spec.flag("ax", "axis", kThree).flag("cuv", "createUVs", {ArgType::kInt});
    for (const auto& [shortName, longName] : sizes)
        spec.flag(shortName, longName, {ArgType::kFloat});
    for (const auto& [shortName, longName] : counts)
        spec.flag(shortName, longName, {ArgType::kInt});
    return spec;
}

} // namespace

void registerGeometryCommands(mel::CommandRegistry& registry)
{
    const std::pair<const char*, const char*> width{"w", "width"}, height{"h", "height"}, depth{"d", "depth"},
        radius{"r", "radius"}, x{"sx", "subdivisionsX"}, y{"sy", "subdivisionsY"}, z{"sz", "subdivisionsZ"};
    registry.add(polySpec("polyPlane", {width, height}, {x, y}), polyPlane);
    registry.add(polySpec("polyCube", {width, height, depth}, {x, y, z}), polyCube);
    registry.add(polySpec("polySphere", {radius}, {x, y}), polySphere);
    registry.add(polySpec("polyCylinder", {radius, height}, {x, y, z}), polyCylinder);
    registry.add(shapeSpec("curve")
                     .flag("d", "degree", {ArgType::kInt})
                     .flag("p", "point", kThree)
                     .multi()
                     .flag("k", "knot", {ArgType::kFloat})
                     .multi(),
                 curveCommand);
    registry.add(shapeSpec("nurbsPlane")
                     .flag("ax", "axis", kThree)
                     .flag("w", "width", {ArgType::kFloat})
                     .flag("lr", "lengthRatio", {ArgType::kFloat})
                     .flag("d", "degree", {ArgType::kInt})
                     .flag("u", "patchesU", {ArgType::kInt})
                     .flag("v", "patchesV", {ArgType::kInt}),
                 nurbsPlane);
    registry.add(CommandSpec("spaceLocator")
                     .flag("n", "name", {ArgType::kString})
                     .flag("p", "position", kThree)
                     .flag("a", "absolute")
                     .undoable(),
                 spaceLocator);
    registerTransformCommands(registry);
    registerPointCommands(registry);
}

} // namespace host
