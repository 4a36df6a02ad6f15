#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cmath>
#include <limits>
#include <optional>

#include "flight/steps/Steps.h"
#include "host/DataRefValue.h"
#include "report/Moment.h"

namespace sim {
namespace {

Outcome Write(const std::string& name, const DataRefValue& value) {
  const std::string problem = WriteDataRef(name, value);
  if (!problem.empty()) return {false, fmt::format("{} cannot be written: {}", name, problem)};
  return {true, fmt::format("{} set to {}", name, ToText(value))};
}

Outcome WriteElements(const std::string& name, int first, const std::vector<double>& numbers) {
  const std::string problem = WriteDataRef(name, numbers, first);
  if (!problem.empty()) return {false, fmt::format("{}[{}] cannot be written: {}", name, first, problem)};
  return {true, fmt::format("{}[{}] set to {:.9g}", name, first, fmt::join(numbers, ", "))};
}

// Writes a number in equal steps, one a frame, from what the dataref says at first.
class Ramp {
 public:
  Ramp(std::string dataRef, double end, int frames) : name(std::move(dataRef)), target(end), count(frames) {}

  Outcome operator()() {
    if (done == 0) {
      const std::optional<DataRefValue> value = ReadDataRef(name);
      const double* const number = value ? std::get_if<double>(&*value) : nullptr;
      if (number == nullptr) return {false, fmt::format("{} is no number that could be changed", name)};
      start = *number;
    }
    ++done;
    const double value = done == count ? target : std::lerp(start, target, static_cast<double>(done) / count);
    Outcome outcome = Write(name, value);
    if (!outcome.succeeded) return outcome;
    outcome.isDone = done == count;
    if (!outcome.isDone) outcome.text.clear();
    return outcome;
  }

 private:
  std::string name;
  double target;
  int count;  // frames
  int done = 0;
  double start = 0.0;
};

int RampFrames(const Entry& write, const FlightContext& context) {
  if (write.Has("overFrames")) return write.WholeNumber("overFrames");
  const double frames = std::round(write.Number("overSeconds") * context.rate);
  if (frames > kMaxFrames) write.FailAtValue("overSeconds", "that is longer than any flight");
  return std::max(1, static_cast<int>(frames));
}

Effect ReadElements(const Entry& write, const std::string& name, const DataRefValue& value) {
  for (const char* const span : {"overFrames", "overSeconds"})
    if (write.Has(span)) write.FailAtKey(span, "an element is written at once");
  std::vector<double> numbers;
  if (const auto* const number = std::get_if<double>(&value)) numbers = {*number};
  if (const auto* const several = std::get_if<std::vector<double>>(&value)) numbers = *several;
  if (numbers.empty())
    write.FailAtValue("value", "\"value\" can only be numbers where an element is written");
  return [name, numbers, first = write.WholeNumber("index")] { return WriteElements(name, first, numbers); };
}

Effect Read(const Entry& entry, const FlightContext& context) {
  const Entry write = entry.Object("writeDataRef");
  const std::string name = write.Text("name");
  const DataRefValue value = write.Value("value");
  if (write.Has("index")) return ReadElements(write, name, value);
  if (!write.Has("overFrames") && !write.Has("overSeconds"))
    return [name, value] { return Write(name, value); };
  if (write.Has("overFrames") && write.Has("overSeconds"))
    write.FailAtKey("overSeconds", "only one of \"overFrames\", \"overSeconds\" can be said");
  const double* const number = std::get_if<double>(&value);
  if (number == nullptr) write.FailAtValue("value", "only a number can be written over some time");
  return Ramp(name, *number, RampFrames(write, context));
}

}  // namespace

StepWord WriteDataRefStep() {
  return {
      {.key = ObjectKey("writeDataRef",
                        {TextKey("name", "the dataref's name"),
                         ValueKey("value",
                                  "a number; an array of numbers, written from element 0; or a text, written "
                                  "with its terminator"),
                         Optional(WholeNumberKey("index", 0, std::numeric_limits<int>::max(),
                                                 "the element of an array into which a number, or the first "
                                                 "of several, is written")),
                         Optional(WholeNumberKey("overFrames", 1, kMaxFrames,
                                                 "in equal steps from what it is, one in each of so many "
                                                 "frames")),
                         Optional(AmountKey("overSeconds", "likewise, over so many simulated seconds"))},
                        "writes a dataref"),
       .others = {}},
      Read};
}

}  // namespace sim
