#include <imgui.h>

#include "window/Panel.h"

namespace sim {
namespace {

void Draw() { ImGui::TextUnformatted("nothing yet"); }

}  // namespace

const Panel kCommandsPanel{.name = "Commands", .key = 3, .draw = Draw};

}  // namespace sim
