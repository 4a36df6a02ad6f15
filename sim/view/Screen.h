// The screen as a list of the texts on it: there is no picture, but what a plugin writes can be read.
#pragma once

#include <string>
#include <vector>

namespace sim {

constexpr int kScreenWidth = 1280;
constexpr int kScreenHeight = 800;

struct Screen {
  std::vector<std::string> texts;  // the strings and numbers of the frame drawn last
  int mouseX = 0;                  // pixels, y upward
  int mouseY = 0;
};

inline Screen gScreen;

}  // namespace sim
