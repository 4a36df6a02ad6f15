#define GL_GLEXT_PROTOTYPES
#include "view/gl/FrameBuffer.h"

#include <GL/glext.h>
#include <fmt/core.h>

#include <algorithm>

#include "InputError.h"

namespace sim {
namespace {

constexpr GLint kSamples = 4;

GLuint MakeRenderBuffer(GLenum format, int samples, int width, int height) {
  GLuint buffer = 0;
  glGenRenderbuffers(1, &buffer);
  glBindRenderbuffer(GL_RENDERBUFFER, buffer);
  glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, format, width, height);
  return buffer;
}

int SamplesOfContext() {
  GLint most = 0;
  glGetIntegerv(GL_MAX_SAMPLES, &most);
  return std::min(most, kSamples);
}

}  // namespace

Picture ReadPixels(int width, int height) {
  Picture picture{.width = width, .height = height, .bytes = {}};
  picture.bytes.resize(3 * static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, picture.bytes.data());
  return picture;
}

FrameBuffer::FrameBuffer(int frameWidth, int frameHeight)
    : width(frameWidth), height(frameHeight), drawn(Make(SamplesOfContext())), resolved(Make(0)) {
  glBindFramebuffer(GL_FRAMEBUFFER, drawn.frame);
  if (glCheckFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE)
    throw InputError(fmt::format("OpenGL has no frame of {} by {} pixels", width, height));
}

FrameBuffer::~FrameBuffer() {
  for (const Target& target : {drawn, resolved}) {
    glDeleteFramebuffers(1, &target.frame);
    glDeleteRenderbuffers(1, &target.colour);
    glDeleteRenderbuffers(1, &target.depth);
  }
}

FrameBuffer::Target FrameBuffer::Make(int samples) const {
  Target target;
  target.colour = MakeRenderBuffer(GL_RGBA8, samples, width, height);
  target.depth = MakeRenderBuffer(GL_DEPTH24_STENCIL8, samples, width, height);
  glGenFramebuffers(1, &target.frame);
  glBindFramebuffer(GL_FRAMEBUFFER, target.frame);
  glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, target.colour);
  glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_RENDERBUFFER, target.depth);
  return target;
}

void FrameBuffer::Bind() const { glBindFramebuffer(GL_FRAMEBUFFER, drawn.frame); }

Picture FrameBuffer::Read() const {
  glBindFramebuffer(GL_READ_FRAMEBUFFER, drawn.frame);
  glBindFramebuffer(GL_DRAW_FRAMEBUFFER, resolved.frame);
  glBlitFramebuffer(0, 0, width, height, 0, 0, width, height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
  glBindFramebuffer(GL_READ_FRAMEBUFFER, resolved.frame);
  Picture picture = ReadPixels(width, height);
  Bind();
  return picture;
}

}  // namespace sim
