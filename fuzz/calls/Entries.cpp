#include "Entries.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "Actions.h"
#include "Host.h"
#include "Input.h"
#include "Lives.h"
#include "Menus.h"
#include "Windows.h"

namespace calls {

namespace {

constexpr int kDeepest = 10;

Registration& Behind(void* refcon, Family family) {
  auto& registration = *static_cast<Registration*>(refcon);
  Require(registration.family == family, "a callback gets another's refcon");
  return registration;
}

// A callback runs. `stage` tells the walks of one call apart; with -1, it may be called as often as it likes.
Registration& Enter(void* refcon, Family family, int stage = -1) {
  Registration& registration = Behind(refcon, family);
  Plugin& owner = *registration.owner;
  Trace("  -> callback of family", &registration, static_cast<int>(family));
  Require(!registration.gone || registration.revived, "a callback is called that was removed");
  Require(owner.enabled, "a callback is called of a plugin that is not enabled");
  Require(VYRAGetMyID() == owner.id, "a callback is called as another plugin");
  Require(owner.module == nullptr || VYRAIsPluginEnabled(owner.id) != 0,
          "an enabled plugin counts as disabled");
  Call* const call = gBook.call;
  call->Enter(registration, stage);
  Acts(owner, 4);
  call->Left();
  if (registration.alwaysThrows || gInput.OneIn(20)) Throw(owner);
  return registration;
}

// The walks that one call may consist of.
enum Stage { kOnly, kBefore, kAfter, kDrag, kDrawWindows };

// Sums of such numbers are the same in whichever order they are made.
bool IsExact(float value) { return std::fabs(value) < 1e6F; }

// A flight loop whose callback throws waits as long again as it did before.
float OnFlightLoop(float sinceLast, float now, int counter, void* refcon) {
  Registration& loop = Behind(refcon, Family::flightLoop);
  const Call& pass = *gBook.call;
  const float passTime = pass.now;
  Require(pass.phase >= 0 && pass.phase == loop.which, "a flight loop is called in the wrong pass");
  Require(now == passTime || std::isnan(passTime), "a flight loop is told another time than its pass's");
  Require(counter == VYRAGetCycleNumber(), "a flight loop is told another number than its pass's");
  if (loop.known) {
    Require(loop.IsDue(now, counter), "a flight loop is called that is not due");
    Require(sinceLast == now - loop.lastTime || std::isnan(sinceLast),
            "a flight loop's time since its last call is wrong");
  }
  loop.known = false;
  ++loop.touched;
  const int life = loop.serial;
  const auto noteCall = [&](bool isKnown) {  // unless it was removed, and perhaps registered anew
    if (loop.serial != life) return;
    loop.lastTime = passTime;
    loop.lastCycle = VYRAGetCycleNumber();
    loop.known = isKnown && loop.most == 1;
  };
  try {
    Enter(refcon, Family::flightLoop, kOnly);
  } catch (...) {
    noteCall(IsExact(loop.interval) && IsExact(loop.lastTime) && IsExact(passTime));
    throw;
  }
  const float interval = gInput.Float();
  if (loop.serial == life) loop.interval = interval;
  noteCall(true);
  return interval;
}

int Answer(int answer) {
  gBook.call->Answered(answer);
  return answer;
}

int OnDraw(int phase, int isBefore, void* refcon) {
  const Registration& registration = Behind(refcon, Family::draw);
  Require(registration.which == phase && registration.before == isBefore,
          "a draw callback gets another phase");
  Require(StepOfDrawing(phase, isBefore) == gBook.call->step, "a draw callback is called in the wrong step");
  Enter(refcon, Family::draw, isBefore != 0 ? kBefore : kAfter);
  const int answer = gInput.OneIn(3) ? gInput.Below(4) : 1;
  // Two steps tell nobody what the callbacks before the host's drawing said.
  Answer(isBefore != 0 && phase != 30 && phase != 55 ? answer : 1);
  return answer;
}

int OnSniffer(char key, int flags, char virtualKey, void* refcon) {
  RequireTold(key, flags, virtualKey);
  Enter(refcon, Family::sniffer, Behind(refcon, Family::sniffer).before != 0 ? kBefore : kAfter);
  return Answer(gInput.Below(4) != 3 ? 1 + gInput.Below(2) : 0);
}

void OnDrawWindow(VYRAWindowID window, void* refcon) {
  Require(Behind(refcon, Family::window).handle == window, "a window is drawn as another");
  Enter(refcon, Family::window, kDrawWindows);
}

void RequireHit(VYRAWindowID window, int x, int y, const void* refcon) {
  Require(Behind(const_cast<void*>(refcon), Family::window).handle == window,
          "a window is told of the mouse as another");
  if (VYRAGetWindowRefCon(window) == nullptr) return;  // others hide it since the walk began
  const Geometry g(window);
  Require(g.left <= x && x < g.right && g.bottom <= y && y < g.top, "a window is told of a point beside it");
  Require(VYRAGetWindowIsVisible(window) != 0, "a hidden window is told of the mouse");
}

void OnWindowKey(VYRAWindowID window, char key, int flags, char virtualKey, void* refcon, int isLosing) {
  const auto& taker = gBook.call->taker;
  if (isLosing != 0) {
    Require(!taker || *taker == window, "the loser of the focus is told of another who takes it");
    Require(key == 0 && flags == 0 && virtualKey == 0, "the loser of the focus is told of a key");
    ++gBook.losing;
  } else {
    Require(Behind(refcon, Family::window).handle == window, "a window gets another's key");
    RequireTold(key, flags, virtualKey);
  }
  const StThen then([&] { gBook.losing -= isLosing != 0 ? 1 : 0; });
  Enter(refcon, Family::window);
}

int OnWindowMouse(VYRAWindowID window, int x, int y, int status, void* refcon) {
  Require(Behind(refcon, Family::window).handle == window, "a window is told of the mouse as another");
  if (status == VYRA_MOUSE_DOWN) RequireHit(window, x, y, refcon);
  RequireTold(x, y, status);
  Enter(refcon, Family::window, status == VYRA_MOUSE_DRAG ? kDrag : status == VYRA_MOUSE_DOWN ? kOnly : -1);
  return Answer(gInput.Below(2));
}

int OnWindowCursor(VYRAWindowID window, int x, int y, void* refcon) {
  RequireHit(window, x, y, refcon);
  RequireTold(x, y, 0);
  Enter(refcon, Family::window, kOnly);
  return Answer(gInput.Below(3));
}

int OnWindowWheel(VYRAWindowID window, int x, int y, int wheel, int clicks, void* refcon) {
  RequireHit(window, x, y, refcon);
  RequireTold(x, wheel, clicks);
  Enter(refcon, Family::window, kOnly);
  return Answer(gInput.Below(2));
}

void OnHotKey(void* refcon) { Enter(refcon, Family::hotKey, kOnly); }

// The host's camera comes as it is, and goes as the plugin would have it.
void MoveCamera(VYRACameraPosition& position) {
  float* const values = &position.x;
  for (int i = 0; i < 7; ++i) {
    Require(values[i] == static_cast<float>(i), "the camera is not where the host has it");
    values[i] += 10;
  }
}

int OnCamera(VYRACameraPosition* position, int isLosingControl, void* refcon) {
  Require(&Behind(refcon, Family::camera) == gBook.camera, "the camera asks who does not control it");
  Require((position == nullptr) == (isLosingControl != 0), "the camera's position is missing or left over");
  // Also when another took it meanwhile.
  const auto lose = [&] {
    gBook.camera = nullptr;
    gBook.cameraKnown = true;
  };
  gBook.losingCamera += isLosingControl != 0 ? 1 : 0;
  {
    const StThen then([&] {
      if (isLosingControl == 0) return;
      --gBook.losingCamera;
      lose();
    });
    Enter(refcon, Family::camera);
  }
  if (position != nullptr) MoveCamera(*position);
  const int result = gInput.Below(3);
  if (result == 0) lose();
  return Answer(result);
}

void OnMenu(void* menuRef, void* itemRef) {
  Require(gBook.call->param == nullptr || gBook.call->param == itemRef, "another item is picked");
  Enter(menuRef, Family::menu);
}

int OnCommand(VYRACommandRef command, int phase, void* refcon) {
  RequireTold(phase, 0, 0);
  Require(Behind(refcon, Family::command).handle == command, "a command handler gets another command");
  Enter(refcon, Family::command, kOnly);
  return Answer(gInput.Below(4));
}

// Called once for each time that it was asked for.
void OnceOwed(void* refcon, Family family) {
  Require(--Behind(refcon, family).count >= 0, "a one-shot callback is called once more");
  Enter(refcon, family);
}

void OnPlanesReturned(void* refcon) {
  auto& queue = gBook.planes.queue;
  const auto first =
      std::find_if(queue.begin(), queue.end(), [&](const auto& entry) { return entry.second == refcon; });
  Require(first != queue.end(), "the planes are offered to who does not wait for them");
  Require(first->first > gBook.call->latestRequest, "the planes are offered first to who waits shorter");
  gBook.call->latestRequest = first->first;
  queue.erase(first);
  gBook.planes.Offered();
  ++gBook.planes.telling;
  const StThen then([] { --gBook.planes.telling; });
  OnceOwed(refcon, Family::planesWait);
}

void OnObjectReady(VYRAObjectRef object, void* refcon) {
  Registration& load = Behind(refcon, Family::objectLoad);
  Require(object == load.handle, "a load ends with another object");
  auto& waiting = load.owner->waiting;
  if (std::find(waiting.begin(), waiting.end(), &load) != waiting.end()) {
    while (waiting.back()->which == 0) waiting.pop_back();  // has no callback
    Require(waiting.back() == &load, "what was loaded last is not delivered first");
    waiting.pop_back();
  }
  // It becomes the plugin's when the callback ends, also when that throws.
  const StThen then([&] {
    if (object != nullptr) load.owner->objects.insert(object);
  });
  OnceOwed(refcon, Family::objectLoad);
}

void OnChanged(void* refcon) {
  CheckItem(Behind(refcon, Family::subscription).which);
  Enter(refcon, Family::subscription, kOnly);
}

void OnFound(const char*, void* refcon) {
  Plugin& owner = *Behind(refcon, Family::enumeration).owner;
  Require(VYRAGetMyID() == owner.id, "an enumerator is called as another plugin");
  Acts(owner, 2);
  if (gInput.OneIn(16)) Throw(owner);
}

void EnterAccessor(void* refcon) {
  const Registration& registration = Behind(refcon, Family::dataRef);
  Require(gBook.dataRefs[static_cast<std::size_t>(registration.which)] == &registration,
          "an accessor is called of who does not publish the name");
  Enter(refcon, Family::dataRef);
}

// Accessors, by the kind of value that they are asked for.
template <class Value, int kind>
Value Read(void* refcon) {
  RequireTold(kind, 0, 0);
  EnterAccessor(refcon);
  return static_cast<Value>(Answer(gInput.Below(100)));
}

void* RegistrationOfWriter(void* refcon) { return static_cast<char*>(refcon) - kWriterOffset; }

template <class Value, int kind>
void Write(void* refcon, Value value) {
  RequireTold(10 + kind, static_cast<int>(value), 0);
  EnterAccessor(RegistrationOfWriter(refcon));
}

template <class Values, int kind>
int ReadValues(void* refcon, Values*, int offset, int max) {
  RequireTold(kind, offset, max);
  EnterAccessor(refcon);
  return Answer(gInput.Int());
}

template <class Values, int kind>
void WriteValues(void* refcon, Values*, int offset, int count) {
  RequireTold(10 + kind, offset, count);
  EnterAccessor(RegistrationOfWriter(refcon));
}

}  // namespace

// clang-format off
const Driver kDriver = {
    {OnFlightLoop, OnDraw, OnSniffer, OnDrawWindow, OnWindowKey, OnWindowMouse, OnWindowCursor, OnWindowWheel,
     OnHotKey, OnCamera, OnMenu, OnCommand, OnPlanesReturned, OnObjectReady, OnChanged, OnFound, Read<int, 0>,
     Write<int, 0>, Read<float, 1>, Write<float, 1>, Read<double, 2>, Write<double, 2>, ReadValues<int, 3>,
     WriteValues<int, 3>, ReadValues<float, 4>, WriteValues<float, 4>, ReadValues<void, 5>, WriteValues<void, 5>},
    Opened, Closing, Start, Stop, Enable, Disable, Message, Error};
// clang-format on

void RequireTold(int first, int second, int third) {
  const auto& told = gBook.call->told;
  Require(!told || *told == std::array{first, second, third}, "a callback is told something else");
}

void Acts(Plugin& self, int most) {
  if (gBook.depth >= kDeepest) return;
  for (int steps = gInput.Below(most); steps > 0 && !gInput.IsSpent(); --steps) {
    if (!gInput.OneIn(4)) {
      Act(self);
      continue;
    }
    try {
      Act(self);
    } catch (const std::exception& failure) {
      Require(*failure.what() != '\0', "an exception is gone while it is handled");
    }
  }
}

void Throw(const Plugin& plugin) {
  if (plugin.module != nullptr) plugin.module->fail();
  throw std::runtime_error("a failure of the host's own callback");
}

}  // namespace calls

const calls::Driver* VYRAFuzzDriver() { return &calls::kDriver; }
