#include "graph/toolkit/offscreen/PiGlContext.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <Inventor/C/glue/gl.h>
#include <Inventor/elements/SoGLCacheContextElement.h>
#include <Inventor/misc/SoContextHandler.h>

#include <memory>

namespace {

struct Platform {
  EGLDisplay display = EGL_NO_DISPLAY;
  EGLConfig config = nullptr;
  EGLint maxWidth = 0;
  EGLint maxHeight = 0;
};

Platform openPlatform() {
  Platform platform;
  const auto getDisplay =
      reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
  if (!getDisplay) return platform;
  const EGLDisplay display = getDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
  if (display == EGL_NO_DISPLAY || !eglInitialize(display, nullptr, nullptr)) return platform;
  const EGLint wanted[] = {EGL_SURFACE_TYPE,
                           EGL_PBUFFER_BIT,
                           EGL_RENDERABLE_TYPE,
                           EGL_OPENGL_BIT,
                           EGL_RED_SIZE,
                           8,
                           EGL_GREEN_SIZE,
                           8,
                           EGL_BLUE_SIZE,
                           8,
                           EGL_ALPHA_SIZE,
                           8,
                           EGL_DEPTH_SIZE,
                           24,
                           EGL_STENCIL_SIZE,
                           8,
                           EGL_NONE};
  EGLint count = 0;
  if (!eglChooseConfig(display, wanted, &platform.config, 1, &count) || count == 0) return platform;
  eglGetConfigAttrib(display, platform.config, EGL_MAX_PBUFFER_WIDTH, &platform.maxWidth);
  eglGetConfigAttrib(display, platform.config, EGL_MAX_PBUFFER_HEIGHT, &platform.maxHeight);
  platform.display = display;
  return platform;
}

const Platform& platform() {
  static const Platform opened = openPlatform();
  return opened;
}

// The toolkit's view of a context: plain functions over a PiGlContext.
void* createForToolkit(unsigned int width, unsigned int height) {
  auto context = std::make_unique<PiGlContext>(static_cast<int>(width), static_cast<int>(height));
  return context->isValid() ? context.release() : nullptr;
}
SbBool makeCurrentForToolkit(void* context) { return static_cast<PiGlContext*>(context)->makeCurrent() ? TRUE : FALSE; }
void reinstateForToolkit(void* context) { static_cast<PiGlContext*>(context)->release(); }
void destroyForToolkit(void* context) { delete static_cast<PiGlContext*>(context); }

}  // namespace

PiGlContext::PiGlContext(int width, int height) {
  const Platform& egl = platform();
  if (egl.display == EGL_NO_DISPLAY) {
    m_error = "no OpenGL is available: EGL offers no display without a screen";
    return;
  }
  if (width < 1 || height < 1 || width > egl.maxWidth || height > egl.maxHeight) {
    m_error = "a picture of " + std::to_string(width) + "x" + std::to_string(height) +
              " pixels can't be drawn: between 1x1 and " + std::to_string(egl.maxWidth) + "x" +
              std::to_string(egl.maxHeight) + " is possible";
    return;
  }
  eglBindAPI(EGL_OPENGL_API);
  const EGLint size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
  m_surface = eglCreatePbufferSurface(egl.display, egl.config, size);
  m_context = eglCreateContext(egl.display, egl.config, EGL_NO_CONTEXT, nullptr);
  if (m_surface == EGL_NO_SURFACE || m_context == EGL_NO_CONTEXT || !makeCurrent()) {
    m_error =
        "OpenGL gives no memory for a picture of " + std::to_string(width) + "x" + std::to_string(height) + " pixels";
    return;
  }
  release();
  m_cacheContext = SoGLCacheContextElement::getUniqueCacheContext();
}

PiGlContext::~PiGlContext() {
  const Platform& egl = platform();
  if (m_cacheContext != 0 && makeCurrent()) {
    SoContextHandler::destructingContext(m_cacheContext);
    release();
  }
  if (m_context != EGL_NO_CONTEXT) eglDestroyContext(egl.display, m_context);
  if (m_surface != EGL_NO_SURFACE) eglDestroySurface(egl.display, m_surface);
}

bool PiGlContext::makeCurrent() {
  eglBindAPI(EGL_OPENGL_API);
  m_previous = {eglGetCurrentContext(), eglGetCurrentSurface(EGL_DRAW), eglGetCurrentSurface(EGL_READ)};
  return eglMakeCurrent(platform().display, m_surface, m_surface, m_context) == EGL_TRUE;
}

void PiGlContext::release() {
  eglMakeCurrent(platform().display, m_previous.draw, m_previous.read, m_previous.context);
}

void PiGlContext::installForToolkit() {
  static cc_glglue_offscreen_cb_functions functions = {createForToolkit, makeCurrentForToolkit, reinstateForToolkit,
                                                       destroyForToolkit};
  cc_glglue_context_set_offscreen_cb_functions(&functions);
}
