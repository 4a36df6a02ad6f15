#include <imgui.h>

#include "window/Panel.h"

namespace sim {
namespace {

void Draw() { ImGui::TextUnformatted("nothing yet"); }

}  // namespace

const Panel kPluginsPanel{.name = "Plugins", .key = 1, .draw = Draw};

}  // namespace sim
