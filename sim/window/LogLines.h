// The log by lines, and those of them that a reader wants to see. Both follow the log as it grows, and take
// in no more at once than a frame has time for.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "report/Log.h"

namespace sim {

struct LogLine {
  std::size_t begin;  // in the log's text
  std::uint32_t length;
  std::uint16_t writer;  // number among LogLines::Writers()
  bool isWarning;
};

class LogLines {
 public:
  static constexpr std::size_t kMostAtOnce = 1U << 20U;  // bytes

  // To be called with all of the log, again and again: takes in the whole lines that are new.
  void Follow(std::string_view text, std::span<const LogPassage> passages);

  std::size_t Count() const { return lines.size(); }
  const LogLine& Line(std::size_t index) const { return lines[index]; }
  int CountWarnings() const { return warnings; }

  // The paths of the modules that wrote; the first one is empty, the simulator.
  const std::vector<std::string>& Writers() const { return writers; }

 private:
  std::uint16_t NumberOf(const char* writer);

  std::vector<LogLine> lines;
  std::size_t end = 0;      // of what was taken in
  std::size_t passage = 0;  // in which that lies
  int warnings = 0;
  std::vector<std::string> writers{""};
};

struct LogFilter {
  static constexpr int kAnybody = -1;

  std::string text;  // to be found in the line, as Finds of window/Search.h has it; empty for any
  int writer = kAnybody;
  bool takesWarningsAlone = false;

  bool operator==(const LogFilter&) const = default;
};

class FilteredLog {
 public:
  static constexpr std::size_t kMostAtOnce = 50'000;  // lines

  // To be called with the lines of the log, again and again: finds those that are new, or all of them anew
  // after another filter was given.
  void Follow(std::string_view text, const LogLines& lines, const LogFilter& wanted);

  // Numbers of lines, in their order.
  const std::vector<std::uint32_t>& Shown() const { return shown; }
  // Whether all lines were looked at.
  bool IsUpToDate(const LogLines& lines) const { return looked == lines.Count(); }

 private:
  LogFilter filter;
  std::vector<std::uint32_t> shown;
  std::size_t looked = 0;
};

}  // namespace sim
