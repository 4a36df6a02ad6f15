#include "host/commands/CommandRow.h"

#include <utility>

namespace sim {

CommandRow Once(std::string name, std::string description, void (*action)()) {
  return {.name = std::move(name), .description = std::move(description), .begin = action};
}

CommandRow Repeated(std::string name, std::string description, void (*action)()) {
  return {
      .name = std::move(name), .description = std::move(description), .begin = action, .whileHeld = action};
}

}  // namespace sim
