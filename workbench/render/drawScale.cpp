#include "render/drawScale.h"

#include <algorithm>

namespace workbench {

DrawScale drawScaleOf(int portWidth, int portHeight, double density)
{
    constexpr double kLargeWidth = 1920.0, kLargeHeight = 1080.0, kPlainWidth = 960.0, kSmallestMark = 0.55;
    DrawScale scale;
    scale.density = density;
    scale.unit = density * std::max(1.0, std::min(portWidth / kLargeWidth, portHeight / kLargeHeight));
    scale.mark = scale.unit * std::clamp(portWidth / kPlainWidth, kSmallestMark, 1.0);
    return scale;
}

} // namespace workbench
