#include "world/navigation/NavAid.h"

#include <algorithm>
#include <array>

namespace sim::world {
namespace {

struct TypeName {
  NavAidType type;
  const char* name;
};

constexpr std::array<TypeName, 6> kTypeNames{{{kAirport, "airport"},
                                              {kNonDirectionalBeacon, "ndb"},
                                              {kOmnidirectionalRange, "vor"},
                                              {kLandingSystem, "ils"},
                                              {kFix, "fix"},
                                              {kPosition, "position"}}};

}  // namespace

const char* NameOf(NavAidType type) {
  const auto* const found = std::ranges::find(kTypeNames, type, &TypeName::type);
  return found != kTypeNames.end() ? found->name : "";
}

NavAidType TypeOf(const std::string& name) {
  const auto* const found = std::ranges::find(kTypeNames, name, &TypeName::name);
  return found != kTypeNames.end() ? found->type : kNoType;
}

}  // namespace sim::world
