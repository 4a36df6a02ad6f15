// What is asked of the screen: its size, and pictures of it.
#pragma once

#include <string>
#include <vector>

#include "view/Screen.h"

namespace sim {

struct PictureRequest {
  int frame = 0;
  std::string fileName;
};

struct PictureOptions {
  int width = Screen::kDefaultWidth;
  int height = Screen::kDefaultHeight;
  std::vector<PictureRequest> requests;
  bool wantsContext = false;  // also without a picture
};

}  // namespace sim
