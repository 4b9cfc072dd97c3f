#pragma once

#include <cstdint>
#include <vector>

namespace workbench {

/// An OpenGL 3.3 core context without window or display (EGL, surfaceless), current on this thread for as
/// long as the object lives. Throws host::Error saying what is missing.
class OffscreenContext {
public:
    OffscreenContext();
    ~OffscreenContext();
    OffscreenContext(const OffscreenContext&) = delete;
    OffscreenContext& operator=(const OffscreenContext&) = delete;

private:
    void open();
    void close();

    void* display = nullptr; ///< EGLDisplay
    void* context = nullptr; ///< EGLContext
};

/// What a picture is drawn into: four samples per pixel with depth if the driver has them, and a plain copy
/// for what is drawn over it and for reading.
class PictureTarget {
public:
    PictureTarget(int width, int height);
    ~PictureTarget();
    PictureTarget(const PictureTarget&) = delete;
    PictureTarget& operator=(const PictureTarget&) = delete;

    void bindScene();   ///< draw into the samples; depth buffer
    void bindOverlay(); ///< take the samples over into the copy and draw into that; no depth buffer
    /// Rows from the top, four bytes per pixel, opaque.
    std::vector<std::uint8_t> read() const;

private:
    int width, height;
    unsigned sceneFrame = 0, copyFrame = 0;
    unsigned buffers[3] = {0, 0, 0}; ///< sample colours, sample depth, colours of the copy
};

} // namespace workbench
