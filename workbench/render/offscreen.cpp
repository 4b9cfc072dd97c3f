#include "render/offscreen.h"

#include "render/gl.h"
#include "types/error.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <algorithm>
#include <cstring>

namespace workbench {

namespace {

constexpr int kSamples = 4;

bool hasExtension(const char* list, const char* name)
{
    return list && std::strstr(list, name) != nullptr;
}

/// The display of no window system; the default display where the platform is not known.
EGLDisplay displayWithoutWindows()
{
    const char* extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    if (hasExtension(extensions, "EGL_MESA_platform_surfaceless"))
        return eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr);
    return eglGetDisplay(EGL_DEFAULT_DISPLAY);
}

[[noreturn]] void fail(const char* reason)
{
    throw host::Error(std::string("Cannot draw a picture: ") + reason +
                      " Mesa's software drivers are enough (packages libegl-mesa0 and libgl1-mesa-dri).");
}

} // namespace

OffscreenContext::OffscreenContext()
{
    try {
        open();
    } catch (...) {
        close();
        throw;
    }
}

OffscreenContext::~OffscreenContext()
{
    close();
}

void OffscreenContext::open()
{
    display = displayWithoutWindows();
    EGLint major = 0, minor = 0;
    if (display == EGL_NO_DISPLAY || !eglInitialize(display, &major, &minor)) {
        display = nullptr;
        fail("EGL is missing or has no driver.");
    }
    if (!eglBindAPI(EGL_OPENGL_API))
        fail("EGL has no OpenGL.");
    const EGLint wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                             EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (!eglChooseConfig(display, wanted, &config, 1, &count) || count == 0)
        config = EGL_NO_CONFIG_KHR;
    const EGLint version[] = {EGL_CONTEXT_MAJOR_VERSION,
                              3,
                              EGL_CONTEXT_MINOR_VERSION,
                              3,
                              EGL_CONTEXT_OPENGL_PROFILE_MASK,
                              EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                              EGL_NONE};
    context = eglCreateContext(display, config, EGL_NO_CONTEXT, version);
    if (!context)
        fail("the driver has no OpenGL 3.3.");
    if (!eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context))
        fail("the driver cannot draw without a window.");
}

void OffscreenContext::close()
{
    if (!display)
        return;
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (context)
        eglDestroyContext(display, context);
    // The display stays until the process ends: terminated, it would unload drivers that leave memory behind,
    // and nobody could tell whose it was.
}

PictureTarget::PictureTarget(int across, int up) : width(across), height(up)
{
    GLint most = 1;
    glGetIntegerv(GL_MAX_SAMPLES, &most);
    const GLsizei samples = std::min(most, kSamples);
    glGenRenderbuffers(3, buffers);
    const GLenum formats[3] = {GL_RGBA8, GL_DEPTH_COMPONENT24, GL_RGBA8};
    for (int buffer = 0; buffer < 3; ++buffer) {
        glBindRenderbuffer(GL_RENDERBUFFER, buffers[buffer]);
        glRenderbufferStorageMultisample(GL_RENDERBUFFER, buffer < 2 ? samples : 0, formats[buffer], width,
                                         height);
    }
    glGenFramebuffers(1, &sceneFrame);
    glBindFramebuffer(GL_FRAMEBUFFER, sceneFrame);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, buffers[0]);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, buffers[1]);
    const bool sceneComplete = glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
    glGenFramebuffers(1, &copyFrame);
    glBindFramebuffer(GL_FRAMEBUFFER, copyFrame);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, buffers[2]);
    if (!sceneComplete || glCheckFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE)
        fail("the driver has no frame buffer of that size.");
    glViewport(0, 0, width, height);
}

PictureTarget::~PictureTarget()
{
    glDeleteFramebuffers(1, &sceneFrame);
    glDeleteFramebuffers(1, &copyFrame);
    glDeleteRenderbuffers(3, buffers);
}

void PictureTarget::bindScene()
{
    glBindFramebuffer(GL_FRAMEBUFFER, sceneFrame);
    glEnable(GL_MULTISAMPLE);
}

void PictureTarget::bindOverlay()
{
    glBindFramebuffer(GL_READ_FRAMEBUFFER, sceneFrame);
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, copyFrame);
    glBlitFramebuffer(0, 0, width, height, 0, 0, width, height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
    glBindFramebuffer(GL_FRAMEBUFFER, copyFrame);
}

std::vector<std::uint8_t> PictureTarget::read() const
{
    const std::size_t rowBytes = static_cast<std::size_t>(width) * 4;
    std::vector<std::uint8_t> fromBottom(rowBytes * static_cast<std::size_t>(height));
    glBindFramebuffer(GL_FRAMEBUFFER, copyFrame);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, fromBottom.data());
    std::vector<std::uint8_t> fromTop(fromBottom.size());
    for (std::size_t row = 0; row < static_cast<std::size_t>(height); ++row)
        std::memcpy(&fromTop[row * rowBytes], &fromBottom[fromBottom.size() - (row + 1) * rowBytes],
                    rowBytes);
    for (std::size_t alpha = 3; alpha < fromTop.size(); alpha += 4)
        fromTop[alpha] = 255;
    return fromTop;
}

} // namespace workbench
