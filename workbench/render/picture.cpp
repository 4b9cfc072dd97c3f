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

namespace workbench {

Picture renderPicture(host::Session& session)
{
    const host::Viewport& viewport = session.viewport();
    const SceneView view = viewOf(session);
    const OffscreenContext context;
    PictureTarget target(viewport.width, viewport.height);
    target.bindScene();
    paintScene(view, viewport.viewMatrix(), viewport.projectionMatrix());
    target.bindOverlay();
    paintOverlay(session, view);
    return {viewport.width, viewport.height, target.read()};
}

std::string pngOf(const Picture& picture)
{
    std::string bytes;
    const auto append = [](void* text, void* data, int size) {
        static_cast<std::string*>(text)->append(static_cast<const char*>(data),
                                                static_cast<std::size_t>(size));
    };
    if (!stbi_write_png_to_func(append, &bytes, picture.width, picture.height, 4, picture.pixels.data(),
                                picture.width * 4))
        throw host::Error("The picture cannot be encoded.");
    return bytes;
}

} // namespace workbench
