// A plugin module without a will of its own: it passes every call that it gets on to the driver.
#include "Module.h"

#include <exception>

namespace {

using calls::Callbacks;

extern calls::Module gModule;

// Module code is on the stack as long as this lives. Its end also keeps the compiler from leaving the
// module with a jump: the driver is to return into it.
class StInside {
 public:
  StInside() { ++gModule.inside; }
  ~StInside() { --gModule.inside; }
  StInside(const StInside&) = delete;
  StInside& operator=(const StInside&) = delete;
};

template <auto callback>
struct PassOn;

template <class Result, class... Arguments, Result (*Callbacks::*callback)(Arguments...)>
struct PassOn<callback> {
  static Result Call(Arguments... arguments) {
    const StInside inside;
    return (VYRAFuzzDriver()->callbacks.*callback)(arguments...);
  }
};

#define PASS_ON(type, name) PassOn<&Callbacks::name>::Call,
constexpr Callbacks kCallbacks = {FOR_EACH_CALLBACK(PASS_ON)};

void PassErrorOn(const char* message) {
  const StInside inside;
  VYRAFuzzDriver()->error(gModule, message);
}

class Failure : public std::exception {
 public:
  Failure() { ++gModule.exceptions; }
  Failure(const Failure& other) : std::exception(other) { ++gModule.exceptions; }
  Failure& operator=(const Failure&) = delete;
  ~Failure() override { --gModule.exceptions; }
  const char* what() const noexcept override { return "a module's own failure"; }
};

[[noreturn]] void Fail() { throw Failure(); }

calls::Module gModule = {&kCallbacks, PassErrorOn, Fail, FUZZ_MODULE_IS_RESIDENT};

// A plugin may do anything from a constructor of its own.
class Lifetime {
 public:
  Lifetime() {
    const StInside inside;
    VYRAFuzzDriver()->opened(gModule);
  }
  ~Lifetime() { VYRAFuzzDriver()->closing(gModule); }
  Lifetime(const Lifetime&) = delete;
  Lifetime& operator=(const Lifetime&) = delete;
} gLifetime;

}  // namespace

VYRA_PLUGIN_EXPORT int VyPluginStart(char* outName, char* outSignature, char* outDescription) {
  const StInside inside;
  return VYRAFuzzDriver()->start(gModule, outName, outSignature, outDescription);
}

VYRA_PLUGIN_EXPORT void VyPluginStop(void) {
  const StInside inside;
  VYRAFuzzDriver()->stop(gModule);
}

VYRA_PLUGIN_EXPORT int VyPluginEnable(void) {
  const StInside inside;
  return VYRAFuzzDriver()->enable(gModule);
}

VYRA_PLUGIN_EXPORT void VyPluginDisable(void) {
  const StInside inside;
  VYRAFuzzDriver()->disable(gModule);
}

VYRA_PLUGIN_EXPORT void VyPluginReceiveMessage(VYRAPluginID from, int message, void* param) {
  const StInside inside;
  VYRAFuzzDriver()->message(gModule, from, message, param);
}
