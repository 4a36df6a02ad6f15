#include "host/LoadWatch.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "VYRAPlugin.h"
#include "VYRAWatch.h"
#include "host/CallWatchers.h"
#include "host/CostWatch.h"
#include "host/LoadFailures.h"
#include "host/PluginChoice.h"
#include "host/PluginList.h"
#include "report/Event.h"
#include "world/World.h"

namespace sim {
namespace {

int gRounds = 0;
std::optional<LoadRound> gReload;
std::string gLine;                              // what came of a line so far
std::vector<LoadFailure> gFailures;             // of the whole flight
std::map<std::string, std::string> gLoaded;     // paths by signature
std::map<std::string, PluginReport> gPlugins;   // that were ever loaded, by path
std::string gLastOpened;                        // the module that the system's next text is about, or ""
std::map<VYRAPluginID, std::string> gEnabling;  // paths of those whose enable call was made last

struct LoadTime {
  Nanoseconds begin = 0;  // of the call that is under way
  Nanoseconds total = 0;
  bool isLoading = false;
};
std::map<std::string, LoadTime> gLoadTimes;  // by path

void TellFailure(const std::string& path, const std::string& reason) {
  const bool isKnown = std::ranges::any_of(gFailures, [&](const LoadFailure& failure) {
    return failure.path == path && failure.reason == reason;
  });
  if (isKnown) return;
  gFailures.push_back({path, reason});
  TellEvent(LoadFailed{gFailures.back()});
  MarkInTrace("not loaded: " + path);
}

bool HasFailed(const std::string& path) {
  return std::ranges::find(gFailures, path, &LoadFailure::path) != gFailures.end();
}

bool IsLoaded(const std::string& path) {
  return std::ranges::any_of(gLoaded, [&](const auto& entry) { return entry.second == path; });
}

constexpr std::array<std::string_view, 5> kBeginnings = {"dlerror:", "Fetching plugins for ",
                                                         "Loaded: ", "Failed: ", "Warning: "};

// ---- The log's lines -----------------------------------------------------------------------------------

// The path in a line that consists of a beginning, a path and an end.
std::optional<std::string> PathIn(std::string_view line, std::string_view beginning, std::string_view end) {
  if (!line.starts_with(beginning) || !line.ends_with(end)) return std::nullopt;
  line.remove_prefix(beginning.size());
  line.remove_suffix(end.size());
  return std::string(line);
}

// Whether the system's text only says that a module that was opened lacks one of the functions that it may
// export.
bool IsOfMissingCallback(std::string_view text) {
  const std::size_t name = text.rfind("undefined symbol: VyPlugin");
  return name != std::string_view::npos;
}

void NoteLoaded(const std::string& path, const std::string& signature) {
  gLoaded[signature] = path;
  PluginReport& plugin = gPlugins[path];
  plugin.signature = signature;
  plugin.path = path;
}

// Whether a text is only the beginning of one, up to a line end in the module's path.
bool EndsInPath(std::string_view text, std::string_view path) {
  return path.starts_with(text) && path.substr(text.size()).starts_with('\n');
}

void FollowLoaded(std::string_view line) {
  const std::size_t bracket = line.rfind(" (");
  NoteLoaded(std::string(line.substr(0, bracket)), std::string(line.substr(bracket + 2)));
  TellPluginStates();
}

void FollowDuplicate(std::string_view line) {
  const std::size_t at = line.rfind(" Signature: ");
  const std::string path(line.substr(0, at));
  const std::string signature(line.substr(at + std::string_view(" Signature: ").size()));
  if (signature.empty()) return TellFailure(path, "it gives an empty signature");
  TellFailure(path, fmt::format("it has the signature {} of {}, which is loaded already", signature,
                                gLoaded[signature]));
}

void FollowLine(const std::string& line) {
  if (line.starts_with("dlerror:")) {
    const std::string_view text = std::string_view(line).substr(std::string_view("dlerror:").size());
    if (gLastOpened.empty() || IsOfMissingCallback(text) || EndsInPath(text, gLastOpened)) return;
    const std::string path = std::exchange(gLastOpened, "");
    TellFailure(path, ExplainFailedOpening(path, text));
    return;
  }
  // A file that the library turns down unopened is the next that a text may be about.
  if (line.starts_with("Failed: ") || line.starts_with("Warning: ")) gLastOpened.clear();
  if (const auto rest = PathIn(line, "Fetching plugins for ", "")) {
    TellEvent(FolderLookedAt{*rest});
  } else if (const auto loaded = PathIn(line, "Loaded: ", ").")) {
    FollowLoaded(*loaded);
  } else if (const auto refused = PathIn(
                 line, "Failed: ", ". (The plugin refused to start by returning 0 from VyPluginStart.)")) {
    TellFailure(*refused, "it refused to start: VyPluginStart returned 0");
  } else if (const auto startless = PathIn(
                 line,
                 "Failed: ", ".  (This file is a loadable DLL but is missing the VyPluginStart callback.)")) {
    TellFailure(*startless, ExplainMissingStart(*startless));
  } else if (const auto duplicate =
                 PathIn(line, "Warning: ", ". (A version of this plugin is already loaded.)")) {
    FollowDuplicate(*duplicate);
  }
}

// ---- The calls of a plugin's life -----------------------------------------------------------------------

bool IsOfLoading(int kind) {
  return kind == VYRA_CALL_OPENING || kind == VYRA_CALL_START || kind == VYRA_CALL_ENABLE;
}

void BeginLoadTime(const VYRARunningCall& call) {
  if (!IsOfLoading(call.kind)) return;
  LoadTime& load = gLoadTimes[call.path];
  if (call.kind == VYRA_CALL_OPENING) load = {.begin = 0, .total = 0, .isLoading = true};
  load.begin = ReadClock();
}

void EndLoadTime(const VYRARunningCall& call) {
  if (!IsOfLoading(call.kind)) return;
  LoadTime& load = gLoadTimes[call.path];
  if (load.isLoading) load.total += ReadClock() - load.begin;
  if (call.kind == VYRA_CALL_ENABLE) load.isLoading = false;
}

void NoteBegin(const VYRARunningCall* call, void* /*refcon*/) {
  BeginLoadTime(*call);
  if (call->kind == VYRA_CALL_START) gLastOpened.clear();
  if (call->kind == VYRA_CALL_DISABLE) gEnabling.erase(call->plugin);
}

void NoteEnd(const VYRARunningCall* call, void* /*refcon*/) {
  EndLoadTime(*call);
  if (call->kind == VYRA_CALL_OPENING) gLastOpened = call->path;
  if (call->kind == VYRA_CALL_ENABLE) gEnabling[call->plugin] = call->path;
}

void TellRefusedEnables() {
  for (const auto& [plugin, path] : gEnabling)
    if (VYRAIsPluginEnabled(plugin) == 0)
      TellFailure(path, "it refused to be enabled: VyPluginEnable returned 0");
  gEnabling.clear();
}

// A line is not known as one where there is a line end in its path.
void NoteUnreadLines() {
  for (const PluginInfo& plugin : ListPlugins())
    if (plugin.id != VYRA_HOST_PLUGIN && !plugin.path.empty() && !gLoaded.contains(plugin.signature))
      NoteLoaded(plugin.path, plugin.signature);
}

}  // namespace

LoadRound::LoadRound() {
  if (gRounds++ > 0) return;
  AddCallWatcher({.structSize = sizeof(VYRAWatcher),
                  .wantsAccessors = 0,
                  .begin = NoteBegin,
                  .end = NoteEnd,
                  .refcon = &gRounds});
}

LoadRound::~LoadRound() {
  if (--gRounds > 0) return;
  RemoveCallWatcher(&gRounds);
  gEnabling.clear();
  gLine.clear();
  gLastOpened.clear();
}

void LoadRound::AuditMainFolder() const { Audit(gWorld.systemPath + "Resources/plugins", true); }

void LoadRound::AuditPackage(const std::string& folder) const { Audit(folder, false); }

void LoadRound::Audit(const std::string& folder, bool takesLooseModules) const {
  NoteUnreadLines();
  for (const LoadFailure& failure : FindMisplacedModules(folder, takesLooseModules))
    TellFailure(failure.path, failure.reason);
  // What the log says nothing of, as of a file that cannot be read.
  for (const std::string& module : FindModules(folder, takesLooseModules))
    if (!IsLoaded(module) && !HasFailed(module) && !IsPassedOver(module))
      TellFailure(module, ExplainFailedOpening(module, ""));
  TellRefusedEnables();
  TellPluginStates();
}

void FollowLog(std::string_view text) {
  if (gRounds == 0) return;
  // A plugin may have left the line before without an end.
  if (std::ranges::any_of(kBeginnings,
                          [&](std::string_view beginning) { return text.starts_with(beginning); }))
    gLine.clear();
  gLine += text;
  for (std::size_t end = gLine.find('\n'); end != std::string::npos; end = gLine.find('\n')) {
    const std::string line = gLine.substr(0, end);
    gLine.erase(0, end + 1);
    if (!line.empty()) FollowLine(line);
  }
}

void BeginReload() {
  gLoaded.clear();
  if (!gReload) gReload.emplace();
}

void EndReload() {
  if (!gReload) return;
  gReload->AuditMainFolder();
  if (!gWorld.modelPath.empty()) gReload->AuditPackage(PluginsOfAircraft(gWorld.modelPath));
  gReload.reset();
}

std::string PluginsOfAircraft(const std::string& modelPath) {
  return modelPath.substr(0, modelPath.rfind('/')) + "/plugins";
}

void TellPluginStates() {
  const std::vector<PluginInfo> list = ListPlugins();
  for (auto& [path, plugin] : gPlugins) {
    const auto found = std::ranges::find(list, plugin.signature, &PluginInfo::signature);
    PluginReport now = plugin;
    now.state = "unloaded";
    if (found != list.end() && gLoaded[plugin.signature] == path) {
      now.id = found->id;
      now.name = found->name;
      now.state = found->enabled ? "enabled" : "disabled";
    }
    if (now.state == plugin.state && now.id == plugin.id) continue;
    plugin = now;
    TellEvent(PluginTold{plugin});
  }
}

std::vector<std::string> MetModules() {
  std::vector<std::string> modules;
  modules.reserve(gPlugins.size() + gFailures.size());
  for (const auto& [path, plugin] : gPlugins) modules.push_back(path);
  for (const LoadFailure& failure : gFailures) modules.push_back(failure.path);
  return modules;
}

std::size_t CountMetModules() { return gPlugins.size() + gFailures.size(); }

std::optional<Nanoseconds> LoadTimeOf(const std::string& path) {
  const auto found = gLoadTimes.find(path);
  if (found == gLoadTimes.end()) return std::nullopt;
  return found->second.total;
}

const std::vector<LoadFailure>& LoadFailures() { return gFailures; }

int CountLoadFailures() { return static_cast<int>(gFailures.size()); }

std::string DescribeLoadFailures() {
  std::string text = std::to_string(gFailures.size());
  for (const LoadFailure& failure : gFailures) text += fmt::format("; {}: {}", failure.path, failure.reason);
  return text;
}

}  // namespace sim
