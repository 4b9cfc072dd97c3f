#pragma once

#include <memory>

class MPxContext;

namespace host {

/// The tool that is current when no other is: a click or a marquee selects.
std::unique_ptr<MPxContext> makeSelectTool();

} // namespace host
