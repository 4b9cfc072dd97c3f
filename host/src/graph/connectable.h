#pragma once

namespace host {

class Attribute;

/// Whether a value of the one attribute can be the value of the other: numbers of any type go together,
/// texts, matrices, data of the same or a general type, compounds child by child. A message attribute takes
/// a connection from anything. What only a file named goes with everything.
bool isConnectable(const Attribute& source, const Attribute& destination);

} // namespace host
