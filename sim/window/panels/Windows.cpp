#include <imgui.h>

#include "window/Panel.h"

namespace sim {
namespace {

void Draw() { ImGui::TextUnformatted("nothing yet"); }

}  // namespace

const Panel kWindowsPanel{.name = "Windows and keys", .key = 4, .draw = Draw};

}  // namespace sim
