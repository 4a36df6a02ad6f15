#include "supervise/Supervisor.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <system_error>
#include <thread>

#include "supervise/CallNotes.h"
#include "supervise/EndRequest.h"
#include "supervise/FaultHandler.h"
#include "supervise/FaultText.h"

namespace sim {
namespace {

using Clock = std::chrono::steady_clock;

constexpr Seconds kMostTimeForCore{30.0};

// The field of /proc/PID/status, as in "TracerPid:\t0"; empty when it cannot be read.
std::string StatusField(pid_t process, std::string_view name) {
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  for (std::string line; std::getline(status, line);)
    if (line.starts_with(name)) return line.substr(line.find_first_not_of(":\t ", name.size()));
  return "";
}

void Check(bool succeeded, const char* what) {
  if (!succeeded) throw std::system_error(errno, std::generic_category(), what);
}

sigset_t WatchedSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGCHLD, SIGINT, SIGTERM}) sigaddset(&signals, signal);
  return signals;
}

// ---- The flying process -------------------------------------------------------------------------------

[[noreturn]] void FlyAsChild(const std::function<int(int)>& fly, int lines, const sigset_t& unblocked) {
  // Without a supervisor nobody would say what became of the flight, nor end one that stalls.
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != gBoard->supervisor) _exit(kExitPluginEndedFlight);
  gBoard->flyer = getpid();
  InstallFaultHandlers();
  HandleEndRequests();
  sigprocmask(SIG_SETMASK, &unblocked, nullptr);
  std::atexit(NoteExit);
  // cppcheck-suppress ignoredReturnValue ; there is room for 32, and this is the first
  std::at_quick_exit(NoteExit);
  NoteCalls();
  const int exitCode = fly(lines);
  gBoard->hasEnded = true;
  std::exit(exitCode);
}

// ---- The supervisor's side ----------------------------------------------------------------------------

class Supervisor {
 public:
  Supervisor(const SupervisorOptions& supervisorOptions, pid_t flyingProcess, int linesToRead,
             int signalsToRead, const std::function<void(std::string_view)>& lineTaker)
      : options(supervisorOptions),
        flyer(flyingProcess),
        lines(linesToRead),
        signals(signalsToRead),
        takeLine(lineTaker),
        stallWatch(*gBoard, supervisorOptions.stallLimit),
        watchesStalls(supervisorOptions.stallLimit > Seconds{}) {}

  FlightEnd WaitForEnd();

 private:
  void WaitForNews();
  void TakeSignals();
  void TakeLines();
  void TakeEndRequest(const signalfd_siginfo& info);
  std::optional<FlightEnd> LookForFault();
  std::optional<FlightEnd> LookForDeath();
  std::optional<FlightEnd> LookForStall();
  FlightEnd EndOfDead(int status) const;
  bool AskMainThread(Question question) const;
  bool IsStopped() const;
  bool IsGoneWithin(Seconds time) const;
  std::optional<CallFacts> AccessorInEverySample(const Stall& stall);
  FlightEnd Finish(BadEnd end, int signalForCore);

  const SupervisorOptions& options;
  pid_t flyer;
  int lines;
  int signals;
  const std::function<void(std::string_view)>& takeLine;
  std::string unfinishedLine;
  StallWatch stallWatch;
  bool watchesStalls;
  std::optional<Clock::time_point> firstEndRequest;
};

FlightEnd Supervisor::WaitForEnd() {
  while (true) {
    WaitForNews();
    TakeSignals();
    TakeLines();
    const Nanoseconds now = ReadClock();
    std::optional<FlightEnd> end = LookForFault();
    if (!end) end = LookForDeath();
    if (!end) end = LookForStall();
    if (!end) continue;
    end->noticed = now;
    return *end;
  }
}

void Supervisor::WaitForNews() {
  std::array<pollfd, 2> files = {{{signals, POLLIN, 0}, {lines, POLLIN, 0}}};
  const auto interval = std::chrono::duration_cast<std::chrono::milliseconds>(stallWatch.Interval());
  poll(files.data(), files.size(), watchesStalls ? static_cast<int>(interval.count()) : -1);
}

void Supervisor::TakeSignals() {
  signalfd_siginfo info;
  while (read(signals, &info, sizeof(info)) == sizeof(info))
    if (info.ssi_signo != SIGCHLD) TakeEndRequest(info);
}

