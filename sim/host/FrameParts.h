// The parts of a frame, one after another, as the simulator goes through them. Somebody may want to know what
// each takes; as long as nobody does, nothing is measured.
#pragma once

#include <array>
#include <cstddef>

namespace sim {

enum class FramePart {
  Input,     // what the user did since the last frame
  Steps,     // of a flight file
  World,     // the simulation advances, loads are completed
  Pass0,     // the flight loops' first phase
  Commands,  // that are held; and the camera is asked
  Scene,     // drawing steps 1 to 12
  Surface,   // drawing steps 13 to 19
  Windows,   // drawing step 20
  Above,     // drawing steps 21 to 26
  Pass1,     // the second phase
  Checks,    // of expectations, AI planes, what is told
  Panels,    // the menu bar and the panels
  Show,      // until the picture is on the display
  Rest,      // until the next frame is due: belongs to none
};
constexpr std::size_t kFrameParts = 14;

// For readers: "flight loops, first phase".
constexpr std::array<const char*, kFrameParts> kFramePartNames{"input",
                                                               "steps",
                                                               "world",
                                                               "flight loops, first phase",
                                                               "commands, camera",
                                                               "scene",
                                                               "surface",
                                                               "windows",
                                                               "above the windows",
                                                               "flight loops, second phase",
                                                               "checks",
                                                               "menu bar and panels",
                                                               "onto the display",
                                                               "rest"};

// Who is told as a part begins; null for nobody.
inline void (*gFramePartListener)(FramePart part) = nullptr;

inline void BeginPart(FramePart part) {
  if (gFramePartListener != nullptr) gFramePartListener(part);
}

}  // namespace sim
