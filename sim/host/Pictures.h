// Pictures of frames, without a window: who takes them, of which frames, and into which files.
#pragma once

#include <string>
#include <vector>

#include "view/PictureOptions.h"
#include "view/gl/FrameBuffer.h"
#include "view/gl/FramePainter.h"
#include "view/gl/HeadlessContext.h"

namespace sim {

// There is an OpenGL context as long as this lasts: from before the first plugin is started until the last
// one has stopped.
class Pictures {
 public:
  // Throws InputError when there is no OpenGL.
  explicit Pictures(const PictureOptions& options);
  ~Pictures();
  Pictures(const Pictures&) = delete;
  Pictures& operator=(const Pictures&) = delete;

  // A picture of the frame that is drawn next.
  void Request(const std::string& fileName) { requests.push_back({.frame = 0, .fileName = fileName}); }

  // Around the drawing steps of a frame. A file that cannot be written fails the flight.
  void BeginFrame();
  void EndFrame();

 private:
  HeadlessContext context;
  FrameBuffer buffer;
  FramePainter painter;
  std::vector<PictureRequest> requests;  // frame 0: the next one
};

// Null while nobody asks for pictures or for OpenGL.
inline Pictures* gPictures = nullptr;

// Whether the flight file asks for pictures, which is known before the flight.
inline bool gFlightWantsPictures = false;

}  // namespace sim
