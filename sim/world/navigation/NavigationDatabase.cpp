// Some hundred navaids are searched one by one.
#include "world/navigation/NavigationDatabase.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <limits>

namespace sim::world {
namespace {

bool SameLetter(char left, char right) {
  return std::tolower(static_cast<unsigned char>(left)) == std::tolower(static_cast<unsigned char>(right));
}

bool Contains(std::string_view text, std::string_view part) {
  return std::search(text.begin(), text.end(), part.begin(), part.end(), SameLetter) != text.end();
}

bool Fits(const NavAid& navAid, const NavigationDatabase::Wish& wish) {
  if ((navAid.type & wish.types) == 0) return false;
  if (wish.frequency && navAid.frequency != *wish.frequency) return false;
  return Contains(navAid.name, wish.partOfName) && Contains(navAid.ident, wish.partOfIdent);
}

// Only for comparison: the flat distance is in the right order wherever navaids are dense.
double Distance(const Place& from, const Place& to) {
  const GroundOffset offset = OffsetBetween(from, to);
  const double distance = std::hypot(offset.north, offset.east);
  return std::isnan(distance) ? std::numeric_limits<double>::infinity() : distance;
}

}  // namespace

const NavAid* NavigationDatabase::Get(int number) const {
  return number >= 0 && number < Count() ? &all[static_cast<std::size_t>(number)] : nullptr;
}

int NavigationDatabase::FirstOfType(int types) const {
  const auto found = std::ranges::find_if(all, [=](const NavAid& one) { return (one.type & types) != 0; });
  return found != all.end() ? static_cast<int>(found - all.begin()) : kNoNavAid;
}

int NavigationDatabase::LastOfType(int types) const {
  for (int number = Count() - 1; number >= 0; --number)
    if ((Get(number)->type & types) != 0) return number;
  return kNoNavAid;
}

int NavigationDatabase::Find(const Wish& wish) const {
  int best = kNoNavAid;
  double smallest = 0.0;
  for (int number = 0; number < Count(); ++number) {
    const NavAid& navAid = *Get(number);
    if (!Fits(navAid, wish)) continue;
    if (!wish.near) return number;
    const double distance = Distance(*wish.near, navAid.place);
    if (best != kNoNavAid && distance >= smallest) continue;
    best = number;
    smallest = distance;
  }
  return best;
}

int NavigationDatabase::FindExactly(NavAidType type, std::string_view ident, const Place& near) const {
  int best = kNoNavAid;
  double smallest = 0.0;
  for (int number = 0; number < Count(); ++number) {
    const NavAid& navAid = *Get(number);
    if (navAid.type != type || navAid.ident != ident) continue;
    const double distance = Distance(near, navAid.place);
    if (best != kNoNavAid && distance >= smallest) continue;
    best = number;
    smallest = distance;
  }
  return best;
}

std::vector<Place> NavigationDatabase::AirportPlaces() const {
  std::vector<Place> places;
  for (const NavAid& navAid : all)
    if (navAid.type == kAirport) places.push_back(navAid.place);
  return places;
}

}  // namespace sim::world
