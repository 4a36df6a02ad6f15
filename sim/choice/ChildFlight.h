// Flights in processes of their own, so that whatever ends one is a result.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
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
  // Throws std::system_error.
  ChildFlights();
  ~ChildFlights();
  ChildFlights(const ChildFlights&) = delete;
  ChildFlights& operator=(const ChildFlights&) = delete;

  // A folder that lasts as long as this, with the flights' files in it.
  const std::filesystem::path& Folder() const { return folder; }

  // Flies with these arguments of "vyra-sim run", none of which says where to write. Throws Interrupted.
  FlightOutcome Fly(const std::vector<std::string>& arguments) const;

 private:
  std::filesystem::path folder;
};

}  // namespace sim
