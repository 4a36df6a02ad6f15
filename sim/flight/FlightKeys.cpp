#include "flight/FlightKeys.h"

#include <fmt/core.h>

#include <filesystem>

#include "flight/Entry.h"
#include "flight/JsonDocument.h"
#include "report/Moment.h"

namespace sim {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFrames = "frames";
constexpr std::string_view kRate = "rate";
constexpr std::string_view kSystem = "system";
constexpr std::string_view kPlugins = "plugins";

double RateOf(const Entry& file) {
  const double rate = file.Number(kRate);
  if (rate < kMinRate || rate > kMaxRate)
    file.FailAtValue(kRate, fmt::format("\"{}\" must be from {:g} to {:g}", kRate, kMinRate, kMaxRate));
  return rate;
}

}  // namespace

const std::vector<Key>& FlightKeys() {
  static const std::vector<Key> kKeys = {
      Optional(
          WholeNumberKey(kFrames, 1, kMaxFrames, "how many frames are flown; `--frames` counts before it")),
      Optional(NumberKey(kRate, "frames per simulated second, 1 to 1000; `--rate` counts before it")),
      Optional(TextKey(
          kSystem, "the simulator folder, relative to the folder of this file; `--system` counts before it")),
      Optional(TextsKey(
          kPlugins,
          "the plugins under test: all others are passed over. Signatures, names of folders or files, or "
          "paths; `*` stands for anything. `--only` counts before it"))};
  return kKeys;
}

FlightSettings ReadFlightSettings(const std::string& fileName) {
  const JsonDocument document(fileName);
  const Entry file(document, "", "");
  FlightSettings settings;
  file.CheckThose(FlightKeys());
  if (file.Has(kFrames)) settings.frames = file.WholeNumber(kFrames);
  if (file.Has(kRate)) settings.rate = RateOf(file);
  if (file.Has(kSystem))
    settings.systemPath = (fs::path(fileName).parent_path() / file.Text(kSystem)).string();
  settings.plugins = file.Texts(kPlugins);
  return settings;
}

}  // namespace sim
