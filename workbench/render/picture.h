#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace host {
class Session;
}

namespace workbench {

class PressWatch;

/// An image: rows from the top, four bytes per pixel (red, green, blue, alpha).
struct Picture {
    int width = 0, height = 0;
    std::vector<std::uint8_t> pixels;
};

/// The viewport of the session as it looks now, `density` picture pixels per viewport pixel. `press` tells
/// which point a stroke began on. Needs no display: EGL draws off screen, in software when there is no GPU.
/// Throws host::Error when there is no OpenGL to draw with.
Picture renderPicture(host::Session& session, double density = 1, const PressWatch* press = nullptr);

/// The image as the bytes of a PNG file.
std::string pngOf(const Picture& picture);

} // namespace workbench
