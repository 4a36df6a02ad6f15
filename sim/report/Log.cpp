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

}  // namespace

bool IsLogWarning(std::string_view line) {
  if (line.starts_with("dlerror:")) return !IsNoteOfOptionalCallback(line);
  if (line.starts_with("[")) return line.find("]: ") != std::string_view::npos;
  return line.starts_with("Failed: ") || line.starts_with("Warning: ");
}

Log::Log(const std::string& fileName) {
  if (fileName.empty()) return;
  logFile.reset(std::fopen(fileName.c_str(), "w"));
  if (!logFile) throw InputError("cannot open the log " + fileName + ": " + std::strerror(errno));
  // A plugin that ends the flight leaves all in the file that was written before, and be it half a line.
  std::setvbuf(logFile.get(), nullptr, _IONBF, 0);
}

void Log::Write(std::string_view text) {
  if (whoIsRunning != nullptr && !text.empty()) {
    const char* const writer = whoIsRunning();
    if (passages.empty() || passages.back().writer != writer) passages.push_back({written.size(), writer});
  }
  written += text;
  std::fwrite(text.data(), 1, text.size(), logFile ? logFile.get() : stderr);
}

bool Log::Close() {
  if (!logFile) return true;
  const bool failedBefore = std::ferror(logFile.get()) != 0;
  return std::fclose(logFile.release()) == 0 && !failedBefore;
}

int Log::Count(std::string_view text) const {
  auto found = searches.find(text);
  if (found == searches.end()) found = searches.emplace(text, Search{}).first;
  auto& [count, end] = found->second;
  for (std::size_t at = written.find(text, end); at != std::string::npos; at = written.find(text, end)) {
    ++count;
    end = at + text.size();
  }
  // What may be the text's beginning stays to be searched.
  if (written.size() >= text.size()) end = std::max(end, written.size() - text.size() + 1);
  return count;
}

int Log::CountWarnings() const {
  for (std::size_t lineEnd = written.find('\n', warnings.end); lineEnd != std::string::npos;
       lineEnd = written.find('\n', warnings.end)) {
    const std::string_view line = std::string_view(written).substr(warnings.end, lineEnd - warnings.end);
    if (IsLogWarning(line) && ++warnings.count == 1) firstWarning = line;
    warnings.end = lineEnd + 1;
  }
  return warnings.count + (IsLogWarning(std::string_view(written).substr(warnings.end)) ? 1 : 0);
}

std::string Log::FirstWarning() const {
  if (CountWarnings() == 0) return "";
  return firstWarning.empty() ? written.substr(warnings.end) : firstWarning;
}

}  // namespace sim
