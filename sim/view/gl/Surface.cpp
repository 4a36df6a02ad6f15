#include "view/gl/Surface.h"

#include "view/gl/FramePainter.h"

namespace sim {

void ShowText(std::string_view text, int x, int y, const TextStyle& style) {
  gScreen.AddText(text, x, y, style);
  if (IsPainting()) gPainter->DrawText(text, x, y, style);
}

void ShowBox(const Rectangle& box) {
  gScreen.AddBox(box);
  if (IsPainting()) gPainter->DrawBox(box);
}

}  // namespace sim
