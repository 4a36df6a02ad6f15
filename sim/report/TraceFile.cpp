// The format: an array of objects, one a line. Times are microseconds since the start.
#include "report/TraceFile.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <iterator>
#include <nlohmann/json.hpp>
#include <span>

#include "InputError.h"

namespace sim {
namespace {

constexpr int kProcess = 1;
constexpr int kFramesThread = 0;  // its row; plugins follow from 1

std::string Quoted(std::string_view text) {
  // A plugin's name need not be UTF-8.
  return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

// With the nanoseconds behind the point.
void AppendMicroseconds(fmt::memory_buffer& text, Nanoseconds time) {
  fmt::format_to(std::back_inserter(text), "{}.{:03}", time / 1000, time % 1000);
}

void AppendEvent(fmt::memory_buffer& text, const TraceEvent& event, const CostBlock& costs) {
  const bool isFrame = event.plugin == kNoPlugin;
  fmt::format_to(std::back_inserter(text),
                 ",\n"
                 R"({{"ph":"X","pid":{},"tid":{},"ts":)",
                 kProcess, isFrame ? kFramesThread : event.plugin + 1);
  AppendMicroseconds(text, event.begin - costs.start);
  text.append(std::string_view(R"(,"dur":)"));
  AppendMicroseconds(text, event.duration);
  if (isFrame)
    fmt::format_to(std::back_inserter(text), R"(,"cat":"frame","name":"frame {}"}})", event.frame);
  else
    fmt::format_to(std::back_inserter(text), R"(,"cat":"call","name":"{}","args":{{"frame":{}}}}})",
                   costs.kindNames[static_cast<std::size_t>(event.kind)].data(), event.frame);
}

std::string RowName(int thread, std::string_view name) {
  return fmt::format(
      R"({{"ph":"M","pid":{0},"tid":{1},"name":"thread_name","args":{{"name":{2}}}}},
{{"ph":"M","pid":{0},"tid":{1},"name":"thread_sort_index","args":{{"sort_index":{1}}}}})",
      kProcess, thread, Quoted(name));
}

}  // namespace

TraceFile::TraceFile(const std::string& fileName)
    : file(open(fileName.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0666)) {
  if (file < 0) throw InputError("cannot open the trace " + fileName + ": " + std::strerror(errno));
  const std::string head = fmt::format(
      "[\n"
      R"({{"ph":"M","pid":{},"name":"process_name","args":{{"name":"vyra-sim"}}}})"
      ",\n{}",
      kProcess, RowName(kFramesThread, "frames"));
  if (!Write(head)) throw InputError("cannot write the trace " + fileName + ": " + std::strerror(errno));
}

TraceFile::~TraceFile() { close(file); }

bool TraceFile::Write(std::string_view text) const {
  while (!text.empty()) {
    // cppcheck-suppress invalidLifetime ; it confuses this text with one of a caller
    const ssize_t written = write(file, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

void TraceFile::Append(CostBlock& costs, std::string_view text) const {
  if (!Write(text)) costs.traceFailed = true;
}

void TraceFile::WriteEvents(CostBlock& costs) const {
  fmt::memory_buffer text;
  for (const TraceEvent& event : std::span(costs.events).first(static_cast<std::size_t>(costs.eventCount)))
    AppendEvent(text, event, costs);
  costs.eventCount = 0;
  Append(costs, {text.data(), text.size()});
}

void TraceFile::WriteMark(CostBlock& costs, std::string_view text, Nanoseconds now) const {
  if (!costs.isTraced) return;
  fmt::memory_buffer line;
  fmt::format_to(std::back_inserter(line),
                 ",\n"
                 R"({{"ph":"i","s":"g","pid":{},"tid":{},"ts":)",
                 kProcess, kFramesThread);
  AppendMicroseconds(line, now - costs.start);
  fmt::format_to(std::back_inserter(line), R"(,"cat":"mark","name":{}}})", Quoted(text));
  Append(costs, {line.data(), line.size()});
}

void TraceFile::End(CostBlock& costs) const {
  if (costs.traceIsEnded) return;
  costs.traceIsEnded = true;
  WriteEvents(costs);
  for (int row = 0; row < costs.pluginCount; ++row) {
    const MeteredPlugin& plugin = costs.plugins[static_cast<std::size_t>(row)];
    Append(costs, ",\n" + RowName(row + 1, plugin.name[0] != '\0' ? plugin.name.data() : plugin.path.data()));
  }
  Append(costs, "\n]\n");
}

}  // namespace sim
