#pragma once

#include <string>

namespace host {

class MaCursor;
struct PlugRange;
struct SceneUnits;

/// Writes the values of a setAttr, unrecorded: one after the other for the elements of a range and the
/// children of a compound; for an array whose elements the path does not name, how many there are and then
/// index and value of each (".wl[0:1].w"  1 0 1 2 0 .5 1 .5). `type` is what -type said, or empty.
/// Lengths and angles are in the given units. Does nothing when no words are left.
/// Throws host::Error with file and line when the words do not fit the attribute or some are left over; what
/// came before is then written.
void assignValues(const PlugRange& range, const std::string& type, const SceneUnits& units, MaCursor& words);

} // namespace host
