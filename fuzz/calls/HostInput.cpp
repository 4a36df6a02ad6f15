#include "HostInput.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>
#include <vector>

#include "Host.h"
#include "Input.h"
#include "Windows.h"

namespace calls {

namespace {

std::vector<const void*> operator+(std::vector<const void*> first, const std::vector<const void*>& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

// Who draws in a step: the window that holds the mouse is told of a drag first, then come the windows, the
// back-most first.
std::vector<const void*> MeantToDraw(int step, const WindowStates& windows, int isReflection) {
  std::vector<const void*> meant;
  if (step == 20) {
    for (const WindowState& one : windows) {
      if (one.hasMouse && one.Record().owner->enabled) meant.push_back(&one.Record());
    }
    for (auto one = windows.rbegin(); one != windows.rend(); ++one) {
      if (one->isShown) meant.push_back(&one->Record());
    }
  }
  for (const int before : {1, 0}) {
    meant = meant + gBook.NewestFirst(Family::draw, [&](const Registration& r) {
      return r.before == before && StepOfDrawing(r.which, before) == step &&
             (isReflection != 1 || r.owner->wantsReflections);
    });
  }
  return meant;
}

}  // namespace

void Draw() {
  Call call("draw");
  const Registration* const drawn = gInput.OneIn(3) ? gBook.Any(Family::draw) : nullptr;
  call.step = drawn != nullptr   ? StepOfDrawing(drawn->which, drawn->before)
              : gInput.OneIn(3)  ? 20
              : gInput.OneIn(16) ? gInput.Int()
                                 : gInput.Below(28);
  const int isReflection = gInput.Below(3);
  for (const Registration* draw : gBook.Of(Family::draw)) {
    if (call.step == 0 || StepOfDrawing(draw->which, draw->before) != call.step) continue;
    if (isReflection != 1 || draw->owner->wantsReflections) call.Expect(*draw);
  }
  const WindowStates windows = Windows();
  for (const WindowState& one : windows) {
    if (call.step == 20 && one.isShown && !gMayHide) call.Expect(one.Record());
  }
  const auto meant = call.step > 0 && call.step < 27 ? MeantToDraw(call.step, windows, isReflection)
                                                     : std::vector<const void*>();
  const int result = VYRADoDrawingHook(call.step, isReflection);
  call.Returned();
  if (!gMayHide) call.RequireTurns(meant);
  int answer = 1;
  for (const Turn& turn : call.turns) {
    if (static_cast<const Registration*>(turn.who)->family == Family::draw) answer &= turn.answer;
  }
  Require(result == answer, "a step of drawing does not answer what its callbacks do");
}

void Key() {
  const int key = gInput.OneIn(3) ? 0 : 'A' + gInput.Below(3);
  const int flags = gInput.Below(2);
  const int virtualKey = gInput.OneIn(6) ? 0 : 'A' + gInput.Below(3);
  const auto isBefore = [](const Registration& r) { return r.before != 0; };
  const auto isBehind = [](const Registration& r) { return r.before == 0; };
  auto hotKeys = gBook.NewestFirst(
      Family::hotKey, [&](const Registration& r) { return r.which == virtualKey && r.before == flags; });
  std::vector<const void*> meant = gBook.NewestFirst(Family::sniffer, isBefore) + hotKeys;
  for (const WindowState& one : Windows()) {
    if (one.hasFocus && one.Record().owner->enabled) meant.push_back(&one.Record());
  }
  meant = meant + gBook.NewestFirst(Family::sniffer, isBehind);
  if (key == 0 && flags == 0 && virtualKey == 0) meant.clear();
  bool isConsumed = false;
  Call call("VYRAKeyPressHook");
  call.told = {key, flags, virtualKey};
  const int result = VYRAKeyPressHook(key, flags, virtualKey);
  const auto consumes = [&](const Turn& turn) {
    const auto& r = *static_cast<const Registration*>(turn.who);
    return r.family != Family::sniffer || turn.answer == 0;
  };
  if (!gMayHide) call.RequireTurns(meant, consumes);
  for (const Turn& turn : call.turns) {
    Require(!isConsumed, "a key goes on that was consumed");
    isConsumed = consumes(turn);
  }
  Require(result == (isConsumed ? 0 : 1), "the host hears wrongly whether a key was consumed");
}

namespace {

bool IsTaken(const Turn& turn) { return turn.answer != 0; }

// A place for the mouse, mostly in a window.
std::array<int, 2> AnyPlace(WindowStates& windows) {
  if (windows.empty() || gInput.OneIn(4)) return {gInput.Below(32), gInput.Below(32)};
  const auto& edges = gInput.OneOf(windows).edges;
  const auto from = [](int edge) { return std::clamp(edge, -1000, 1000) + gInput.Below(14) - 1; };
  return {from(edges[0]), from(edges[3])};
}

}  // namespace

void Mouse() {
  WindowStates windows = Windows();
  const auto [x, y] = AnyPlace(windows);
  const bool isDown = gInput.OneIn(2);
  std::vector<const void*> meant;
  if (isDown) meant = HitAt(windows, x, y);
  for (const WindowState& one : windows) {
    if (!isDown && one.hasMouse && one.Record().owner->enabled) meant.push_back(&one.Record());
  }
  Call call("VYRAMouseClickHook");
  call.told = {x, y, isDown ? VYRA_MOUSE_DOWN : VYRA_MOUSE_UP};
  const StThen then([&] {
    if (isDown || call.IsDisturbed()) return;
    for (const WindowState& one : Windows())
      Require(!one.hasMouse, "a window holds the mouse after its release");
  });
  const int result = VYRAMouseClickHook(x, y, isDown ? 1 + gInput.Below(2) : 0);
  if (gMayHide) return;
  if (isDown) {
    call.RequireTurns(meant, IsTaken);
  } else {
    call.RequireTurns(meant);
  }
  if (call.IsDisturbed()) return;
  const bool isTaken = !call.turns.empty() && (!isDown || IsTaken(call.turns.back()));
  Require(result == (isTaken ? 0 : 1), "the host hears wrongly whether a window took a click");
  for (WindowState& one : windows) {
    if (!isDown || isTaken) one.hasMouse = isDown && &one.Record() == call.turns.back().who;
  }
  WindowStates now = Windows();
  // The windows of plugins that left before are freed as the click ends.
  for (WindowStates* states : {&windows, &now})
    std::erase_if(*states, [](const WindowState& one) { return !one.Record().owner->IsIn(); });
  Require(windows == now, "the wrong window holds the mouse after a click");
}

void Cursor() {
  WindowStates windows = Windows();
  const auto [x, y] = gInput.OneIn(12) ? std::array{gInput.Int(), gInput.Int()} : AnyPlace(windows);
  std::vector<const void*> meant = HitAt(windows, x, y);
  std::erase_if(meant, [](const void* who) { return static_cast<const Registration*>(who)->before == 0; });
  Call call("VYRACursorHook");
  call.told = {x, y, 0};
  const int result = VYRACursorHook(x, y);
  call.RequireTurns(meant, IsTaken);
  Require(result == (call.turns.empty() ? 0 : call.turns.back().answer),
          "the cursor is another than a window's");
}

void Wheel() {
  WindowStates windows = Windows();
  const auto [x, y] = AnyPlace(windows);
  const int clicks = gInput.Int();
  const std::vector<const void*> meant = HitAt(windows, x, y);
  Call call("VYRAScrollWheelHook");
  call.told = {x, 1, clicks};
  const int result = VYRAScrollWheelHook(x, y, 1, clicks);
  call.RequireTurns(meant, IsTaken);
  const bool isTaken = !call.turns.empty() && IsTaken(call.turns.back());
  Require(result == (isTaken ? 0 : 1), "the host hears wrongly whether a window took the wheel");
}

void Camera() {
  float values[7] = {0, 1, 2, 3, 4, 5, 6};
  const bool isAsked = gBook.camera != nullptr && gBook.camera->owner->enabled;
  const Registration* const refused = isAsked ? nullptr : gBook.camera;
  std::vector<const void*> meant;
  if (isAsked) meant.push_back(gBook.camera);
  const bool known = gBook.cameraKnown;
  Call call("VYRACameraHook");
  const int result =
      VYRACameraHook(&values[0], &values[1], &values[2], &values[3], &values[4], &values[5], &values[6]);
  if (known) call.RequireTurns(meant);
  if (gBook.camera == refused) gBook.camera = nullptr;  // who may not be asked loses it
  if (call.IsDisturbed()) return;
  const int answer = call.turns.empty() ? 0 : call.turns.back().answer;
  Require(result == 1 - answer, "the host hears wrongly who has the camera");
  for (int i = 0; i < 7; ++i) {
    Require(values[i] == static_cast<float>(answer != 0 ? i + 10 : i), "the camera is not where it was put");
  }
}

int StepOfDrawing(int phase, int isBefore) {
  static const std::map<int, int> first = {{0, 1},   {5, 2},   {10, 4},   {15, 6},   {20, 8},
                                           {25, 10}, {30, 12}, {35, 13},  {40, 14},  {45, 16},
                                           {55, 18}, {50, 19}, {101, 21}, {100, 23}, {102, 25}};
  const auto found = first.find(phase);
  if (found == first.end() || isBefore < 0 || isBefore > 1) return 0;
  const bool hasOneStep = phase == 0 || phase == 30 || phase == 35 || phase == 55;
  return found->second + (isBefore != 0 || hasOneStep ? 0 : 1);
}

}  // namespace calls