// The terminal sends its signals to the flying process as well; others are passed on. Who asks again is
// tired of waiting: no call into a plugin may last any longer.
void Supervisor::TakeEndRequest(const signalfd_siginfo& info) {
  constexpr Seconds kPatience{0.5};
  const Clock::time_point now = Clock::now();
  if (info.ssi_code <= 0) kill(flyer, static_cast<int>(info.ssi_signo));
  if (!firstEndRequest) {
    firstEndRequest = now;
    if (!watchesStalls) stallWatch.SetLimit(Seconds::max());
    watchesStalls = true;
  } else if (now - *firstEndRequest > kPatience) {
    stallWatch.SetLimit(kPatience);
  }
}

void Supervisor::TakeLines() {
  std::array<char, 4096> buffer;
  ssize_t size = 0;
  while ((size = read(lines, buffer.data(), buffer.size())) > 0) {
    unfinishedLine.append(buffer.data(), static_cast<std::size_t>(size));
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = unfinishedLine.find('\n', begin)) != std::string::npos; begin = end + 1)
      takeLine(std::string_view(unfinishedLine).substr(begin, end - begin));
    unfinishedLine.erase(0, begin);
  }
  if (size == 0) lines = -1;  // closed at the other end: there is nothing to wait for any more
}

// What was told before the end is taken, and then the flying process is ended.
FlightEnd Supervisor::Finish(BadEnd end, int signalForCore) {
  FlightEnd flightEnd{.badEnd = std::move(end)};
  if (options.wantsCore && signalForCore != 0) {
    gBoard->release = Release::DieOfSignal;
    kill(flyer, SIGCONT);
    if (gBoard->fault.stage != Stage::Stack) AskMainThread(Question::DieOfAbort);
    flightEnd.signal = signalForCore;
  } else {
    kill(flyer, SIGKILL);
  }
  if (!IsGoneWithin(kMostTimeForCore)) kill(flyer, SIGKILL);
  waitpid(flyer, nullptr, 0);
  TakeLines();
  return flightEnd;
}

