// Runs vyra-sim as its users do, in a process of its own, over simulator folders made for one test.
#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

struct SimulatorRun {  // NOLINT(bugprone-exception-escape): a report is moved as JSON, which may not throw
  int exitCode = 0;    // 128 and the signal's number when a signal ended it
  std::string output;
  std::string error;
  std::string log;
  nlohmann::json report;  // null when none was written
};

// "vyra-sim" with a command and its arguments, and --log and --report for the command "run". Ends it after
// a minute.
SimulatorRun RunSimulator(std::vector<std::string> arguments);

std::string ReadFile(const std::filesystem::path& path);

// Fails the test when a value does not fit a JSON schema.
void ExpectSchemaHolds(const nlohmann::json& schema, const nlohmann::json& value);

// A simulator folder that lasts as long as this, with the modules that a test puts into it.
class SimulatorFolder {
 public:
  SimulatorFolder();
  ~SimulatorFolder();
  SimulatorFolder(const SimulatorFolder&) = delete;
  SimulatorFolder& operator=(const SimulatorFolder&) = delete;

  // A path in the folder; "Resources/plugins" and what lies there with Plugins.
  std::string Path(const std::string& place) const;
  std::string Plugins(const std::string& place) const { return Path("Resources/plugins/" + place); }

  // Copies a module that the build made for these tests ("clock", "start-refused") to a place, and gives the
  // place's path. Write puts a text there instead.
  std::string Install(const std::string& module, const std::string& place) const;
  std::string Write(const std::string& text, const std::string& place) const;
  // The bytes of a module.
  static std::string Bytes(const std::string& module);

  // Flies so many frames at 60 Hz, with further arguments.
  SimulatorRun Fly(int frames, const std::vector<std::string>& arguments = {}) const;
  // Likewise, with this flight file.
  SimulatorRun FlyFile(int frames, const nlohmann::json& flight,
                       const std::vector<std::string>& arguments = {}) const;

 private:
  std::filesystem::path root;
};
