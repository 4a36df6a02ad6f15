#include <algorithm>
#include <memory>

#include "VYRAHostServices.h"
#include "VYRALoaderDispatch.h"
#include "VYRALoaderReports.h"
#include "VYRAMenusInternal.h"

VYRAMenuInfo_t* gPluginMenu = nullptr;

namespace {

using Menu = VYRAMenuInfo_t;
using Item = VYRAMenuItem;

constexpr int kLastVersionThatKeepsMenus = 567;  // hosts up to this one cannot destroy a menu

// Menus of departed plugins whose host could not destroy them. Nothing finds them any more.
VYRAChain<Menu, &Menu::listed> gAbandonedMenus;

std::uint64_t gMenusMade = 0;

// The host may call back from any service, and change or destroy menus. So the functions below look a menu
// up again after a call of the host, or bring the records up to date before it.

bool Exists(Menu* menu) { return VYRAGetMenu(menu) != nullptr; }

bool IsCallersOwn(Menu* menu) { return Exists(menu) && menu->owner == gDispatchedPlugin; }

// The calling plugin's item of this number, or null, also when there is no such menu.
Item* CallersItem(Menu* menu, int index) {
  return Exists(menu) ? menu->ItemOf(gDispatchedPlugin, index) : nullptr;
}

// The host's position of an item, or -1 for none.
int PositionOf(const Item* item) {
  return item != nullptr ? static_cast<int>(item->menu->items.PlaceOf(*item)) : -1;
}

void RemoveItem(Item* item) {
  const int hostMenu = item->menu->hostMenu;
  const int position = PositionOf(item);
  Menu::Remove(item);
  gHooks->RemoveMenuItem(hostMenu, position);
}

// Kept: the host's entries are left without a name instead of removed; hosts count on their positions.
void RemoveAllItems(Menu& menu) {
  const int hostMenu = menu.hostMenu;
  const int count = static_cast<int>(menu.items.Count());
  menu.RemoveAllItems();
  for (int position = 0; position < count; ++position) gHooks->SetMenuItemName(hostMenu, position, "", 0);
}

bool HostDestroysMenus() { return gHooks->hostVersion > kLastVersionThatKeepsMenus; }

// Takes a menu out of the list, so that its handle is good for nothing from here on.
std::unique_ptr<Menu> Take(Menu* menu) {
  VYRAUnlistMenu(menu);
  if (menu == gPluginMenu) gPluginMenu = nullptr;
  return std::unique_ptr<Menu>(menu);
}

Menu* CreateMenu(const char* name, int hostParent, int parentPosition, VYRAMenuHandler_f handler,
                 void* refcon) {
  auto menu = std::make_unique<Menu>();
  menu->hostMenu = gHooks->CreateMenu(hostParent, parentPosition, name);
  menu->refcon = refcon;
  menu->handler = handler;
  menu->owner = gDispatchedPlugin;
  menu->serial = ++gMenusMade;
  VYRAListMenu(menu.get());
  return menu.release();
}

// A menu leaves the list before the host is told of it: when an exception ends this, it can be called again
// for the others.
void DestroyMenusOf(VYRAPluginID plugin) {
  int left = 0;
  for (const Menu* menu = VYRAFirstMenuOf(plugin); menu != nullptr; menu = menu->owned.next) ++left;
  for (; left > 0; --left) {
    Menu* const first = VYRAFirstMenuOf(plugin);
    if (first == nullptr) return;
    std::unique_ptr<Menu> menu = Take(first);
    RemoveAllItems(*menu);
    if (HostDestroysMenus()) {
      gHooks->DestroyMenu(menu->hostMenu);
    } else {
      // Kept: such a host goes on showing the menu, so its record stays as well.
      gAbandonedMenus.AddFirst(menu.release());
    }
  }
}

// Only those in the menu "Plugins" go, the last first.
void RemoveItemsOf(VYRAPluginID plugin) {
  int left = gPluginMenu != nullptr ? gPluginMenu->CountItemsOf(plugin) : 0;
  while (left > 0 && gPluginMenu != nullptr) {
    left = std::min(left, gPluginMenu->CountItemsOf(plugin)) - 1;
    if (Item* item = gPluginMenu->ItemOf(plugin, left)) RemoveItem(item);
  }
  VYRADisownMenuItems(plugin);
}

}  // namespace

void VYRAInitMenus() {
  const StActAs host(VYRA_HOST_PLUGIN);
  gPluginMenu = nullptr;
  while (Menu* menu = gMenus.First()) Take(menu);
  gPluginMenu = CreateMenu("Plugins", 0, 0, nullptr, nullptr);
}

VYRAMenuID VYRAFindPluginsMenu(void) { return gPluginMenu; }

