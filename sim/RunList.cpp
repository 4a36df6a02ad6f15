// The flight's process, or this one, writes the list to standard output as it was before the flight began;
// meanwhile, what is told there, by plugins too, goes to a file.
#include "RunList.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <string_view>
#include <system_error>

#include "Run.h"
#include "report/Report.h"

namespace sim {
namespace {

// Standard output goes to a file for as long as this is there.
class OutputKept {
 public:
  OutputKept() : kept(std::tmpfile()), output(dup(STDOUT_FILENO)) {
    if (kept == nullptr || output < 0)
      throw std::system_error(errno, std::generic_category(), "cannot keep what the flight tells");
    std::fflush(stdout);
    dup2(fileno(kept), STDOUT_FILENO);
  }
  ~OutputKept() {
    std::fflush(stdout);
    dup2(output, STDOUT_FILENO);
    close(output);
    std::fclose(kept);
  }
  OutputKept(const OutputKept&) = delete;
  OutputKept& operator=(const OutputKept&) = delete;

  void Print(std::string_view text) const {
    while (!text.empty()) {
      const ssize_t written = write(output, text.data(), text.size());
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return;
      text.remove_prefix(static_cast<std::size_t>(written));
    }
  }

  void ShowAsError() const {
    std::fflush(stdout);
    std::rewind(kept);
    std::array<char, 4096> buffer{};
    while (const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), kept))
      std::fwrite(buffer.data(), 1, size, stderr);
  }

 private:
  std::FILE* kept;
  int output;
};

}  // namespace

int RunList(FlightOptions options, const List& list, bool asJson) {
  const OutputKept flightsOutput;
  options.atTheEnd = [&] {
    const Rows rows = list.rows();
    flightsOutput.Print(asJson ? JsonOf(rows) : TableOf(rows));
  };
  const int exitCode = Run(options);
  if (exitCode == kExitPluginEndedFlight) flightsOutput.ShowAsError();
  return exitCode == kExitFailed ? kExitPassed : exitCode;
}

}  // namespace sim
