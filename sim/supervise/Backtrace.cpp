// Unwinding with elfutils: it reads the unwind tables of the files that the process has mapped, and the
// copies of the registers and the stack on the board.
#include "supervise/Backtrace.h"

#include <cxxabi.h>
#include <dwarf.h>
#include <elfutils/libdwfl.h>
#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <memory>
#include <system_error>
#include <utility>

#include "host/FlightBoard.h"

namespace sim {
namespace {

constexpr std::size_t kMostFrames = 2000;  // of which those of a recursion are told once
constexpr std::size_t kMostTold = 48;
constexpr std::size_t kWord = sizeof(std::uint64_t);

// ---- What elfutils asks for ---------------------------------------------------------------------------

// What it asks about: a thread's registers, perhaps moved on to the caller of a frame that it cannot unwind.
struct Unwinding {
  const ThreadFacts& facts;
  std::array<std::uint64_t, kRegisters> registers;
  std::vector<Dwarf_Addr> addresses;  // so far; each inside the instruction that it belongs to
};

pid_t NextThread(Dwfl* /*dwfl*/, void* argument, void** threadArgument) {
  if (*threadArgument != nullptr) return 0;
  *threadArgument = argument;
  return static_cast<Unwinding*>(argument)->facts.thread;
}

bool GetThread(Dwfl* /*dwfl*/, pid_t /*thread*/, void* argument, void** threadArgument) {
  *threadArgument = argument;
  return true;
}

bool ReadStack(Dwfl* /*dwfl*/, Dwarf_Addr address, Dwarf_Word* result, void* argument) {
  const ThreadFacts& facts = static_cast<Unwinding*>(argument)->facts;
  if (address < facts.stackBegin || address - facts.stackBegin + kWord > facts.stackSize) return false;
  std::memcpy(result, &facts.stack[address - facts.stackBegin], kWord);
  return true;
}

bool SetRegisters(Dwfl_Thread* thread, void* argument) {
  const auto& registers = static_cast<Unwinding*>(argument)->registers;
  static_assert(sizeof(Dwarf_Word) == sizeof(registers[0]));
  std::array<Dwarf_Word, kRegisters> words{};
  std::ranges::copy(registers, words.begin());
  return dwfl_thread_state_registers(thread, 0, kRegisters, words.data());
}

int NoteFrame(Dwfl_Frame* frame, void* argument) {
  auto& addresses = static_cast<Unwinding*>(argument)->addresses;
  Dwarf_Addr address = 0;
  bool isActive = false;
  if (!dwfl_frame_pc(frame, &address, &isActive)) return DWARF_CB_ABORT;
  // Where a function has called another, the address is that behind the call, which may be another line's.
  addresses.push_back(isActive ? address : address - 1);
  return addresses.size() < kMostFrames ? DWARF_CB_OK : DWARF_CB_ABORT;
}

constexpr Dwfl_Thread_Callbacks kThreadCallbacks = {NextThread,   GetThread, ReadStack,
                                                    SetRegisters, nullptr,   nullptr};

struct DwflEnd {
  void operator()(Dwfl* dwfl) const { dwfl_end(dwfl); }
};
using DwflPointer = std::unique_ptr<Dwfl, DwflEnd>;

// The files that the process has mapped; null when they cannot be read.
DwflPointer OpenModules(pid_t process) {
  static const Dwfl_Callbacks kCallbacks = {dwfl_linux_proc_find_elf, dwfl_standard_find_debuginfo, nullptr,
                                            nullptr};
  // Debug information on this machine is enough; a report that waits for a server is none.
  unsetenv("DEBUGINFOD_URLS");
  DwflPointer dwfl(dwfl_begin(&kCallbacks));
  if (!dwfl || dwfl_linux_proc_report(dwfl.get(), process) != 0) return nullptr;
  return dwfl_report_end(dwfl.get(), nullptr, nullptr) == 0 ? std::move(dwfl) : nullptr;
}

// ---- Unwinding ----------------------------------------------------------------------------------------

// A jump to where no code is leaves nothing to unwind there; but the call that led to it has pushed the
// address of its caller, so the thread is taken to stand there.
void StepOutOfNowhere(Unwinding& unwinding, const MemoryMap& map) {
  const std::uintptr_t address = unwinding.registers[kProgramCounter];
  const MappedRange* const code = map.Find(address);
  if (code != nullptr && code->isExecutable) return;
  Dwarf_Word caller = 0;
  if (!ReadStack(nullptr, unwinding.registers[kStackPointer], &caller, &unwinding)) return;
  const MappedRange* const callersCode = map.Find(caller);
  if (callersCode == nullptr || !callersCode->isExecutable) return;
  unwinding.addresses.push_back(address);
  unwinding.registers[kProgramCounter] = caller - 1;
  unwinding.registers[kStackPointer] += kWord;
}

std::vector<Dwarf_Addr> Unwind(Dwfl* dwfl, pid_t process, const ThreadFacts& facts, const MemoryMap& map) {
  Unwinding unwinding{facts, facts.registers, {}};
  StepOutOfNowhere(unwinding, map);
  if (dwfl != nullptr && dwfl_attach_state(dwfl, nullptr, process, &kThreadCallbacks, &unwinding))
    dwfl_getthread_frames(dwfl, facts.thread, NoteFrame, &unwinding);
  if (unwinding.addresses.empty()) unwinding.addresses.push_back(facts.registers[kProgramCounter]);
  return std::move(unwinding.addresses);
}

// ---- Naming -------------------------------------------------------------------------------------------

std::string Demangled(const char* symbol) {
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> text(
      abi::__cxa_demangle(symbol, nullptr, nullptr, &status), std::free);
  return text != nullptr ? text.get() : symbol;
}

// " at fuel.cpp:42"; empty without debug information.
std::string LineAt(Dwfl_Module* module, Dwarf_Addr address) {
  Dwfl_Line* const line = dwfl_module_getsrc(module, address);
  if (line == nullptr) return "";
  int number = 0;
  const char* const file = dwfl_lineinfo(line, nullptr, &number, nullptr, nullptr, nullptr);
  return file != nullptr ? fmt::format(" at {}:{}", file, number) : "";
}

std::string FunctionAt(Dwfl_Module* module, Dwarf_Addr address) {
  GElf_Off offset = 0;
  GElf_Sym symbol;
  const char* const name = dwfl_module_addrinfo(module, address, &offset, &symbol, nullptr, nullptr, nullptr);
  // The nearest symbol before an address means nothing when it does not reach so far.
  const bool reaches = name != nullptr && (symbol.st_size == 0 || offset < symbol.st_size);
  return reaches ? Demangled(name) : "";
}

StackFrame Describe(Dwfl* dwfl, Dwarf_Addr address, const MemoryMap& map) {
  StackFrame frame;
  frame.address = address;
  const MappedRange* const range = map.Find(address);
  if (range != nullptr && range->isExecutable) frame.module = range->name;
  if (frame.module.empty()) {
    frame.text = fmt::format("{:#x}, where no code is", address);
    return frame;
  }
  Dwfl_Module* const module = dwfl != nullptr ? dwfl_addrmodule(dwfl, address) : nullptr;
  std::string function;
  if (module != nullptr) function = FunctionAt(module, address) + LineAt(module, address);
  if (function.empty() || function.starts_with(' ')) {
    // As debuggers and addr2line take it.
    function = fmt::format("+{:#x}", address - map.BeginOf(frame.module)) + function;
  }
  frame.text = fmt::format("{}, in {}", function, frame.module);
  return frame;
}

// ---- What is told -------------------------------------------------------------------------------------

std::string ProgramOf(pid_t process) {
  std::error_code error;
  return std::filesystem::read_symlink(fmt::format("/proc/{}/exe", process), error).string();
}

// What the simulator does to note that an exception is thrown, or that the process exits, is no cause of it.
bool IsNoted(Incident incident) { return incident == Incident::Throw || incident == Incident::Exit; }

// A recursion is told as one frame.
void NoteRepetitions(std::vector<StackFrame>& frames, int& repetitions) {
  if (repetitions > 0) frames.back().text += fmt::format(" ({} times)", repetitions + 1);
  repetitions = 0;
}

// The call into the library says where a frame of the simulator came from; the frames below are the same each
// time. But they stay where nothing else is on the stack.
void CutOuterFrames(std::vector<StackFrame>& frames, const std::string& program) {
  const auto lastHook = std::ranges::find_if(frames.rbegin(), frames.rend(), [](const StackFrame& frame) {
    return frame.module.find("libVYRA.so") != std::string::npos;
  });
  if (lastHook == frames.rend()) return;
  const auto simulator = std::find_if(lastHook.base(), frames.end(),
                                      [&](const StackFrame& frame) { return frame.module == program; });
  frames.erase(simulator, frames.end());
}

}  // namespace

std::vector<StackFrame> ReadBacktrace(pid_t process, const ThreadFacts& facts, const MemoryMap& map) {
  if (!facts.hasRegisters || facts.stage < Stage::Numbers) return {};
  const DwflPointer dwfl = OpenModules(process);
  const std::string program = ProgramOf(process);
  std::map<Dwarf_Addr, StackFrame> described;
  std::vector<StackFrame> frames;
  int repetitions = 0;
  for (const Dwarf_Addr address : Unwind(dwfl.get(), process, facts, map)) {
    const auto [known, isNew] = described.try_emplace(address);
    if (isNew) known->second = Describe(dwfl.get(), address, map);
    const StackFrame& frame = known->second;
    if (frames.empty() && IsNoted(facts.incident) && frame.module == program) continue;
    if (!frames.empty() && frames.back().text == frame.text) {
      ++repetitions;
      continue;
    }
    NoteRepetitions(frames, repetitions);
    if (frames.size() == kMostTold) break;
    frames.push_back(frame);
  }
  NoteRepetitions(frames, repetitions);
  CutOuterFrames(frames, program);
  return frames;
}

}  // namespace sim
