#include "window/MouseInput.h"

#include <SDL.h>

#include "flight/Entry.h"
#include "window/InputTranslation.h"
#include "window/UserActions.h"

namespace sim {
namespace {

nlohmann::json Object(const Pixel& place) { return {{"x", place.x}, {"y", place.y}}; }

void Turn(const Pixel& place, int wheel, int clicks) {
  if (clicks == 0) return;
  nlohmann::json turn = Object(place);
  turn["clicks"] = clicks;
  if (wheel != 0) turn["wheel"] = wheel;
  Do({{"turnWheel", turn}});
}

}  // namespace

MouseInput::~MouseInput() {
  for (SDL_Cursor* const cursor : made) SDL_FreeCursor(cursor);
}

void MouseInput::Take(const SDL_Event& event, bool isPanels) {
  if (isPanels && !isPressed) return;
  switch (event.type) {
    case SDL_MOUSEMOTION:
      Do({{"moveMouse", Object(PlaceOnScreen(event.motion.x, event.motion.y))}});
      break;
    case SDL_MOUSEBUTTONDOWN:
      if (event.button.button != SDL_BUTTON_LEFT || isPressed) break;
      isPressed = true;
      Do({{"pressMouse", Object(PlaceOnScreen(event.button.x, event.button.y))}});
      break;
    case SDL_MOUSEBUTTONUP:
      if (event.button.button != SDL_BUTTON_LEFT || !isPressed) break;
      Do({{"moveMouse", Object(PlaceOnScreen(event.button.x, event.button.y))}});
      Release();
      break;
    case SDL_MOUSEWHEEL: {
      const int sign = event.wheel.direction == SDL_MOUSEWHEEL_FLIPPED ? -1 : 1;
      const Pixel place = PlaceOnScreen(event.wheel.mouseX, event.wheel.mouseY);
      Turn(place, 0, sign * event.wheel.y);
      Turn(place, 1, sign * event.wheel.x);
      break;
    }
    default:
      break;
  }
}

void MouseInput::Release() {
  if (isPressed) Do({{"releaseMouse", true}});
  isPressed = false;
}

// The numbers of cursors are the simulator's own: SDL's shapes, from 1 on. What has no shape is the arrow.
void MouseInput::ShowCursor(int cursor) {
  const int shape = cursor > 0 && cursor <= kCursors ? cursor - 1 : 0;
  if (made[shape] == nullptr) made[shape] = SDL_CreateSystemCursor(static_cast<SDL_SystemCursor>(shape));
  if (SDL_GetCursor() != made[shape]) SDL_SetCursor(made[shape]);
}

}  // namespace sim
