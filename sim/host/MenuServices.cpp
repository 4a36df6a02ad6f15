// The bar is menu 0. Items are known to the library by a number, and by their place in their menu.
#include "host/MenuServices.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <vector>

#include "host/FlightBoard.h"
#include "host/PluginList.h"
#include "report/Activity.h"

namespace sim {
namespace {

constexpr int kBar = 0;
constexpr int kNone = -1;

struct MenuItem {
  int number;
  std::string name;
  std::string ownerPath;
  int subMenu = kNone;
};

using Menu = std::vector<MenuItem>;

std::map<int, Menu> gMenus{{kBar, {}}};
int gLastNumber = 0;  // of a menu or an item

struct Place {
  int menu;
  int position;
};

MenuItem* ItemAt(Place place) {
  const auto menu = gMenus.find(place.menu);
  if (menu == gMenus.end() || place.position < 0 || place.position >= std::ssize(menu->second))
    return nullptr;
  return &menu->second[static_cast<std::size_t>(place.position)];
}

int AppendItem(int menu, int /*position*/, const char* name, int /*flag*/) {
  const auto found = gMenus.find(menu);
  if (found == gMenus.end()) return kNone;
  found->second.push_back({++gLastNumber, name, CallerPath()});
  return gLastNumber;
}

// A menu whose parent item does not exist hangs nowhere: it can be filled, and never be seen.
int CreateMenu(int parentMenu, int parentItem, const char* name) {
  const int number = ++gLastNumber;
  gMenus[number];
  if (parentMenu == kBar) {
    AppendItem(kBar, 0, name, 0);
    gMenus[kBar].back().subMenu = number;
  } else if (MenuItem* const parent = ItemAt({parentMenu, parentItem})) {
    parent->subMenu = number;
  }
  return number;
}

void DestroyMenu(int menu) {
  if (menu == kBar) return;
  gMenus.erase(menu);
  std::erase_if(gMenus[kBar], [menu](const MenuItem& title) { return title.subMenu == menu; });
  for (auto& [number, other] : gMenus)
    for (MenuItem& item : other)
      if (item.subMenu == menu) item.subMenu = kNone;
}

void RemoveItem(int menu, int item) {
  if (ItemAt({menu, item}) != nullptr) gMenus[menu].erase(gMenus[menu].begin() + item);
}

std::optional<Place> Find(const std::vector<std::string>& way) {
  Place place{kNone, kNone};
  int menu = kBar;
  for (const std::string& name : way) {
    const auto found = gMenus.find(menu);
    if (found == gMenus.end()) return std::nullopt;
    const auto item = std::ranges::find(found->second, name, &MenuItem::name);
    if (item == found->second.end()) return std::nullopt;
    place = {menu, static_cast<int>(item - found->second.begin())};
    menu = item->subMenu;
  }
  return place;
}

std::string StateAt(Place place) {
  if (VYRAMenuItemEnabled(place.menu, place.position) == 0) return "disabled";
  int mark = kNone;
  if (VYRACheckMenuHook(place.menu, place.position, &mark) != 0 || mark == kNone) return "plain";
  return mark == 0 ? "unchecked" : "checked";
}

// A menu whose items lead back to it is shown no deeper than this.
constexpr std::size_t kDeepestMenu = 16;

void AddItems(int menu, const std::vector<std::string>& way, std::vector<MenuItemInfo>& list) {
  const auto found = gMenus.find(menu);
  if (found == gMenus.end() || way.size() == kDeepestMenu) return;
  for (int position = 0; const MenuItem& item : found->second) {
    std::vector<std::string> itemWay = way;
    itemWay.push_back(item.name);
    list.push_back({itemWay, StateAt({menu, position++}), item.ownerPath});
    if (item.subMenu != kNone) AddItems(item.subMenu, itemWay, list);
  }
}

}  // namespace

void FillMenuServices(VYRAHostServices& services) {
  services.CreateMenu = CreateMenu;
  services.AppendMenuItem = AppendItem;
  services.SetMenuItemName = [](int menu, int item, const char* name, int /*flag*/) {
    if (MenuItem* const found = ItemAt({menu, item})) found->name = name;
  };
  services.RemoveMenuItem = RemoveItem;
  services.DestroyMenu = DestroyMenu;
}

std::string PickMenuItem(const std::vector<std::string>& way) {
  const std::optional<Place> place = Find(way);
  if (!place) return "there is no such item";
  if (VYRAMenuItemEnabled(place->menu, place->position) == 0) return "it is disabled";
  if (CallHook("VYRAMenuHook", VYRAMenuHook, ItemAt(*place)->number) != 0) return "no plugin knows it";
  ++gActivity.menuPicks;
  return "";
}

std::vector<MenuItemInfo> ListMenuItems() {
  std::vector<MenuItemInfo> list;
  AddItems(kBar, {}, list);
  return list;
}

std::string MenuItemState(const std::vector<std::string>& way) {
  const std::optional<Place> place = Find(way);
  return place ? StateAt(*place) : "absent";
}

}  // namespace sim
