#include "window/LogLines.h"

#include <algorithm>

#include "window/Search.h"

namespace sim {
namespace {

bool IsWanted(const LogFilter& filter, const LogLine& line, std::string_view text) {
  if (filter.takesWarningsAlone && !line.isWarning) return false;
  if (filter.writer != LogFilter::kAnybody && filter.writer != line.writer) return false;
  return Finds(filter.text, text.substr(line.begin, line.length));
}

}  // namespace

std::uint16_t LogLines::NumberOf(const char* writer) {
  auto found = std::ranges::find(writers, writer);
  if (found == writers.end()) found = writers.insert(found, writer);
  return static_cast<std::uint16_t>(found - writers.begin());
}

void LogLines::Follow(std::string_view text, std::span<const LogPassage> passages) {
  const std::size_t stop = end + kMostAtOnce;
  while (end < stop) {
    const std::size_t lineEnd = text.find('\n', end);
    if (lineEnd == std::string_view::npos) return;
    const std::string_view line = text.substr(end, lineEnd - end);
    // A line belongs to whoever began it.
    while (passage + 1 < passages.size() && passages[passage + 1].begin <= end) ++passage;
    const bool isKnown = passage < passages.size() && passages[passage].begin <= end;
    const bool isWarning = IsLogWarning(line);
    warnings += isWarning ? 1 : 0;
    lines.push_back({.begin = end,
                     .length = static_cast<std::uint32_t>(line.size()),
                     .writer = isKnown ? NumberOf(passages[passage].writer) : std::uint16_t{0},
                     .isWarning = isWarning});
    end = lineEnd + 1;
  }
}

void FilteredLog::Follow(std::string_view text, const LogLines& lines, const LogFilter& wanted) {
  if (wanted != filter) {
    filter = wanted;
    shown.clear();
    looked = 0;
  }
  const std::size_t stop = std::min(lines.Count(), looked + kMostAtOnce);
  for (; looked < stop; ++looked)
    if (IsWanted(filter, lines.Line(looked), text)) shown.push_back(static_cast<std::uint32_t>(looked));
}

}  // namespace sim
