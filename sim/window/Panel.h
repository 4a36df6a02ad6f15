// The panels beside the flight: what an author sees of plugins. One file each, in panels/.
#pragma once

#include <span>

namespace sim {

struct Panel {
  const char* name;  // the title of its window, and its line in the menu
  int key;           // a digit, pressed with control: shows and hides it where no plugin takes the key
  // Draws it, with Dear ImGui, into a window that is begun and ended around it.
  void (*draw)();
  // Null, or told when it begins and ends to be shown: what is collected for it, and costs something, is
  // collected in between and at no other time.
  void (*setShown)(bool isShown) = nullptr;
};

// In the order of the menu.
std::span<const Panel> Panels();

// One of each file in panels/.
extern const Panel kPluginsPanel;
extern const Panel kDataRefsPanel;
extern const Panel kCommandsPanel;
extern const Panel kWindowsPanel;
extern const Panel kLogPanel;
extern const Panel kFlightPanel;
extern const Panel kFramePanel;

}  // namespace sim
