#pragma once

#include "nodes/geometry.h"

#include <string>

namespace host {

class MaCursor;

/// Curves, surfaces and lattices as the words behind `setAttr -type "nurbsCurve"` and the like.
///
/// curve:   degree, spans, form, rational, dimension; count and knots; count and CVs
/// surface: degrees, forms, rational; count and knots in u; the same in v; perhaps TRIM or NOTRIM; count and
///          CVs; words of trimming, which are kept
/// lattice: divisions s t u; count and points
/// Rational CVs are x y z w. Throws host::Error naming file and line when the words do not fit.
DataRef readCurve(MaCursor& words);
DataRef readSurface(MaCursor& words);
DataRef readLattice(MaCursor& words);
void appendGeometry(std::string& out, const Geometry& geometry);

} // namespace host
