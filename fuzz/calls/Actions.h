// What plugins do: any function of the interface, with arguments good and bad.
#pragma once

#include <cstddef>

#include "Book.h"
#include "Input.h"

namespace calls {

// Makes one call into the library as a plugin.
void Act(Plugin& self);

using Action = void (*)(Plugin& self);

struct ActionList {
  const Action* first;
  std::size_t count;
};

// The actions of each area.
extern const ActionList kDisplayActions;
extern const ActionList kDataActions;
extern const ActionList kManagerActions;
extern const ActionList kMenuActions;
extern const ActionList kSceneActions;

// Makes the shared items that the actions know, and the datarefs that the library writes.
void MakeItems();
void MakeSwitches();
// The shared item has the value that was written last.
void CheckItem(int which);
// A plugin leaves, and its probes are to be had again.
void FreeProbesOf(const Plugin& self);

// Calls a function of the interface.
template <auto function, class... Arguments>
auto Do(Arguments... arguments) {
  return Do(__PRETTY_FUNCTION__, [&] { return function(arguments...); });
}

// A handle of a family that the library checks, whatever stands in it.
template <class Handle>
Handle AnyHandle(Family family) {
  return static_cast<Handle>(gBook.AnyHandle(family));
}
VYRAHotKeyID AnyHotKey();
VYRAMenuID AnyMenu();
VYRADataRef IssuedDataRef();

// Whatever a plugin may pass where a function takes one of these.
struct AnyArgument {
  operator int() const { return gInput.Int(); }
  operator float() const { return gInput.Float(); }
  operator double() const { return gInput.Float(); }
  operator char() const { return static_cast<char>('A' + gInput.Below(3)); }
  operator const char*() const { return gInput.Text(); }
  operator VYRAWindowID() const { return AnyHandle<VYRAWindowID>(Family::window); }
  operator VYRAHotKeyID() const { return AnyHotKey(); }
  operator VYRAMenuID() const { return AnyMenu(); }
  operator VYRADataRef() const { return IssuedDataRef(); }
  operator VYRACameraPosition*() const { return Place<VYRACameraPosition>(); }
  operator char*() const { return Place<char>(); }
  operator int*() const { return Place<int>(); }
  operator float*() const { return Place<float>(); }
  operator void*() const { return nullptr; }

 private:
  // Room for what a function may write, or none.
  template <class Value>
  static Value* Place() {
    static Value places[VYRA_PATH_SIZE];
    return gInput.OneIn(4) ? nullptr : places;
  }
};

// Calls a function of the interface that the book keeps nothing of.
template <auto function>
struct AnyCall;
template <class Result, class... Parameters, Result (*function)(Parameters...)>
struct AnyCall<function> {
  static void Make(Plugin&) { Do<function>(static_cast<Parameters>(AnyArgument())...); }
};
template <auto function>
constexpr Action kAny = AnyCall<function>::Make;

}  // namespace calls
