// Any pointer may be null: where a wish is null it does not matter, where a result is null it is not written.
#include "host/NavigationServices.h"

#include <string_view>

#include "world/World.h"

namespace sim {
namespace {

template <class Value, class Result>
void Give(Result* out, Value value) {
  if (out != nullptr) *out = static_cast<Result>(value);
}

// Texts are short enough for the buffers that plugins are told to have.
void Give(char* out, std::string_view text) {
  if (out != nullptr) out[text.copy(out, text.size())] = '\0';
}

int Find(const char* name, const char* ident, float* latitude, float* longitude, int* frequency, int type) {
  world::NavigationDatabase::Wish wish;
  wish.types = type;
  if (name != nullptr) wish.partOfName = name;
  if (ident != nullptr) wish.partOfIdent = ident;
  if (frequency != nullptr) wish.frequency = *frequency;
  if (latitude != nullptr && longitude != nullptr)
    wish.near = world::Place{.latitude = static_cast<double>(*latitude),
                             .longitude = static_cast<double>(*longitude),
                             .altitude = 0.0};
  return gWorld.navigation.Find(wish);
}

// Whether it lies near enough to the origin of local metres for all of them to be told apart there.
bool IsInRegion(const world::NavAid& navAid) {
  constexpr double kRegion = 100'000.0;  // metres
  return world::WayBetween(gWorld.localFrame.Reference(), navAid.place).metres <= kRegion;
}

void GetInfo(int number, int* outType, float* outLatitude, float* outLongitude, float* outElevation,
             int* outFrequency, float* outHeading, char* outIdent, char* outName, char* outInRegion) {
  static const world::NavAid kNone;
  const world::NavAid* const found = gWorld.navigation.Get(number);
  const world::NavAid& navAid = found != nullptr ? *found : kNone;
  Give(outType, navAid.type);
  Give(outLatitude, navAid.place.latitude);
  Give(outLongitude, navAid.place.longitude);
  Give(outElevation, navAid.place.altitude);
  Give(outFrequency, navAid.frequency);
  Give(outHeading, navAid.heading);
  Give(outIdent, std::string_view(navAid.ident));
  Give(outName, std::string_view(navAid.name));
  if (outInRegion != nullptr) *outInRegion = found != nullptr && IsInRegion(navAid) ? 1 : 0;
}

void GetEntry(int index, int* outType, char* outIdent, int* outNavAid, int* outAltitude, float* outLatitude,
              float* outLongitude) {
  const world::FlightPlan::Entry& entry = gWorld.flightPlan.Get(index);
  Give(outType, entry.type);
  Give(outIdent, std::string_view(entry.ident));
  Give(outNavAid, entry.navAid);
  Give(outAltitude, entry.altitude);
  Give(outLatitude, entry.place.latitude);
  Give(outLongitude, entry.place.longitude);
}

void SetEntry(int index, int number, int altitude) {
  const world::NavAid* const navAid = gWorld.navigation.Get(number);
  if (navAid != nullptr) gWorld.flightPlan.SetNavAid(index, number, *navAid, altitude);
}

int GpsDestinationType() {
  const world::NavAid* const navAid = gWorld.navigation.Get(gWorld.gpsDestination);
  return navAid != nullptr ? navAid->type : world::kNoType;
}

void FillDatabase(VYRAHostServices& services) {
  services.GetFirstNavAid = [] { return gWorld.navigation.First(); };
  services.GetNextNavAid = [](int number) { return gWorld.navigation.Next(number); };
  services.FindFirstNavAidOfType = [](int type) { return gWorld.navigation.FirstOfType(type); };
  services.FindLastNavAidOfType = [](int type) { return gWorld.navigation.LastOfType(type); };
  services.FindNavAid = Find;
  services.GetNavAidInfo = GetInfo;
}

void FillFlightPlan(VYRAHostServices& services) {
  services.CountFMSEntries = [] { return gWorld.flightPlan.Count(); };
  services.GetDisplayedFMSEntry = [] { return gWorld.flightPlan.Displayed(); };
  services.GetDestinationFMSEntry = [] { return gWorld.flightPlan.Destination(); };
  services.SetDisplayedFMSEntry = [](int index) { gWorld.flightPlan.SetDisplayed(index); };
  services.SetDestinationFMSEntry = [](int index) { gWorld.FlyToEntry(index); };
  services.GetFMSEntryInfo = GetEntry;
  services.SetFMSEntryInfo = SetEntry;
  services.SetFMSEntryLatLon = [](int index, float latitude, float longitude, int altitude) {
    gWorld.flightPlan.SetPlace(index, static_cast<double>(latitude), static_cast<double>(longitude),
                               altitude);
  };
  services.ClearFMSEntry = [](int index) { gWorld.flightPlan.Clear(index); };
}

}  // namespace

void FillNavigationServices(VYRAHostServices& services) {
  FillDatabase(services);
  FillFlightPlan(services);
  services.GetGPSDestinationType = GpsDestinationType;
  services.GetGPSDestination = [] { return gWorld.gpsDestination; };
}

}  // namespace sim
