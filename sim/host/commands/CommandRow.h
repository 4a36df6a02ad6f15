// One of the simulator's own commands: a row of the table from which they are made and described.
#pragma once

#include <string>
#include <vector>

namespace sim {

struct CommandRow {
  std::string name;
  std::string description;
  void (*begin)() = nullptr;      // when it is pressed
  void (*whileHeld)() = nullptr;  // in each pass that it is held
  void (*end)() = nullptr;        // when it is released
};

// Does something once, whenever it is pressed.
CommandRow Once(std::string name, std::string description, void (*action)());

// Does it when it is pressed, and in each pass that it is held.
CommandRow Repeated(std::string name, std::string description, void (*action)());

// The rows of each subject, a file each.
std::vector<CommandRow> AircraftCommands();
std::vector<CommandRow> AutopilotCommands();
std::vector<CommandRow> ControlCommands();
std::vector<CommandRow> NavigationCommands();
std::vector<CommandRow> SystemCommands();

}  // namespace sim
