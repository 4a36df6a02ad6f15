// Draw callbacks, key sniffers, windows, hot keys and the camera.
#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "Actions.h"
#include "Input.h"
#include "Windows.h"

namespace calls {

namespace {

const Callbacks& CallbacksOf(const Registration& registration) { return registration.owner->callbacks; }

// ---- Draw callbacks and key sniffers: known by their values, whoever registers and unregisters them ---

int AddDraw(Registration& r) { return VYRARegisterDrawCallback(CallbacksOf(r).draw, r.which, r.before, &r); }
int RemoveDraw(Registration& r) {
  if (gInput.OneIn(6)) {
    const int result = VYRAUnregisterDrawCallback(CallbacksOf(r).draw, r.which + 1, r.before, &r);
    Require(result == 0, "a draw callback is unregistered that is one of another phase");
  }
  return VYRAUnregisterDrawCallback(CallbacksOf(r).draw, r.which, r.before, &r);
}
int AddSniffer(Registration& r) { return VYRARegisterKeySniffer(CallbacksOf(r).sniffer, r.before, &r); }
int RemoveSniffer(Registration& r) { return VYRAUnregisterKeySniffer(CallbacksOf(r).sniffer, r.before, &r); }

template <Family family, int (*add)(Registration&)>
void RegisterByValue(Plugin& self) {
  static constexpr int kPhases[] = {0,  5,  10, 15, 20, 25,  30,  35,  40,
                                    45, 50, 50, 50, 55, 100, 101, 102, INT_MIN};
  Registration& r = gBook.RegisterAgain(family, self);
  if (r.gone) r.which = gInput.OneOf(kPhases);
  if (r.gone) r.before = gInput.Below(2);
  const int result = Do("register by value", [&] { return add(r); });
  Require(!self.IsSettled() || result == (r.gone ? 1 : 0), "a registration is taken twice, or not at all");
  if (r.gone) gBook.Added(r);
}

template <Family family, int (*remove)(Registration&)>
void UnregisterByValue(Plugin&) {
  Registration* const r = gBook.Any(family);
  if (r == nullptr) return;
  const int result = Do("unregister by value", [&] { return remove(*r); });
  Require(!r->owner->IsSettled() || result == (r->gone ? 0 : 1),
          "an unregistration found who is not there, or not who is");
  if (result != 0) Book::Removed(*r);
}

// ---- Windows ------------------------------------------------------------------------------------------

void CreateWindow(Plugin& self) {
  if (self.module == nullptr) return;  // the host could not find those again that others hide
  Registration& r = gBook.Register(Family::window, self);
  const Callbacks& callbacks = self.callbacks;
  const int left = gInput.Below(20);
  const int bottom = gInput.Below(20);
  const bool hasCursor = !gInput.OneIn(4);
  const VYRAWindowCreateParams params = {gInput.OneIn(16) ? 60 + gInput.Below(24) : 72,
                                         left,
                                         bottom + 12,
                                         left + 12,
                                         bottom,
                                         gInput.OneIn(6) ? 0 : 1,
                                         callbacks.drawWindow,
                                         callbacks.windowMouse,
                                         callbacks.windowKey,
                                         hasCursor ? callbacks.windowCursor : nullptr,
                                         callbacks.windowWheel,
                                         &r};
  r.before = hasCursor ? 1 : 0;
  // Looking brings the anchor of the list back to its front: without, the window may hide others.
  const bool looks = !gMayHide || !gInput.OneIn(16);
  WindowStates windows = looks ? Windows() : WindowStates();
  r.handle = Do<VYRACreateWindowEx>(&params);
  Require((r.handle != nullptr) == (params.structSize == 72),
          "a window is made of any parameters, or of none");
  if (r.handle == nullptr) return;
  gBook.Added(r);
  if (!looks) return;
  const bool isVisible = params.visible != 0;
  windows.insert(windows.begin(), {static_cast<VYRAWindowID>(const_cast<void*>(r.handle)),
                                   {left, params.top, params.right, bottom},
                                   isVisible,
                                   isVisible && self.enabled,
                                   false,
                                   false});
  Require(windows == Windows(), "a new window is not in front, or not as it was made");
}

// The registration of a window that the library knows, whether or not it was destroyed during a walk.
Registration* Known(VYRAWindowID window) {
  return VYRAGetWindowRefCon(window) != nullptr ? gBook.Last(Family::window, window) : nullptr;
}

// Whoever has the keyboard focus loses it to another window, or to nobody.
void MoveFocus(WindowStates& windows, const WindowState* taker, std::vector<const void*>& told) {
  for (WindowState& one : windows) {
    if (&one == taker || !one.hasFocus) continue;
    one.hasFocus = false;
    if (VYRAIsPluginEnabled(one.Record().owner->id) != 0) told.push_back(&one.Record());
  }
}

void DestroyWindow(Plugin&) {
  const VYRAWindowID window = AnyHandle<VYRAWindowID>(Family::window);
  Registration* const r = Known(window);
  WindowStates windows = Windows();
  std::vector<const void*> told;
  if (WindowState* const state = Find(windows, window)) {
    if (state->hasFocus) MoveFocus(windows, nullptr, told);
    windows.erase(windows.begin() + (state - windows.data()));
  }
  const struct StGone {
    Registration* r;
    ~StGone() {
      if (r == nullptr) return;
      r->gone = true;
      r->revived = false;
      ++r->touched;
    }
  } gone{r};
  Call call("VYRADestroyWindow");
  call.taker = nullptr;
  VYRADestroyWindow(window);
  call.Returned();
  RequireWindows(call, windows);
  if (gBook.losing == 0 && !gMayHide) call.RequireTurns(told);
}

void BringToFront(Plugin&) {
  const VYRAWindowID window = AnyHandle<VYRAWindowID>(Family::window);
  Registration* const r = Known(window);
  WindowStates windows = Windows();
  Do<VYRABringWindowToFront>(window);
  if (r != nullptr && r->gone) r->revived = true;
  WindowState* const state = Find(windows, window);
  if (state == nullptr && r != nullptr) return;  // destroyed, but not freed
  if (state != nullptr) std::rotate(windows.data(), state, state + 1);
  Require(windows == Windows(), "a window is brought to another place than the front");
}

void AskWindow(Plugin&) {
  const VYRAWindowID window = AnyHandle<VYRAWindowID>(Family::window);
  Registration* const r = gBook.Last(Family::window, window);
  void* const refcon = VYRAGetWindowRefCon(window);
  Require(refcon == nullptr || refcon == r, "a window has another's refcon");
  Do<VYRASetWindowRefCon>(window, r);
  WindowStates windows = Windows();
  const WindowState* front = nullptr;
  for (const WindowState& one : windows) {
    if (front == nullptr && one.isVisible) front = &one;
  }
  Require((Do<VYRAIsWindowInFront>(window) != 0) == (front != nullptr && front->window == window),
          "a window counts as in front that is not, or does not though it is");
}

void MoveWindow(Plugin&) {
  const VYRAWindowID window = AnyHandle<VYRAWindowID>(Family::window);
  WindowStates windows = Windows();
  const std::array<int, 4> edges = {gInput.Int(), gInput.Int(), gInput.Int(), gInput.Int()};
  Do<VYRASetWindowGeometry>(window, edges[0], edges[1], edges[2], edges[3]);
  if (WindowState* const state = Find(windows, window)) state->edges = edges;
  Require(windows == Windows(), "a window is not where it was put");
}

void ShowOrHide(Plugin&) {
  const VYRAWindowID window = AnyHandle<VYRAWindowID>(Family::window);
  const int visible = gInput.OneIn(2) ? 1 : 0;
  WindowStates windows = Windows();
  std::vector<const void*> told;
  if (WindowState* const state = Find(windows, window)) {
    if (state->isVisible && visible == 0 && state->hasFocus) MoveFocus(windows, nullptr, told);
    ++state->Record().touched;
    state->isVisible = visible != 0;
    state->isShown = visible != 0 && VYRAIsPluginEnabled(state->Record().owner->id) != 0;
  }
  Call call("VYRASetWindowIsVisible");
  call.taker = nullptr;
  VYRASetWindowIsVisible(window, visible);
  call.Returned();
  RequireWindows(call, windows);
  if (gBook.losing == 0 && !gMayHide) call.RequireTurns(told);
}

void TakeFocus(Plugin&) {
  const VYRAWindowID window = AnyHandle<VYRAWindowID>(Family::window);
  const bool isKnown = VYRAGetWindowRefCon(window) != nullptr;
  WindowStates windows = Windows();
  std::vector<const void*> told;
  WindowState* const taker = Find(windows, window);
  if (isKnown && taker == nullptr) return;  // destroyed, but not freed
  if (taker == nullptr || VYRAIsPluginEnabled(taker->Record().owner->id) != 0) {
    MoveFocus(windows, taker, told);
    if (taker != nullptr) taker->hasFocus = true;
  }
  Call call("VYRATakeKeyboardFocus");
  call.taker = window;
  VYRATakeKeyboardFocus(window);
  call.Returned();
  RequireWindows(call, windows);
  if (gBook.losing == 0 && !gMayHide) call.RequireTurns(told);
}

// ---- Hot keys -----------------------------------------------------------------------------------------

void RegisterHotKey(Plugin& self) {
  Registration& r = gBook.Register(Family::hotKey, self);
  r.which = 'A' + gInput.Below(3);
  r.before = gInput.Below(2);
  const char* const text = gInput.Text();
  r.handle = Do<VYRARegisterHotKey>(static_cast<char>(r.which), r.before, text, self.callbacks.hotKey, &r);
  gBook.Added(r);
  Require(VYRAGetNthHotKey(0) == r.handle, "a new hot key is not the first");
  char description[VYRA_HOT_KEY_DESCRIPTION_SIZE] = "?";
  VYRAGetHotKeyInfo(VYRAGetNthHotKey(0), nullptr, nullptr, description, nullptr);
  Require(std::string(text != nullptr ? text : "").substr(0, 511) == description,
          "a hot key's description is another, or not cut as it should be");
}

void UnregisterHotKey(Plugin&) {
  const VYRAHotKeyID hotKey = AnyHotKey();
  Registration* const r = gBook.Find(Family::hotKey, hotKey);
  const int count = VYRACountHotKeys();
  if (r != nullptr) Book::Removed(*r);
  Do<VYRAUnregisterHotKey>(hotKey);
  if (r == nullptr || !r->owner->IsSettled()) return;
  Require(VYRACountHotKeys() == count - 1, "an unregistered hot key is counted");
  for (int i = 0; i < count; ++i) Require(VYRAGetNthHotKey(i) != hotKey, "an unregistered hot key is listed");
}

void AskHotKey(Plugin&) {
  const VYRAHotKeyID hotKey = AnyHotKey();
  char key = 0;
  int flags = 0;
  VYRAPluginID owner = INT_MIN;
  VYRAGetHotKeyInfo(hotKey, &key, &flags, nullptr, &owner);
  const Registration* const r = gBook.Find(Family::hotKey, hotKey);
  if (r == nullptr || !r->owner->IsSettled()) return;
  Require(owner == r->owner->id, "a hot key is another plugin's");
  Require(key == r->which && flags == r->before, "a hot key is bound to other keys");
}

void BindHotKey(Plugin&) {
  const VYRAHotKeyID hotKey = AnyHotKey();
  const char key = static_cast<char>('A' + gInput.Below(3));
  const int flags = gInput.Below(2);
  Do<VYRASetHotKeyCombination>(hotKey, key, flags);
  Registration* const r = gBook.Find(Family::hotKey, hotKey);
  if (r == nullptr) return;
  r->which = static_cast<unsigned char>(key);
  r->before = flags;
  ++r->touched;
}

// The list stands newest first.
void ListHotKeys(Plugin&) {
  const int count = VYRACountHotKeys();
  int last = INT_MAX;
  for (int i = 0; i < count; ++i) {
    const Registration* const r = gBook.Find(Family::hotKey, VYRAGetNthHotKey(i));
    if (r == nullptr || !r->owner->IsSettled()) continue;
    Require(r->serial < last, "hot keys are listed out of order, or twice");
    last = r->serial;
  }
  Require(VYRAGetNthHotKey(count) == nullptr && VYRAGetNthHotKey(-1) == nullptr,
          "there are more hot keys than are counted");
}

// ---- The camera ---------------------------------------------------------------------------------------

void ControlCamera(Plugin& self) {
  Registration& r = gBook.Register(Family::camera, self);
  const bool asks = !gInput.OneIn(16);
  gBook.Added(r);
  gBook.camera = asks ? &r : nullptr;
  gBook.cameraKnown = asks && (self.module == nullptr || self.IsSettled());
  gBook.cameraDuration = gInput.Below(3);
  Do<VYRAControlCamera>(gBook.cameraDuration, asks ? self.callbacks.camera : nullptr, &r);
}

void DontControlCamera(Plugin&) {
  gBook.camera = nullptr;
  gBook.cameraKnown = true;
  Call call("VYRADontControlCamera");
  VYRADontControlCamera();
  call.RequireTurns({});
}

void AskCamera(Plugin&) {
  int duration = -1;
  const bool isControlled = Do<VYRAIsCameraBeingControlled>(&duration) != 0;
  if (!gBook.cameraKnown || (gBook.camera != nullptr && !gBook.camera->owner->enabled)) return;
  Require(isControlled == (gBook.camera != nullptr),
          "the camera is controlled by nobody, or not by who does");
  Require(duration == (isControlled ? gBook.cameraDuration : -1),
          "the camera is controlled for another time");
}

// clang-format off
const Action kActions[] = {
    RegisterByValue<Family::draw, AddDraw>, RegisterByValue<Family::draw, AddDraw>,
    UnregisterByValue<Family::draw, RemoveDraw>, RegisterByValue<Family::sniffer, AddSniffer>,
    UnregisterByValue<Family::sniffer, RemoveSniffer>, CreateWindow, CreateWindow, CreateWindow, DestroyWindow,
    BringToFront, TakeFocus, TakeFocus, TakeFocus, ShowOrHide, AskWindow, kAny<VYRAGetWindowGeometry>, MoveWindow,
    kAny<VYRAGetWindowIsVisible>, kAny<VYRAGetScreenSize>, kAny<VYRAGetMouseLocation>, RegisterHotKey,
    RegisterHotKey, UnregisterHotKey, AskHotKey, BindHotKey, ListHotKeys, ControlCamera, DontControlCamera, AskCamera,
    kAny<VYRAReadCameraPosition>};
// clang-format on

}  // namespace

VYRAHotKeyID AnyHotKey() {
  return gInput.OneIn(4) ? VYRAGetNthHotKey(gInput.Int())
                         : static_cast<VYRAHotKeyID>(gBook.AnyHandle(Family::hotKey));
}

const ActionList kDisplayActions = {kActions, std::size(kActions)};

}  // namespace calls
