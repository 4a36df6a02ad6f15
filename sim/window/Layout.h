// Where the panels are and which of them are shown: at first, and remembered from one run of the program to
// the next.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace sim {

// In the user interface's pixels, from the window's left top corner on.
struct PanelPlace {
  bool isShown = false;
  float left = 0.0F;
  float top = 0.0F;
  float width = 0.0F;
  float height = 0.0F;

  bool operator==(const PanelPlace&) const = default;
};

// By the panels' names.
using Layout = std::map<std::string, PanelPlace, std::less<>>;

// Where a panel is that was never moved: so that all of them can be seen at the same time, in a window of
// this size. density: of the display, 1 for a plain one.
PanelPlace FirstPlace(std::string_view panel, float width, float height, float density);

// Moved and made smaller until it lies in a window of this size.
PanelPlace Within(PanelPlace place, float width, float height);

// What is remembered in the state folder; empty when that is empty, when nothing is, or when the file is not
// what WriteLayout wrote. Panels that are missing in it have no place yet.
Layout ReadLayout(const std::string& stateFolder);

// False when it cannot be written. With an empty folder nothing is remembered, and that is no failure.
bool WriteLayout(const std::string& stateFolder, const Layout& layout);

}  // namespace sim
