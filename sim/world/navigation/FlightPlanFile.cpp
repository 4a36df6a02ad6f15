// Flight plans as JSON. Places of navaids are written for people to read, and to tell two of one ident apart;
// what counts is the database.
#include <nlohmann/json.hpp>

#include "world/files/JsonTree.h"
#include "world/navigation/FlightPlan.h"

namespace sim::world {
namespace {

constexpr const char* kFormat = "Skyvora flight plan 1";
constexpr int kLastIndex = FlightPlan::kMostEntries - 1;

void ReadEntry(const JsonValue& value, const NavigationDatabase& database, FlightPlan& plan) {
  value.AllowOnly({"entry", "type", "ident", "latitude_deg", "longitude_deg", "altitude_m"});
  const int index = value["entry"].WholeNumber(0, kLastIndex);
  if (plan.Get(index).type != kNoType) value["entry"].Fail("there is an entry of this number already");
  const int altitude =
      value["altitude_m"].WholeNumber(FlightPlan::kLowestAltitude, FlightPlan::kHighestAltitude);
  const double latitude = value["latitude_deg"].Number(-90.0, 90.0);
  const double longitude = value["longitude_deg"].Number(-180.0, 180.0);
  const NavAidType type = TypeOf(value["type"].Text());
  if (type == kNoType) value["type"].Fail("this must be one of airport, ndb, vor, ils, fix, position");
  if (type == kPosition) return plan.SetPlace(index, latitude, longitude, altitude);

  const std::string& ident = value["ident"].Text();
  const int number =
      database.FindExactly(type, ident, {.latitude = latitude, .longitude = longitude, .altitude = 0.0});
  if (number == kNoNavAid) value["ident"].Fail(std::string("there is no ") + NameOf(type) + " " + ident);
  plan.SetNavAid(index, number, *database.Get(number), altitude);
}

}  // namespace

std::string FlightPlan::ToText() const {
  nlohmann::ordered_json file{
      {"format", kFormat}, {"displayed_entry", displayed}, {"destination_entry", destination}};
  nlohmann::ordered_json& list = file["entries"] = nlohmann::ordered_json::array();
  for (int index = 0; index < Count(); ++index) {
    const Entry& entry = Get(index);
    if (entry.type == kNoType) continue;
    nlohmann::ordered_json written{{"entry", index}, {"type", NameOf(entry.type)}};
    if (entry.type != kPosition) written["ident"] = entry.ident;
    written["latitude_deg"] = entry.place.latitude;
    written["longitude_deg"] = entry.place.longitude;
    written["altitude_m"] = entry.altitude;
    list.push_back(std::move(written));
  }
  return file.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

FlightPlan FlightPlan::FromText(const std::string& text, const std::string& fileName,
                                const NavigationDatabase& database) {
  const JsonValue file = ParseJson(text, fileName);
  file.AllowOnly({"format", "displayed_entry", "destination_entry", "entries"});
  if (file["format"].Text() != kFormat) file["format"].Fail(std::string("this is not a \"") + kFormat + "\"");
  FlightPlan plan;
  plan.SetDisplayed(file["displayed_entry"].WholeNumber(0, kLastIndex));
  plan.SetDestination(file["destination_entry"].WholeNumber(0, kLastIndex));
  for (const JsonValue& entry : file["entries"].Elements()) ReadEntry(entry, database, plan);
  return plan;
}

}  // namespace sim::world
