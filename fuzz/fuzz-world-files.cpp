// The files that the simulator reads, damaged in every way: each is refused with one line, and what was
// accepted can be written and read again. The first byte says which kind of file the rest is.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "world/aircraft/Situation.h"
#include "world/files/TextFile.h"
#include "world/navigation/FlightPlan.h"
#include "world/navigation/NavigationFile.h"
#include "world/scenery/ObjectModel.h"
#include "world/scenery/Package.h"

namespace {

using namespace sim::world;

void Require(bool condition) {
  if (!condition) std::abort();
}

const NavigationDatabase& Database() {
  static const NavigationDatabase database(ParseNavigation(OwnNavigationText(), "own"));
  return database;
}

void Read(int kind, const std::string& text) {
  switch (kind) {
    case 0:
      ParseNavigation(text, "navigation");
      break;
    case 1: {
      const std::string written = FlightPlan::FromText(text, "plan", Database()).ToText();
      Require(FlightPlan::FromText(written, "written", Database()).ToText() == written);
      break;
    }
    case 2: {
      const std::string written = ToText(ParseSituation(text, "situation"));
      Require(ToText(ParseSituation(written, "written")) == written);
      break;
    }
    case 3:
      ParsePackage(text, "package", "Scenery/A/", [](const std::string& path) { return path.size() < 40; });
      break;
    case 4: {
      Aircraft aircraft;
      aircraft.description = ParseAircraft(text, "aircraft");
      static const Terrain terrain({});
      for (int frame = 0; frame < 10; ++frame) aircraft.Advance(1.0 / 60.0, terrain, {});
      Require(aircraft.motion.place.altitude < 1e9);
      break;
    }
    default: {
      const ObjectModel model = ParseObjectModel(text, "model", "/nowhere");
      for (const ObjectModel::Triangle& triangle : model.triangles)
        for (const int corner : triangle.corners)
          Require(corner >= 0 && static_cast<std::size_t>(corner) < model.points.size());
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  try {
    Read(data[0] % 6, std::string(reinterpret_cast<const char*>(data) + 1, size - 1));
  } catch (const FileError& error) {
    const std::string line = error.what();
    Require(line.find('\n') == std::string::npos);
  }
  return 0;
}
