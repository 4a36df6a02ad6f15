#include <fmt/core.h>

#include <algorithm>
#include <limits>
#include <optional>

#include "flight/expectations/Expectations.h"
#include "view/DrawnScene.h"
#include "world/World.h"

namespace sim {
namespace {

struct Around {
  world::Vector place;
  double metres = 0.0;
};

Around ReadAround(const Entry& entry) {
  return {.place = {entry.Number("x"), entry.Number("y"), entry.Number("z")},
          .metres = entry.Number("within")};
}

int CountDrawn(const std::string& file, const std::optional<Around>& around) {
  return static_cast<int>(std::ranges::count_if(gDrawnScene.objects, [&](const DrawnObject& drawn) {
    return drawn.model->fileName == file &&
           (!around || world::Length(drawn.position - around->place) <= around->metres);
  }));
}

Claim Read(const Entry& entry, const FlightContext& context) {
  const std::string path = entry.Text("objectDrawn");
  const int times = entry.WholeNumber("times", -1);
  std::optional<Around> around;
  if (entry.Has("at")) around = ReadAround(entry.Object("at"));
  return {.text = fmt::format("object {} is drawn{}{}", path, around ? " there" : "",
                              times < 0 ? "" : fmt::format(" {}", Times(times))),
          .check = [file = context.systemPath + path, times, around]() -> Finding {
            const int count = CountDrawn(file, around);
            return {times < 0 ? count > 0 : count == times, Times(count)};
          }};
}

}  // namespace

ExpectationWord ObjectDrawnExpectation() {
  return {
      {.key =
           TextKey("objectDrawn", "this object, by its path in the simulator folder, was drawn in the frame"),
       .others = {Optional(WholeNumberKey("times", 0, std::numeric_limits<int>::max(), "exactly so often")),
                  Optional(
                      ObjectKey("at",
                                {NumberKey("x", "local metres"), NumberKey("y", "local metres"),
                                 NumberKey("z", "local metres"), NumberKey("within", "metres from there")},
                                "counting only what was drawn there"))}},
      Read};
}

}  // namespace sim
