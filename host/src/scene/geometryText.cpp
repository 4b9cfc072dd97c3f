#include "scene/geometryText.h"

#include "scene/dataText.h"
#include "scene/maStatement.h"
#include "scene/maText.h"

namespace host {

namespace {

std::vector<double> readKnots(MaCursor& words)
{
    std::vector<double> knots(words.count());
    for (double& knot : knots)
        knot = words.number();
    return knots;
}

/// A count and as many points; the weights of rational ones are put aside.
PointsRef readPoints(MaCursor& words, int dimension, bool rational, std::vector<double>& weights)
{
    auto points = std::make_shared<Points>(words.count(), Imath::V3d(0.0));
    for (Imath::V3d& point : *points) {
        for (int axis = 0; axis < dimension; ++axis)
            point[axis] = words.number();
        if (rational)
            weights.push_back(words.number());
    }
    return points;
}

int readInt(MaCursor& words)
{
    return static_cast<int>(words.integer());
}

void appendInts(std::string& out, std::initializer_list<int> values)
{
    for (const int value : values)
        out += " " + std::to_string(value);
}

void appendKnots(std::string& out, const std::vector<double>& knots)
{
    out += "\n\t\t" + std::to_string(knots.size());
    WordLines lines(out);
    for (const double knot : knots)
        lines.add(maNumber(knot));
}

void appendPoints(std::string& out, const Geometry& geometry, int dimension,
                  const std::vector<double>& weights)
{
    out += "\n\t\t" + std::to_string(geometry.count());
    for (std::size_t point = 0; point < geometry.count(); ++point) {
        out += "\n\t\t";
        for (int axis = 0; axis < dimension; ++axis)
            out += (axis ? " " : "") + maNumber(geometry.points()[point][axis]);
        if (!weights.empty())
            out += " " + maNumber(weights[point]);
    }
    out += "\n\t\t";
}

const char* yesNo(bool value)
{
    return value ? "yes" : "no";
}

void append(std::string& out, const CurveData& curve)
{
    appendInts(out, {curve.degree, curve.spans, curve.form});
    out += std::string(" ") + yesNo(curve.rational) + " " + std::to_string(curve.dimension);
    appendKnots(out, curve.knots);
    appendPoints(out, curve, curve.dimension, curve.weights);
}

void append(std::string& out, const SurfaceData& surface)
{
    appendInts(out, {surface.degreeU, surface.degreeV, surface.formU, surface.formV});
    out += std::string(" ") + yesNo(surface.rational);
    appendKnots(out, surface.knotsU);
    appendKnots(out, surface.knotsV);
    if (!surface.trimText.empty())
        out += " TRIM";
    out += "\n\t\t";
    appendPoints(out, surface, 3, surface.weights);
    WordLines lines(out);
    for (const std::string& word : surface.trimText)
        lines.add(word);
}

void append(std::string& out, const LatticeData& lattice)
{
    appendInts(out, {lattice.s, lattice.t, lattice.u});
    appendPoints(out, lattice, 3, {});
}

} // namespace

DataRef readCurve(MaCursor& words)
{
    auto curve = std::make_shared<CurveData>();
    curve->degree = readInt(words);
    curve->spans = readInt(words);
    curve->form = readInt(words);
    curve->rational = words.boolean();
    curve->dimension = readInt(words);
    if (curve->dimension < 1 || curve->dimension > 3)
        words.fail("a curve has one to three dimensions");
    curve->knots = readKnots(words);
    curve->pointsRef = readPoints(words, curve->dimension, curve->rational, curve->weights);
    if (curve->degree < 1 ||
        curve->knots.size() + 1 != curve->count() + static_cast<std::size_t>(curve->degree))
        words.fail("the knots of the curve do not fit its degree and CVs");
    return curve;
}

DataRef readSurface(MaCursor& words)
{
    auto surface = std::make_shared<SurfaceData>();
    surface->degreeU = readInt(words);
    surface->degreeV = readInt(words);
    surface->formU = readInt(words);
    surface->formV = readInt(words);
    surface->rational = words.boolean();
    surface->knotsU = readKnots(words);
    surface->knotsV = readKnots(words);
    bool trimmed = false;
    if (!words.atEnd() && !words.nextIsNumber()) {
        const std::string word = words.text();
        trimmed = word == "TRIM";
        if (!trimmed && word != "NOTRIM")
            words.fail("TRIM or NOTRIM is expected, not \"" + word + "\"");
    }
    surface->pointsRef = readPoints(words, 3, surface->rational, surface->weights);
    surface->numU = static_cast<int>(surface->knotsU.size()) - surface->degreeU + 1;
    surface->numV = static_cast<int>(surface->knotsV.size()) - surface->degreeV + 1;
    if (surface->numU < 1 || surface->numV < 1 ||
        static_cast<std::size_t>(surface->numU) * static_cast<std::size_t>(surface->numV) != surface->count())
        words.fail("the knots of the surface do not fit its degrees and CVs");
    while (trimmed && !words.atEnd()) {
        const MaWord& word = words.next();
        surface->trimText.push_back(word.kind == MaWord::Kind::kString ? maQuoted(word.text)
                                                                       : std::string(word.text));
    }
    return surface;
}

DataRef readLattice(MaCursor& words)
{
    auto lattice = std::make_shared<LatticeData>();
    lattice->s = readInt(words);
    lattice->t = readInt(words);
    lattice->u = readInt(words);
    std::vector<double> none;
    lattice->pointsRef = readPoints(words, 3, false, none);
    const long long wanted = static_cast<long long>(lattice->s) * lattice->t * lattice->u;
    if (lattice->s < 1 || lattice->t < 1 || lattice->u < 1 ||
        wanted != static_cast<long long>(lattice->count()))
        words.fail("the points of the lattice do not fit its divisions");
    return lattice;
}

void appendGeometry(std::string& out, const Geometry& geometry)
{
    switch (geometry.kind()) {
    case Geometry::Kind::kCurve:
        append(out, static_cast<const CurveData&>(geometry));
        break;
    case Geometry::Kind::kSurface:
        append(out, static_cast<const SurfaceData&>(geometry));
        break;
    case Geometry::Kind::kLattice:
        append(out, static_cast<const LatticeData&>(geometry));
        break;
    case Geometry::Kind::kMesh:
        break;
    }
}

} // namespace host
