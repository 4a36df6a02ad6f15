#include "window/KeyCapture.h"

#include <SDL.h>

#include <utility>

#include "window/InputTranslation.h"

namespace sim {
namespace {

std::function<void(const NamedKey&, int)> gTaker;
bool gSwallowsText = false;  // that of the key that was taken

}  // namespace

void CaptureKey(std::function<void(const NamedKey&, int)> taker) { gTaker = std::move(taker); }

bool IsCapturingKey() { return static_cast<bool>(gTaker); }

void EndKeyCapture() { gTaker = nullptr; }

bool TakeCapturedKey(const SDL_Event& event) {
  if (event.type == SDL_TEXTINPUT) return std::exchange(gSwallowsText, false);
  if (event.type != SDL_KEYDOWN) return false;
  gSwallowsText = false;
  if (!IsCapturingKey()) return false;
  const NamedKey* const key = KeyOf(event.key.keysym);
  if (key == nullptr) return true;  // shift and its like: the key itself is still to come
  const int flags = FlagsOf(event.key.keysym);
  gSwallowsText = true;
  const auto taker = std::exchange(gTaker, nullptr);
  if (key->name != "Escape" || flags != 0) taker(*key, flags);
  return true;
}

}  // namespace sim
