// What is drawn into where there is no window: an image with depth, several samples to a pixel where the
// context can, and read back as a picture.
#pragma once

#include <GL/gl.h>

#include "view/Picture.h"

namespace sim {

// All functions need the context in which the buffer was made to be the current one.
// What was drawn into the buffer that is bound now, from its left bottom corner on.
Picture ReadPixels(int width, int height);

class FrameBuffer {
 public:
  // Throws InputError when the context has no buffer of this size.
  FrameBuffer(int frameWidth, int frameHeight);
  ~FrameBuffer();
  FrameBuffer(const FrameBuffer&) = delete;
  FrameBuffer& operator=(const FrameBuffer&) = delete;

  // What is drawn from now on goes into it.
  void Bind() const;
  int Width() const { return width; }
  int Height() const { return height; }

  Picture Read() const;

 private:
  struct Target {
    GLuint frame = 0;
    GLuint colour = 0;
    GLuint depth = 0;
  };
  Target Make(int samples) const;

  int width;
  int height;
  Target drawn;
  Target resolved;  // with one sample to a pixel
};

}  // namespace sim
