// What happens in the window, handed on no faster than the panels can follow: they look at the mouse and the
// keyboard once in each frame that is drawn, and only then is it known whether the mouse is over one of them,
// or what is typed goes into one. The slower the frames are, the more comes between two of them.
#pragma once

#include <memory>

union SDL_Event;

namespace sim {

class PacedInput {
 public:
  PacedInput();
  ~PacedInput();
  PacedInput(const PacedInput&) = delete;
  PacedInput& operator=(const PacedInput&) = delete;

  // Takes from the system what there is.
  void Poll();

  // The next event in the order in which they came; false when there is none, or when the panels must be
  // drawn before it.
  bool Next(SDL_Event& event);

  // The panels were drawn with all that was handed on.
  void NoteDrawn();

 private:
  struct Waiting;  // events

  bool MustWait(const SDL_Event& event) const;
  void Note(const SDL_Event& event);

  std::unique_ptr<Waiting> waiting;

  // How often the panels are still to be drawn before what is named.
  int untilMove = 0;
  int untilPress = 0;
  int untilKeyIsPressed = 0;
  int untilKeyIsReleased = 0;
};

}  // namespace sim
