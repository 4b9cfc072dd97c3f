#include "types/object.h"

namespace host {

Object::~Object() = default;

} // namespace host
