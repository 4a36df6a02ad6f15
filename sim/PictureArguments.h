// The options of vyra-sim about the screen and its pictures.
#pragma once

#include <CLI/App.hpp>

#include "view/PictureOptions.h"

namespace sim {

void AddPictureOptions(CLI::App& command, PictureOptions& options);

}  // namespace sim
