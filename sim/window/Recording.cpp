#include "window/Recording.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <utility>

#include "flight/FlightRunner.h"
#include "view/Screen.h"
#include "window/UserActions.h"
#include "world/World.h"

namespace sim {
namespace {

namespace fs = std::filesystem;

std::string StepText(int frame, const nlohmann::json& step) {
  nlohmann::ordered_json text = {{"frame", frame}};
  for (const auto& [key, value] : step.items()) text[key] = value;
  return text.dump();
}

// Takes the text of each step of the flight file in their rows: those of a row follow each other.
template <class Take>
void ForPlannedSteps(int lastFrame, const Take& take) {
  if (gFlightRunner == nullptr) return;
  for (const StepRow& row : gFlightRunner->Plan().rows)
    for (const Step& step : row.steps)
      if (row.frame <= lastFrame && gFlightRunner->Of(step).progress != Progress::Waiting) take(step.text);
}

}  // namespace

// A step that could not be carried out changed nothing, and would fail the flight.
void Recording::Begin(RecordedFlight recordedFlight) {
  flight = std::move(recordedFlight);
  steps.clear();
  lastFrame.reset();
  if (gScreen.Width() != Screen::kDefaultWidth || gScreen.Height() != Screen::kDefaultHeight)
    steps.push_back(
        {1, StepText(1, {{"resizeScreen", {{"width", gScreen.Width()}, {"height", gScreen.Height()}}}})});
  TellUserActionsTo([this](const UserAction& action) {
    if (action.succeeded) steps.push_back({action.frame, StepText(action.frame, action.step)});
  });
}

void Recording::Stop() { lastFrame = gWorld.frame; }

int Recording::Frames() const { return lastFrame.value_or(gWorld.frame); }

// Asked for in each frame, and there may be many.
std::size_t Recording::Steps() const {
  std::size_t count = OfUser().size();
  ForPlannedSteps(Frames(), [&count](const std::string&) { ++count; });
  return count;
}

std::span<const Recording::RecordedStep> Recording::OfUser() const {
  const auto end = std::ranges::upper_bound(steps, Frames(), {}, &RecordedStep::frame);
  return {steps.begin(), end};
}

std::vector<std::string> Recording::StepTexts() const {
  std::vector<std::string> texts;
  ForPlannedSteps(Frames(), [&texts](const std::string& text) { texts.push_back(text); });
  for (const RecordedStep& step : OfUser()) texts.push_back(step.text);
  return texts;
}

std::string Recording::Save(const std::string& fileName, bool mayOverwrite) const {
  if (fileName.empty()) return "a file name is needed";
  if (Frames() == 0) return "no frame was flown yet";
  // "x": only a file that is not there yet.
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
      std::fopen(fileName.c_str(), mayOverwrite ? "w" : "wx"), std::fclose);
  if (!file && errno == EEXIST) return fileName + " is there already";
  if (!file) return fmt::format("{} cannot be written: {}", fileName, std::strerror(errno));
  const fs::path folder = fs::absolute(fileName).parent_path();
  nlohmann::ordered_json head = {{"system", fs::path(flight.systemPath).lexically_relative(folder).string()},
                                 {"frames", Frames()},
                                 {"rate", flight.rate}};
  if (!flight.plugins.empty()) head["plugins"] = flight.plugins;
  std::string text = "{\n";
  for (const auto& [key, value] : head.items()) text += fmt::format("  \"{}\": {},\n", key, value.dump());
  const std::vector<std::string> texts = StepTexts();
  text +=
      fmt::format("  \"steps\": [{}{}]\n}}\n", texts.empty() ? "" : "\n    ", fmt::join(texts, ",\n    "));
  if (std::fputs(text.c_str(), file.get()) < 0 || std::fflush(file.get()) != 0)
    return fmt::format("not all of {} could be written", fileName);
  return "";
}

}  // namespace sim