bool Supervisor::IsGoneWithin(Seconds time) const {
  const Clock::time_point end = Clock::now() + std::chrono::duration_cast<Clock::duration>(time);
  while (Clock::now() < end) {
    siginfo_t info = {};
    if (waitid(P_PID, static_cast<id_t>(flyer), &info, WEXITED | WNOHANG | WNOWAIT) != 0 || info.si_pid != 0)
      return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return false;
}

std::optional<FlightEnd> Supervisor::LookForFault() {
  const ThreadFacts& facts = gBoard->fault;
  if (facts.stage != Stage::Stack) return std::nullopt;
  kill(flyer, SIGSTOP);  // other threads would go on, and close modules
  if (facts.incident == Incident::Exit)
    return Finish(Blame(EvidenceOf(flyer, facts), Result::Exited, "exit"), 0);
  const Evidence evidence = EvidenceOf(flyer, facts);
  const std::string what = DescribeFault(facts, evidence.map, *gBoard);
  return Finish(Blame(evidence, Result::Crashed, what), facts.signal);
}

std::optional<FlightEnd> Supervisor::LookForDeath() {
  int status = 0;
  if (waitpid(flyer, &status, WNOHANG) != flyer) return std::nullopt;
  TakeLines();
  return EndOfDead(status);
}

// The process is gone, with or without facts of its end.
FlightEnd Supervisor::EndOfDead(int status) const {
  const ThreadFacts& facts = gBoard->fault;
  const bool hasFacts = facts.incident == Incident::Signal && facts.stage >= Stage::Calls;
  if (hasFacts) {
    const Evidence evidence = EvidenceOf(flyer, facts);
    return {.badEnd = Blame(evidence, Result::Crashed, DescribeFault(facts, evidence.map, *gBoard)),
            .signal = facts.signal};
  }
  if (WIFSIGNALED(status)) {
    const int signal = WTERMSIG(status);
    const std::string what = "the process was killed by " + DescribeSignal(signal);
    return {.badEnd = BlameNobody(*gBoard, what), .signal = signal};
  }
  const int exitCode = WEXITSTATUS(status);
  if (gBoard->hasEnded) return {.badEnd = std::nullopt, .exitCode = exitCode};
  const std::string what = fmt::format("the process ended at once, with exit code {}", exitCode);
  return {.badEnd = BlameRunningCall(*gBoard, what)};
}

// ---- Stalls -------------------------------------------------------------------------------------------

bool Supervisor::AskMainThread(Question question) const {
  constexpr int kMostWaits = 500;
  siginfo_t info = {};
  info.si_signo = QuestionSignal();
  info.si_code = SI_QUEUE;
  info.si_pid = getpid();
  info.si_uid = getuid();
  info.si_value.sival_int = static_cast<int>(question);
  gBoard->sample.stage = Stage::Nothing;
  if (syscall(SYS_rt_tgsigqueueinfo, flyer, flyer, info.si_signo, &info) != 0) return false;
  for (int waits = 0; waits < kMostWaits && question == Question::WhereAreYou; ++waits) {
    if (gBoard->sample.stage == Stage::Stack) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return false;
}

bool Supervisor::IsStopped() const {
  const std::string state = StatusField(flyer, "State");
  return state.starts_with('T') || state.starts_with('t');
}

// The accessor of a dataref that a stalled call has called, and that has not returned either: the board does
// not know of accessors, so the main thread is asked a few times. One that runs each time is taken not to
// have returned, or to take all the time there is.
std::optional<CallFacts> Supervisor::AccessorInEverySample(const Stall& stall) {
  constexpr int kSamples = 5;
  constexpr std::chrono::milliseconds kBetween{20};
  if (static_cast<std::size_t>(gBoard->depth) != stall.depth + 1) return std::nullopt;
  std::optional<CallFacts> accessor;
  for (int i = 0; i < kSamples; ++i) {
    if (!AskMainThread(Question::WhereAreYou) || gBoard->sample.callCount == 0) return std::nullopt;
    const CallFacts& innermost = gBoard->sample.calls[0];
    if (innermost.kind != VYRA_CALL_DATAREF || innermost.plugin == VYRA_HOST_PLUGIN) return std::nullopt;
    if (accessor && accessor->plugin != innermost.plugin) return std::nullopt;
    accessor = innermost;
    std::this_thread::sleep_for(kBetween);
  }
  return accessor;
}

std::optional<FlightEnd> Supervisor::LookForStall() {
  if (!watchesStalls) return std::nullopt;
  const std::optional<Stall> stall = stallWatch.Look(Clock::now());
  if (!stall) return std::nullopt;
  if (IsStopped()) {
    stallWatch.Forget();
    return std::nullopt;
  }
  const bool hasSample = AskMainThread(Question::WhereAreYou);
  const std::optional<CallFacts> accessor = AccessorInEverySample(*stall);
  if (!stallWatch.IsStillRunning(*stall)) return std::nullopt;

  kill(flyer, SIGSTOP);
  BadEnd end{Result::Stalled, true, DescribeCall(*gBoard, stall->depth)};
  if (accessor) Identify(end.culprit, *accessor);  // of another plugin, perhaps
  end.culprit.message = fmt::format("the call has not returned for {:.1f} s", stall->lasted.count());
  if (hasSample)
    for (const StackFrame& frame : EvidenceOf(flyer, gBoard->sample).frames)
      end.culprit.backtrace.push_back(frame.text);
  return Finish(std::move(end), SIGABRT);
}

}  // namespace

bool IsTraced() {
  const std::string tracer = StatusField(getpid(), "TracerPid");
  return !tracer.empty() && tracer != "0";
}

void DieOf(int signal) {
  const rlimit noCore = {0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  std::fflush(nullptr);
  struct sigaction action = {};
  action.sa_handler = SIG_DFL;
  sigaction(signal, &action, nullptr);
  raise(signal);
  std::_Exit(kExitPluginEndedFlight);  // were it ignored
}

FlightEnd Supervise(const SupervisorOptions& options, const std::function<int(int)>& fly,
                    const std::function<void(std::string_view)>& takeLine) {
  gBoard = &MakeSharedBoard();
  gBoard->supervisor = getpid();
  std::array<int, 2> ends{};
  Check(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) == 0, "no way for messages");
  const sigset_t watched = WatchedSignals();
  sigset_t unblocked;
  Check(sigprocmask(SIG_BLOCK, &watched, &unblocked) == 0, "signals cannot be blocked");
  const int signals = signalfd(-1, &watched, SFD_CLOEXEC | SFD_NONBLOCK);
  Check(signals >= 0, "signals cannot be read");

  std::fflush(nullptr);  // what is buffered now would come out of both processes
  const pid_t flyer = fork();
  Check(flyer >= 0, "the flight gets no process of its own");
  if (flyer == 0) {
    close(ends[0]);
    close(signals);
    FlyAsChild(fly, ends[1], unblocked);
  }
  close(ends[1]);
  fcntl(ends[0], F_SETFL, O_NONBLOCK);
  FlightEnd end = Supervisor(options, flyer, ends[0], signals, takeLine).WaitForEnd();
  close(ends[0]);
  close(signals);
  sigprocmask(SIG_SETMASK, &unblocked, nullptr);
  return end;
}

}  // namespace sim
