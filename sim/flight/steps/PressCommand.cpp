// Two words for a command that is held for nobody knows how long.
#include <fmt/format.h>

#include "flight/steps/Steps.h"
#include "host/CommandServices.h"
#include "report/Activity.h"

namespace sim {
namespace {

struct Press {
  static constexpr const char* kWord = "pressCommand";
  static void Act(VYRACommandRef command) {
    ++gActivity.commandsHeld;
    HoldUntilLetGo(command);
  }
};
struct Release {
  static constexpr const char* kWord = "releaseCommand";
  static void Act(VYRACommandRef command) { LetGo(command); }
};

template <class Deed>
StepWord WordOf(std::string_view description) {
  return {{.key = TextKey(Deed::kWord, description), .others = {}},
          [](const Entry& entry, const FlightContext& /*context*/) -> Effect {
            return [name = entry.Text(Deed::kWord)]() -> Outcome {
              const VYRACommandRef command = CommandOfName(name);
              if (command == nullptr)
                return {false, fmt::format("{} {}: there is no such command", Deed::kWord, name)};
              Deed::Act(command);
              return {true, fmt::format("{} {}", Deed::kWord, name)};
            };
          }};
}

}  // namespace

StepWord PressCommandStep() {
  return WordOf<Press>(
      "presses the command of this name, which is continued in each frame until it is "
      "released");
}

StepWord ReleaseCommandStep() { return WordOf<Release>("releases it"); }

}  // namespace sim
