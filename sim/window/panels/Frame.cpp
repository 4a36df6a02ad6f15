#include <imgui.h>

#include "window/Panel.h"

namespace sim {
namespace {

void Draw() { ImGui::TextUnformatted("nothing yet"); }

}  // namespace

const Panel kFramePanel{.name = "Frame", .key = 7, .draw = Draw};

}  // namespace sim
