#include <fmt/format.h>

#include "flight/steps/Steps.h"
#include "view/Screen.h"

namespace sim {
namespace {

Effect Read(const Entry& entry, const FlightContext& /*context*/) {
  const Entry size = entry.Object("resizeScreen");
  return [width = size.WholeNumber("width"), height = size.WholeNumber("height")] {
    gScreen.Resize(width, height);
    return Outcome{true, fmt::format("screen is {} by {} pixels", width, height)};
  };
}

Key SideKey(std::string_view name) {
  return WholeNumberKey(name, Screen::kSmallestSide, Screen::kLargestSide, "pixels");
}

}  // namespace

StepWord ResizeScreenStep() {
  return {{.key = ObjectKey("resizeScreen", {SideKey("width"), SideKey("height")},
                            "gives the screen another size; a window's is the user's, and stays as it is"),
           .others = {}},
          Read};
}

}  // namespace sim
