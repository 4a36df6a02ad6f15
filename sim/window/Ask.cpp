#include "window/Ask.h"

#include <exception>
#include <utility>

#include "window/UserActions.h"

namespace sim {

void Ask(nlohmann::json step, std::string& problem) {
  problem.clear();
  try {
    Do(std::move(step), [&problem](const Outcome& outcome) {
      if (!outcome.succeeded) problem = outcome.text;
    });
  } catch (const std::exception& error) {
    problem = error.what();
  }
}

}  // namespace sim
