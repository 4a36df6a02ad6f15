#include "view/gl/HeadlessContext.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <fmt/core.h>

#include "InputError.h"

namespace sim {
namespace {

[[noreturn]] void Fail(const char* problem) {
  throw InputError(fmt::format(
      "there is no OpenGL for pictures ({}). On Debian: apt-get install libegl-mesa0 libgl1-mesa-dri",
      problem));
}

}  // namespace

HeadlessContext::HeadlessContext() {
  display = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
  if (display == EGL_NO_DISPLAY || eglInitialize(display, nullptr, nullptr) == EGL_FALSE)
    Fail("EGL has no display without a surface");
  if (eglBindAPI(EGL_OPENGL_API) == EGL_FALSE) Fail("EGL has no OpenGL");
  constexpr EGLint kAttributes[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                                    EGL_NONE};
  EGLConfig config = nullptr;
  EGLint count = 0;
  if (eglChooseConfig(display, kAttributes, &config, 1, &count) == EGL_FALSE || count == 0)
    Fail("EGL has no configuration for OpenGL");
  context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
  if (context == EGL_NO_CONTEXT) Fail("EGL makes no context");
  if (eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context) == EGL_FALSE)
    Fail("EGL needs a surface");
}

HeadlessContext::~HeadlessContext() {
  eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  eglDestroyContext(display, context);
  eglTerminate(display);
}

}  // namespace sim
