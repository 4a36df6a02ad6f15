// The user presses a key to say which one is meant, and not to do something with it.
#pragma once

#include <functional>

#include "host/Keyboard.h"

union SDL_Event;

namespace sim {

// The next key that is pressed goes here, with the flags of those that are held with it; Escape alone is
// nobody's choice, and ends it.
void CaptureKey(std::function<void(const NamedKey& key, int flags)> taker);
bool IsCapturingKey();
void EndKeyCapture();

// Whether an event was meant for it, and so is nobody else's.
bool TakeCapturedKey(const SDL_Event& event);

}  // namespace sim
