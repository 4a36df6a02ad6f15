// Signal handlers. Everything in this file runs while a thread may hold any lock and the heap may be broken,
// so it calls nothing but what is async-signal-safe: system calls, copies of memory that was found readable,
// lock-free atomics, and VYRAGetRunningCalls, which promises the same. Nothing is allocated.
// (InstallFaultHandlers is the exception: it runs before the flight.)
#include "supervise/FaultHandler.h"

#include <sys/mman.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <system_error>

#include "host/FlightBoard.h"

namespace sim {
namespace {

constexpr std::array kFaultSignals = {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT};
constexpr std::size_t kHandlerStack = 256UL * 1024;
constexpr std::uintptr_t kPage = 4096;
constexpr int kExitCode = 3;
constexpr std::size_t kThrowStack = 32UL * 1024;  // enough for some calls, and quick: plugins may throw often
constexpr timespec kBriefly = {0, 2'000'000};     // 2 ms
constexpr int kMostWaits = 60'000 / 2;            // a minute in all: finding lines may read much from disk

int ThisThread() { return static_cast<int>(syscall(SYS_gettid)); }

// Whether a page can be read, found out without reading it: the kernel copies the set of signals before it
// refuses the operation, and says which of the two it could not do.
bool IsReadable(std::uintptr_t page) {
  constexpr int kNoSuchOperation = -1;
  constexpr std::size_t kKernelSignalSet = 8;
  syscall(SYS_rt_sigprocmask, kNoSuchOperation, page, nullptr, kKernelSignalSet);
  return errno != EFAULT;
}

// A memcpy that no sanitizer replaces by its own, which would find fault with reading a whole stack.
__attribute__((no_sanitize("address", "undefined"))) void CopyWords(std::byte* to, std::uintptr_t from,
                                                                    std::size_t size) {
  volatile std::uint64_t* const words = reinterpret_cast<std::uint64_t*>(to);
  for (std::size_t i = 0; i < size / sizeof(*words); ++i)
    words[i] = reinterpret_cast<const volatile std::uint64_t*>(from)[i];
}

void CopyRegisters(const ucontext_t& context, ThreadFacts& facts) {
#if defined(__x86_64__)
  constexpr std::array<int, kRegisters> kDwarfOrder = {REG_RAX, REG_RDX, REG_RCX, REG_RBX, REG_RSI, REG_RDI,
                                                       REG_RBP, REG_RSP, REG_R8,  REG_R9,  REG_R10, REG_R11,
                                                       REG_R12, REG_R13, REG_R14, REG_R15, REG_RIP};
  for (std::size_t i = 0; i < kRegisters; ++i)
    facts.registers[i] = static_cast<std::uint64_t>(context.uc_mcontext.gregs[kDwarfOrder[i]]);
  facts.hasRegisters = true;
#else
  (void)context, (void)facts;  // the calls are told; a backtrace is not
#endif
}

// Copies the stack from the stack pointer on, to its end or as much as fits. Where the stack is full, the
// stack pointer stands below it, so unreadable pages before the first readable one are passed over.
void CopyStack(ThreadFacts& facts, std::size_t most) {
  if (!facts.hasRegisters) return;
  const std::uintptr_t begin = facts.registers[kStackPointer] & ~(sizeof(std::uint64_t) - 1);
  facts.stackBegin = begin;
  for (std::uintptr_t from = begin; from - begin < most;) {
    const std::uintptr_t to = std::min((from | (kPage - 1)) + 1, begin + most);
    const bool readable = IsReadable(from & ~(kPage - 1));
    if (!readable && facts.stackSize > 0) return;
    if (readable) {
      CopyWords(&facts.stack[from - begin], from, to - from);
      facts.stackSize = to - begin;
    }
    from = to;
  }
}

template <std::size_t size>
void CopyText(std::array<char, size>& to, const char* from) {
  std::size_t length = 0;
  while (length + 1 < size && from[length] != '\0') {
    to[length] = from[length];
    ++length;
  }
  to[length] = '\0';
}

void CopyCalls(ThreadFacts& facts) {
  std::array<VYRARunningCall, kNotedCalls> calls;
  const int count = VYRAGetRunningCalls(calls.data(), static_cast<int>(calls.size()));
  for (int i = 0; i < count; ++i) {
    CallFacts& copy = facts.calls[static_cast<std::size_t>(i)];
    const VYRARunningCall& call = calls[static_cast<std::size_t>(i)];
    copy.plugin = call.plugin;
    copy.kind = call.kind;
    CopyText(copy.identity.name, call.name);
    CopyText(copy.identity.signature, call.signature);
    CopyText(copy.identity.path, call.path);
  }
  facts.callCount = count;
}

void Gather(Incident incident, const siginfo_t* info, const ucontext_t& context, ThreadFacts& facts,
            std::size_t mostStack = kNotedStack) {
  facts.stage = Stage::Nothing;
  facts.incident = incident;
  facts.thread = ThisThread();
  facts.isMainThread = facts.thread == gBoard->flyer;
  facts.frame = gBoard->frame;
  facts.hook = gBoard->hook;
  if (info != nullptr) {
    facts.signal = info->si_signo;
    facts.signalCode = info->si_code;
    facts.sender = info->si_code <= 0 ? info->si_pid : 0;
    facts.address = info->si_code > 0 ? reinterpret_cast<std::uintptr_t>(info->si_addr) : 0;
  }
  CopyRegisters(context, facts);
  facts.stackSize = 0;
  facts.callCount = 0;
  facts.stage = Stage::Numbers;
  CopyCalls(facts);
  facts.stage = Stage::Calls;
  CopyStack(facts, mostStack);
  facts.stage = Stage::Stack;
}

// The supervisor looks at the board whenever a child's state may have changed.
void CallSupervisor() { kill(gBoard->supervisor, SIGCHLD); }

[[noreturn]] void WaitForever() {
  while (true) nanosleep(&kBriefly, nullptr);
}

Release WaitForRelease() {
  for (int waits = 0; waits < kMostWaits; ++waits) {
    const Release release = gBoard->release;
    if (release != Release::Wait) return release;
    nanosleep(&kBriefly, nullptr);
  }
  return Release::Exit;
}

// Lets the process die of a signal as if nobody handled it.
void DieOf(int signal, bool happensAgain) {
  struct sigaction action = {};
  action.sa_handler = SIG_DFL;
  sigaction(signal, &action, nullptr);
  // A fault happens again once the handler returns, where it happened first: the core file shows that place.
  if (!happensAgain) syscall(SYS_tgkill, getpid(), ThisThread(), signal);
}

bool IsAnotherProcess() { return getpid() != gBoard->flyer; }

void OnFault(int signal, siginfo_t* info, void* context) {
  const int savedErrno = errno;
  const bool happensAgain = info->si_code > 0;
  // A process that a plugin forked has a copy of the handlers, but is not the flight.
  if (IsAnotherProcess()) return DieOf(signal, happensAgain);
  if (gBoard->faultIsTaken.exchange(true)) {
    if (gBoard->fault.thread == ThisThread()) return DieOf(signal, happensAgain);
    WaitForever();
  }

  Gather(Incident::Signal, info, *static_cast<ucontext_t*>(context), gBoard->fault);
  CallSupervisor();
  if (WaitForRelease() == Release::Exit) _exit(kExitCode);
  DieOf(signal, happensAgain);
  errno = savedErrno;
}

void OnQuestion(int /*signal*/, siginfo_t* info, void* context) {
  const int savedErrno = errno;
  if (!IsAnotherProcess() && info->si_pid == gBoard->supervisor) {
    if (info->si_value.sival_int == static_cast<int>(Question::DieOfAbort)) DieOf(SIGABRT, false);
    Gather(Incident::Sample, info, *static_cast<ucontext_t*>(context), gBoard->sample);
    CallSupervisor();
  }
  errno = savedErrno;
}

void Install(int signal, void (*handler)(int, siginfo_t*, void*), int flags) {
  struct sigaction action = {};
  action.sa_sigaction = handler;
  action.sa_flags = SA_SIGINFO | SA_ONSTACK | flags;
  // No question while a fault is handled, and a second fault in a handler ends the process: the supervisor
  // then uses what had been noted.
  sigemptyset(&action.sa_mask);
  for (const int fault : kFaultSignals) sigaddset(&action.sa_mask, fault);
  sigaddset(&action.sa_mask, QuestionSignal());
  if (sigaction(signal, &action, nullptr) != 0)
    throw std::system_error(errno, std::generic_category(), "a signal cannot be handled");
}

// Handlers run on a stack of their own, as the main thread's may be full.
void UseStackForHandlers() {
  void* const memory =
      mmap(nullptr, kHandlerStack, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
  stack_t stack = {};
  stack.ss_sp = memory;
  stack.ss_size = kHandlerStack;
  if (memory == MAP_FAILED || sigaltstack(&stack, nullptr) != 0)
    throw std::system_error(errno, std::generic_category(), "signal handlers get no stack");
}

}  // namespace

int QuestionSignal() { return SIGRTMAX - 2; }

void InstallFaultHandlers() {
  UseStackForHandlers();
  for (const int signal : kFaultSignals) Install(signal, OnFault, 0);
  Install(QuestionSignal(), OnQuestion, SA_RESTART);
}

void NoteThrow() {
  ucontext_t context;
  getcontext(&context);
  Gather(Incident::Throw, nullptr, context, gBoard->lastThrow, kThrowStack);
}

void GatherExit() {
  ucontext_t context;
  getcontext(&context);
  Gather(Incident::Exit, nullptr, context, gBoard->fault);
}

void NoteExit() {
  if (IsAnotherProcess() || gBoard->hasEnded) return;
  if (gBoard->faultIsTaken.exchange(true)) WaitForever();
  GatherExit();
  CallSupervisor();
  WaitForRelease();
  _exit(kExitCode);
}

}  // namespace sim
