#include "host/DataFileServices.h"

#include <fmt/core.h>

#include <filesystem>

#include "host/Events.h"
#include "host/Packages.h"
#include "host/Placement.h"
#include "report/Log.h"
#include "world/World.h"
#include "world/files/TextFile.h"

namespace sim {
namespace {

std::string FullPath(const std::string& path) {
  return (std::filesystem::path(gWorld.systemPath) / path).string();
}

void LoadFlightPlan(const std::string& file) {
  gWorld.flightPlan = world::FlightPlan::FromText(world::ReadTextFile(file), file, gWorld.navigation);
  gWorld.FlyToEntry(gWorld.flightPlan.Destination());
  TellLibrary(VYRA_EVENT_BROADCAST_107, nullptr);
}

// Another aircraft than the present one is loaded first, so that a damaged description changes nothing
// either.
void LoadSituation(const std::string& file) {
  const world::Situation situation = world::ParseSituation(world::ReadTextFile(file), file);
  const std::string model = situation.aircraft.empty() ? "" : FullPath(situation.aircraft);
  if (!model.empty() && model != gWorld.modelPath) {
    const PackageOutcome outcome = LoadUserAircraft(model);
    if (!outcome.succeeded) throw world::FileError(file, 0, outcome.text);
  }
  gWorld.Enter(situation);
  TellPlaced();
  TellLibrary(VYRA_EVENT_BROADCAST_101, nullptr);
}

std::string SituationText() {
  world::Situation situation = world::SituationOf(gWorld.aircraft, gWorld.weather);
  situation.aircraft =
      std::filesystem::path(gWorld.modelPath).lexically_proximate(gWorld.systemPath).string();
  return world::ToText(situation);
}

}  // namespace

bool LoadDataFile(int fileType, const std::string& path) {
  const std::string file = FullPath(path);
  try {
    fileType == kFlightPlanFile ? LoadFlightPlan(file) : LoadSituation(file);
    return true;
  } catch (const world::FileError& error) {
    gLog->Write(fmt::format("Failed: {}\n", error.what()));
    return false;
  }
}

bool SaveDataFile(int fileType, const std::string& path) {
  try {
    world::WriteTextFile(FullPath(path),
                         fileType == kFlightPlanFile ? gWorld.flightPlan.ToText() : SituationText());
    return true;
  } catch (const world::FileError& error) {
    gLog->Write(fmt::format("Failed: {}\n", error.what()));
    return false;
  }
}

void FillDataFileServices(VYRAHostServices& services) {
  services.LoadDataFile = [](int fileType, const char* path) {
    if (path == nullptr) {
      gLog->Write("Failed: a plugin asked for a file without a path\n");
      return 0;
    }
    return LoadDataFile(fileType, path) ? 1 : 0;
  };
  services.SaveDataFile = [](int fileType, const char* path) { return SaveDataFile(fileType, path) ? 1 : 0; };
}

}  // namespace sim
