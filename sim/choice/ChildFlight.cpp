// Starting vyra-sim anew, and waiting for it.
#include "choice/ChildFlight.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <system_error>

namespace sim {
namespace {

namespace fs = std::filesystem;

constexpr std::array kSignalsToEnd = {SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t gSignal = 0;
volatile pid_t gChild = 0;

void PassOn(int signal) {
  gSignal = signal;
  if (gChild > 0) kill(gChild, signal);
}

// While it lasts, signals that ask this process to end go to the flight.
class SignalsPassedOn {
 public:
  SignalsPassedOn() {
    gSignal = 0;
    struct sigaction action {};
    action.sa_handler = PassOn;
    for (std::size_t i = 0; i < kSignalsToEnd.size(); ++i) sigaction(kSignalsToEnd[i], &action, &saved[i]);
  }
  ~SignalsPassedOn() {
    for (std::size_t i = 0; i < kSignalsToEnd.size(); ++i) sigaction(kSignalsToEnd[i], &saved[i], nullptr);
    gChild = 0;
  }
  SignalsPassedOn(const SignalsPassedOn&) = delete;
  SignalsPassedOn& operator=(const SignalsPassedOn&) = delete;

 private:
  std::array<struct sigaction, kSignalsToEnd.size()> saved{};
};

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

// In the child: becomes the program, or ends. Nothing here allocates.
[[noreturn]] void Become(char* const* words, const char* errorFile) {
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  for (const int signal : kSignalsToEnd) std::signal(signal, SIG_DFL);
  const int nothing = open("/dev/null", O_RDWR);
  const int error = open(errorFile, O_WRONLY | O_CREAT | O_TRUNC, 0600);
  dup2(nothing, STDIN_FILENO);
  dup2(nothing, STDOUT_FILENO);
  dup2(error, STDERR_FILENO);
  execv("/proc/self/exe", words);
  _exit(127);
}

int WaitFor(pid_t child) {
  int status = 0;
  while (waitpid(child, &status, 0) < 0)
    if (errno != EINTR) throw std::system_error(errno, std::generic_category(), "waiting for a flight");
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace

ChildFlights::ChildFlights() {
  std::string pattern = (fs::temp_directory_path() / "vyra-flights-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr)
    throw std::system_error(errno, std::generic_category(), "cannot make the folder " + pattern);
  folder = pattern;
}

ChildFlights::~ChildFlights() {
  std::error_code ignored;  // what is left behind lies among the temporary files
  fs::remove_all(folder, ignored);
}

FlightOutcome ChildFlights::Fly(const std::vector<std::string>& arguments) const {
  const std::string report = folder / "report.json";
  const std::string error = folder / "error.txt";
  fs::remove(report);
  // How such a flight ends is nothing to remember for the next one.
  std::vector<std::string> words{"vyra-sim", "run", "--log", "/dev/null", "--report", report, "--state", ""};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);

  const SignalsPassedOn signals;
  const auto start = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child < 0) throw std::system_error(errno, std::generic_category(), "cannot start a flight");
  if (child == 0) Become(pointers.data(), error.c_str());
  gChild = child;
  FlightOutcome outcome;
  outcome.exitCode = WaitFor(child);
  if (gSignal != 0) throw Interrupted{gSignal};
  outcome.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  outcome.error = ReadFile(error);
  outcome.report = nlohmann::json::parse(ReadFile(report), nullptr, false);
  if (outcome.report.is_discarded()) outcome.report = nullptr;
  return outcome;
}

}  // namespace sim
