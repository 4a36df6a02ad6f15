// Tells a reader at the terminal what happens, on standard output; and, on standard error, how far a long
// flight is.
#pragma once

#include <chrono>
#include <string_view>

namespace sim {

class Narrator {
 public:
  // Progress is shown only where asked for and where standard error is a terminal.
  explicit Narrator(bool wantsProgress);

  // One line, with the frame or the moment (report/Moment.h) in front of it.
  void Tell(int moment, std::string_view text);

  // To be called in every frame; redraws the line a few times per second of wall time.
  void ShowProgress(int frame, int frames);
  void ClearProgress();

 private:
  bool showsProgress;
  bool lineIsShown = false;
  std::chrono::steady_clock::time_point nextProgress;
};

}  // namespace sim
