// Gathering candidates from the report and from the folder.
#include "bisect/Candidates.h"

#include <algorithm>
#include <map>

#include "choice/PluginPattern.h"

namespace sim {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

constexpr const char* kMainFolder = "Resources/plugins";

fs::path PlaceOf(const fs::path& systemFolder, const fs::path& module) {
  const fs::path entry = EntryOf(module);
  const fs::path place = entry.lexically_relative(systemFolder);
  return *place.begin() == ".." ? entry : place;
}

bool HasModule(const fs::path& path) {
  if (fs::is_directory(path)) return fs::exists(path / "64/lin.vyp") || fs::exists(path / "lin.vyp");
  return path.extension() == ".vyp";
}

using Places = std::map<fs::path, std::string>;  // the signatures

void AddModule(const fs::path& systemFolder, const json& plugin, Places& places) {
  const std::string path = plugin.at("path");
  if (path.empty()) return;
  std::string& signature = places[PlaceOf(systemFolder, path)];
  if (signature.empty()) signature = plugin.value("signature", "");
}

}  // namespace

std::vector<Candidate> CandidatesOf(const fs::path& systemFolder, const json& report,
                                    const std::vector<std::string>& keep) {
  Places places;
  Places passedOver;
  if (report.is_object()) {
    for (const json& plugin : report.at("plugins"))
      AddModule(systemFolder, plugin, plugin.at("state") == "passed over" ? passedOver : places);
    for (const json& failure : report.at("loadFailures")) AddModule(systemFolder, failure, places);
    if (report.contains("culprit")) AddModule(systemFolder, report.at("culprit"), places);
  }
  std::error_code unreadable;
  for (const fs::directory_entry& entry : fs::directory_iterator(systemFolder / kMainFolder, unreadable))
    if (HasModule(entry.path())) places.try_emplace(kMainFolder / entry.path().filename());

  std::vector<Candidate> candidates;
  for (const auto& [place, signature] : places) {
    const bool isKept = std::ranges::any_of(keep, [&, &place = place, &signature = signature](auto& pattern) {
      return PatternFits(pattern, systemFolder / place, systemFolder, [&] { return signature; });
    });
    if (!isKept && !passedOver.contains(place)) candidates.push_back({place, signature});
  }
  return candidates;
}

std::string NameOf(const Candidate& candidate) {
  return candidate.signature.empty() ? candidate.place.string() : candidate.signature;
}

}  // namespace sim
