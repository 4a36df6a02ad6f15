// All navaids, each known by its number, in the order of the file.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "world/navigation/NavAid.h"

namespace sim::world {

class NavigationDatabase {
 public:
  explicit NavigationDatabase(std::vector<NavAid> navAids) : all(std::move(navAids)) {}

  int Count() const { return static_cast<int>(all.size()); }

  // Null when there is no such navaid.
  const NavAid* Get(int number) const;

  // Each returns kNoNavAid when there is none. types: bits of NavAidType.
  int First() const { return all.empty() ? kNoNavAid : 0; }
  int Next(int number) const {
    return Get(number) != nullptr && number + 1 < Count() ? number + 1 : kNoNavAid;
  }
  int FirstOfType(int types) const;
  int LastOfType(int types) const;

  struct Wish {
    int types = ~0;
    std::string_view partOfName{};  // compared without regard to the case of ASCII letters
    std::string_view partOfIdent{};
    std::optional<int> frequency{};  // kilohertz
    std::optional<Place> near{};
  };
  // Among those that fit, the nearest, or without a place the first.
  int Find(const Wish& wish) const;

  // The one of exactly this type and ident, the nearest to a place if there are several.
  int FindExactly(NavAidType type, std::string_view ident, const Place& near) const;

  // The level fields that the ground needs: where the airports are.
  std::vector<Place> AirportPlaces() const;

 private:
  std::vector<NavAid> all;
};

}  // namespace sim::world
