#include <fmt/format.h>
#include <algorithm>
#include <limits>
#include <optional>

#include "flight/expectations/Expectations.h"
#include "host/DataRefValue.h"

namespace sim {
namespace {

struct Comparison {
  std::string_view key;
  std::string_view verb;
  bool (*holds)(const DataRefValue& found, const DataRefValue& wanted);
};

bool Equal(const DataRefValue& found, const DataRefValue& wanted) {
  const auto* const number = std::get_if<double>(&found);
  const auto* const wantedNumber = std::get_if<double>(&wanted);
  if (number != nullptr && wantedNumber != nullptr) return SameNumber(*number, *wantedNumber);
  const auto* const numbers = std::get_if<std::vector<double>>(&found);
  const auto* const wantedNumbers = std::get_if<std::vector<double>>(&wanted);
  if (numbers != nullptr && wantedNumbers != nullptr)
    return std::ranges::equal(*numbers, *wantedNumbers, SameNumber);
  return found == wanted;
}

bool IsAtLeast(const DataRefValue& found, const DataRefValue& wanted) {
  const auto* const number = std::get_if<double>(&found);
  return number != nullptr && *number >= std::get<double>(wanted);
}

bool Contains(const DataRefValue& found, const DataRefValue& wanted) {
  const auto* const text = std::get_if<std::string>(&found);
  return text != nullptr && text->find(std::get<std::string>(wanted)) != std::string::npos;
}

constexpr Comparison kEquals{.key = "equals", .verb = "equals", .holds = Equal};
constexpr Comparison kAtLeast{.key = "atLeast", .verb = "is at least", .holds = IsAtLeast};
constexpr Comparison kContains{.key = "contains", .verb = "contains", .holds = Contains};

// The value, or an array's element; nothing when there is neither.
std::optional<DataRefValue> ReadAt(const std::string& dataRef, std::optional<int> index) {
  std::optional<DataRefValue> value = ReadDataRef(dataRef);
  if (!index || !value) return value;
  const auto* const numbers = std::get_if<std::vector<double>>(&*value);
  const auto position = static_cast<std::size_t>(*index);
  if (numbers == nullptr || position >= numbers->size()) return std::nullopt;
  return (*numbers)[position];
}

std::string Found(const std::optional<DataRefValue>& value) { return value ? ToText(*value) : "nothing"; }

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const std::string dataRef = entry.Text("dataRef");
  std::optional<int> index;
  if (entry.Has("index")) index = entry.WholeNumber("index");
  const std::string name = index ? fmt::format("{}[{}]", dataRef, *index) : dataRef;
  if (entry.Has("absent")) {
    return {.text = name + " is absent", .check = [dataRef, index]() -> Finding {
              const std::optional<DataRefValue> value = ReadAt(dataRef, index);
              return {!value, Found(value)};
            }};
  }
  const Comparison comparison = entry.Has("atLeast") ? kAtLeast : entry.Has("contains") ? kContains : kEquals;
  const DataRefValue wanted = entry.Value(comparison.key);
  return {.text = fmt::format("{} {} {}", name, comparison.verb, ToText(wanted)),
          .check = [dataRef, index, comparison, wanted]() -> Finding {
            const std::optional<DataRefValue> value = ReadAt(dataRef, index);
            return {value && comparison.holds(*value, wanted), Found(value)};
          }};
}

}  // namespace

ExpectationWord DataRefIsExpectation() {
  return {
      {.key = TextKey("dataRef", "the dataref of this name is as one of the other keys says"),
       .others = {Optional(ValueKey("equals", "it has this value; numbers are compared in single precision")),
                  Optional(NumberKey("atLeast", "it is a number, and not smaller")),
                  Optional(TextKey("contains", "it is data with this text in it")),
                  Optional(TrueKey("absent", "nobody publishes it")),
                  Optional(WholeNumberKey("index", 0, std::numeric_limits<int>::max(),
                                          "of an array, only this element"))},
       .oneOf = {"equals", "atLeast", "contains", "absent"}},
      Read};
}

}  // namespace sim
