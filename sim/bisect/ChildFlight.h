// Flights in processes of their own, so that whatever ends one is a result, over a simulator folder of which
// parts can be left out.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

namespace sim {

// NOLINTNEXTLINE(bugprone-exception-escape): it takes the checks inside the JSON library for throws
struct FlightOutcome {
  int exitCode = 0;       // 128 and the signal's number when a signal ended the process
  nlohmann::json report;  // what --report wrote; null when there is none
  std::string error;      // what stood on standard error
  double seconds = 0.0;
};

// A signal that asked this process to end was passed on to a flight.
struct Interrupted {
  int signal;
};

class ChildFlights {
 public:
  // `runArguments` are those of "vyra-sim run" without --system and without files to write. Throws
  // std::system_error.
  ChildFlights(const std::string& systemPath, std::vector<std::string> runArguments);
  ~ChildFlights();
  ChildFlights(const ChildFlights&) = delete;
  ChildFlights& operator=(const ChildFlights&) = delete;

  // Where the flights find the simulator folder: paths in their reports begin with it.
  std::filesystem::path SystemFolder() const { return folder / "system"; }

  // Flies without what lies at these places of the simulator folder. Throws Interrupted.
  FlightOutcome Fly(const std::set<std::filesystem::path>& leftOut) const;

 private:
  std::filesystem::path original;
  std::vector<std::string> arguments;
  std::filesystem::path folder;  // for the flights' files
};

}  // namespace sim
