// The painter of a flight's frames, and pictures of them: who takes them, of which frames, into which files.
#pragma once

#include <optional>
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
  // Draws into the context that is the current one when there is a window; else into one of its own, and only
  // frames whose picture is taken. Throws InputError when there is no OpenGL.
  Pictures(const PictureOptions& options, bool hasWindow);
  ~Pictures();
  Pictures(const Pictures&) = delete;
  Pictures& operator=(const Pictures&) = delete;

  // A picture of the frame that is drawn next.
  void Request(const std::string& fileName) { requests.push_back({.frame = 0, .fileName = fileName}); }

  // In a window: how many pixels it has, whatever the size of the screen; and whether the frames that follow
  // are shown. Those that are not are not painted.
  void SetWindow(int newPixelWidth, int newPixelHeight) {
    pixelWidth = newPixelWidth;
    pixelHeight = newPixelHeight;
  }
  void SetShown(bool areShown) { isShown = areShown; }

  // Around the drawing steps of a frame. A file that cannot be written fails the flight.
  void BeginFrame();
  void EndFrame();

 private:
  FrameSize SizeOfFrame() const;

  std::optional<HeadlessContext> context;  // without a window
  std::optional<FrameBuffer> buffer;       // likewise
  FramePainter painter;
  bool isShown = true;  // in a window
  int pixelWidth = 0;   // of the window
  int pixelHeight = 0;
  std::vector<PictureRequest> requests;  // frame 0: the next one
};

// Null while nobody asks for pictures or for OpenGL.
inline Pictures* gPictures = nullptr;

// Whether the flight file asks for pictures, which is known before the flight.
inline bool gFlightWantsPictures = false;

}  // namespace sim
