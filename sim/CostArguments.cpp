// A range of frames is written A:B.
#include "CostArguments.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <string>
#include <string_view>

#include "report/Moment.h"

namespace sim {
namespace {

// The whole text as a number of a frame, or -1.
int FrameOf(std::string_view text) {
  int frame = -1;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), frame);
  if (error != std::errc() || end != text.data() + text.size() || frame > kMaxFrames) return -1;
  return frame;
}

void ReadRange(const std::string& text, CostOptions& options) {
  const std::size_t colon = text.find(':');
  const int first = FrameOf(text.substr(0, colon));
  const int last = colon == std::string::npos ? -1 : FrameOf(text.substr(colon + 1));
  if (first < 0 || last < first)
    throw CLI::ValidationError("--trace-frames", "a range of frames is needed, as in 100:200, not " + text);
  options.firstTracedFrame = first;
  options.lastTracedFrame = last;
}

}  // namespace

void AddCostOptions(CLI::App& command, CostOptions& options) {
  command.add_flag("--cost", options.wantsTable, "Print what each plugin costs per frame, dearest first");
  command
      .add_option("--cost-budget", options.budgetMs,
                  "Fail when a plugin takes more than this in a frame (milliseconds)")
      ->check(CLI::PositiveNumber);
  CLI::Option* const trace = command.add_option(
      "--trace", options.traceFile, "Write all calls into plugins to this file (Trace Event format)");
  command
      .add_option_function<std::string>(
          "--trace-frames", [&options](const std::string& text) { ReadRange(text, options); },
          "Trace these frames alone: A:B; frame 0 is what comes before the first")
      ->needs(trace);
}

}  // namespace sim
