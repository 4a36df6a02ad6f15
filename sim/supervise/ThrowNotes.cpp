// The program has a __cxa_throw of its own, which the dynamic linker gives to plugins as well, in place of
// the C++ library's. A plugin that brings its own C++ library along does without it: then the outermost
// plugin that was called is named.
#include "supervise/ThrowNotes.h"

#include <cxxabi.h>
#include <dlfcn.h>
#include <fmt/core.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <memory>
#include <thread>
#include <type_traits>
#include <typeinfo>

#include "host/FlightBoard.h"
#include "supervise/Blame.h"
#include "supervise/FaultHandler.h"

namespace sim {
namespace {

void* gLastThrown = nullptr;
const std::thread::id gMainThread = std::this_thread::get_id();

std::string TypeName(const std::type_info& type) {
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> name(
      abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), std::free);
  return name != nullptr ? name.get() : type.name();
}

std::string DescribeException() {
  const std::type_info* const type = abi::__cxa_current_exception_type();
  if (type == nullptr) return "an exception that is not C++'s left it";
  try {
    // cppcheck-suppress rethrowNoCurrentException ; there is one, as it has a type
    throw;
  } catch (const std::exception& exception) {
    return fmt::format("an exception left it: {}: {}", TypeName(*type), exception.what());
  } catch (...) {
    return fmt::format("an exception left it: {}", TypeName(*type));
  }
}

// The object that is being handled: what an exception_ptr points to, and all that it consists of.
const void* CurrentException() {
  const std::exception_ptr exception = std::current_exception();
  static_assert(sizeof(exception) == sizeof(void*) && std::is_standard_layout_v<std::exception_ptr>);
  return *reinterpret_cast<void* const*>(&exception);
}

using Throw_f = void (*)(void*, void*, void (*)(void*));

[[noreturn]] void ThrowOn(void* exception, void* type, void (*destructor)(void*)) {
  static const auto throwInLibrary = reinterpret_cast<Throw_f>(dlsym(RTLD_NEXT, "__cxa_throw"));
  throwInLibrary(exception, type, destructor);
  std::abort();  // it does not return
}

}  // namespace

std::optional<Culprit> CulpritOfException() {
  if (gBoard->hook.name == nullptr) return std::nullopt;
  const std::string what = DescribeException();
  BadEnd end;
  if (gLastThrown != nullptr && CurrentException() == gLastThrown) {
    end = Blame(EvidenceOf(getpid(), gBoard->lastThrow), Result::Exception, what);
  }
  if (!end.hasCulprit) {
    end.culprit = DescribeCall(*gBoard, 0);
    end.culprit.message = what;
  }
  end.culprit.hook = HookText(gBoard->hook);
  gBoard->hook = {};
  return end.culprit;
}

}  // namespace sim

// Declared by its name in the object file: compilers know __cxa_throw by declarations of their own, of
// several types.
[[noreturn, gnu::visibility("default")]] void ThrowWithNote(void* exception, void* type,
                                                            void (*destructor)(void*)) __asm__("__cxa_throw");

void ThrowWithNote(void* exception, void* type, void (*destructor)(void*)) {
  if (std::this_thread::get_id() == sim::gMainThread) {
    sim::gLastThrown = exception;
    sim::NoteThrow();
  }
  sim::ThrowOn(exception, type, destructor);
}
