// The report as JSON, as docs/report.schema.json describes it, and its parts as events carry them.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "report/Report.h"

namespace sim {

// On one line, or indented. Bytes that are not UTF-8 become replacement characters.
std::string ToText(const nlohmann::json& value, int indent = -1);

nlohmann::json ToJson(const Report& report);

// Writes the report to a file. Throws InputError.
void WriteReport(const Report& report, const std::string& fileName);

NLOHMANN_JSON_SERIALIZE_ENUM(Result, {{Result::Passed, "passed"},
                                      {Result::Failed, "failed"},
                                      {Result::Exited, "exited"},
                                      {Result::Exception, "exception"},
                                      {Result::Stalled, "stalled"},
                                      {Result::Crashed, "crashed"}})
NLOHMANN_JSON_SERIALIZE_ENUM(ExpectationResult, {{ExpectationResult::Held, "held"},
                                                 {ExpectationResult::Failed, "failed"},
                                                 {ExpectationResult::NotReached, "not reached"}})

NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Culprit, signature, name, path, call, frame, hook, message, backtrace)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(LoadFailure, path, reason)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(FailedStep, frame, line, text)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Activity, clicks, keys, menuPicks, commandsHeld, commandPasses, textsDrawn,
                                   boxesDrawn, cameraTakings, cameraFrames, planesTakings, planesReturns,
                                   probings, probingsThatHit, objectsLoaded, objectsReleased, objectsDrawn)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(FlightTotals, frames, passes, warnings, medianPassMicroseconds,
                                   p99PassMicroseconds, longestPassMicroseconds, timesRealTime, libraryShare,
                                   shownFrames, shownPerSecond, activity)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(CallCost, calls, totalMs, meanMs, medianMs, p99Ms, longestMs, longestFrame)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(ExpectationReport, text, line, result, found, lastHeld)

void to_json(nlohmann::json& object, const PluginCost& cost);
void from_json(const nlohmann::json& object, PluginCost& cost);
void to_json(nlohmann::json& object, const PluginReport& plugin);
void from_json(const nlohmann::json& object, PluginReport& plugin);

}  // namespace sim
