// The board: memory that the flying process shares with its supervisor. While the flight goes well, the
// flying process notes there with a few stores where it is; when it ends badly, what is known of the end.
// The board outlives the flying process, however that ends.
//
// Pointers to constants on it mean the same in both processes, as one is a fork of the other.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>

#include "VYRAWatch.h"
#include "host/HookTimes.h"

namespace sim {

constexpr std::size_t kNotedText = 256;
constexpr std::size_t kNotedPath = 1024;
constexpr std::size_t kNotedCalls = 32;      // the outermost ones; deeper calls are only counted
constexpr std::size_t kNotedPlugins = 1024;  // by ID; what is known of others is their ID
constexpr std::size_t kNotedModules = 1024;  // the last ones that were opened
constexpr std::size_t kNotedStack = 256UL * 1024;
constexpr std::size_t kRegisters = 17;  // of an x86-64 thread, by their numbers in debug information
constexpr std::size_t kStackPointer = 7;
constexpr std::size_t kProgramCounter = 16;

// The simulator's call into the library.
struct NotedHook {
  const char* name = nullptr;  // a constant; null outside any
  int argumentCount = 0;
  std::array<int, 2> arguments{};
};

// A character, which is a key, counts from 0 to 255.
template <class WholeNumber>
int NumberOf(WholeNumber number) {
  if constexpr (std::is_same_v<WholeNumber, char>)
    return static_cast<unsigned char>(number);
  else
    return static_cast<int>(number);
}

// With the first arguments, as far as they are whole numbers.
template <class... Arguments>
NotedHook NoteHook(const char* name, Arguments... arguments) {
  NotedHook hook{name, 0, {}};
  bool isFurther = false;
  [[maybe_unused]] const auto note = [&]([[maybe_unused]] auto argument) {
    if constexpr (std::is_integral_v<decltype(argument)> || std::is_enum_v<decltype(argument)>) {
      if (!isFurther && hook.argumentCount < 2)
        hook.arguments[static_cast<std::size_t>(hook.argumentCount++)] = NumberOf(argument);
    } else {
      isFurther = true;
    }
  };
  (note(arguments), ...);
  return hook;
}

// "VYRADoDrawingHook(20, 0)"; "" outside any.
std::string HookText(const NotedHook& hook);

// A call into a plugin as the watcher is told of it.
struct NotedCall {
  std::atomic<std::uint64_t> serial = 0;  // no two calls have the same
  std::atomic<VYRAPluginID> plugin = 0;
  std::atomic<int> kind = 0;  // VYRA_CALL_...
};

// Who a plugin is.
struct NotedPlugin {
  std::array<char, kNotedText> name{};
  std::array<char, kNotedText> signature{};
  std::array<char, kNotedPath> path{};  // of its module
};

// Where a module lay when it was opened.
struct NotedModule {
  std::array<char, kNotedPath> path{};
  std::uintptr_t begin = 0;
  std::uintptr_t end = 0;
};

// A call with all that is known of it, copied when something went wrong.
struct CallFacts {
  VYRAPluginID plugin = 0;
  int kind = 0;
  NotedPlugin identity;
};

enum class Incident { None, Signal, Exit, Sample, Throw };

// How much of the facts is there. It only grows, so that facts whose gathering was itself cut short by a
// fault are used as far as they go.
enum class Stage { Nothing, Numbers, Calls, Stack };

// What is known at once of a thread that ended the flight or was asked where it stands.
struct ThreadFacts {
  std::atomic<Stage> stage = Stage::Nothing;
  Incident incident = Incident::None;
  int thread = 0;
  bool isMainThread = false;
  int signal = 0;
  int signalCode = 0;          // si_code
  int sender = 0;              // the process that sent the signal, where one did
  std::uintptr_t address = 0;  // of the fault
  NotedHook hook;
  int frame = 0;
  bool hasRegisters = false;
  std::array<std::uint64_t, kRegisters> registers{};
  int callCount = 0;
  std::array<CallFacts, kNotedCalls> calls;  // the innermost first
  std::uintptr_t stackBegin = 0;             // the address from which the stack was copied
  std::size_t stackSize = 0;
  alignas(std::uint64_t) std::array<std::byte, kNotedStack> stack;
};

// What the supervisor lets a process do that waits for it at its end.
enum class Release : int { Wait, Exit, DieOfSignal };

struct FlightBoard {
  int flyer = 0;       // process IDs
  int supervisor = 0;  // 0 without one
  std::atomic<Release> release = Release::Wait;

  // Where the flight is. Written on the main thread of the flying process alone.
  std::atomic<int> frame = 0;
  NotedHook hook;
  std::atomic<bool> waitsForUser = false;    // in a dialog, whoever asked for it
  std::atomic<int> depth = 0;                // calls into plugins on the stack
  std::array<NotedCall, kNotedCalls> calls;  // the outermost first

  // Who was called, by ID, and what was opened: the n-th module stands at n modulo the size.
  std::array<NotedPlugin, kNotedPlugins> plugins;
  std::atomic<std::size_t> openedModules = 0;
  std::array<NotedModule, kNotedModules> modules;

  // How it ended, and where the main thread stood when the supervisor asked.
  std::atomic<bool> hasEnded = false;      // in order: a process that exits now is no incident
  std::atomic<bool> faultIsTaken = false;  // by the first thread that has one
  ThreadFacts fault;
  ThreadFacts sample;
  ThreadFacts lastThrow;  // of the last C++ exception that was thrown on the main thread
};

static_assert(std::atomic<std::uint64_t>::is_always_lock_free && std::atomic<Stage>::is_always_lock_free &&
              std::atomic<bool>::is_always_lock_free);

// Without a supervisor nobody else reads the board. It is too large for the stack, and costs no memory where
// it is not written.
inline FlightBoard gOwnBoard;

// The board of this flight.
inline FlightBoard* gBoard = &gOwnBoard;

// A board that children of this process share, for as long as they live. Throws std::system_error.
FlightBoard& MakeSharedBoard();

// Calls a function of the library, and notes meanwhile that the simulator has called it. Only a call that
// returns takes the note away: when an exception comes out of one, the note says so.
template <class Function, class... Arguments>
auto CallHook(const char* name, Function function, Arguments... arguments) {
  const NotedHook outer = gBoard->hook;
  gBoard->hook = NoteHook(name, arguments...);
  const HookSample sample(outer.name == nullptr);
  if constexpr (std::is_void_v<decltype(function(arguments...))>) {
    function(arguments...);
    gBoard->hook = outer;
  } else {
    auto answer = function(arguments...);
    gBoard->hook = outer;
    return answer;
  }
}

}  // namespace sim
