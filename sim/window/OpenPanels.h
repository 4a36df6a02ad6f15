// The panels: which are shown, and where.
#pragma once

#include <string>
#include <vector>

#include "window/Layout.h"
#include "window/Panel.h"

namespace sim {

class OpenPanels {
 public:
  // As they were when the program ran last. state: the folder where that is remembered.
  explicit OpenPanels(std::string state);
  ~OpenPanels();
  OpenPanels(const OpenPanels&) = delete;
  OpenPanels& operator=(const OpenPanels&) = delete;

  // Those that are shown, between Dear ImGui's begin and end of a frame. density: of the display.
  void Draw(float density);

  // The lines of a menu, in which they are shown and hidden.
  void DrawMenu();

  void Toggle(int key);

 private:
  struct OpenPanel {
    const Panel* panel;
    bool isPlaced = false;
    PanelPlace place{};
  };

  static void Show(OpenPanel& open, bool isShown);
  static void DrawPanel(OpenPanel& open, float density);
  void Remember();

  std::string stateFolder;
  Layout remembered;
  std::vector<OpenPanel> panels;
};

}  // namespace sim