VYRAMenuID VYRACreateMenu(const char* name, VYRAMenuID parent, int parentItem, VYRAMenuHandler_f handler,
                          void* menuRef) {
  if (name == nullptr) return nullptr;
  if (parent == nullptr && gPluginMenu != nullptr) {
    parentItem = VYRAAppendMenuItem(gPluginMenu, name, nullptr, 1);
    parent = gPluginMenu;
  }
  if (parent == nullptr) return CreateMenu(name, 0, parentItem, handler, menuRef);
  if (!Exists(parent)) return nullptr;
  const int position = PositionOf(parent->ItemOf(gDispatchedPlugin, parentItem));
  return CreateMenu(name, parent->hostMenu, position, handler, menuRef);
}

void VYRADestroyMenu(VYRAMenuID menu) {
  if (!IsCallersOwn(menu)) return;
  const std::unique_ptr<Menu> taken = Take(menu);
  RemoveAllItems(*taken);
  if (HostDestroysMenus()) gHooks->DestroyMenu(taken->hostMenu);
}

void VYRAClearAllMenuItems(VYRAMenuID menu) {
  if (IsCallersOwn(menu)) RemoveAllItems(*menu);
}

int VYRAAppendMenuItem(VYRAMenuID menu, const char* name, void* itemRef, int flag) {
  if (name == nullptr || !Exists(menu)) return -1;
  const std::uint64_t serial = menu->serial;
  const int hostItem =
      gHooks->AppendMenuItem(menu->hostMenu, static_cast<int>(menu->items.Count()), name, flag);
  if (!Exists(menu) || menu->serial != serial) return -1;
  menu->Append(hostItem, itemRef, gDispatchedPlugin);
  return menu->CountItemsOf(gDispatchedPlugin) - 1;
}

int VYRAAppendMenuSeparator(VYRAMenuID menu) { return VYRAAppendMenuItem(menu, "-", nullptr, 0); }

void VYRARemoveMenuItem(VYRAMenuID menu, int index) {
  if (!Exists(menu)) return;
  if (Item* item = CallersItem(menu, index)) {
    RemoveItem(item);
  } else {
    VYRASendError("VYRARemoveMenuItem was passed an out of range item index.");
  }
}

void VYRASetMenuItemName(VYRAMenuID menu, int index, const char* name, int flag) {
  if (name == nullptr || !Exists(menu)) return;
  // Kept: an item that the plugin does not have goes to the host as -1; what that means is the host's.
  gHooks->SetMenuItemName(menu->hostMenu, PositionOf(CallersItem(menu, index)), name, flag);
}

void VYRACheckMenuItem(VYRAMenuID menu, int index, int check) {
  if (Item* item = CallersItem(menu, index)) item->check = check;
}

void VYRACheckMenuItemState(VYRAMenuID menu, int index, int* outCheck) {
  const Item* item = CallersItem(menu, index);
  if (item != nullptr && outCheck != nullptr) *outCheck = item->check;
}

void VYRAEnableMenuItem(VYRAMenuID menu, int index, int enabled) {
  if (Item* item = CallersItem(menu, index)) item->enabled = enabled;
}

int VYRAHandleMenuItemPick(int hostItem) {
  const Item* item = VYRAFindHostItem(hostItem);
  if (item == nullptr) return 1;
  const Menu& menu = *item->menu;
  if (menu.handler == nullptr || item->enabled == 0) return 0;
  const StDispatchCallback dispatch(menu.owner, VYRA_CALL_MENU);
  // Nothing of the menus is touched after the call: its handler may have destroyed them all.
  if (dispatch()) menu.handler(menu.refcon, item->ref);
  return 0;
}

int VYRAHandleMenuItemCheck(int hostMenu, int position, int* outState) {
  if (outState == nullptr) return 1;
  for (const Menu* menu = VYRAFirstMenuOfHost(hostMenu); menu != nullptr; menu = menu->sameHostMenu.next) {
    const Item* item = menu->ItemAt(position);
    if (item == nullptr || item->check < VYRA_MENU_NO_CHECK || item->check > VYRA_MENU_CHECKED) continue;
    *outState = item->check - VYRA_MENU_UNCHECKED;
    return 0;
  }
  return 1;
}

int VYRAHandleMenuItemEnable(int hostMenu, int position) {
  const Menu* menu = VYRAFirstMenuOfHost(hostMenu);
  const Item* item = menu != nullptr ? menu->ItemAt(position) : nullptr;
  if (item == nullptr) return 1;
  return menu->owner < 0 || VYRARegistryIsEnabled(menu->owner) ? item->enabled : 0;
}

void VYRAMenuCleanupHook(VYRAPluginID plugin) {
  DestroyMenusOf(plugin);
  RemoveItemsOf(plugin);
}
