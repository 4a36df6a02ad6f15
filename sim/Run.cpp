#include "Run.h"

#include <filesystem>
#include <fstream>
#include <utility>

#include "InputError.h"
#include "Session.h"
#include "report/CostRecord.h"
#include "report/Costs.h"
#include "report/Event.h"
#include "report/Log.h"
#include "report/ReportJson.h"
#include "report/Summary.h"
#include "world/World.h"

namespace sim {
namespace {

constexpr std::size_t kPathBuffer = 512;  // as the library reads the system path, with room for a file name
constexpr std::size_t kFileNameRoom = 32;

std::string NormalSystemPath(const std::string& folder) {
  if (!std::filesystem::is_directory(folder)) throw InputError("there is no simulator folder " + folder);
  std::string path = std::filesystem::absolute(folder).lexically_normal().string();
  if (!path.ends_with('/')) path += '/';
  if (path.size() + kFileNameRoom > kPathBuffer) throw InputError("the path is too long: " + path);
  return path;
}

// A file that cannot be written is told of before the flight, not after it.
void CheckWritable(const std::string& fileName) {
  if (!fileName.empty() && !std::ofstream(fileName, std::ios::app))
    throw InputError("cannot write " + fileName);
}

Report EmptyReport(const FlightOptions& options, const Flight& flight) {
  Report report;
  report.rate = options.rate;
  report.expectations.resize(flight.expectations.size());
  return report;
}

}  // namespace

int Run(const FlightOptions& options) {
  gWorld.systemPath = NormalSystemPath(options.systemPath);
  Flight flight;
  if (!options.flightFile.empty()) flight = ReadFlight(options.flightFile, gWorld.systemPath, options.frames);
  CheckWritable(options.reportFile);
  Log log(options.logFile);
  CostRecord costs(options.costs, !options.reportFile.empty());

  Report report = EmptyReport(options, flight);
  TellEventsTo(report);
  Fly(options, std::move(flight), log, costs);
  costs.EnterIn(report);

  SettleReport(report);
  PrintSummary(report);
  if (options.costs.wantsTable) PrintCosts(report);
  if (!options.reportFile.empty()) WriteReport(report, options.reportFile);
  return report.exitCode;
}

}  // namespace sim
