// The value of a dataref in a panel: read when it is drawn, and edited in place.
#pragma once

#include <optional>
#include <string>

#include "host/DataRefValue.h"

namespace sim {

// A dataref, or one element of an array.
struct ValuePlace {
  std::string name;
  std::optional<int> element{};

  bool operator==(const ValuePlace&) const = default;
};

// "clock/laps_s[2]".
std::string PlaceText(const ValuePlace& place);

// The number there; none where there is none, as in a text or behind an array's end.
std::optional<double> ReadNumber(const ValuePlace& place);

// With as many digits as the dataref's type has.
std::string NumberText(double number, int types);

// Draws the value of a dataref of these types. A click on one that can be written, and is no whole array,
// makes it a field: Return writes what is in it, as a step, and Escape leaves it as it was.
void DrawValue(const char* panel, const ValuePlace& place, int types, bool isWritable);

// What went wrong with the last write; empty for nothing.
const std::string& WriteProblem();

// No value is edited any more.
void EndEditing();

}  // namespace sim
