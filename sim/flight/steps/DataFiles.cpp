// Four words for the two kinds of files of the simulator's own.
#include <fmt/core.h>

#include "flight/steps/Steps.h"
#include "host/DataFileServices.h"

namespace sim {
namespace {

// What a word does, as a type, so that each word has a reader of its own.
struct LoadPlan {
  static constexpr const char* kWord = "loadFlightPlan";
  static bool Act(const std::string& path) { return LoadDataFile(kFlightPlanFile, path); }
};
struct SavePlan {
  static constexpr const char* kWord = "saveFlightPlan";
  static bool Act(const std::string& path) { return SaveDataFile(kFlightPlanFile, path); }
};
struct LoadSituation {
  static constexpr const char* kWord = "loadSituation";
  static bool Act(const std::string& path) { return LoadDataFile(kSituationFile, path); }
};
struct SaveSituation {
  static constexpr const char* kWord = "saveSituation";
  static bool Act(const std::string& path) { return SaveDataFile(kSituationFile, path); }
};

template <class Deed>
Effect Read(const Entry& entry, const FlightContext& /*context*/) {
  return [path = entry.Text(Deed::kWord)] {
    const bool isDone = Deed::Act(path);
    return Outcome{isDone, fmt::format("{} {}{}", Deed::kWord, path, isDone ? "" : ": the log says why not")};
  };
}

template <class Deed>
StepWord WordOf(std::string_view description) {
  return {{.key = TextKey(Deed::kWord, description), .others = {}}, Read<Deed>};
}

}  // namespace

StepWord LoadFlightPlanStep() { return WordOf<LoadPlan>("loads the flight plan from this file"); }

StepWord SaveFlightPlanStep() { return WordOf<SavePlan>("saves the flight plan to this file"); }

StepWord LoadSituationStep() {
  return WordOf<LoadSituation>("loads the situation of the user's aircraft from this file");
}

StepWord SaveSituationStep() {
  return WordOf<SaveSituation>("saves the situation of the user's aircraft to this file");
}

}  // namespace sim
