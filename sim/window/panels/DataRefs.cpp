#include <imgui.h>

#include "window/Panel.h"

namespace sim {
namespace {

void Draw() { ImGui::TextUnformatted("nothing yet"); }

}  // namespace

const Panel kDataRefsPanel{.name = "Datarefs", .key = 2, .draw = Draw};

}  // namespace sim
