// Menus and commands.
#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "Actions.h"
#include "Host.h"
#include "Input.h"
#include "Menus.h"

namespace calls {

namespace {

// ---- Menus --------------------------------------------------------------------------------------------

// What the driver notes of a menu that a plugin changes, with the call that does it. Once the call is
// disturbed, the menu is not known any more.
class MenuCall : public Call {
 public:
  MenuCall(const char* name, VYRAMenuID menu) : Call(name), number(gMenuBook.NumberOf(menu)) {}
  ~MenuCall() {
    MenuState* const state = gMenuBook.At(number);
    if (state != nullptr && IsDisturbed()) state->known = false;
  }
  MenuCall(const MenuCall&) = delete;
  MenuCall& operator=(const MenuCall&) = delete;

  void RequireServices(const Services& meant) const {
    if (gBook.IsSure()) Call::RequireServices(meant);
  }

 private:
  int number;
};

void CreateMenu(Plugin& self) {
  if (self.module == nullptr) return;  // the host's menus would stay
  Registration& r = gBook.Register(Family::menu, self);
  const VYRAMenuID parent = gInput.OneIn(2) ? AnyMenu() : nullptr;
  const char* const name = gInput.Text();
  const int parentItem = gInput.OneIn(4) ? gInput.Int() : gInput.Below(3);
  const VYRAMenuHandler_f handler = gInput.OneIn(8) ? nullptr : self.callbacks.menu;
  const bool hangsFromAll = parent == nullptr && gMenuBook.plugins != 0 && name != nullptr;
  const VYRAMenuID above = hangsFromAll ? VYRAFindPluginsMenu() : parent;
  MenuState* const state = gMenuBook.Of(above);
  const int number = gMenuBook.NumberOf(above);
  MenuCall call("VYRACreateMenu", above);
  call.hangs = hangsFromAll ? &self : nullptr;
  r.handle = VYRACreateMenu(name, parent, parentItem, handler, &r);
  if (r.handle == nullptr) return;
  gBook.Added(r);
  // Found from the back: what the service led to may have made others before.
  const auto made = std::find_if(call.services.rbegin(), call.services.rend(),
                                 [](const auto& service) { return service[0] == kCreateMenu; });
  r.which = (*made)[3];
  gMenuBook.states[r.which] = {&r, &self, handler != nullptr, !call.IsDisturbed(), {}};
  if (call.IsDisturbed() || state == nullptr) return;
  if (!hangsFromAll) {
    call.RequireServices({{kCreateMenu, number, state->PositionOf(self, parentItem), r.which}});
    return;
  }
  const int position = static_cast<int>(state->items.size()) - 1;
  call.RequireServices(
      {{kAppendMenuItem, number, position, gHost.items}, {kCreateMenu, number, position, r.which}});
}

void DestroyMenu(Plugin& self) {
  const VYRAMenuID menu = AnyMenu();
  Registration* const r = gBook.Find(Family::menu, menu);
  const bool isOwn = r != nullptr && r->owner == &self;
  const int number = gMenuBook.NumberOf(menu);
  MenuState* const state = gMenuBook.Of(menu);
  Services meant;
  const bool isKnown = state != nullptr;
  if (isKnown && state->owner == &self) {
    for (int i = 0; i < static_cast<int>(state->items.size()); ++i)
      meant.push_back({kSetMenuItemName, number, i, 0});
    if (gHost.services.hostVersion > 567) meant.push_back({kDestroyMenu, number, 0, 0});
  }
  if (isOwn) Book::Removed(*r);
  if (isOwn || (number != 0 && number == gMenuBook.plugins && self.module == nullptr)) {
    gMenuBook.states.erase(number);
    if (number == gMenuBook.plugins) gMenuBook.plugins = 0;
  }
  MenuCall call("VYRADestroyMenu", menu);
  VYRADestroyMenu(menu);
  if (isKnown) call.RequireServices(meant);
}

void ClearMenu(Plugin& self) {
  const VYRAMenuID menu = AnyMenu();
  MenuState* const state = gMenuBook.Of(menu);
  Services meant;
  if (state != nullptr && state->owner == &self) {
    const int count = static_cast<int>(std::exchange(state->items, {}).size());
    for (int i = 0; i < count; ++i) meant.push_back({kSetMenuItemName, gMenuBook.NumberOf(menu), i, 0});
  }
  MenuCall call("VYRAClearAllMenuItems", menu);
  VYRAClearAllMenuItems(menu);
  if (state != nullptr) call.RequireServices(meant);
}

void AppendItem(Plugin& self) {
  const VYRAMenuID menu = AnyMenu();
  const bool isSeparator = gInput.OneIn(6);
  const char* const name = isSeparator ? "-" : gInput.Text();
  static int refs[64];
  void* const ref = isSeparator ? nullptr : &gInput.OneOf(refs);
  MenuState* const state = gMenuBook.Of(menu);
  const int number = gMenuBook.NumberOf(menu);
  MenuCall call("VYRAAppendMenuItem", menu);
  const int result =
      isSeparator ? VYRAAppendMenuSeparator(menu) : VYRAAppendMenuItem(menu, name, ref, gInput.Int());
  if (state == nullptr || call.IsDisturbed()) return;
  const int position = static_cast<int>(state->items.size());
  Require(!gBook.IsSure() || result == (name != nullptr ? state->CountOf(self) : -1),
          "a new item has another number");
  if (name == nullptr) return;
  call.RequireServices({{kAppendMenuItem, number, position, gHost.items}});
  state->items.push_back({gHost.items, ref, 0, 1, &self});
}

void ChangeItem(Plugin& self) {
  const VYRAMenuID menu = gInput.OneIn(3) ? AnyMenu() : gMenuBook.AnyHandle(&self);
  const int number = gMenuBook.NumberOf(menu);
  MenuState* const state = gMenuBook.Of(menu);
  const int count = state != nullptr ? state->CountOf(self) : 2;
  const int index = gInput.OneIn(6) ? gInput.Int() : gInput.Below(count + 1);
  const int position = state != nullptr ? state->PositionOf(self, index) : -1;
  MenuItem* const item = position >= 0 ? &state->items[static_cast<std::size_t>(position)] : nullptr;
  const int what = gInput.Below(5);
  const int value = gInput.OneIn(4) ? gInput.Int() : gInput.Below(what == 3 ? 2 : 3);
  MenuCall call("menu item", menu);
  if (what == 0) {
    VYRARemoveMenuItem(menu, index);
    if (state == nullptr) return;
    if (gBook.IsSure())
      call.RequireReport(
          self, position < 0 ? "VYRARemoveMenuItem was passed an out of range item index." : nullptr);
    call.RequireServices(position < 0 ? Services() : Services{{kRemoveMenuItem, number, position, 0}});
  } else if (what == 1) {
    VYRASetMenuItemName(menu, index, "name", value);
    if (state != nullptr) call.RequireServices({{kSetMenuItemName, number, position, 0}});
  } else if (what == 2) {
    VYRACheckMenuItem(menu, index, value);
    if (item != nullptr) item->check = value;
  } else if (what == 3) {
    VYRAEnableMenuItem(menu, index, value);
    if (item != nullptr) item->enabled = value;
  } else {
    int check = 77;
    VYRACheckMenuItemState(menu, index, &check);
    if (state != nullptr && gBook.IsSure())
      Require(check == (item != nullptr ? item->check : 77), "an item is checked otherwise");
  }
}

// ---- Commands -----------------------------------------------------------------------------------------

void HoldCommand(Plugin& self) {
  const VYRACommandRef command = gInput.OneOf(gHost.commands);
  gBook.held.insert({&self, command});
  Call call("VYRACommandBegin");
  call.usesCommand = true;
  VYRACommandBegin(command);
  call.RequireServices({{kCommand, 1, 0, gHost.NumberOf(command)}});
}

void EndCommand(Plugin& self) {
  std::vector<VYRACommandRef> held;
  for (const auto& [plugin, command] : gBook.held) {
    if (plugin == &self) held.push_back(command);
  }
  const VYRACommandRef command =
      held.empty() || gInput.OneIn(3) ? gInput.OneOf(gHost.commands) : gInput.OneOf(held);
  const struct StEnded {
    const Plugin* plugin;
    void* command;
    ~StEnded() { gBook.held.erase({plugin, command}); }
  } ended{&self, command};
  Call call("VYRACommandEnd");
  call.usesCommand = true;
  VYRACommandEnd(command);
  call.RequireServices({{kCommand, 0, 1, gHost.NumberOf(command)}});
}

void PressCommand(Plugin&) {
  const VYRACommandRef command = gInput.OneOf(gHost.commands);
  const int number = gHost.NumberOf(command);
  Call call("VYRACommandOnce");
  call.usesCommand = true;
  VYRACommandOnce(command);
  call.RequireServices({{kCommand, 1, 0, number}, {kCommand, 0, 1, number}});
}

void HandleCommand(Plugin& self) {
  Registration& r = gBook.RegisterAgain(Family::command, self);
  if (r.gone) {
    const Registration* const other = gInput.OneIn(2) ? gBook.Any(Family::command) : nullptr;
    r.handle = other != nullptr && other->handle != nullptr ? other->handle : gInput.OneOf(gHost.commands);
    r.before = gInput.Below(2);
  }
  Do<VYRARegisterCommandHandler>(const_cast<void*>(r.handle), self.callbacks.command, r.before, &r);
  gBook.Added(r);
  auto& handlers = gBook.handlers[{r.handle, r.before != 0}];
  handlers.insert(r.before != 0 ? handlers.begin() : handlers.end(), &r);
}

void Leave(const Plugin& self, Registration& r) {
  if (r.owner == &self && !r.gone) {
    Book::Removed(r);
    auto& handlers = gBook.handlers[{r.handle, r.before != 0}];
    handlers.erase(std::find(handlers.begin(), handlers.end(), &r));
  }
  Do<VYRAUnregisterCommandHandler>(const_cast<void*>(r.handle), r.owner->callbacks.command, r.before, &r);
}

void LeaveCommand(Plugin& self) {
  if (gInput.OneIn(3)) {
    for (Registration* r : gBook.OwnOf(Family::command, self)) Leave(self, *r);
  } else if (Registration* const r = gBook.Any(Family::command)) {
    Leave(self, *r);
  }
}

// clang-format off
const Action kActions[] = {
    CreateMenu, CreateMenu, DestroyMenu, AppendItem, AppendItem, AppendItem, ChangeItem, ChangeItem, ChangeItem,
    ClearMenu, kAny<VYRAFindCommand>, kAny<VYRACreateCommand>, HoldCommand, HoldCommand, EndCommand, PressCommand,
    HandleCommand, HandleCommand, LeaveCommand};
// clang-format on

}  // namespace

VYRAMenuID AnyMenu() {
  const int choice = gInput.Below(4);
  if (choice == 0) return VYRAFindPluginsMenu();
  return choice == 1 ? static_cast<VYRAMenuID>(gBook.AnyHandle(Family::menu)) : gMenuBook.AnyHandle(nullptr);
}

const ActionList kMenuActions = {kActions, std::size(kActions)};

}  // namespace calls
