#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "flight/expectations/Expectations.h"
#include "host/DataRefValue.h"
#include "report/Moment.h"
#include "world/World.h"

namespace sim {
namespace {

using Value = std::optional<DataRefValue>;

// What is claimed of a value. It may remember what it saw, which is why it is told of every value.
struct Comparison {
  std::string text;
  std::function<bool(const Value& found)> holds;
};

const double* NumberIn(const Value& value) { return value ? std::get_if<double>(&*value) : nullptr; }

std::string Margin(double tolerance) {
  return tolerance > 0.0 ? fmt::format(" within {:.9g}", tolerance) : "";
}

// Without a tolerance in single precision.
bool IsNear(double left, double right, double tolerance) {
  return tolerance > 0.0 ? std::abs(left - right) <= tolerance : SameNumber(left, right);
}

bool Equal(const DataRefValue& found, const DataRefValue& wanted, double tolerance) {
  const auto* const number = std::get_if<double>(&found);
  const auto* const wantedNumber = std::get_if<double>(&wanted);
  if (number != nullptr && wantedNumber != nullptr) return IsNear(*number, *wantedNumber, tolerance);
  const auto* const numbers = std::get_if<std::vector<double>>(&found);
  const auto* const wantedNumbers = std::get_if<std::vector<double>>(&wanted);
  if (numbers != nullptr && wantedNumbers != nullptr)
    return std::ranges::equal(*numbers, *wantedNumbers, [tolerance](double left, double right) {
      return IsNear(left, right, tolerance);
    });
  return found == wanted;
}

Comparison Equals(const Entry& entry) {
  const DataRefValue wanted = entry.Value("equals");
  const double tolerance = entry.Has("tolerance") ? entry.Number("tolerance") : 0.0;
  return {"equals " + ToText(wanted) + Margin(tolerance),
          [wanted, tolerance](const Value& found) { return found && Equal(*found, wanted, tolerance); }};
}

Comparison AtLeast(const Entry& entry) {
  return {fmt::format("is at least {:.9g}", entry.Number("atLeast")),
          [least = entry.Number("atLeast")](const Value& found) {
            const double* const number = NumberIn(found);
            return number != nullptr && *number >= least;
          }};
}

Comparison AtMost(const Entry& entry) {
  return {fmt::format("is at most {:.9g}", entry.Number("atMost")),
          [most = entry.Number("atMost")](const Value& found) {
            const double* const number = NumberIn(found);
            return number != nullptr && *number <= most;
          }};
}

Comparison Between(const Entry& entry) {
  const std::pair<double, double> range = entry.Range("between");
  return {fmt::format("is between {:.9g} and {:.9g}", range.first, range.second),
          [range](const Value& found) {
            const double* const number = NumberIn(found);
            return number != nullptr && *number >= range.first && *number <= range.second;
          }};
}

// Compared with what it was after a frame, or when it was first there to be looked at.
Comparison ChangesBy(const Entry& entry) {
  const double wanted = entry.Number("changesBy");
  const double tolerance = entry.Has("tolerance") ? entry.Number("tolerance") : 0.0;
  const int since = entry.WholeNumber("since", 0);
  std::string text = fmt::format("has changed by {:.9g}{}", wanted, Margin(tolerance));
  if (since > 0) text += fmt::format(" since frame {}", since);
  return {std::move(text),
          [wanted, tolerance, since, before = std::optional<double>()](const Value& found) mutable {
            const double* const number = NumberIn(found);
            if (number == nullptr || gWorld.frame < since) return false;
            if (!before) before = *number;
            return IsNear(*number - *before, wanted, tolerance);
          }};
}

Comparison Contains(const Entry& entry) {
  return {"contains " + ToText(entry.Text("contains")), [part = entry.Text("contains")](const Value& found) {
            const auto* const text = found ? std::get_if<std::string>(&*found) : nullptr;
            return text != nullptr && text->find(part) != std::string::npos;
          }};
}

Comparison Absent(const Entry& /*entry*/) {
  return {"is absent", [](const Value& found) { return !found; }};
}

constexpr std::array<std::pair<std::string_view, Comparison (*)(const Entry&)>, 7> kComparisons{{
    {"equals", Equals},
    {"atLeast", AtLeast},
    {"atMost", AtMost},
    {"between", Between},
    {"changesBy", ChangesBy},
    {"contains", Contains},
    {"absent", Absent},
}};

// The value, or an array's element; nothing when there is neither.
Value ReadAt(const std::string& dataRef, std::optional<int> index) {
  Value value = ReadDataRef(dataRef);
  if (!index || !value) return value;
  const auto* const numbers = std::get_if<std::vector<double>>(&*value);
  const auto position = static_cast<std::size_t>(*index);
  if (numbers == nullptr || position >= numbers->size()) return std::nullopt;
  return (*numbers)[position];
}

Claim Read(const Entry& entry, const FlightContext& /*context*/) {
  const std::string dataRef = entry.Text("dataRef");
  std::optional<int> index;
  if (entry.Has("index")) index = entry.WholeNumber("index");
  if (entry.Has("tolerance") && !entry.Has("equals") && !entry.Has("changesBy"))
    entry.FailAtKey("tolerance", "\"tolerance\" stands beside \"equals\" or \"changesBy\"");
  if (entry.Has("since") && !entry.Has("changesBy"))
    entry.FailAtKey("since", "\"since\" stands beside \"changesBy\"");
  const auto* const chosen = std::ranges::find_if(
      kComparisons, [&entry](const auto& comparison) { return entry.Has(comparison.first); });
  Comparison comparison = chosen->second(entry);
  const std::string name = index ? fmt::format("{}[{}]", dataRef, *index) : dataRef;
  return {.text = fmt::format("{} {}", name, comparison.text),
          .check = [dataRef, index, holds = std::move(comparison.holds)]() -> Finding {
            const Value value = ReadAt(dataRef, index);
            return {holds(value), value ? ToText(*value) : "nothing"};
          }};
}

}  // namespace

ExpectationWord DataRefIsExpectation() {
  return {
      {.key = TextKey("dataRef", "the dataref of this name is as one of the other keys says"),
       .others =
           {Optional(ValueKey("equals", "it has this value; numbers are compared in single precision")),
            Optional(NumberKey("atLeast", "it is a number, and not smaller")),
            Optional(NumberKey("atMost", "it is a number, and not larger")),
            Optional(RangeKey("between", "it is a number from the first to the second")),
            Optional(NumberKey("changesBy", "it is a number, larger by this than it was")),
            Optional(TextKey("contains", "it is data with this text in it")),
            Optional(TrueKey("absent", "nobody publishes it")),
            Optional(AmountKey("tolerance", "beside `equals` or `changesBy`: so far away is near enough")),
            Optional(WholeNumberKey("since", 0, kMaxFrames,
                                    "beside `changesBy`: compared with after this frame, and without it "
                                    "with when it was first there to be looked at")),
            Optional(WholeNumberKey("index", 0, std::numeric_limits<int>::max(),
                                    "of an array, only this element"))},
       .oneOf = {"equals", "atLeast", "atMost", "between", "changesBy", "contains", "absent"}},
      Read};
}

}  // namespace sim
