#include "report/LastEnd.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string_view>
#include <system_error>

#include "choice/PluginPattern.h"
#include "report/ReportJson.h"

namespace sim {

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(LastEnd, date, result, name, signature, path, call)

namespace {

namespace fs = std::filesystem;

// The same in each start of the program, and different for nearly all folders (FNV-1a).
std::uint64_t Hash(const std::string& text) {
  std::uint64_t hash = 14695981039346656037U;
  for (const char byte : text) hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211U;
  return hash;
}

fs::path FileOf(const std::string& stateFolder, const std::string& systemPath) {
  return fs::path(stateFolder) / fmt::format("last-end-{:016x}.json", Hash(systemPath));
}

// The plugin's folder or loose module, as short as a pattern of paths may be. A path needs no start of the
// plugin to be held against, as a signature would.
std::string NameByPath(const std::string& module, const std::string& systemPath) {
  const fs::path entry = EntryOf(module);
  return module.starts_with(systemPath) ? entry.lexically_relative(systemPath) : entry;
}

std::string ForShell(const std::string& word) {
  constexpr std::string_view kPlain = "/._-+=:,@%";
  const auto isPlain = [&](unsigned char letter) {
    return std::isalnum(letter) != 0 || kPlain.find(static_cast<char>(letter)) != kPlain.npos;
  };
  if (std::ranges::all_of(word, isPlain)) return word;
  std::string quoted = "'";
  for (const char letter : word) quoted += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
  return quoted + "'";
}

std::string Variable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

}  // namespace

std::string DefaultStateFolder() {
  if (const std::string folder = Variable("XDG_STATE_HOME"); !folder.empty()) return folder + "/vyra-sim";
  const std::string home = Variable("HOME");
  return home.empty() ? "" : home + "/.local/state/vyra-sim";
}

std::optional<LastEnd> TakeLastEnd(const std::string& stateFolder, const std::string& systemPath) {
  if (stateFolder.empty()) return std::nullopt;
  const fs::path path = FileOf(stateFolder, systemPath);
  std::ifstream file(path);
  if (!file) return std::nullopt;
  std::error_code error;
  fs::remove(path, error);
  try {
    return nlohmann::json::parse(file).get<LastEnd>();
  } catch (const nlohmann::json::exception&) {
    return std::nullopt;  // somebody else's, or cut short: nothing that the user can mend
  }
}

bool RememberEnd(const std::string& stateFolder, const std::string& systemPath, Result result,
                 const Culprit& culprit) {
  return RememberAgain(stateFolder, systemPath,
                       {fmt::format("{:%Y-%m-%d %H:%M}", fmt::localtime(std::time(nullptr))), Name(result),
                        culprit.name, culprit.signature, culprit.path, culprit.call});
}

bool RememberAgain(const std::string& stateFolder, const std::string& systemPath, const LastEnd& end) {
  if (stateFolder.empty()) return true;
  std::error_code error;
  fs::create_directories(stateFolder, error);
  std::ofstream file(FileOf(stateFolder, systemPath));
  file << ToText(end, 2) << '\n';
  file.close();
  return !file.fail();
}

std::string PatternOf(const LastEnd& end, const std::string& systemPath) {
  return LiteralPattern(NameByPath(end.path, systemPath));
}

std::string DescribeLastEnd(const LastEnd& end, const std::string& systemPath) {
  return fmt::format("the last flight here, on {}, {}: {}{}; to fly without that plugin: --skip {}", end.date,
                     end.result, end.name, end.call.empty() ? "" : ", " + end.call,
                     ForShell(PatternOf(end, systemPath)));
}

}  // namespace sim
