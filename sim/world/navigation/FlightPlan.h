// The route: up to 100 entries, each empty, a navaid or a mere place.
#pragma once

#include <array>
#include <string>

#include "world/navigation/NavigationDatabase.h"

namespace sim::world {

class FlightPlan {
 public:
  static constexpr int kMostEntries = 100;
  static constexpr int kLowestAltitude = -1'000;  // metres; what lies beyond is cut to these
  static constexpr int kHighestAltitude = 100'000;

  struct Entry {
    NavAidType type = kNoType;  // kNoType where the entry is empty
    int navAid = kNoNavAid;     // its number, for what is a navaid
    std::string ident;
    Place place;
    int altitude = 0;  // metres, at which to fly there
  };

  // Up to and with the last entry that is not empty.
  int Count() const;

  // An empty entry where there is none of this index.
  const Entry& Get(int index) const;

  // Each does nothing with an index outside of 0 to 99.
  void SetNavAid(int index, int number, const NavAid& navAid, int altitude);
  void SetPlace(int index, double latitude, double longitude, int altitude);
  void Clear(int index);

  // The entry that the user looks at, and the one that is flown to; 0 to 99. Others are ignored.
  int Displayed() const { return displayed; }
  int Destination() const { return destination; }
  void SetDisplayed(int index);
  void SetDestination(int index);

  // For a file, and from one: place by place, each navaid found again in the database by type and ident.
  std::string ToText() const;
  // Throws FileError, and nothing of the file counts then.
  static FlightPlan FromText(const std::string& text, const std::string& fileName,
                             const NavigationDatabase& database);

 private:
  std::array<Entry, kMostEntries> entries;
  int displayed = 0;
  int destination = 0;
};

}  // namespace sim::world
