#include "host/ServiceTable.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>

#include "host/CameraServices.h"
#include "host/CommandServices.h"
#include "host/DataFileServices.h"
#include "host/GraphicsServices.h"
#include "host/InputServices.h"
#include "host/MenuServices.h"
#include "host/NavigationServices.h"
#include "host/ObjectServices.h"
#include "host/Placement.h"
#include "host/PlaneServices.h"
#include "host/SceneryServices.h"
#include "host/ScreenServices.h"
#include "host/SpeechServices.h"
#include "host/Symbols.h"
#include "host/SystemServices.h"
#include "host/TerrainServices.h"

namespace sim {
namespace {

constexpr int kTableRevision = 4;  // with ShowMessage and ShowLoadingStatus
constexpr int kServiceCount = 70;

// The library calls a slot without looking whether it is filled, so one that was forgotten ends the program
// here and not in the middle of a flight.
void CheckEverySlot(const VYRAHostServices& services) {
  std::array<void*, kServiceCount> slots{};
  static_assert(sizeof(services) == 8 + sizeof(slots));
  std::memcpy(slots.data(), reinterpret_cast<const char*>(&services) + 8, sizeof(slots));
  const auto empty = std::ranges::find(slots, nullptr);
  if (empty != slots.end())
    throw std::logic_error(fmt::format("service {} is missing", empty - slots.begin() + 1));
}

}  // namespace

VYRAHostServices MakeHostServices() {
  VYRAHostServices services{};
  services.serviceTableRevision = kTableRevision;
  services.hostVersion = kHostVersion;
  FillSystemServices(services);
  FillScreenServices(services);
  FillCameraServices(services);
  FillMenuServices(services);
  FillCommandServices(services);
  FillPlaneServices(services);
  FillTerrainServices(services);
  FillObjectServices(services);
  FillSceneryServices(services);
  FillPlacementServices(services);
  FillNavigationServices(services);
  FillDataFileServices(services);
  FillGraphicsServices(services);
  FillInputServices(services);
  FillSpeechServices(services);
  FillSymbolServices(services);
  CheckEverySlot(services);
  return services;
}

}  // namespace sim
