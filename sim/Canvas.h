// The screen as a list of the texts on it: there is no picture, but what a plugin writes can be read.
#pragma once

#include <string>
#include <vector>

#include "VYRAHost.h"

namespace sim {

constexpr int kScreenWidth = 1280;
constexpr int kScreenHeight = 800;

void FillCanvasServices(VYRAHostServices& services);

// To be called before a frame is drawn.
void ClearCanvas();

// The strings and numbers of the frame drawn last.
const std::vector<std::string>& TextsOnScreen();

}  // namespace sim
