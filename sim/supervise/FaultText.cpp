#include "supervise/FaultText.h"

#include <fmt/core.h>

#include <csignal>
#include <cstring>

namespace sim {
namespace {

constexpr std::uintptr_t kNullPage = 64UL * 1024;      // fields of an object that is not there
constexpr std::uintptr_t kStackGuard = 1024UL * 1024;  // what the kernel keeps free below a stack
constexpr std::uintptr_t kRedZone = 128;               // below the stack pointer, in use

// A full stack: the fault lies close to the stack pointer, where nothing may be written, and a stack begins
// right above it.
bool IsStackOverflow(const ThreadFacts& facts, const MemoryMap& map) {
  if (facts.signal != SIGSEGV || !facts.hasRegisters) return false;
  const MappedRange* const at = map.Find(facts.address);
  if (at != nullptr && at->isWritable) return false;
  const MappedRange* const above = map.FindAbove(facts.address);
  if (above == nullptr || !above->isWritable || above->begin - facts.address > kStackGuard) return false;
  const std::uintptr_t stackPointer = facts.registers[kStackPointer];
  return stackPointer < above->end && facts.address + kStackGuard > stackPointer - kRedZone &&
         (stackPointer < above->begin + kStackGuard);
}

std::string DescribePlace(const ThreadFacts& facts, const MemoryMap& map, const FlightBoard& board) {
  if (facts.address < kNullPage)
    return facts.address == 0 ? "a null pointer" : "a null pointer with an offset";
  if (const MappedRange* const range = map.Find(facts.address)) {
    const char* const access = range->isExecutable ? "code"
                               : range->isWritable ? "data"
                               : range->isReadable ? "data that is read-only"
                                                   : "a guard page";
    return range->name.empty() ? access : fmt::format("{} of {}", access, range->name);
  }
  if (const NotedModule* const module = FindLastModule(board, facts.address))
    return fmt::format("where {} lay until it was closed", module->path.data());
  return "where nothing is mapped";
}

std::string DescribeAddress(const ThreadFacts& facts, const MemoryMap& map, const FlightBoard& board) {
  // The processor does not say which address it was when it can be none.
  if (facts.signalCode == SI_KERNEL) return "at an address that cannot exist";
  if (facts.hasRegisters && facts.address == facts.registers[kProgramCounter])
    return fmt::format("by a jump to address {:#x} ({})", facts.address, DescribePlace(facts, map, board));
  return fmt::format("at address {:#x} ({})", facts.address, DescribePlace(facts, map, board));
}

const char* DescribeArithmetic(int code) {
  switch (code) {
    case FPE_INTDIV:
      return "integer division by zero";
    case FPE_INTOVF:
      return "integer overflow";
    case FPE_FLTDIV:
      return "floating-point division by zero";
    default:
      return "arithmetic error";
  }
}

}  // namespace

const NotedModule* FindLastModule(const FlightBoard& board, std::uintptr_t address) {
  const std::size_t opened = board.openedModules;
  const std::size_t oldest = opened > kNotedModules ? opened - kNotedModules : 0;
  for (std::size_t i = opened; i-- > oldest;) {
    const NotedModule& module = board.modules[i % kNotedModules];
    if (address >= module.begin && address < module.end) return &module;
  }
  return nullptr;
}

std::string DescribeSignal(int signal) {
  const char* const name = sigabbrev_np(signal);
  return name != nullptr ? fmt::format("SIG{} ({})", name, sigdescr_np(signal))
                         : fmt::format("signal {}", signal);
}

std::string DescribeFault(const ThreadFacts& facts, const MemoryMap& map, const FlightBoard& board) {
  if (facts.signal == SIGABRT) return "abort";
  if (facts.signalCode <= 0) return DescribeSignal(facts.signal);
  if (IsStackOverflow(facts, map)) return "stack overflow";
  switch (facts.signal) {
    case SIGSEGV:
      return "segmentation fault " + DescribeAddress(facts, map, board);
    case SIGBUS:
      return "bus error " + DescribeAddress(facts, map, board);
    case SIGILL:
      return "illegal instruction";
    case SIGFPE:
      return DescribeArithmetic(facts.signalCode);
    default:
      return DescribeSignal(facts.signal);
  }
}

}  // namespace sim
