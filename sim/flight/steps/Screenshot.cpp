#include <fmt/core.h>

#include <fstream>

#include "flight/steps/Steps.h"
#include "host/Pictures.h"

namespace sim {
namespace {

Effect Read(const Entry& entry, const FlightContext& /*context*/) {
  const std::string fileName = entry.Text("screenshot");
  if (!std::ofstream(fileName, std::ios::app))
    entry.FailAtValue("screenshot", fmt::format("cannot write {}", fileName));
  gFlightWantsPictures = true;
  return [fileName]() -> Outcome {
    gPictures->Request(fileName);
    return {true, fmt::format("picture of this frame for {}", fileName)};
  };
}

}  // namespace

StepWord ScreenshotStep() {
  return {
      {.key = TextKey("screenshot",
                      "writes a picture of this frame, a PNG file; its path is relative to where `vyra-sim` "
                      "was started"),
       .others = {}},
      Read};
}

}  // namespace sim
