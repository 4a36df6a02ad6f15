// Runs what fuzz-plugin-calls runs on bytes that seeds give, without clang: each seed in a process of its
// own.
//   plugin-calls-seeds FIRST LAST     the seeds from FIRST to LAST
//   plugin-calls-seeds FILE           the bytes of a file
// A failure prints its seed, and the steps that are left when all that are not needed for it are taken out.
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "calls/Folders.h"
#include "calls/Script.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr unsigned kSecondsForARun = 60;
constexpr int kMostAttempts = 2000;  // at taking bytes out

Bytes BytesOf(unsigned seed) {
  std::mt19937 random(seed);
  Bytes bytes(200 + random() % 4000);
  for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
  return bytes;
}

// Runs the bytes in a process of their own; what fails, or nothing. Its output is passed on if `loud`.
std::string FailureOf(const Bytes& bytes, bool loud) {
  int ends[2];
  if (pipe(ends) != 0) std::abort();
  const pid_t child = fork();
  if (child == 0) {
    alarm(kSecondsForARun);
    dup2(ends[1], STDERR_FILENO);
    calls::Run(bytes.data(), bytes.size());
    std::exit(0);  // with a look for leaks, where a sanitizer is there for it
  }
  close(ends[1]);
  std::string output;
  char part[4096];
  for (ssize_t got = 0; (got = read(ends[0], part, sizeof(part))) > 0;)
    output.append(part, static_cast<std::size_t>(got));
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (status == 0) return "";
  if (loud) std::fputs(output.c_str(), stderr);
  for (const char* mark : {"FAULT: ", "runtime error: ", "SUMMARY: "}) {
    const std::size_t at = output.find(mark);
    if (at != std::string::npos) return output.substr(at, output.find('\n', at) - at);
  }
  return "status " + std::to_string(status);
}

// Takes out what the failure does not need, in ever smaller pieces.
Bytes Shrunk(Bytes bytes, const std::string& failure) {
  int attempts = 0;
  for (std::size_t piece = bytes.size() / 2; piece > 0; piece /= 2) {
    for (std::size_t at = 0; at + piece <= bytes.size() && attempts < kMostAttempts;) {
      Bytes shorter = bytes;
      shorter.erase(shorter.begin() + static_cast<std::ptrdiff_t>(at),
                    shorter.begin() + static_cast<std::ptrdiff_t>(at + piece));
      ++attempts;
      if (FailureOf(shorter, false) == failure) {
        bytes = std::move(shorter);
      } else {
        at += piece;
      }
    }
  }
  return bytes;
}

void Report(const std::string& name, const Bytes& bytes, const std::string& failure) {
  const Bytes shrunk = Shrunk(bytes, failure);
  const std::string file = "plugin-calls-" + name;
  std::ofstream(file, std::ios::binary)
      .write(reinterpret_cast<const char*>(shrunk.data()), static_cast<std::streamsize>(shrunk.size()));
  setenv("VYRA_FUZZ_TRACE", "1", 1);
  FailureOf(shrunk, true);
  unsetenv("VYRA_FUZZ_TRACE");
  std::fprintf(stderr, "%s: %s; %zu bytes of it are in %s\n", name.c_str(), failure.c_str(), shrunk.size(),
               file.c_str());
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount == 2) {
    std::ifstream file(arguments[1], std::ios::binary);
    const Bytes bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    return FailureOf(bytes, true).empty() ? 0 : 1;
  }
  if (argumentCount != 3) return 2;
  const bool shrinks = std::getenv("VYRA_FUZZ_QUICK") == nullptr;
  int failures = 0;
  const unsigned last = static_cast<unsigned>(std::stoul(arguments[2]));
  for (unsigned seed = static_cast<unsigned>(std::stoul(arguments[1])); seed <= last; ++seed) {
    const Bytes bytes = BytesOf(seed);
    const std::string failure = FailureOf(bytes, false);
    if (failure.empty()) continue;
    ++failures;
    if (shrinks) {
      Report("seed-" + std::to_string(seed), bytes, failure);
    } else {
      std::printf("seed %u: %s\n", seed, failure.c_str());
      std::fflush(stdout);
    }
  }
  std::printf("%d seeds failed\n", failures);
  return failures == 0 ? 0 : 1;
}
