#include "report/Event.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <utility>

#include "report/ReportJson.h"

namespace sim {
namespace {

Report* gReport = nullptr;
int gFileDescriptor = -1;

struct Applier {
  Report& report;

  PluginReport& PluginAt(const std::string& path) const {
    const auto found = std::ranges::find(report.plugins, path, &PluginReport::path);
    if (found != report.plugins.end()) return *found;
    PluginReport& plugin = report.plugins.emplace_back();
    plugin.path = path;
    return plugin;
  }

  void operator()(const PluginTold& event) const {
    PluginReport& plugin = PluginAt(event.plugin.path);
    const std::optional<PluginCost> cost = event.plugin.cost ? event.plugin.cost : plugin.cost;
    plugin = event.plugin;
    plugin.cost = cost;
  }
  void operator()(const CostTold& event) const { PluginAt(event.path).cost = event.cost; }
  void operator()(const LoadFailed& event) const { report.loadFailures.push_back(event.failure); }
  void operator()(const FolderLookedAt& event) const {
    std::vector<std::string>& folders = report.foldersLookedAt;
    if (std::ranges::find(folders, event.folder) == folders.end()) folders.push_back(event.folder);
  }
  void operator()(const StepFailed& event) const { report.failedSteps.push_back(event.step); }
  void operator()(const ExpectationSettled& event) const {
    ExpectationReport& expectation = report.expectations.at(event.index);
    expectation.result = event.holds ? ExpectationResult::Held : ExpectationResult::Failed;
    expectation.found = event.found;
    expectation.lastHeld = event.lastHeld;
    if (event.coversLoadFailures) report.expectedLoadFailures = report.loadFailures.size();
  }
  void operator()(const FlightFailed& event) const { report.otherFailures.push_back(event.text); }
  void operator()(const PluginEndedFlight& event) const {
    if (report.culprit) return;
    report.result = event.result;
    report.culprit = event.culprit;
  }
  void operator()(const FlightEnded& event) const { report.totals = event.totals; }
};

void WriteAll(int fileDescriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(fileDescriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

// An event is an object with one key, the name of its kind.
template <class Kind>
bool IsOfKind(const nlohmann::json& object, Event& outEvent) {
  const auto found = object.find(Kind::kName);
  if (found == object.end()) return false;
  outEvent = found->template get<Kind>();
  return true;
}

template <class... Kinds>
Event EventOf(const nlohmann::json& object, const std::variant<Kinds...>* /*kinds*/) {
  Event event;
  if (!(IsOfKind<Kinds>(object, event) || ...)) throw std::runtime_error("unknown event " + object.dump());
  return event;
}

}  // namespace

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(PluginTold, plugin)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(CostTold, path, cost)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(LoadFailed, failure)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(FolderLookedAt, folder)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(StepFailed, step)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(ExpectationSettled, index, holds, found, lastHeld, coversLoadFailures)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(FlightFailed, text)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(PluginEndedFlight, result, culprit)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(FlightEnded, totals)

void ApplyEvent(Report& report, const Event& event) { std::visit(Applier{report}, event); }

std::string EventToLine(const Event& event) {
  const nlohmann::json object = std::visit(
      []<class Kind>(const Kind& kind) {
        return nlohmann::json{{Kind::kName, kind}};
      },
      event);
  return ToText(object) + '\n';
}

Event EventFromLine(std::string_view line) {
  return EventOf(nlohmann::json::parse(line), static_cast<const Event*>(nullptr));
}

void TellEventsTo(Report& report) {
  gReport = &report;
  gFileDescriptor = -1;
}

void TellEventsTo(int fileDescriptor) {
  gReport = nullptr;
  gFileDescriptor = fileDescriptor;
}

void TellEvent(const Event& event) {
  if (gReport != nullptr) ApplyEvent(*gReport, event);
  if (gFileDescriptor >= 0) WriteAll(gFileDescriptor, EventToLine(event));
}

}  // namespace sim
