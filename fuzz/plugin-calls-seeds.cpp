// Runs what fuzz-plugin-calls runs on bytes that seeds give, without clang: each seed in a process of its
// own.
//   plugin-calls-seeds [OPTIONS] FIRST LAST     the seeds from FIRST to LAST
//   plugin-calls-seeds FILE                     the bytes of a file
//     --bytes=COUNT     how many bytes each seed gives; 200 to 4,200 when it is left out
//     --first-fault     end with the first seed that fails
//     --unshrunk        tell the faults as they are
// A failure prints its seed, and the steps that are left when all that are not needed for it are taken out.
#include <poll.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "calls/Folders.h"
#include "calls/Script.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr unsigned kSecondsForARun = 20;
constexpr int kMostAttempts = 2000;  // at taking bytes out

struct Options {
  std::size_t bytes = 0;
  bool endsAtFirstFault = false;
  bool shrinks = true;
};

// Where the runs, processes of their own, add their operations.
std::uint64_t& Operations() {
  static auto* const place = static_cast<std::uint64_t*>(
      mmap(nullptr, sizeof(std::uint64_t), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  if (place == MAP_FAILED) std::abort();
  return *place;
}

Bytes BytesOf(unsigned seed, std::size_t count) {
  std::mt19937 random(seed);
  const std::size_t drawn = 200 + random() % 4000;
  Bytes bytes(count != 0 ? count : drawn);
  for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
  return bytes;
}

// Runs the bytes in a process of their own; what fails, or nothing. Its output is passed on if `loud`.
std::string FailureOf(const Bytes& bytes, bool loud) {
  Operations();
  int ends[2];
  if (pipe(ends) != 0) std::abort();
  const pid_t child = fork();
  if (child == 0) {
    alarm(kSecondsForARun);
    dup2(ends[1], STDERR_FILENO);
    calls::Run(bytes.data(), bytes.size());
    Operations() += calls::Operations();
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

int RunFile(const char* name) {
  std::ifstream file(name, std::ios::binary);
  const Bytes bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  return FailureOf(bytes, true).empty() ? 0 : 1;
}

int RunSeeds(const Options& options, unsigned first, unsigned last) {
  const auto begin = std::chrono::steady_clock::now();
  int runs = 0;
  int failures = 0;
  for (unsigned seed = first; seed <= last && !(failures > 0 && options.endsAtFirstFault); ++seed) {
    const Bytes bytes = BytesOf(seed, options.bytes);
    const std::string failure = FailureOf(bytes, std::getenv("VYRA_FUZZ_TRACE") != nullptr);
    ++runs;
    if (failure.empty()) continue;
    ++failures;
    if (options.shrinks) {
      Report("seed-" + std::to_string(seed), bytes, failure);
    } else {
      std::printf("seed %u: %s\n", seed, failure.c_str());
      std::fflush(stdout);
    }
  }
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
  std::printf("%d runs, %llu operations in %.1f s; %d seeds failed\n", runs,
              static_cast<unsigned long long>(Operations()), taken.count(), failures);
  return failures == 0 ? 0 : 1;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  Options options;
  std::vector<const char*> rest;
  for (int i = 1; i < argumentCount; ++i) {
    const std::string_view argument = arguments[i];
    if (argument == "--first-fault") {
      options.endsAtFirstFault = true;
    } else if (argument == "--unshrunk") {
      options.shrinks = false;
    } else if (argument.starts_with("--bytes=")) {
      options.bytes = std::stoul(arguments[i] + 8);
    } else {
      rest.push_back(arguments[i]);
    }
  }
  if (rest.size() == 1) return RunFile(rest[0]);
  if (rest.size() != 2) return 2;
  return RunSeeds(options, static_cast<unsigned>(std::stoul(rest[0])),
                  static_cast<unsigned>(std::stoul(rest[1])));
}
