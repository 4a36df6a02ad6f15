#include <imgui.h>

#include "window/Panel.h"

namespace sim {
namespace {

void Draw() { ImGui::TextUnformatted("nothing yet"); }

}  // namespace

const Panel kLogPanel{.name = "Log", .key = 5, .draw = Draw};

}  // namespace sim
