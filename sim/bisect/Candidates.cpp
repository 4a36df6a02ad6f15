// Gathering candidates from the report and from the folder.
#include "bisect/Candidates.h"

#include <fnmatch.h>

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace sim {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

constexpr const char* kMainFolder = "Resources/plugins";

// What lies in a folder "plugins" and is, or holds, the module.
std::optional<fs::path> PlaceOf(const fs::path& systemFolder, const fs::path& module) {
  fs::path place;
  bool isInPlugins = false;
  for (const fs::path& part : module.lexically_relative(systemFolder)) {
    if (part == "..") return std::nullopt;  // outside: it cannot be left out
    place /= part;
    if (isInPlugins) return place;
    isInPlugins = part == "plugins";
  }
  return std::nullopt;
}

bool HasModule(const fs::path& path) {
  if (fs::is_directory(path)) return fs::exists(path / "64/lin.vyp") || fs::exists(path / "lin.vyp");
  return path.extension() == ".vyp";
}

using Places = std::map<fs::path, std::string>;  // the signatures

void AddModule(const fs::path& systemFolder, const json& plugin, Places& places) {
  const std::optional<fs::path> place = PlaceOf(systemFolder, plugin.at("path").get<std::string>());
  if (!place) return;
  std::string& signature = places[*place];
  if (signature.empty()) signature = plugin.value("signature", "");
}

bool Matches(const std::string& pattern, const std::string& text) {
  return fnmatch(pattern.c_str(), text.c_str(), 0) == 0;
}

}  // namespace

std::vector<Candidate> CandidatesOf(const fs::path& systemFolder, const json& report,
                                    const std::vector<std::string>& keep) {
  Places places;
  if (report.is_object()) {
    for (const json& plugin : report.at("plugins")) AddModule(systemFolder, plugin, places);
    for (const json& failure : report.at("loadFailures")) AddModule(systemFolder, failure, places);
    if (report.contains("culprit")) AddModule(systemFolder, report.at("culprit"), places);
  }
  std::error_code unreadable;
  for (const fs::directory_entry& entry : fs::directory_iterator(systemFolder / kMainFolder, unreadable))
    if (HasModule(entry.path())) places.try_emplace(kMainFolder / entry.path().filename());

  std::vector<Candidate> candidates;
  for (const auto& [place, signature] : places) {
    Candidate candidate{place, signature};
    const bool isKept = std::ranges::any_of(keep, [&candidate](const std::string& pattern) {
      return Matches(pattern, candidate.signature) || Matches(pattern, candidate.place);
    });
    if (!isKept) candidates.push_back(std::move(candidate));
  }
  return candidates;
}

std::string NameOf(const Candidate& candidate) {
  return candidate.signature.empty() ? candidate.place.string() : candidate.signature;
}

}  // namespace sim
