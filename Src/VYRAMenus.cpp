#include <algorithm>
#include <utility>

#include "VYRAHostServices.h"
#include "VYRALoaderDispatch.h"
#include "VYRALoaderReports.h"
#include "VYRAMenusInternal.h"

std::vector<std::unique_ptr<VYRAMenuInfo_t>> gMenus;
VYRAMenuInfo_t* gPluginMenu = nullptr;

namespace {

using Menu = VYRAMenuInfo_t;
using Item = VYRAMenuItem;

constexpr int kLastVersionThatKeepsMenus = 567;  // hosts up to this one cannot destroy a menu

// Menus of departed plugins whose host could not destroy them. Nothing finds them any more.
std::vector<std::unique_ptr<Menu>> gAbandonedMenus;

std::uint64_t gMenusMade = 0;

// The host may call back from any service, and change or destroy menus. So the functions below look a menu
// up again after a call of the host, or bring the records up to date before it.

bool Exists(const Menu* menu) {
  return std::any_of(gMenus.begin(), gMenus.end(), [&](const auto& one) { return one.get() == menu; });
}

bool IsCallersOwn(const Menu* menu) { return Exists(menu) && menu->owner == gDispatchedPlugin; }

Item* ItemAt(Menu& menu, int position) {
  const auto index = static_cast<std::size_t>(position);
  return position >= 0 && index < menu.items.size() ? &menu.items[index] : nullptr;
}

// The calling plugin's item of this number, or null, also when there is no such menu.
Item* CallersItem(Menu* menu, int index) {
  if (!Exists(menu)) return nullptr;
  return ItemAt(*menu, VYRAItemPluginToGlobal(*menu, gDispatchedPlugin, index));
}

void RemoveItem(Menu& menu, int position) {
  menu.items.erase(menu.items.begin() + position);
  gHooks->RemoveMenuItem(menu.hostMenu, position);
}

// Kept: the host's entries are left without a name instead of removed; hosts count on their positions.
void RemoveAllItems(Menu& menu) {
  const int hostMenu = menu.hostMenu;
  const int count = static_cast<int>(std::exchange(menu.items, {}).size());
  for (int position = 0; position < count; ++position) gHooks->SetMenuItemName(hostMenu, position, "", 0);
}

bool HostDestroysMenus() { return gHooks->hostVersion > kLastVersionThatKeepsMenus; }

using MenuPlace = std::vector<std::unique_ptr<Menu>>::iterator;

MenuPlace FindMenuOf(VYRAPluginID plugin) {
  return std::find_if(gMenus.begin(), gMenus.end(), [&](const auto& menu) { return menu->owner == plugin; });
}

// Takes a menu out of the list, so that its handle is good for nothing from here on.
std::unique_ptr<Menu> Take(MenuPlace place) {
  std::unique_ptr<Menu> menu = std::move(*place);
  gMenus.erase(place);
  if (menu.get() == gPluginMenu) gPluginMenu = nullptr;
  return menu;
}

Menu* CreateMenu(const char* name, int hostParent, int parentPosition, VYRAMenuHandler_f handler,
                 void* refcon) {
  auto menu = std::make_unique<Menu>();
  menu->hostMenu = gHooks->CreateMenu(hostParent, parentPosition, name);
  menu->refcon = refcon;
  menu->handler = handler;
  menu->owner = gDispatchedPlugin;
  menu->serial = ++gMenusMade;
  return gMenus.emplace_back(std::move(menu)).get();
}

// A menu leaves the list before the host is told of it: when an exception ends this, it can be called again
// for the others.
void DestroyMenusOf(VYRAPluginID plugin) {
  auto left =
      std::count_if(gMenus.begin(), gMenus.end(), [&](const auto& menu) { return menu->owner == plugin; });
  for (auto place = FindMenuOf(plugin); left > 0 && place != gMenus.end();
       --left, place = FindMenuOf(plugin)) {
    std::unique_ptr<Menu> menu = Take(place);
    RemoveAllItems(*menu);
    if (HostDestroysMenus()) {
      gHooks->DestroyMenu(menu->hostMenu);
    } else {
      // Kept: such a host goes on showing the menu, so its record stays as well.
      gAbandonedMenus.push_back(std::move(menu));
    }
  }
}

// Only those in the menu "Plugins" go. The others stay, but a later plugin with the same ID is not to count
// them among its own.
void RemoveItemsOf(VYRAPluginID plugin) {
  int position = gPluginMenu != nullptr ? static_cast<int>(gPluginMenu->items.size()) : 0;
  while (--position >= 0 && gPluginMenu != nullptr) {
    const Item* item = ItemAt(*gPluginMenu, position);
    if (item != nullptr && item->owner == plugin) RemoveItem(*gPluginMenu, position);
  }
  for (const auto& menu : gMenus) {
    for (Item& item : menu->items) {
      if (item.owner == plugin) item.owner = VYRA_NO_PLUGIN;
    }
  }
}

}  // namespace

