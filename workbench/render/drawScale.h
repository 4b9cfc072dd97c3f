#pragma once

namespace workbench {

/// How large things are drawn. Sizes in the painter are pixels of a viewport on an ordinary screen; a picture
/// of another density, or a viewport as large as those of high-density screens, draws them larger.
struct DrawScale {
    double density = 1; ///< picture pixels per port pixel
    double unit = 1;    ///< picture pixels per pixel of texts and line widths
    double mark = 1;    ///< the same for points and bones, which are smaller in small viewports too
};

/// The scale of a viewport's picture. `density` is what the screen or the command line says.
DrawScale drawScaleOf(int portWidth, int portHeight, double density);

} // namespace workbench
