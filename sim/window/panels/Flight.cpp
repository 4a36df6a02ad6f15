#include <imgui.h>

#include "window/Panel.h"

namespace sim {
namespace {

void Draw() { ImGui::TextUnformatted("nothing yet"); }

}  // namespace

const Panel kFlightPanel{.name = "Flight", .key = 6, .draw = Draw};

}  // namespace sim
