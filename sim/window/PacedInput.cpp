#include "window/PacedInput.h"

#include <SDL.h>

#include <algorithm>
#include <deque>

namespace sim {
namespace {

// A menu or a panel that a click opens has its place a frame later.
constexpr int kFramesToOpen = 2;
// A click on a value makes it a field, which then asks for the keyboard, and then has it.
constexpr int kFramesToFocus = 3;

void AtLeast(int& count, int frames) { count = std::max(count, frames); }

void CountDown(int& count) { count = std::max(count - 1, 0); }

}  // namespace

struct PacedInput::Waiting {
  std::deque<SDL_Event> events;
};

PacedInput::PacedInput() : waiting(std::make_unique<Waiting>()) {}

PacedInput::~PacedInput() = default;

void PacedInput::Poll() {
  SDL_Event event;
  while (SDL_PollEvent(&event) != 0) waiting->events.push_back(event);
}

bool PacedInput::Next(SDL_Event& event) {
  if (waiting->events.empty() || MustWait(waiting->events.front())) return false;
  event = waiting->events.front();
  waiting->events.pop_front();
  Note(event);
  return true;
}

void PacedInput::NoteDrawn() {
  for (int* const count : {&untilMove, &untilPress, &untilKeyIsPressed, &untilKeyIsReleased})
    CountDown(*count);
}

bool PacedInput::MustWait(const SDL_Event& event) const {
  switch (event.type) {
    case SDL_MOUSEMOTION:
    case SDL_MOUSEBUTTONUP:
      return untilMove > 0;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEWHEEL:
      return untilPress > 0;
    case SDL_KEYDOWN:
      return untilKeyIsPressed > 0;
    case SDL_KEYUP:
      return untilKeyIsReleased > 0;
    default:
      return false;
  }
}

void PacedInput::Note(const SDL_Event& event) {
  switch (event.type) {
    case SDL_MOUSEMOTION:
      return AtLeast(untilPress, 1);
    case SDL_MOUSEWHEEL:
      return AtLeast(untilMove, 1);
    case SDL_MOUSEBUTTONDOWN:
      AtLeast(untilMove, 1);
      AtLeast(untilPress, 1);
      return AtLeast(untilKeyIsPressed, kFramesToFocus);
    case SDL_MOUSEBUTTONUP:
      AtLeast(untilMove, 1);
      AtLeast(untilPress, kFramesToOpen);
      return AtLeast(untilKeyIsPressed, kFramesToFocus);
    case SDL_KEYDOWN:
      // A key that is pressed and released at once would be neither.
      return AtLeast(untilKeyIsReleased, 1);
    default:
      return;
  }
}

}  // namespace sim
