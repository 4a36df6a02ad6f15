// Writing the log and searching it.
#include "report/Log.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include "InputError.h"

namespace sim {
namespace {

// The library notes each optional callback that a module lacks as it notes a module that cannot be opened.
// The former is no fault.
bool IsNoteOfOptionalCallback(std::string_view line) {
  constexpr std::array<std::string_view, 4> kOptionalCallbacks = {
      "VyPluginStop", "VyPluginEnable", "VyPluginDisable", "VyPluginReceiveMessage"};
  return std::ranges::any_of(kOptionalCallbacks, [line](std::string_view name) {
    return line.ends_with("undefined symbol: " + std::string(name));
  });
}

bool IsWarning(std::string_view line) {
  if (line.starts_with("dlerror:")) return !IsNoteOfOptionalCallback(line);
  if (line.starts_with("[")) return line.find("]: ") != std::string_view::npos;
  return line.starts_with("Failed: ") || line.starts_with("Warning: ");
}

}  // namespace

Log::Log(const std::string& fileName) {
  if (fileName.empty()) return;
  logFile.reset(std::fopen(fileName.c_str(), "w"));
  if (!logFile) throw InputError("cannot open the log " + fileName + ": " + std::strerror(errno));
  // A plugin that ends the flight leaves all in the file that was written before, and be it half a line.
  std::setvbuf(logFile.get(), nullptr, _IONBF, 0);
}

void Log::Write(std::string_view text) {
  written += text;
  std::fwrite(text.data(), 1, text.size(), logFile ? logFile.get() : stderr);
}

bool Log::Close() {
  if (!logFile) return true;
  const bool failedBefore = std::ferror(logFile.get()) != 0;
  return std::fclose(logFile.release()) == 0 && !failedBefore;
}

int Log::Count(std::string_view text) const {
  int count = 0;
  for (std::size_t at = written.find(text); at != std::string::npos;
       at = written.find(text, at + text.size()))
    ++count;
  return count;
}

int Log::CountWarnings() const {
  int count = 0;
  std::string_view rest = written;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    if (IsWarning(rest.substr(0, end))) ++count;
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return count;
}

}  // namespace sim
