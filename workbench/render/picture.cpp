#include "render/picture.h"

#include "render/offscreen.h"
#include "render/overlay.h"
#include "render/scenePainter.h"
#include "render/sceneView.h"
#include "session.h"
#include "types/error.h"
#include "view/viewport.h"

#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STB_IMAGE_WRITE_STATIC
#include <stb_image_write.h>

#include <cmath>

namespace workbench {

Picture renderPicture(host::Session& session, double density, const PressWatch* press)
{
    const host::Viewport& viewport = session.viewport();
    const DrawScale scale = drawScaleOf(viewport.width, viewport.height, density);
    const int width = static_cast<int>(std::lround(viewport.width * density));
    const int height = static_cast<int>(std::lround(viewport.height * density));
    const SceneView view = viewOf(session, press);
    const OffscreenContext context;
    PictureTarget target(width, height);
    target.bindScene();
    const CameraView camera{viewport.viewMatrix(), viewport.projectionMatrix(), static_cast<double>(width),
                            static_cast<double>(height)};
    paintScene(view, camera, scale);
    target.bindOverlay();
    paintOverlay(session, view, scale);
    return {width, height, target.read()};
}

std::string pngOf(const Picture& picture)
{
    std::string bytes;
    const auto append = [](void* text, void* data, int size) {
        static_cast<std::string*>(text)->append(static_cast<const char*>(data),
                                                static_cast<std::size_t>(size));
    };
    // Pictures are opaque: three channels say all.
    std::vector<std::uint8_t> colors;
    colors.reserve(picture.pixels.size() / 4 * 3);
    for (std::size_t pixel = 0; pixel + 3 < picture.pixels.size(); pixel += 4)
        colors.insert(colors.end(), &picture.pixels[pixel], &picture.pixels[pixel] + 3);
    if (!stbi_write_png_to_func(append, &bytes, picture.width, picture.height, 3, colors.data(),
                                picture.width * 3))
        throw host::Error("The picture cannot be encoded.");
    return bytes;
}

} // namespace workbench
