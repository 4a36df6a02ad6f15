// Draw callbacks, key sniffers, windows, hot keys and the camera.
#include <cstring>

#include "Actions.h"
#include "Input.h"

namespace calls {

namespace {

const Callbacks& CallbacksOf(const Registration& registration) { return registration.owner->callbacks; }

// ---- Draw callbacks and key sniffers: known by their values, whoever registers and unregisters them ---

int AddDraw(Registration& r) { return VYRARegisterDrawCallback(CallbacksOf(r).draw, r.which, r.before, &r); }
int RemoveDraw(Registration& r) {
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
  const VYRAWindowCreateParams params = {gInput.OneIn(16) ? gInput.Int() : static_cast<int>(sizeof(params)),
                                         left,
                                         bottom + 12,
                                         left + 12,
                                         bottom,
                                         gInput.OneIn(6) ? 0 : 1,
                                         callbacks.drawWindow,
                                         callbacks.windowMouse,
                                         callbacks.windowKey,
                                         gInput.OneIn(4) ? nullptr : callbacks.windowCursor,
                                         callbacks.windowWheel,
                                         &r};
  r.handle = Do<VYRACreateWindowEx>(&params);
  if (r.handle != nullptr) gBook.Added(r);
}

// The registration of a window that the library knows, whether or not it was destroyed during a walk.
Registration* Known(VYRAWindowID window) {
  return VYRAGetWindowRefCon(window) != nullptr ? gBook.Last(Family::window, window) : nullptr;
}

void DestroyWindow(Plugin&) {
  const VYRAWindowID window = AnyHandle<VYRAWindowID>(Family::window);
  Registration* const r = Known(window);
  const struct StGone {
    Registration* r;
    ~StGone() {
      if (r == nullptr) return;
      r->gone = true;
      r->revived = false;
      ++r->touched;
    }
  } gone{r};
  Do<VYRADestroyWindow>(window);
}

void BringToFront(Plugin&) {
  const VYRAWindowID window = AnyHandle<VYRAWindowID>(Family::window);
  Registration* const r = Known(window);
  Do<VYRABringWindowToFront>(window);
  if (r != nullptr && r->gone) r->revived = true;
}

void AskWindow(Plugin&) {
  const VYRAWindowID window = AnyHandle<VYRAWindowID>(Family::window);
  Registration* const r = gBook.Last(Family::window, window);
  void* const refcon = VYRAGetWindowRefCon(window);
  Require(refcon == nullptr || refcon == r, "a window has another's refcon");
  Do<VYRASetWindowRefCon>(window, r);
}

// ---- Hot keys -----------------------------------------------------------------------------------------

void RegisterHotKey(Plugin& self) {
  Registration& r = gBook.Register(Family::hotKey, self);
  const char key = static_cast<char>('A' + gInput.Below(3));
  r.handle = Do<VYRARegisterHotKey>(key, gInput.Below(2), gInput.Text(), self.callbacks.hotKey, &r);
  gBook.Added(r);
}

void UnregisterHotKey(Plugin&) {
  const VYRAHotKeyID hotKey = AnyHotKey();
  if (Registration* r = gBook.Find(Family::hotKey, hotKey)) Book::Removed(*r);
  Do<VYRAUnregisterHotKey>(hotKey);
}

void AskHotKey(Plugin&) {
  const VYRAHotKeyID hotKey = AnyHotKey();
  char description[VYRA_HOT_KEY_DESCRIPTION_SIZE] = "";
  VYRAPluginID owner = INT_MIN;
  VYRAGetHotKeyInfo(hotKey, nullptr, nullptr, description, &owner);
  const Registration* const r = gBook.Find(Family::hotKey, hotKey);
  Require(r == nullptr || !r->owner->IsSettled() || owner == r->owner->id, "a hot key is another plugin's");
}

// ---- The camera ---------------------------------------------------------------------------------------

void ControlCamera(Plugin& self) {
  Registration& r = gBook.Register(Family::camera, self);
  const bool asks = !gInput.OneIn(16);
  gBook.Added(r);
  gBook.camera = asks ? &r : nullptr;
  Do<VYRAControlCamera>(gInput.Below(3), asks ? self.callbacks.camera : nullptr, &r);
}

void DontControlCamera(Plugin&) {
  gBook.camera = nullptr;
  Do<VYRADontControlCamera>();
}

void ShowOrHide(Plugin&) {
  Do<VYRASetWindowIsVisible>(AnyHandle<VYRAWindowID>(Family::window), gInput.Below(2));
}

// clang-format off
const Action kActions[] = {
    RegisterByValue<Family::draw, AddDraw>, RegisterByValue<Family::draw, AddDraw>,
    UnregisterByValue<Family::draw, RemoveDraw>, RegisterByValue<Family::sniffer, AddSniffer>,
    UnregisterByValue<Family::sniffer, RemoveSniffer>, CreateWindow, CreateWindow, CreateWindow, DestroyWindow,
    DestroyWindow, BringToFront, kAny<VYRATakeKeyboardFocus>, kAny<VYRATakeKeyboardFocus>, ShowOrHide, AskWindow,
    kAny<VYRAGetWindowGeometry>, kAny<VYRASetWindowGeometry>, kAny<VYRAGetWindowIsVisible>,
    kAny<VYRAIsWindowInFront>, kAny<VYRAGetScreenSize>, kAny<VYRAGetMouseLocation>, RegisterHotKey,
    RegisterHotKey, UnregisterHotKey, AskHotKey, kAny<VYRASetHotKeyCombination>, kAny<VYRACountHotKeys>,
    ControlCamera, DontControlCamera, kAny<VYRAReadCameraPosition>, kAny<VYRAIsCameraBeingControlled>};
// clang-format on

}  // namespace

VYRAHotKeyID AnyHotKey() {
  return gInput.OneIn(4) ? VYRAGetNthHotKey(gInput.Int())
                         : static_cast<VYRAHotKeyID>(gBook.AnyHandle(Family::hotKey));
}

const ActionList kDisplayActions = {kActions, std::size(kActions)};

}  // namespace calls
