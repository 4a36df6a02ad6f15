// Reading the report of a flight.
#include "bisect/Failure.h"

#include <fmt/core.h>

#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string_view>

namespace sim {
namespace {

using nlohmann::json;

constexpr std::string_view kEnded = "a plugin ended the flight: ";
constexpr std::string_view kExpectation = "expectation ";

void AddEndByPlugin(const json& report, Ways& ways) {
  const std::string result = report.value("result", "");
  if (result != "passed" && result != "failed") ways.insert(std::string(kEnded) + result);
}

void AddExpectations(const json& report, Ways& ways) {
  for (const json& expectation : report.value("expectations", json::array()))
    if (const std::string result = expectation.at("result"); result != "held")
      ways.insert(fmt::format("{}{}: {}", kExpectation, result, expectation.at("text").get<std::string>()));
}

void AddTexts(const json& report, const char* list, const char* key, std::string_view what, Ways& ways) {
  for (const json& entry : report.value(list, json::array()))
    ways.insert(fmt::format("{}: {}", what, entry.at(key).get<std::string>()));
}

// Why the flight did not pass, line by line as the report says it.
void AddLines(const json& report, Ways& ways) {
  for (const json& line : report.value("failures", json::array())) ways.insert(line.get<std::string>());
}

// Load failures that the flight expects are none of these.
bool Says(const json& report, std::string_view text) {
  Ways lines;
  AddLines(report, lines);
  return std::ranges::any_of(lines, [text](const std::string& line) { return line.find(text) != line.npos; });
}

void AddCosts(const json& report, double budgetMs, Ways& ways) {
  for (const json& plugin : report.value("plugins", json::array()))
    if (budgetMs > 0.0 && plugin.contains("cost") && plugin["cost"].at("longestMs").get<double>() > budgetMs)
      ways.insert(fmt::format("a plugin took more than {:g} ms in a frame", budgetMs));
}

}  // namespace

Ways WaysOfFailing(const FlightOutcome& outcome, double budgetMs) {
  Ways ways;
  if (outcome.exitCode == 0) return ways;
  if (outcome.report.is_object()) {
    AddEndByPlugin(outcome.report, ways);
    AddExpectations(outcome.report, ways);
    AddTexts(outcome.report, "failedSteps", "text", "step failed", ways);
    if (Says(outcome.report, "could not be loaded"))
      AddTexts(outcome.report, "loadFailures", "path", "module not loaded", ways);
    AddCosts(outcome.report, budgetMs, ways);
  }
  if (ways.empty() && outcome.report.is_object()) AddLines(outcome.report, ways);
  if (ways.empty()) ways.insert(fmt::format("exit code {}", outcome.exitCode));
  return ways;
}

Ways WaysToLookFor(const Ways& ways, const std::optional<std::string>& expectation) {
  Ways chosen;
  std::ranges::copy_if(ways, std::inserter(chosen, chosen.end()), [&](const std::string& way) {
    if (!expectation) return way.starts_with(kEnded);
    return way.starts_with(kExpectation) && way.find(*expectation) != std::string::npos;
  });
  return chosen.empty() && !expectation ? ways : chosen;
}

}  // namespace sim
