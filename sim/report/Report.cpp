#include "report/Report.h"

#include <fmt/core.h>

#include <algorithm>

namespace sim {
namespace {

std::string Counted(std::ptrdiff_t count, const char* thing, const char* things, const char* rest) {
  return fmt::format("{} {} {}", count, count == 1 ? thing : things, rest);
}

void AddCounted(std::vector<std::string>& lines, std::ptrdiff_t count, const char* thing, const char* things,
                const char* rest) {
  if (count > 0) lines.push_back(Counted(count, thing, things, rest));
}

std::string Name(const Culprit& culprit) {
  if (!culprit.name.empty()) return fmt::format("{} ({})", culprit.name, culprit.signature);
  return culprit.path.empty() ? "the simulator" : culprit.path;
}

}  // namespace

bool HasPlugins(const Report& report) {
  return std::ranges::any_of(report.plugins,
                             [](const PluginReport& plugin) { return plugin.state != "passed over"; });
}

std::vector<std::string> WhyNotPassed(const Report& report) {
  std::vector<std::string> lines;
  if (report.culprit)
    lines.push_back(
        fmt::format("{}: {}: {}", Name(report.result), Name(*report.culprit), report.culprit->message));
  const auto count = [&](ExpectationResult result) {
    return std::ranges::count(report.expectations, result, &ExpectationReport::result);
  };
  AddCounted(lines, count(ExpectationResult::Failed), "expectation", "expectations", "failed");
  AddCounted(lines, count(ExpectationResult::NotReached), "expectation was", "expectations were",
             "not reached");
  AddCounted(lines, std::ssize(report.failedSteps), "step", "steps", "could not be carried out");
  const std::size_t unexpected = report.loadFailures.size() - report.expectedLoadFailures;
  AddCounted(lines, static_cast<std::ptrdiff_t>(unexpected), "module", "modules", "could not be loaded");
  if (!HasPlugins(report)) lines.emplace_back("there was no plugin");
  lines.insert(lines.end(), report.otherFailures.begin(), report.otherFailures.end());
  return lines;
}

void SettleReport(Report& report) {
  if (report.result > Result::Failed) {
    report.exitCode = kExitPluginEndedFlight;
    return;
  }
  const bool passed = WhyNotPassed(report).empty();
  report.result = passed ? Result::Passed : Result::Failed;
  report.exitCode = passed ? kExitPassed : kExitFailed;
}

const char* Name(Result result) {
  switch (result) {
    case Result::Passed:
      return "passed";
    case Result::Failed:
      return "failed";
    case Result::Exited:
      return "exited";
    case Result::Exception:
      return "exception";
    case Result::Stalled:
      return "stalled";
    case Result::Crashed:
      break;
  }
  return "crashed";
}

const char* Name(ExpectationResult result) {
  switch (result) {
    case ExpectationResult::Held:
      return "held";
    case ExpectationResult::Failed:
      return "failed";
    case ExpectationResult::NotReached:
      break;
  }
  return "not reached";
}

}  // namespace sim
