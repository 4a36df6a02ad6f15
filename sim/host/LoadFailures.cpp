#include "host/LoadFailures.h"

#include <cxxabi.h>
#include <fmt/core.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

#include "host/ModuleFile.h"

namespace sim {
namespace {

namespace fs = std::filesystem;

constexpr int kDeepestSearch = 3;  // folders below a plugin's own

std::vector<fs::path> SortedEntries(const fs::path& folder) {
  std::vector<fs::path> entries;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
    entries.push_back(entry->path());
  std::ranges::sort(entries);
  return entries;
}

bool IsFolder(const fs::path& path) {
  std::error_code error;
  return fs::is_directory(path, error);
}

bool IsThere(const fs::path& path) {
  std::error_code error;
  return fs::exists(fs::symlink_status(path, error));
}

// As the library compares it: upper and lower case do not differ.
bool EndsInVyp(const fs::path& path) {
  std::string ending = path.extension().string();
  std::ranges::transform(ending, ending.begin(), [](unsigned char letter) { return std::tolower(letter); });
  return ending == ".vyp" || path.filename() == ".vyp";
}

bool LooksLikeModule(const fs::path& path) {
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return false;
  return EndsInVyp(path) || FindStartFunction(path.string()) != StartFunction::None;
}

// The first file in a plugin folder that looks like its module.
std::optional<fs::path> SearchModule(const fs::path& folder, int depth) {
  const std::vector<fs::path> entries = SortedEntries(folder);
  for (const fs::path& entry : entries)
    if (LooksLikeModule(entry)) return entry;
  if (depth == 0) return std::nullopt;
  for (const fs::path& entry : entries) {
    std::error_code error;
    if (!IsFolder(entry) || fs::is_symlink(entry, error)) continue;
    if (std::optional<fs::path> found = SearchModule(entry, depth - 1)) return found;
  }
  return std::nullopt;
}

bool IsAdmin(const fs::path& entry) {
  return entry.filename().string().find("PluginAdmin") != std::string::npos;
}

std::optional<LoadFailure> MisplacedIn(const fs::path& folder) {
  if (IsThere(folder / "64/lin.vyp") || IsThere(folder / "lin.vyp")) return std::nullopt;
  const std::optional<fs::path> found = SearchModule(folder, kDeepestSearch);
  if (!found) return std::nullopt;
  const std::string name = folder.filename().string();
  return LoadFailure{found->string(), fmt::format("{}/ has {}; it is looked for at {}/64/lin.vyp", name,
                                                  found->lexically_relative(folder).string(), name)};
}

std::optional<LoadFailure> MisplacedLoose(const fs::path& file, bool takesLooseModules) {
  if (!LooksLikeModule(file)) return std::nullopt;
  const std::string stem = file.stem().string();
  if (!takesLooseModules)
    return LoadFailure{file.string(),
                       fmt::format("it lies loose; here it is looked for at {}/64/lin.vyp", stem)};
  if (IsAdmin(file))
    return LoadFailure{file.string(), "PluginAdmin is looked for at PluginAdmin/64/lin.vyp alone"};
  if (EndsInVyp(file)) return std::nullopt;
  return LoadFailure{file.string(), "a loose module's name must end in .vyp"};
}

std::string Demangled(const std::string& symbol) {
  int status = 0;
  const std::unique_ptr<char, void (*)(void*)> text(
      abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status), std::free);
  return text != nullptr ? text.get() : symbol;
}

// What stands between two texts, the second one at the end when it is empty.
std::optional<std::string> Between(std::string_view text, std::string_view before, std::string_view after) {
  const std::size_t start = text.find(before);
  if (start == std::string_view::npos) return std::nullopt;
  text.remove_prefix(start + before.size());
  return std::string(after.empty() ? text : text.substr(0, text.find(after)));
}

}  // namespace

std::string ExplainFailedOpening(const std::string& path, std::string_view systemText) {
  if (std::string fault = FileFault(path); !fault.empty()) return fault;
  constexpr std::string_view kNotFound = ": cannot open shared object file";
  if (const std::size_t end = systemText.find(kNotFound); end != std::string_view::npos)
    return fmt::format("it needs the library {}, which is not found", systemText.substr(0, end));
  if (const auto symbol = Between(systemText, "undefined symbol: ", ","))
    return fmt::format("it uses {}, an undefined symbol that nothing defines", Demangled(*symbol));
  if (const auto version = Between(systemText, "version `", "'"))
    return fmt::format("it needs the version {} of a library, which is not found", *version);
  if (systemText.starts_with(path + ": ")) systemText.remove_prefix(path.size() + 2);
  return systemText.empty() ? "it could not be opened"
                            : fmt::format("it could not be opened: {}", systemText);
}

std::string ExplainMissingStart(const std::string& path) {
  switch (FindStartFunction(path)) {
    case StartFunction::Hidden:
      return "it has VyPluginStart, but hidden: export it, as VYRA_PLUGIN_EXPORT does";
    case StartFunction::Mangled:
      return "it has VyPluginStart under a C++ name: declare it extern \"C\", as VYRA_PLUGIN_EXPORT does";
    case StartFunction::Exported:
    case StartFunction::None:
      break;
  }
  return "it has no function VyPluginStart";
}

std::vector<LoadFailure> FindMisplacedModules(const std::string& folder, bool takesLooseModules) {
  std::vector<LoadFailure> failures;
  for (const fs::path& entry : SortedEntries(folder)) {
    const std::optional<LoadFailure> failure =
        IsFolder(entry) ? MisplacedIn(entry) : MisplacedLoose(entry, takesLooseModules);
    if (failure) failures.push_back(*failure);
  }
  return failures;
}

std::vector<std::string> FindModules(const std::string& folder, bool takesLooseModules) {
  std::vector<std::string> modules;
  for (const fs::path& entry : SortedEntries(folder)) {
    if (!IsFolder(entry)) {
      if (takesLooseModules && EndsInVyp(entry) && !IsAdmin(entry)) modules.push_back(entry.string());
    } else if (IsThere(entry / "64/lin.vyp")) {
      modules.push_back((entry / "64/lin.vyp").string());
    } else if (IsThere(entry / "lin.vyp")) {
      modules.push_back((entry / "lin.vyp").string());
    }
  }
  return modules;
}

}  // namespace sim