int VYRAItemPluginToGlobal(const VYRAMenuInfo_t& menu, VYRAPluginID plugin, int pluginIndex) {
  int number = 0;
  for (std::size_t position = 0; position < menu.items.size(); ++position) {
    if (menu.items[position].owner != plugin) continue;
    if (number == pluginIndex) return static_cast<int>(position);
    ++number;
  }
  return -1;
}

int VYRAItemGlobalToPlugin(const VYRAMenuInfo_t& menu, VYRAPluginID plugin, int position) {
  const auto index = static_cast<std::size_t>(position);
  if (position < 0 || index >= menu.items.size() || menu.items[index].owner != plugin) return -1;
  return static_cast<int>(std::count_if(menu.items.begin(), menu.items.begin() + position,
                                        [&](const Item& item) { return item.owner == plugin; }));
}

void VYRAInitMenus() {
  const StActAs host(VYRA_HOST_PLUGIN);
  gPluginMenu = nullptr;
  gMenus.clear();
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
  const int position = VYRAItemPluginToGlobal(*parent, gDispatchedPlugin, parentItem);
  return CreateMenu(name, parent->hostMenu, position, handler, menuRef);
}

void VYRADestroyMenu(VYRAMenuID menu) {
  if (!IsCallersOwn(menu)) return;
  const auto place =
      std::find_if(gMenus.begin(), gMenus.end(), [&](const auto& one) { return one.get() == menu; });
  const std::unique_ptr<Menu> taken = Take(place);
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
      gHooks->AppendMenuItem(menu->hostMenu, static_cast<int>(menu->items.size()), name, flag);
  if (!Exists(menu) || menu->serial != serial) return -1;
  menu->items.push_back({hostItem, itemRef, VYRA_MENU_NO_CHECK, 1, gDispatchedPlugin});
  return VYRAItemGlobalToPlugin(*menu, gDispatchedPlugin, static_cast<int>(menu->items.size()) - 1);
}

int VYRAAppendMenuSeparator(VYRAMenuID menu) { return VYRAAppendMenuItem(menu, "-", nullptr, 0); }

void VYRARemoveMenuItem(VYRAMenuID menu, int index) {
  if (!Exists(menu)) return;
  const int position = VYRAItemPluginToGlobal(*menu, gDispatchedPlugin, index);
  if (position < 0) {
    VYRASendError("VYRARemoveMenuItem was passed an out of range item index.");
  } else {
    RemoveItem(*menu, position);
  }
}

void VYRASetMenuItemName(VYRAMenuID menu, int index, const char* name, int flag) {
  if (name == nullptr || !Exists(menu)) return;
  // Kept: an item that the plugin does not have goes to the host as -1; what that means is the host's.
  gHooks->SetMenuItemName(menu->hostMenu, VYRAItemPluginToGlobal(*menu, gDispatchedPlugin, index), name,
                          flag);
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
  for (const auto& menu : gMenus) {
    const auto item = std::find_if(menu->items.begin(), menu->items.end(),
                                   [&](const Item& one) { return one.hostItem == hostItem; });
    if (item == menu->items.end()) continue;
    if (menu->handler == nullptr || item->enabled == 0) return 0;
    const StDispatchCallback dispatch(menu->owner, VYRA_CALL_MENU);
    // Nothing of the menus is touched after the call: its handler may have destroyed them all.
    if (dispatch()) menu->handler(menu->refcon, item->ref);
    return 0;
  }
  return 1;
}

int VYRAHandleMenuItemCheck(int hostMenu, int position, int* outState) {
  if (outState == nullptr) return 1;
  for (const auto& menu : gMenus) {
    const Item* item = menu->hostMenu == hostMenu ? ItemAt(*menu, position) : nullptr;
    if (item == nullptr || item->check < VYRA_MENU_NO_CHECK || item->check > VYRA_MENU_CHECKED) continue;
    *outState = item->check - VYRA_MENU_UNCHECKED;
    return 0;
  }
  return 1;
}

int VYRAHandleMenuItemEnable(int hostMenu, int position) {
  const auto menu =
      std::find_if(gMenus.begin(), gMenus.end(), [&](const auto& one) { return one->hostMenu == hostMenu; });
  const Item* item = menu != gMenus.end() ? ItemAt(**menu, position) : nullptr;
  if (item == nullptr) return 1;
  return (*menu)->owner < 0 || VYRARegistryIsEnabled((*menu)->owner) ? item->enabled : 0;
}

void VYRAMenuCleanupHook(VYRAPluginID plugin) {
  DestroyMenusOf(plugin);
  RemoveItemsOf(plugin);
}
