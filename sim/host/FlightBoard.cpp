#include "host/FlightBoard.h"

#include <fmt/format.h>
#include <sys/mman.h>

#include <cerrno>
#include <new>
#include <span>
#include <system_error>

namespace sim {

std::string HookText(const NotedHook& hook) {
  if (hook.name == nullptr) return "";
  const std::span arguments(hook.arguments.data(), static_cast<std::size_t>(hook.argumentCount));
  return fmt::format("{}({})", hook.name, fmt::join(arguments, ", "));
}

FlightBoard& MakeSharedBoard() {
  void* const memory =
      mmap(nullptr, sizeof(FlightBoard), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED)
    throw std::system_error(errno, std::generic_category(), "no memory to share with the flight");
  return *new (memory) FlightBoard;
}

}  // namespace sim
