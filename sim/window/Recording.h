// What the user did since the flight began, as a flight file that flies it again without a window. It always
// begins with the flight, as only then the same comes of it.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace sim {

struct RecordedFlight {
  std::string systemPath;
  double rate = 0.0;
  std::vector<std::string> plugins;  // patterns, as of --only
};

class Recording {
 public:
  // The flight begins: what the user does from now on is noted.
  void Begin(RecordedFlight recordedFlight);

  // The recording ends with the frame that was flown last, until it goes on; then it has what was done in
  // between, too.
  void Stop();
  void GoOn() { lastFrame.reset(); }
  bool IsStopped() const { return lastFrame.has_value(); }

  // Of what a file would have now.
  int Frames() const;
  std::size_t Steps() const;

  // Writes the flight file: the steps of the flight file that is flown, as far as they were begun, and those
  // of the user. A file that is there is overwritten only where that is wanted. The result is empty, or says
  // why nothing was written.
  std::string Save(const std::string& fileName, bool mayOverwrite) const;

 private:
  struct RecordedStep {
    int frame;
    std::string text;  // JSON
  };

  std::span<const RecordedStep> OfUser() const;
  std::vector<std::string> StepTexts() const;

  RecordedFlight flight;
  std::vector<RecordedStep> steps;  // by frame
  std::optional<int> lastFrame;
};

// Of the flight that is under way.
inline Recording gRecording;

}  // namespace sim
